#include "BinaryBuilder.h"

#include <bit>

namespace varnel::test {

namespace {

unsigned least(quint64 value)
{
    return value < 0x100 ? 1 : value < 0x10000 ? 2 : value < 0x100000000 ? 4 : 8;
}

QByteArray marker(unsigned type, unsigned low)
{
    return QByteArray(1, static_cast<char>(type << 4 | low));
}

} // namespace

QByteArray bigEndian(quint64 value, unsigned width)
{
    QByteArray bytes;
    for (unsigned i = width; i-- > 0;)
        bytes += static_cast<char>(i < 8 ? value >> (8 * i) & 0xff : 0);
    return bytes;
}

BinaryBuilder::Index BinaryBuilder::add(Object object)
{
    objects.append(std::move(object));
    return count() - 1;
}

BinaryBuilder::Index BinaryBuilder::raw(const QByteArray &object)
{
    return add({object, 0, {}});
}

BinaryBuilder::Index BinaryBuilder::boolean(bool value)
{
    return raw(value ? "\x09" : "\x08");
}

BinaryBuilder::Index BinaryBuilder::integer(unsigned width, quint64 value)
{
    return raw(marker(1, static_cast<unsigned>(std::countr_zero(width))) + bigEndian(value, width));
}

BinaryBuilder::Index BinaryBuilder::wideInteger(quint64 high, quint64 low)
{
    return raw(marker(1, 4) + bigEndian(high, 8) + bigEndian(low, 8));
}

BinaryBuilder::Index BinaryBuilder::real(double value)
{
    return raw(marker(2, 3) + bigEndian(std::bit_cast<quint64>(value), 8));
}

BinaryBuilder::Index BinaryBuilder::shortReal(float value)
{
    return raw(marker(2, 2) + bigEndian(std::bit_cast<quint32>(value), 4));
}

BinaryBuilder::Index BinaryBuilder::date(double secondsSince2001)
{
    return raw(marker(3, 3) + bigEndian(std::bit_cast<quint64>(secondsSince2001), 8));
}

BinaryBuilder::Index BinaryBuilder::data(const QByteArray &value)
{
    return raw(counted(4, value.size()) + value);
}

BinaryBuilder::Index BinaryBuilder::ascii(const QByteArray &value)
{
    return raw(counted(5, value.size()) + value);
}

BinaryBuilder::Index BinaryBuilder::utf16(const QString &value)
{
    QByteArray bytes = counted(6, value.size());
    for (const QChar c : value)
        bytes += bigEndian(c.unicode(), 2);
    return raw(bytes);
}

BinaryBuilder::Index BinaryBuilder::uid(unsigned width, quint64 value)
{
    return raw(marker(8, width - 1) + bigEndian(value, width));
}

BinaryBuilder::Index BinaryBuilder::dictionary(const QList<std::pair<Index, Index>> &entries)
{
    QList<Index> keys;
    QList<Index> values;
    for (const auto &[key, value] : entries) {
        keys.append(key);
        values.append(value);
    }
    return container(0xd, keys + values);
}

BinaryBuilder::Index BinaryBuilder::dictionaryOf(const QList<std::pair<QByteArray, Index>> &entries)
{
    QList<std::pair<Index, Index>> indices;
    for (const auto &[key, value] : entries)
        indices.append({ascii(key), value});
    return dictionary(indices);
}

BinaryBuilder::Index BinaryBuilder::container(unsigned type, const QList<Index> &references)
{
    return add({{}, type, references});
}

void BinaryBuilder::setReferences(Index object, const QList<Index> &references)
{
    objects[object].references = references;
}

QByteArray BinaryBuilder::counted(unsigned type, qsizetype count)
{
    if (count < 15)
        return marker(type, static_cast<unsigned>(count));
    const unsigned width = least(static_cast<quint64>(count));
    return marker(type, 15) + marker(1, static_cast<unsigned>(std::countr_zero(width)))
        + bigEndian(static_cast<quint64>(count), width);
}

QByteArray BinaryBuilder::build(Index root, unsigned referenceWidth, unsigned offsetWidth) const
{
    if (referenceWidth == 0)
        referenceWidth = least(count());
    QByteArray file = "bplist00";
    QList<qsizetype> offsets;
    for (const Object &object : objects) {
        offsets.append(file.size());
        if (object.type == 0) {
            file += object.bytes;
            continue;
        }
        const bool isDictionary = object.type == 0xd;
        file += counted(object.type, object.references.size() / (isDictionary ? 2 : 1));
        for (const Index reference : object.references)
            file += bigEndian(reference, referenceWidth);
    }
    const qsizetype table = file.size();
    if (offsetWidth == 0)
        offsetWidth = least(static_cast<quint64>(table));
    for (const qsizetype offset : offsets)
        file += bigEndian(static_cast<quint64>(offset), offsetWidth);
    return file + QByteArray(6, '\0') + static_cast<char>(offsetWidth)
        + static_cast<char>(referenceWidth) + bigEndian(count(), 8) + bigEndian(root, 8)
        + bigEndian(static_cast<quint64>(table), 8);
}

} // namespace varnel::test
