#include "plist/BinaryDecoding.h"

#include "plist/BigEndian.h"
#include "plist/BinaryEncoding.h"

#include <QHash>

#include <algorithm>
#include <bit>

namespace varnel::plist {

namespace {

QString decodeString(const BinaryReader &reader, const BinaryObject &object)
{
    const QByteArrayView body = reader.body(object);
    if (object.type() == BinaryType::Ascii)
        return QString::fromLatin1(body);
    // Unit by unit: a decoder would replace lone surrogates.
    QString text(static_cast<qsizetype>(object.count), Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        text[i] = QChar(static_cast<char16_t>(readBigEndian(body.data() + 2 * i, 2)));
    return text;
}

Decoded decodeInteger(QByteArrayView body)
{
    Decoded decoded;
    decoded.value.kind = Kind::Integer;
    const auto width = static_cast<unsigned>(std::min<qsizetype>(body.size(), 8));
    const char *low = body.data() + (body.size() - width);
    decoded.value.integer = static_cast<qint64>(readBigEndian(low, width));
    if (body.size() == 16) {
        const auto high = static_cast<qint64>(readBigEndian(body.data(), 8));
        decoded.exact = high == (decoded.value.integer < 0 ? -1 : 0);
    }
    return decoded;
}

double decodeReal(QByteArrayView body)
{
    if (body.size() == 4) {
        const auto bits = static_cast<std::uint32_t>(readBigEndian(body.data(), 4));
        return static_cast<double>(std::bit_cast<float>(bits));
    }
    return std::bit_cast<double>(readBigEndian(body.data(), 8));
}

/// Many elements of a container may share one long string; so must their decoded forms.
class SharedStrings {
public:
    explicit SharedStrings(const BinaryReader &reader) : reader(reader) { }

    const QString &text(std::uint32_t index)
    {
        const auto known = decoded.constFind(index);
        return known != decoded.constEnd()
            ? *known
            : *decoded.insert(index, decodeString(reader, reader.object(index)));
    }

private:
    const BinaryReader &reader;
    QHash<std::uint32_t, QString> decoded;
};

void decodeArray(const BinaryReader &reader, const BinaryObject &array, Value &value)
{
    value.kind = Kind::StringArray;
    SharedStrings strings(reader);
    for (std::uint32_t n = 0; n < array.count; ++n) {
        const std::uint32_t index = reader.child(array, n);
        if (reader.object(index).isString())
            value.strings.append(strings.text(index));
        else
            value.kind = Kind::Array;
    }
}

} // namespace

Decoded decode(const BinaryReader &reader, const BinaryObject &object)
{
    Decoded decoded;
    Value &value = decoded.value;
    value.kind = Kind::Other;
    switch (object.type()) {
    case BinaryType::Simple:
        if (object.marker != 0) {
            value.kind = Kind::Boolean;
            value.boolean = object.marker == 0x09;
        }
        break;
    case BinaryType::Integer:
        return decodeInteger(reader.body(object));
    case BinaryType::Real:
        value.kind = Kind::Real;
        value.real = decodeReal(reader.body(object));
        break;
    case BinaryType::Ascii:
    case BinaryType::Utf16:
        value.kind = Kind::String;
        value.string = decodeString(reader, object);
        break;
    case BinaryType::Data:
        value.kind = Kind::Data;
        value.data = reader.body(object).toByteArray();
        break;
    case BinaryType::Array:
        decodeArray(reader, object, value);
        break;
    case BinaryType::Dictionary:
        value.kind = Kind::Dictionary;
        break;
    default:
        break;
    }
    return decoded;
}

QStringList keysOf(const BinaryReader &reader, const BinaryObject &dictionary)
{
    QStringList keys;
    SharedStrings strings(reader);
    for (std::uint32_t n = 0; n < dictionary.count; ++n)
        keys.append(strings.text(reader.child(dictionary, n)));
    return keys;
}

std::vector<std::uint32_t> positionsOf(const BinaryReader &reader, const BinaryObject &dictionary,
                                       const QString &key)
{
    // Comparing bodies spares decoding every key; a writer may have chosen either form.
    const bool fitsBytes =
        std::all_of(key.begin(), key.end(), [](QChar c) { return c.unicode() < 0x100; });
    const QByteArray narrow = key.toLatin1();
    const QByteArray utf16 = utf16BigEndian(key);
    std::vector<std::uint32_t> positions;
    for (std::uint32_t n = 0; n < dictionary.count; ++n) {
        const BinaryObject candidate = reader.object(reader.child(dictionary, n));
        if (candidate.count != static_cast<std::uint32_t>(key.size()))
            continue;
        if (candidate.type() == BinaryType::Utf16 ? reader.body(candidate) == utf16
                                                  : fitsBytes && reader.body(candidate) == narrow)
            positions.push_back(n);
    }
    return positions;
}

} // namespace varnel::plist
