#include "plist/BinaryEncoding.h"

#include "plist/BigEndian.h"

#include <algorithm>
#include <bit>

namespace varnel::plist {

namespace {

QByteArray encodeNumber(std::uint64_t number)
{
    const unsigned width = bytesFor(number);
    QByteArray bytes(1 + static_cast<qsizetype>(width), Qt::Uninitialized);
    bytes[0] = static_cast<char>(0x10 | std::countr_zero(width));
    writeBigEndian(bytes.data() + 1, number, width);
    return bytes;
}

} // namespace

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

QByteArray utf16BigEndian(QStringView text)
{
    QByteArray bytes(2 * text.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        writeBigEndian(bytes.data() + 2 * i, text[i].unicode(), 2);
    return bytes;
}

QByteArray encodeHeader(BinaryType type, std::uint64_t count)
{
    const auto high = static_cast<unsigned>(type) << 4;
    if (count < 0xf)
        return QByteArray(1, static_cast<char>(high | static_cast<unsigned>(count)));
    return QByteArray(1, static_cast<char>(high | 0xfU)) + encodeNumber(count);
}

QByteArray encodeBoolean(bool value)
{
    return QByteArray(1, value ? '\x09' : '\x08');
}

QByteArray encodeInteger(qint64 value)
{
    return encodeNumber(static_cast<std::uint64_t>(value));
}

QByteArray encodeString(QStringView value)
{
    const auto length = static_cast<std::uint64_t>(value.size());
    if (isAscii(value))
        return encodeHeader(BinaryType::Ascii, length) + value.toLatin1();
    return encodeHeader(BinaryType::Utf16, length) + utf16BigEndian(value);
}

QByteArray encodeScalar(const NewValue &value)
{
    if (const auto *string = std::get_if<QString>(&value))
        return encodeString(*string);
    if (const auto *integer = std::get_if<qint64>(&value))
        return encodeInteger(*integer);
    return encodeBoolean(std::get<bool>(value));
}

} // namespace varnel::plist
