#pragma once

#include "base/Result.h"
#include "plist/Object.h"

#include <QByteArray>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace varnel::plist {

/// One property-list file with a dictionary at its root, held as its bytes.
///
/// Edits splice (XML) or copy the object graph (binary); everything that the edit does not name
/// stays as it is, also what this class has no type for. Numbers are read and written without the
/// locale.
class PropertyList {
public:
    /// Takes the bytes of a file. Unloadable unless they are a whole, valid property list (every
    /// object in range, every reference valid, no cycle; XML well-formed) with a dictionary at the
    /// root.
    static Result<PropertyList> open(QByteArray bytes);

    /// A dictionary without keys, as XML.
    static PropertyList empty();

    PropertyList(PropertyList &&) noexcept;
    PropertyList &operator=(PropertyList &&) noexcept;
    ~PropertyList();

    /// The same list once more; an edit of one leaves the other as it is. Shares the bytes, and
    /// checks nothing again.
    [[nodiscard]] PropertyList copy() const;

    [[nodiscard]] Format format() const;

    /// The value at a path of dictionary keys from the root; Kind::Missing where a key is absent or
    /// a step is no dictionary.
    [[nodiscard]] Value value(const QStringList &path) const;

    /// The value as "%@" prints it: a string as it is, a number in digits, a boolean as 1 or 0;
    /// null for anything else.
    [[nodiscard]] QString text(const QStringList &path) const;

    /// The keys of the dictionary at a path, in the file's order, a key that stands there several
    /// times as often; none when there is no dictionary.
    [[nodiscard]] std::optional<QStringList> keys(const QStringList &path) const;

    /// The whole object at a path; of an empty path the root. None where a key is absent or a step
    /// is no dictionary. Of a key that stands there several times the last, here as everywhere.
    [[nodiscard]] std::optional<Object> object(const QStringList &path) const;

    /// Where the last key of a path stands; none where object() has none, and for the root.
    [[nodiscard]] std::optional<Place> place(const QStringList &path) const;

    /// How many elements the array at a path has; 0 where none is.
    [[nodiscard]] qsizetype count(const QStringList &path) const;

    /// One element of the array at a path, or all of them, which takes but one pass.
    [[nodiscard]] std::optional<Object> object(const QStringList &path, qsizetype index) const;
    [[nodiscard]] std::optional<Place> place(const QStringList &path, qsizetype index) const;
    [[nodiscard]] std::vector<Object> elements(const QStringList &path) const;

    /// Sets the last key of the path. The dictionaries on the way must exist (NotFound otherwise).
    /// A value that is already there with the same type and content leaves the bytes as they are.
    /// The new bytes are read back before they replace the old ones; when they do not say what was
    /// asked, or any other key of the root has changed, the list stays as it was and the result is
    /// Failed.
    Result<void> set(const QStringList &path, const NewValue &value);

    /// Removes the last key of the path. A key that is not there leaves the bytes as they are.
    Result<void> remove(const QStringList &path);

    /// Makes the last key of the path hold just this object, as set() does with its values. An
    /// object from a list of the same format stands there again byte for byte, in XML in the file's
    /// own encoding; one from the other format is converted type by type, and where the format
    /// can't hold it the result is Invalid. An object of the same format in the same words, or of
    /// the other format that says the same in the same order, leaves the bytes as they are.
    ///
    /// A key that is absent comes to the place, at the end where that names a key that is gone, or
    /// where there is no place. What remove() took out comes back byte for byte in XML when it is
    /// put to the place where it stood.
    Result<void> put(const QStringList &path, const Object &object,
                     const std::optional<Place> &place = {});

    /// Takes an element out of the array at a path. One that is not there leaves the bytes as they
    /// are.
    Result<void> removeElement(const QStringList &path, qsizetype index);

    /// Puts an object into the array at a path, before the element that has the index now, or at
    /// the end where none has; NotFound where no array is. The rest is as with put().
    Result<void> insertElement(const QStringList &path, qsizetype index, const Object &object,
                               const std::optional<Place> &place = {});

    /// The file as it is now.
    [[nodiscard]] const QByteArray &bytes() const;

private:
    class Backend;
    class BinaryBackend;
    class XmlBackend;
    explicit PropertyList(std::unique_ptr<Backend> backend);
    std::unique_ptr<Backend> backend;
};

} // namespace varnel::plist
