#pragma once

#include "base/Result.h"
#include "plist/Object.h"

namespace varnel::plist {

/// The object as objects of a binary list. Invalid where that can't hold it: an integer of more
/// than 128 bits, a date that names no moment, data that are not base64.
[[nodiscard]] Result<Object> asBinary(const Object &object);

/// The object as an element. What stands in a container stands on lines of its own where `line`,
/// the line break and the indentation of the object itself, is not empty. Invalid where XML, as
/// Macs read it, can't hold the object, and where the markup would get endless, as what is shared
/// must be written again each time.
[[nodiscard]] Result<Object> asXml(const Object &object, const QString &line,
                                   const QString &indentation);

} // namespace varnel::plist
