#pragma once

#include "plist/BinaryEdit.h"

namespace varnel::plist {

/// Whether an edited file says what was asked and nothing else: the edited key or element has its
/// new value, object by object (or is gone), everything else in the containers on the way and in
/// all that hangs from them is the same, type by type and byte by byte, and what was one shared
/// object is still one. Linear in the size of the files, without recursion.
[[nodiscard]] bool differsOnlyBy(const BinaryEdit &edit, const BinaryReader &before,
                                 const BinaryReader &after);

} // namespace varnel::plist
