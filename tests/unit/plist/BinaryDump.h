#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace varnel::test {

/// A binary property list as text, by a reader that shares no code with the program. Scalars are
/// told by marker and bytes, so that nothing can hide.
class BinaryDump {
public:
    explicit BinaryDump(const QByteArray &file);

    /// The root's entries: key to content.
    [[nodiscard]] QMap<QString, QByteArray> root() const;

    [[nodiscard]] quint64 objectCount() const { return objects; }
    [[nodiscard]] unsigned referenceWidth() const { return references; }
    [[nodiscard]] unsigned offsetWidth() const { return offsets; }

    /// The object under a key of the root; two keys that share one object tell the same.
    [[nodiscard]] quint64 objectOf(const QString &key) const;

private:
    [[nodiscard]] quint64 number(quint64 at, unsigned width) const;
    [[nodiscard]] QByteArray dump(quint64 object) const;
    [[nodiscard]] QString string(quint64 object) const;
    struct Place {
        unsigned type;
        quint64 count;
        quint64 start;
        quint64 body;
        quint64 end;
    };
    [[nodiscard]] Place place(quint64 object) const;

    QByteArray file;
    unsigned offsets;
    unsigned references;
    quint64 objects;
    quint64 top;
    quint64 table;
};

} // namespace varnel::test
