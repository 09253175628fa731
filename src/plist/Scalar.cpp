#include "plist/Scalar.h"

#include "base/Text.h"
#include "plist/BinaryDecoding.h"
#include "plist/BinaryEncoding.h"
#include "plist/PlistDate.h"
#include "plist/XmlEncoding.h"
#include "plist/XmlNumber.h"

#include <QLocale>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace varnel::plist {

namespace {

Scalar unclear(ObjectType type, QByteArrayView text)
{
    Scalar scalar;
    scalar.type = type;
    scalar.unclear = text.isNull() ? QByteArray("") : text.toByteArray();
    return scalar;
}

Scalar dataOf(QByteArrayView text)
{
    QByteArray letters;
    letters.reserve(text.size());
    for (const char c : text) {
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r')
            letters += c;
    }
    const auto decoded =
        QByteArray::fromBase64Encoding(letters, QByteArray::AbortOnBase64DecodingErrors);
    // Letters left over, and bits that say nothing, make no difference to this reader, but do to
    // others.
    if (!decoded || decoded.decoded.toBase64() != letters)
        return unclear(ObjectType::Data, text);
    Scalar scalar;
    scalar.type = ObjectType::Data;
    scalar.data = decoded.decoded;
    return scalar;
}

QByteArray bits(double number)
{
    // Not-a-numbers differ in bits that XML has no words for.
    if (std::isnan(number))
        number = std::numeric_limits<double>::quiet_NaN();
    QByteArray bytes(8, Qt::Uninitialized);
    writeBigEndian(bytes.data(), std::bit_cast<std::uint64_t>(number), 8);
    return bytes;
}

QByteArray bits(const WideInteger &number)
{
    QByteArray bytes(16, Qt::Uninitialized);
    writeBigEndian(bytes.data(), number.high, 8);
    writeBigEndian(bytes.data() + 8, number.low, 8);
    return bytes;
}

QByteArray binaryInteger(const WideInteger &number)
{
    if (number.fitsSigned())
        return encodeInteger(static_cast<qint64>(number.low));
    return '\x14' + bits(number);
}

QByteArray binaryUid(const WideInteger &number)
{
    if (!number.fitsUnsigned())
        return '\x8f' + bits(number);
    const unsigned width = bytesFor(number.low);
    QByteArray bytes(1 + static_cast<qsizetype>(width), static_cast<char>(0x80 + width - 1));
    writeBigEndian(bytes.data() + 1, number.low, width);
    return bytes;
}

/// The shortest digits that give the same double, never by the locale.
QString digitsOf(double number)
{
    if (std::isnan(number))
        return QStringLiteral("nan");
    if (std::isinf(number))
        return number < 0 ? QStringLiteral("-infinity") : QStringLiteral("+infinity");
    if (number == 0 && std::signbit(number))
        return QStringLiteral("-0"); // Qt leaves the sign out
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

QString element(QStringView name, QStringView text)
{
    return u'<' + name.toString() + u'>' + text + u"</" + name + u'>';
}

QString xmlData(const QByteArray &data, const QString &line)
{
    constexpr qsizetype lineLength = 76;
    const QString letters = QString::fromLatin1(data.toBase64());
    if (line.isEmpty() || letters.size() <= lineLength)
        return element(u"data", letters);
    QString text;
    for (qsizetype at = 0; at < letters.size(); at += lineLength)
        text += line + letters.mid(at, lineLength);
    text += line;
    return element(u"data", text);
}

std::optional<QString> xmlDate(double seconds)
{
    const auto date = dateOfSeconds(seconds);
    if (!date || std::floor(seconds) != seconds)
        return {};
    return element(u"date", *date);
}

std::optional<QString> xmlUid(const WideInteger &number)
{
    if (!number.fitsUnsigned() || number.low > 0xffffffff)
        return {};
    return QString(u"<dict><key>CF$UID</key>" + element(u"integer", number.text()) + u"</dict>");
}

} // namespace

Scalar scalarOf(const BinaryReader &reader, const BinaryObject &object)
{
    Scalar scalar;
    switch (object.type()) {
    case BinaryType::Simple:
        scalar.type = object.marker == 0 ? ObjectType::Null : ObjectType::Boolean;
        scalar.boolean = object.marker == 0x09;
        break;
    case BinaryType::Integer:
        scalar.type = ObjectType::Integer;
        scalar.integer = WideInteger::ofBinary(reader.body(object));
        break;
    case BinaryType::Real:
        scalar.type = ObjectType::Real;
        scalar.real = decode(reader, object).value.real;
        break;
    case BinaryType::Date:
        scalar.type = ObjectType::Date;
        // A moment has no sign of its own: the sum with 0 takes it off.
        scalar.real = std::bit_cast<double>(readBigEndian(reader.body(object).data(), 8)) + 0.0;
        break;
    case BinaryType::Uid:
        scalar.type = ObjectType::Uid;
        scalar.integer = WideInteger::ofBinaryUid(reader.body(object));
        break;
    case BinaryType::Data:
        scalar.type = ObjectType::Data;
        scalar.data = reader.body(object).toByteArray();
        break;
    default:
        scalar.type = ObjectType::String;
        scalar.string = decode(reader, object).value.string;
        break;
    }
    return scalar;
}

Scalar scalarOf(XmlElement element, QByteArrayView text)
{
    Scalar scalar;
    switch (element) {
    case XmlElement::True:
    case XmlElement::False:
        scalar.type = ObjectType::Boolean;
        scalar.boolean = element == XmlElement::True;
        break;
    case XmlElement::Integer: {
        const auto number = WideInteger::ofXml(text);
        if (!number)
            return unclear(ObjectType::Integer, text);
        scalar.type = ObjectType::Integer;
        scalar.integer = *number;
        break;
    }
    case XmlElement::Real:
        scalar.type = ObjectType::Real;
        scalar.real = decodeXmlReal(text).value.real;
        break;
    case XmlElement::Date: {
        const auto seconds = secondsOfDate(text);
        if (!seconds)
            return unclear(ObjectType::Date, text);
        scalar.type = ObjectType::Date;
        scalar.real = *seconds;
        break;
    }
    case XmlElement::Data:
        return dataOf(text);
    default:
        scalar.type = ObjectType::String;
        scalar.string = textOfUtf8(text);
        break;
    }
    return scalar;
}

QByteArray identityOf(const Scalar &scalar)
{
    const QByteArray type(1, static_cast<char>(scalar.type));
    if (!scalar.unclear.isNull())
        return type + '?' + scalar.unclear;
    switch (scalar.type) {
    case ObjectType::Boolean:
        return type + (scalar.boolean ? '1' : '0');
    case ObjectType::Integer:
    case ObjectType::Uid:
        return type + '=' + bits(scalar.integer);
    case ObjectType::Real:
    case ObjectType::Date:
        return type + '=' + bits(scalar.real);
    case ObjectType::String:
        return type + utf16BigEndian(scalar.string);
    case ObjectType::Data:
        return type + '=' + scalar.data;
    default:
        return type;
    }
}

std::optional<QByteArray> binaryOf(const Scalar &scalar)
{
    if (!scalar.unclear.isNull())
        return {};
    switch (scalar.type) {
    case ObjectType::Boolean:
        return encodeBoolean(scalar.boolean);
    case ObjectType::Integer:
        return binaryInteger(scalar.integer);
    case ObjectType::Uid:
        return binaryUid(scalar.integer);
    case ObjectType::Real:
        return '\x23' + bits(scalar.real);
    case ObjectType::Date:
        return '\x33' + bits(scalar.real);
    case ObjectType::String:
        return encodeString(scalar.string);
    case ObjectType::Data:
        return encodeHeader(BinaryType::Data, static_cast<std::uint64_t>(scalar.data.size()))
            + scalar.data;
    default:
        return QByteArray(1, '\0');
    }
}

std::optional<QString> xmlOf(const Scalar &scalar, const QString &line)
{
    if (!scalar.unclear.isNull())
        return {};
    switch (scalar.type) {
    case ObjectType::Boolean:
        return scalar.boolean ? QStringLiteral("<true/>") : QStringLiteral("<false/>");
    case ObjectType::Integer:
        if (!scalar.integer.fitsSigned() && !scalar.integer.fitsUnsigned())
            return {};
        return element(u"integer", scalar.integer.text());
    case ObjectType::Uid:
        return xmlUid(scalar.integer);
    case ObjectType::Real:
        return element(u"real", digitsOf(scalar.real));
    case ObjectType::Date:
        return xmlDate(scalar.real);
    case ObjectType::String: {
        const auto text = escapeXml(scalar.string);
        return text ? std::optional(element(u"string", *text)) : std::nullopt;
    }
    case ObjectType::Data:
        return xmlData(scalar.data, line);
    default:
        return {};
    }
}

QString textOf(const Scalar &scalar)
{
    if (!scalar.unclear.isNull() && scalar.type != ObjectType::Data)
        return textOfUtf8(scalar.unclear).trimmed();
    switch (scalar.type) {
    case ObjectType::Boolean:
        return scalar.boolean ? QStringLiteral("true") : QStringLiteral("false");
    case ObjectType::Integer:
    case ObjectType::Uid:
        return scalar.integer.text();
    case ObjectType::Real: {
        const QString digits = digitsOf(scalar.real);
        const bool isPlain = std::all_of(digits.begin(), digits.end(),
                                         [](QChar c) { return c == u'-' || c.isDigit(); });
        return isPlain ? digits + u".0" : digits;
    }
    case ObjectType::Date:
        return dateOfSeconds(scalar.real)
            .value_or(digitsOf(scalar.real) + u" s after 2001-01-01T00:00:00Z");
    case ObjectType::String:
        return scalar.string.isNull() ? QStringLiteral("") : scalar.string;
    default:
        return {};
    }
}

} // namespace varnel::plist
