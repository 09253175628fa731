#pragma once

#include "cli/Registry.h"

namespace varnel::cli {

/// The script for fish: what never changes is written into it, and the program is run only for what
/// a home or the machine holds.
[[nodiscard]] QString fishCompletion(const Commands &commands);

} // namespace varnel::cli
