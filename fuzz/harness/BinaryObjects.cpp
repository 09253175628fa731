#include "harness/Objects.h"
#include "harness/Require.h"

#include <QCryptographicHash>

#include <vector>

namespace varnel::fuzz {

namespace {

class Reader {
public:
    explicit Reader(const QByteArray &file) : file(file)
    {
        const auto trailer = static_cast<quint64>(file.size()) - 32;
        offsetWidth = number(trailer + 6, 1);
        referenceWidth = number(trailer + 7, 1);
        digests.resize(number(trailer + 8, 8));
        root = number(trailer + 16, 8);
        table = number(trailer + 24, 8);
    }

    QList<RootEntry> entries()
    {
        const Object top = object(root);
        QList<RootEntry> entries;
        for (quint64 n = 0; n < top.count; ++n) {
            const quint64 value = child(top, top.count + n);
            digest(value);
            entries.append({string(object(child(top, n))), digests[value]});
        }
        return entries;
    }

private:
    struct Object {
        unsigned type = 0;
        quint64 count = 0; ///< the low half of the marker, or the number in its place
        quint64 start = 0;
        quint64 body = 0;

        [[nodiscard]] bool isContainer() const { return type >= 0xa; }
        [[nodiscard]] quint64 children() const { return type == 0xd ? 2 * count : count; }
    };

    [[nodiscard]] quint64 number(quint64 at, quint64 width) const
    {
        require(width <= 8 && bytes(at, width).size() == static_cast<qsizetype>(width),
                "numbers lie in the file");
        quint64 value = 0;
        for (quint64 i = 0; i < width; ++i)
            value = value << 8 | static_cast<quint8>(file[static_cast<qsizetype>(at + i)]);
        return value;
    }

    [[nodiscard]] QByteArray bytes(quint64 at, quint64 length) const
    {
        const auto size = static_cast<quint64>(file.size());
        require(at <= size && length <= size - at, "objects lie in the file");
        return file.mid(static_cast<qsizetype>(at), static_cast<qsizetype>(length));
    }

    [[nodiscard]] Object object(quint64 index) const
    {
        require(index < digests.size(), "references name objects");
        const quint64 start = number(table + index * offsetWidth, offsetWidth);
        const quint64 marker = number(start, 1);
        Object object {static_cast<unsigned>(marker >> 4), marker & 15, start, start + 1};
        const bool isCounted = object.type == 4 || object.type == 5 || object.type == 6
            || object.type == 7 || object.isContainer();
        if (isCounted && object.count == 15) {
            const quint64 width = quint64 {1} << (number(start + 1, 1) & 15);
            object.count = number(start + 2, width);
            object.body = start + 2 + width;
        }
        return object;
    }

    [[nodiscard]] quint64 child(const Object &parent, quint64 n) const
    {
        return number(parent.body + n * referenceWidth, referenceWidth);
    }

    [[nodiscard]] QString string(const Object &object) const
    {
        if (object.type == 5)
            return QString::fromLatin1(bytes(object.body, object.count));
        if (object.type == 7)
            return QString::fromUtf8(bytes(object.body, object.count));
        require(object.type == 6, "keys are strings");
        const QByteArray units = bytes(object.body, 2 * object.count);
        QString text;
        for (qsizetype i = 0; i < units.size(); i += 2)
            text.append(QChar(static_cast<quint8>(units[i + 1]), static_cast<quint8>(units[i])));
        return text;
    }

    /// An integer in 16 bytes, however many the file has for it.
    [[nodiscard]] QByteArray integer(const Object &object) const
    {
        const QByteArray raw = bytes(object.body, quint64 {1} << object.count);
        const bool isNegative = raw.size() >= 8 && static_cast<signed char>(raw[0]) < 0;
        return QByteArray(16 - raw.size(), isNegative ? '\xff' : '\0') + raw;
    }

    [[nodiscard]] QByteArray scalar(const Object &object) const
    {
        switch (object.type) {
        case 0x1:
            return "integer" + integer(object);
        case 0x2:
        case 0x3:
            return bytes(object.start, 1 + (quint64 {1} << object.count));
        case 0x4:
            return "data" + bytes(object.body, object.count);
        case 0x8:
            return bytes(object.start, 2 + object.count);
        case 0x5:
        case 0x6:
        case 0x7: {
            const QString text = string(object);
            return "string"
                + QByteArray(reinterpret_cast<const char *>(text.utf16()), 2 * text.size());
        }
        default:
            return bytes(object.start, 1);
        }
    }

    /// Children first, each once, however often they are named and however deep they lie.
    void digest(quint64 first)
    {
        struct Visit {
            quint64 index;
            Object object;
            quint64 next;
        };
        std::vector<Visit> path {{first, object(first), 0}};
        while (!path.empty()) {
            Visit &visit = path.back();
            if (digests[visit.index].isEmpty() && visit.object.isContainer()
                && visit.next < visit.object.children()) {
                const quint64 index = child(visit.object, visit.next++);
                if (digests[index].isEmpty())
                    path.push_back({index, object(index), 0});
                continue;
            }
            if (digests[visit.index].isEmpty())
                digests[visit.index] = hashOf(visit.object);
            path.pop_back();
        }
    }

    [[nodiscard]] QByteArray hashOf(const Object &object) const
    {
        QCryptographicHash hash(QCryptographicHash::Sha1);
        if (!object.isContainer()) {
            hash.addData(scalar(object));
        } else {
            const QByteArray kind =
                QByteArray::number(object.type) + ' ' + QByteArray::number(object.count);
            hash.addData(kind);
            for (quint64 n = 0; n < object.children(); ++n)
                hash.addData(digests[child(object, n)]);
        }
        return hash.result();
    }

    const QByteArray &file;
    quint64 offsetWidth = 0;
    quint64 referenceWidth = 0;
    quint64 root = 0;
    quint64 table = 0;
    std::vector<QByteArray> digests;
};

} // namespace

QList<RootEntry> binaryObjects(const QByteArray &file)
{
    return Reader(file).entries();
}

} // namespace varnel::fuzz
