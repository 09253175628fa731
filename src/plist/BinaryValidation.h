#pragma once

#include "plist/BinaryReader.h"

namespace varnel::plist {

/// Whether every object lies in its range, every reference names an object, every dictionary key is
/// a string, and no container holds itself, however deep. Objects that nothing refers to count too.
///
/// Together the objects may take no more bytes than there are: objects that overlap could otherwise
/// name the same references over and over, and work would grow with the square of the file.
/// Needs time linear to the file, and memory only when containers stand before their parents.
[[nodiscard]] bool isValid(const BinaryReader &reader);

} // namespace varnel::plist
