#include "plist/WideInteger.h"

#include "plist/BigEndian.h"

#include <algorithm>
#include <array>

namespace varnel::plist {

namespace {

/// A number without sign, in four parts of 32 bits, the lowest first.
class Magnitude {
public:
    Magnitude() = default;
    explicit Magnitude(const WideInteger &number)
        : parts {number.low & lowHalf, number.low >> 32, number.high & lowHalf, number.high >> 32}
    {
    }

    /// False when it gets too big.
    bool append(unsigned base, unsigned digit)
    {
        std::uint64_t carry = digit;
        for (std::uint64_t &part : parts) {
            carry += part * base;
            part = carry & lowHalf;
            carry >>= 32;
        }
        return carry == 0;
    }

    /// Divides; the remainder.
    std::uint64_t divide(std::uint64_t divisor)
    {
        std::uint64_t rest = 0;
        for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
            const std::uint64_t whole = rest << 32 | *part;
            *part = whole / divisor;
            rest = whole % divisor;
        }
        return rest;
    }

    [[nodiscard]] bool isZero() const { return parts == decltype(parts) {}; }
    [[nodiscard]] WideInteger number() const
    {
        return {parts[3] << 32 | parts[2], parts[1] << 32 | parts[0]};
    }

private:
    static constexpr std::uint64_t lowHalf = 0xffffffff;

    std::array<std::uint64_t, 4> parts {};
};

WideInteger negated(const WideInteger &number)
{
    const std::uint64_t low = ~number.low + 1;
    return {~number.high + (low == 0 ? 1 : 0), low};
}

unsigned digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return static_cast<unsigned>(c - '0');
    return static_cast<unsigned>((c | 0x20) - 'a') + 10;
}

} // namespace

WideInteger WideInteger::ofBinary(QByteArrayView body)
{
    const auto width = static_cast<unsigned>(body.size());
    if (width > 8)
        return {readBigEndian(body.data(), 8), readBigEndian(body.data() + 8, 8)};
    const std::uint64_t low = readBigEndian(body.data(), width);
    return {width == 8 && low >> 63 != 0 ? ~std::uint64_t {0} : 0, low};
}

WideInteger WideInteger::ofBinaryUid(QByteArrayView body)
{
    const auto width = static_cast<unsigned>(body.size());
    const unsigned lowWidth = std::min(width, 8U);
    const unsigned highWidth = width - lowWidth;
    return {highWidth == 0 ? 0 : readBigEndian(body.data(), highWidth),
            readBigEndian(body.data() + highWidth, lowWidth)};
}

std::optional<WideInteger> WideInteger::ofXml(QByteArrayView text)
{
    text = text.trimmed();
    const bool isNegative = text.startsWith('-');
    if (isNegative || text.startsWith('+'))
        text = text.sliced(1);
    const bool isHex = text.startsWith("0x") || text.startsWith("0X");
    if (isHex)
        text = text.sliced(2);
    Magnitude magnitude;
    for (const char c : text) {
        if (!magnitude.append(isHex ? 16 : 10, digitValue(c)))
            return {};
    }
    const WideInteger number = magnitude.number();
    const bool isLeast = number.high == std::uint64_t {1} << 63 && number.low == 0;
    if (number.isNegative() && !(isNegative && isLeast))
        return {};
    return isNegative ? negated(number) : number;
}

QString WideInteger::text() const
{
    constexpr std::uint64_t nineDigits = 1'000'000'000;
    Magnitude magnitude(isNegative() ? negated(*this) : *this);
    QString digits;
    do {
        const QString group = QString::number(magnitude.divide(nineDigits));
        digits.prepend(magnitude.isZero() ? group : group.rightJustified(9, u'0'));
    } while (!magnitude.isZero());
    return isNegative() ? u'-' + digits : digits;
}

} // namespace varnel::plist
