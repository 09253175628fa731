#pragma once

#include "plist/Value.h"

namespace varnel::plist {

/// A value as it was read, and whether the reading lost anything.
struct Decoded {
    Value value;
    /// False for an integer that was cut to 64 bits.
    bool exact = true;
};

/// Whether the file already says just this: the same type and the same content, nothing cut.
[[nodiscard]] bool says(const Decoded &read, const NewValue &wanted);

} // namespace varnel::plist
