#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <variant>

namespace varnel::plist {

/// What stands under a key, as far as this program looks into it.
enum class Kind {
    Missing,
    Boolean,
    Integer,
    Real,
    String,
    Data,
    StringArray,
    Array,
    Dictionary,
    Other
};

/// A decoded value. Only the field of its kind is meaningful.
struct Value {
    Kind kind = Kind::Missing;
    bool boolean = false;
    /// The low 64 bits; wider integers are cut.
    qint64 integer = 0;
    double real = 0;
    QString string;
    QByteArray data;
    /// The elements of an array that holds strings only (Kind::StringArray; an empty array counts
    /// as one). For Kind::Array: those of its elements that are strings, the others skipped.
    QStringList strings;

    bool operator==(const Value &) const = default;
};

/// A value to be written: boolean, integer, string, or array of strings.
using NewValue = std::variant<bool, qint64, QString, QStringList>;

} // namespace varnel::plist
