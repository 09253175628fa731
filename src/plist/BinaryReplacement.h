#pragma once

#include "plist/BinaryEdit.h"

namespace varnel::plist {

/// The file with one object replaced by another and every other byte as it was: objects behind it
/// move, and with them their offsets. Read back, all of it.
///
/// Nothing where an edit takes more than that: for a key that is added, removed, stands several
/// times or lies deeper than the root; for a value that is a container, that something else in the
/// file refers to as well or shares bytes with; where an offset would need more bytes.
[[nodiscard]] std::optional<QByteArray> replacedInPlace(const BinaryReader &reader,
                                                        const BinaryEdit &edit);

} // namespace varnel::plist
