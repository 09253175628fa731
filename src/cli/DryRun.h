#pragma once

#include "cli/Command.h"
#include "cli/HomeSession.h"
#include "cli/Request.h"

namespace varnel::cli {

/// "--dry-run", the same for every command that writes: it tells what it would change and touches
/// nothing, not even a folder. As JSON, "dryRun" is true and the lists tell what would be done.
[[nodiscard]] OptionInfo dryRunOption();

[[nodiscard]] bool isDryRun(const Request &request);

} // namespace varnel::cli
