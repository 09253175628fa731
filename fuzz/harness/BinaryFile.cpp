#include "harness/BinaryFile.h"

#include "harness/Require.h"

namespace varnel::fuzz {

BinaryFile::BinaryFile(const QByteArray &file) : file(file)
{
    require(file.size() > 40, "a file has a header and a trailer");
    const auto trailer = static_cast<quint64>(file.size()) - 32;
    offsetWidth = number(trailer + 6, 1);
    referenceWidth = number(trailer + 7, 1);
    objectCount = number(trailer + 8, 8);
    rootIndex = number(trailer + 16, 8);
    table = number(trailer + 24, 8);
}

quint64 BinaryFile::Object::children() const
{
    if (!isContainer())
        return 0;
    return type == 0xd ? 2 * count : count;
}

BinaryFile::Object BinaryFile::object(quint64 index) const
{
    require(index < objectCount, "references name objects");
    const quint64 start = number(table + index * offsetWidth, offsetWidth);
    const quint64 marker = number(start, 1);
    Object object {static_cast<unsigned>(marker >> 4), marker & 15, start, start + 1};
    const bool isCounted = object.type == 4 || object.isString() || object.isContainer();
    if (isCounted && object.count == 15) {
        const quint64 width = quint64 {1} << (number(start + 1, 1) & 15);
        object.count = number(start + 2, width);
        object.body = start + 2 + width;
    }
    return object;
}

quint64 BinaryFile::child(const Object &parent, quint64 n) const
{
    return number(parent.body + n * referenceWidth, referenceWidth);
}

QString BinaryFile::string(const Object &object) const
{
    if (object.type == 5)
        return QString::fromLatin1(bytes(object.body, object.count));
    require(object.type == 6, "keys are strings");
    const QByteArray units = bytes(object.body, 2 * object.count);
    QString text;
    for (qsizetype i = 0; i < units.size(); i += 2)
        text.append(QChar(static_cast<quint8>(units[i + 1]), static_cast<quint8>(units[i])));
    return text;
}

QByteArray BinaryFile::bytes(quint64 at, quint64 length) const
{
    const auto size = static_cast<quint64>(file.size());
    require(at <= size && length <= size - at, "objects lie in the file");
    return file.mid(static_cast<qsizetype>(at), static_cast<qsizetype>(length));
}

quint64 BinaryFile::number(quint64 at, quint64 width) const
{
    const auto size = static_cast<quint64>(file.size());
    require(width <= 8 && at <= size && width <= size - at, "numbers lie in the file");
    quint64 value = 0;
    for (quint64 i = 0; i < width; ++i)
        value = value << 8 | static_cast<quint8>(file[static_cast<qsizetype>(at + i)]);
    return value;
}

} // namespace varnel::fuzz
