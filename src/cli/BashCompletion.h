#pragma once

#include "cli/Registry.h"

namespace varnel::cli {

/// The script for bash: what never changes is written into it, and the program is run only for what
/// a home or the machine holds.
[[nodiscard]] QString bashCompletion(const Commands &commands);

} // namespace varnel::cli
