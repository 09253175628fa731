#pragma once

#include "plist/BinaryReader.h"
#include "plist/Decoded.h"

#include <vector>

namespace varnel::plist {

/// The value of an object. Integers of 1, 2 and 4 bytes have no sign; those of 8 and 16 have.
[[nodiscard]] Decoded decode(const BinaryReader &reader, const BinaryObject &object);

/// The keys of a dictionary, in order.
[[nodiscard]] QStringList keysOf(const BinaryReader &reader, const BinaryObject &dictionary);

/// The positions at which a key stands in a dictionary, in order. Readers differ in which of
/// several they take; this program reads the last.
[[nodiscard]] std::vector<std::uint32_t>
positionsOf(const BinaryReader &reader, const BinaryObject &dictionary, const QString &key);

} // namespace varnel::plist
