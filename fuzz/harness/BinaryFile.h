#pragma once

#include <QByteArray>
#include <QString>

namespace varnel::fuzz {

/// A binary property list, object by object: the second reader of the format, sharing no code with
/// the program's. Whatever it meets out of its range breaks a promise, for it is given files that
/// the program takes.
class BinaryFile {
public:
    /// The bytes outlive this object.
    explicit BinaryFile(const QByteArray &file);

    struct Object {
        unsigned type = 0; ///< the marker's high half
        quint64 count = 0; ///< the marker's low half, or the number in its place
        quint64 start = 0;
        quint64 body = 0;

        [[nodiscard]] bool isContainer() const { return type >= 0xa; }
        [[nodiscard]] bool isString() const { return type == 5 || type == 6; }
        [[nodiscard]] quint64 children() const;
    };

    [[nodiscard]] quint64 count() const { return objectCount; }
    [[nodiscard]] quint64 root() const { return rootIndex; }
    [[nodiscard]] Object object(quint64 index) const;
    /// A dictionary's keys come first, then its values.
    [[nodiscard]] quint64 child(const Object &parent, quint64 n) const;
    [[nodiscard]] QString string(const Object &object) const;
    [[nodiscard]] QByteArray bytes(quint64 at, quint64 length) const;

private:
    [[nodiscard]] quint64 number(quint64 at, quint64 width) const;

    const QByteArray &file;
    quint64 offsetWidth = 0;
    quint64 referenceWidth = 0;
    quint64 objectCount = 0;
    quint64 rootIndex = 0;
    quint64 table = 0;
};

} // namespace varnel::fuzz
