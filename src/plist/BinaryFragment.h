#pragma once

#include "plist/BinaryReader.h"
#include "plist/Value.h"

#include <QByteArray>

namespace varnel::plist {

/// An object and all that hangs from it, as a property list by itself: scalars byte for byte, what
/// was shared still shared, nothing else. The object is number 0, and the others follow in the
/// order in which one meets them level by level; so two objects have the same fragment just when
/// nobody who follows their references can tell them apart.
///
/// Linear in what the object holds, without recursion. Empty where it would not fit a readable
/// file.
[[nodiscard]] QByteArray fragmentOf(const BinaryReader &reader, std::uint32_t index);

/// A new value in the same form.
[[nodiscard]] QByteArray fragmentOf(const NewValue &value);

/// Reads a fragment, which must outlive the reader.
[[nodiscard]] BinaryReader readerOf(const QByteArray &fragment);

} // namespace varnel::plist
