#pragma once

#include "base/Result.h"
#include "plist/Value.h"

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace varnel::plist {

enum class Format { Binary, Xml };

/// All types of object that either format has.
enum class ObjectType {
    Null,
    Boolean,
    Integer,
    Real,
    Date,
    String,
    Data,
    Uid,
    Array,
    OrderedSet,
    Set,
    Dictionary
};

/// "string", "dictionary": how a person calls it.
[[nodiscard]] QString nameOf(ObjectType type);

/// One object of a property list, whole, with all that hangs from it, held as the bytes that say
/// it: from XML the source text of its element, as UTF-8; from a binary list its objects, with
/// their widths and what they share. What was never decoded can't change on its way from one
/// version of a file to another.
class Object {
public:
    /// What toBytes() gave. Unloadable unless they are just one whole, valid object, read as
    /// strictly as a file.
    static Result<Object> fromBytes(const QByteArray &bytes);

    /// A property list with just this object: the element alone, or a binary list with the object
    /// at its root.
    [[nodiscard]] const QByteArray &toBytes() const { return source; }

    [[nodiscard]] Format format() const;

    /// In XML a dictionary that a Mac reads as UID is one.
    [[nodiscard]] ObjectType type() const;

    /// Of an array or set the elements, of a dictionary the entries, of data the bytes; else 0.
    [[nodiscard]] qsizetype count() const;

    /// What a scalar says: the string; digits, of a real never without a point, an exponent or a
    /// name; true or false; a date as 2001-01-01T00:00:00Z, with its fraction; a UID's number. Null
    /// for anything else.
    [[nodiscard]] QString text() const;

    /// As PropertyList::value, from this object on; of an empty path the object itself.
    [[nodiscard]] Value value(const QStringList &keyPath) const;

    /// The bytes of the data at a path of keys; none where no data stands.
    [[nodiscard]] std::optional<QByteArray> data(const QStringList &keyPath) const;

    /// Whether both say the same, type by type, whatever format and widths each has. The order of
    /// a dictionary's keys does not count, that of elements does. Linear in the size of both.
    [[nodiscard]] bool saysTheSameAs(const Object &other) const;

    /// The same in the same words: the same bytes.
    bool operator==(const Object &) const = default;

private:
    friend Object objectOfFragment(QByteArray source);
    explicit Object(QByteArray source) : source(std::move(source)) { }

    QByteArray source;
};

/// For the parts of this folder that know their bytes to be valid: a fragment of a binary list
/// (fragmentOf), or an element's text.
[[nodiscard]] Object objectOfFragment(QByteArray source);

/// Where something stands among its neighbours, and what is written around it, so that it can be
/// put back there. A place tells nothing that a file can't be without: where the neighbour is gone,
/// or text is not XML, the rest serves.
struct Place {
    /// The key before it; none where it is the first. Of no meaning for an element.
    std::optional<QString> after;
    /// In XML: all that stands between the neighbour before it, or the start tag around it, and its
    /// own key or, in an array, itself.
    std::optional<QString> before;
    /// In XML: its key's tags and all up to the value; empty for an element.
    QString key;
    /// Among all keys, or elements: what comes first goes back first. It is not put back by this.
    std::uint32_t position = 0;

    bool operator==(const Place &) const = default;
};

} // namespace varnel::plist
