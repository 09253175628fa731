#pragma once

#include "cli/Registry.h"

namespace varnel::cli {

/// The script for zsh: what never changes is written into it, and the program is run only for what
/// a home or the machine holds.
[[nodiscard]] QString zshCompletion(const Commands &commands);

} // namespace varnel::cli
