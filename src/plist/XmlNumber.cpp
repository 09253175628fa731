#include "plist/XmlNumber.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace varnel::plist {

namespace {

QByteArrayView trimmed(QByteArrayView text)
{
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    while (!text.isEmpty() && isSpace(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isSpace(text.back()))
        text.chop(1);
    return text;
}

/// Takes a sign off the front; true for a minus.
bool takeSign(QByteArrayView &text)
{
    const bool isNegative = text.startsWith('-');
    if (isNegative || text.startsWith('+'))
        text = text.sliced(1);
    return isNegative;
}

/// 0 to 15, or 16 for what is no digit.
unsigned digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f')
        return static_cast<unsigned>(c - 'a') + 10;
    if (c >= 'A' && c <= 'F')
        return static_cast<unsigned>(c - 'A') + 10;
    return 16;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool takeDigits(QByteArrayView &text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const bool any = end != text.begin();
    text = text.sliced(end - text.begin());
    return any;
}

bool isDecimal(QByteArrayView text)
{
    bool digits = takeDigits(text);
    if (text.startsWith('.')) {
        text = text.sliced(1);
        digits = takeDigits(text) || digits;
    }
    if (digits && (text.startsWith('e') || text.startsWith('E'))) {
        text = text.sliced(1);
        takeSign(text);
        digits = takeDigits(text);
    }
    return digits && text.isEmpty();
}

/// Whether a decimal that a double cannot hold is too big for it, not too small.
bool isHuge(QByteArrayView decimal)
{
    const auto isExponentMark = [](char c) { return c == 'e' || c == 'E'; };
    const auto mark = std::find_if(decimal.begin(), decimal.end(), isExponentMark);
    const auto point = std::find(decimal.begin(), mark, '.');
    const auto firstDigit = std::find_if(decimal.begin(), mark, [](char c) { return c > '0'; });
    if (mark == decimal.end())
        return firstDigit < point;
    QByteArrayView exponentText = decimal.sliced(mark - decimal.begin() + 1);
    const bool isNegative = takeSign(exponentText);
    qint64 exponent = 0;
    const auto parsed = std::from_chars(exponentText.begin(), exponentText.end(), exponent);
    if (parsed.ec != std::errc())
        return !isNegative;
    return (point - firstDigit) + (isNegative ? -exponent : exponent) > 0;
}

double decimalValue(QByteArrayView decimal)
{
    double value = 0;
    const auto parsed = std::from_chars(decimal.begin(), decimal.end(), value);
    if (parsed.ec == std::errc::result_out_of_range)
        return isHuge(decimal) ? std::numeric_limits<double>::infinity() : 0;
    return value;
}

} // namespace

Decoded decodeXmlInteger(QByteArrayView text)
{
    Decoded decoded;
    text = trimmed(text);
    const bool isNegative = takeSign(text);
    const bool isHex = text.startsWith("0x") || text.startsWith("0X");
    if (isHex)
        text = text.sliced(2);
    const unsigned base = isHex ? 16 : 10;
    if (text.isEmpty())
        return decoded;
    std::uint64_t magnitude = 0;
    bool overflows = false;
    for (const char c : text) {
        const unsigned digit = digitValue(c);
        if (digit >= base)
            return decoded;
        overflows =
            overflows || magnitude > (std::numeric_limits<std::uint64_t>::max() - digit) / base;
        magnitude = magnitude * base + digit;
    }
    constexpr std::uint64_t signBit = std::uint64_t {1} << 63;
    decoded.exact = !overflows && (magnitude < signBit || (isNegative && magnitude == signBit));
    decoded.value.kind = Kind::Integer;
    decoded.value.integer = static_cast<qint64>(isNegative ? 0 - magnitude : magnitude);
    return decoded;
}

Decoded decodeXmlReal(QByteArrayView text)
{
    Decoded decoded;
    text = trimmed(text);
    QByteArrayView unsignedText = text;
    const bool isNegative = takeSign(unsignedText);
    const auto is = [&](const char *name) {
        return unsignedText.compare(QByteArrayView(name), Qt::CaseInsensitive) == 0;
    };
    if (is("nan")) {
        decoded.value.real = std::numeric_limits<double>::quiet_NaN();
    } else if (is("inf") || is("infinity")) {
        decoded.value.real = std::numeric_limits<double>::infinity() * (isNegative ? -1 : 1);
    } else if (isDecimal(unsignedText)) {
        decoded.value.real = decimalValue(unsignedText) * (isNegative ? -1 : 1);
    } else {
        return decoded;
    }
    decoded.value.kind = Kind::Real;
    return decoded;
}

} // namespace varnel::plist
