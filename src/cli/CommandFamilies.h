#pragma once

#include "cli/Registry.h"

namespace varnel::cli {

// The commands, family by family, each in the order in which the help lists it. A family stands in
// the source that is named after it.

[[nodiscard]] Commands profileCommands();
[[nodiscard]] Commands doctorCommands();
[[nodiscard]] Commands loginItemsCommands();
/// About no home: the running applications.
[[nodiscard]] Commands processCommands();
[[nodiscard]] Commands backupsCommands();

} // namespace varnel::cli
