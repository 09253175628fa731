#pragma once

#include "cli/Registry.h"

namespace varnel::cli {

// The commands, family by family, each in the order in which the help lists it. A family stands in
// the source that is named after it, or after its only command.

[[nodiscard]] Commands readingCommands();
[[nodiscard]] Commands savingCommands();
[[nodiscard]] Commands searchCommands(); ///< with those that read
[[nodiscard]] Commands profileCommands();
[[nodiscard]] Commands exportCommands();
[[nodiscard]] Commands doctorCommands();
[[nodiscard]] Commands loginItemsCommands();
// About no home:
[[nodiscard]] Commands systemCommands();
[[nodiscard]] Commands processCommands();
[[nodiscard]] Commands backupsCommands();
[[nodiscard]] Commands completionCommands();

} // namespace varnel::cli
