#include "BinaryDump.h"

#include <stdexcept>

namespace varnel::test {

BinaryDump::BinaryDump(const QByteArray &file) : file(file)
{
    const auto trailer = static_cast<quint64>(file.size()) - 32;
    offsets = static_cast<unsigned>(number(trailer + 6, 1));
    references = static_cast<unsigned>(number(trailer + 7, 1));
    objects = number(trailer + 8, 8);
    top = number(trailer + 16, 8);
    table = number(trailer + 24, 8);
}

quint64 BinaryDump::number(quint64 at, unsigned width) const
{
    const QByteArray hex = file.mid(static_cast<qsizetype>(at), width).toHex();
    return hex.toULongLong(nullptr, 16);
}

BinaryDump::Place BinaryDump::place(quint64 object) const
{
    if (object >= objects)
        throw std::out_of_range("object");
    Place place {};
    place.start = number(table + object * offsets, offsets);
    const auto marker = static_cast<unsigned>(number(place.start, 1));
    place.type = marker >> 4;
    place.count = marker & 15;
    place.body = place.start + 1;
    const bool isCounted = place.type >= 4 && place.type != 8;
    if (isCounted && place.count == 15) {
        const unsigned width = 1U << (number(place.body, 1) & 15);
        place.count = number(place.body + 1, width);
        place.body += 1 + width;
    }
    quint64 unit = 1;
    if (place.type == 6)
        unit = 2;
    else if (place.type >= 0xa)
        unit = place.type == 0xd ? 2 * references : references;
    quint64 length = place.count * unit;
    if (place.type == 0)
        length = 0;
    else if (place.type < 4)
        length = 1ULL << place.count;
    else if (place.type == 8)
        length = place.count + 1;
    place.end = place.body + length;
    if (place.end > table)
        throw std::out_of_range("object's end");
    return place;
}

QString BinaryDump::string(quint64 object) const
{
    const Place it = place(object);
    QString text;
    const unsigned width = it.type == 6 ? 2 : 1;
    for (quint64 at = it.body; at < it.end; at += width)
        text += QChar(static_cast<char16_t>(number(at, width)));
    return text;
}

QByteArray BinaryDump::dump(quint64 object) const
{
    const Place it = place(object);
    if (it.type < 0xa)
        return file.mid(static_cast<qsizetype>(it.start), static_cast<qsizetype>(it.end - it.start))
            .toHex();
    QByteArray text = QByteArray::number(it.type, 16) + '(';
    for (quint64 at = it.body; at < it.end; at += references)
        text += dump(number(at, references)) + ',';
    return text + ')';
}

QMap<QString, QByteArray> BinaryDump::root() const
{
    const Place it = place(top);
    QMap<QString, QByteArray> entries;
    for (quint64 i = 0; i < it.count; ++i) {
        const quint64 key = number(it.body + i * references, references);
        const quint64 value = number(it.body + (it.count + i) * references, references);
        entries.insert(string(key), dump(value));
    }
    return entries;
}

quint64 BinaryDump::objectOf(const QString &key) const
{
    const Place it = place(top);
    for (quint64 i = 0; i < it.count; ++i) {
        if (string(number(it.body + i * references, references)) == key)
            return number(it.body + (it.count + i) * references, references);
    }
    throw std::out_of_range("key");
}

} // namespace varnel::test
