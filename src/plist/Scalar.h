#pragma once

#include "plist/BinaryReader.h"
#include "plist/Object.h"
#include "plist/WideInteger.h"
#include "plist/XmlGrammar.h"

namespace varnel::plist {

/// What an object says that is no container, whatever the format. Only what belongs to the type is
/// meaningful.
struct Scalar {
    ObjectType type = ObjectType::Null;
    bool boolean = false;
    WideInteger integer; ///< of a UID too
    double real = 0; ///< of a date: seconds since the start of 2001
    QString string;
    QByteArray data;
    /// The text of an XML date that names no moment, of data that are not base64, of an integer
    /// that needs more than 128 bits: readers differ in what they make of it. Else null.
    QByteArray unclear;
};

[[nodiscard]] Scalar scalarOf(const BinaryReader &reader, const BinaryObject &object);
/// An element that was found valid, and its text.
[[nodiscard]] Scalar scalarOf(XmlElement element, QByteArrayView text);

/// Bytes that two scalars share just when they say the same.
[[nodiscard]] QByteArray identityOf(const Scalar &scalar);

/// The binary object; nothing for what is unclear.
[[nodiscard]] std::optional<QByteArray> binaryOf(const Scalar &scalar);

/// The element. Long data stand on lines of their own where `line`, a line break and an
/// indentation, is not empty. Nothing where XML, as Macs read it, can't hold it: a null, an integer
/// of more than 64 bits, a date with a fraction of a second, a text with most control characters.
[[nodiscard]] std::optional<QString> xmlOf(const Scalar &scalar, const QString &line);

/// As Object::text().
[[nodiscard]] QString textOf(const Scalar &scalar);

} // namespace varnel::plist
