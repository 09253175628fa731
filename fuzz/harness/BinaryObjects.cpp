#include "harness/BinaryFile.h"
#include "harness/Objects.h"

#include <QCryptographicHash>

#include <vector>

namespace varnel::fuzz {

namespace {

using Object = BinaryFile::Object;

class Digests {
public:
    explicit Digests(const QByteArray &bytes) : file(bytes), digests(file.count()) { }

    QList<RootEntry> entries()
    {
        const Object top = file.object(file.root());
        QList<RootEntry> entries;
        for (quint64 n = 0; n < top.count; ++n) {
            const quint64 value = file.child(top, top.count + n);
            digest(value);
            entries.append({file.string(file.object(file.child(top, n))), digests[value]});
        }
        return entries;
    }

private:
    /// An integer in 16 bytes, however many the file has for it.
    [[nodiscard]] QByteArray integer(const Object &object) const
    {
        const QByteArray raw = file.bytes(object.body, quint64 {1} << object.count);
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
            return file.bytes(object.start, 1 + (quint64 {1} << object.count));
        case 0x4:
            return "data" + file.bytes(object.body, object.count);
        case 0x8:
            return file.bytes(object.start, 2 + object.count);
        case 0x5:
        case 0x6: {
            const QString text = file.string(object);
            return "string"
                + QByteArray(reinterpret_cast<const char *>(text.utf16()), 2 * text.size());
        }
        default:
            return file.bytes(object.start, 1);
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
        std::vector<Visit> path {{first, file.object(first), 0}};
        while (!path.empty()) {
            Visit &visit = path.back();
            if (digests[visit.index].isEmpty() && visit.next < visit.object.children()) {
                const quint64 index = file.child(visit.object, visit.next++);
                if (digests[index].isEmpty())
                    path.push_back({index, file.object(index), 0});
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
                hash.addData(digests[file.child(object, n)]);
        }
        return hash.result();
    }

    BinaryFile file;
    std::vector<QByteArray> digests;
};

} // namespace

QList<RootEntry> binaryObjects(const QByteArray &file)
{
    return Digests(file).entries();
}

} // namespace varnel::fuzz
