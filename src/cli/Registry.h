#pragma once

#include "cli/Command.h"

#include <memory>
#include <vector>

namespace varnel::cli {

using Commands = std::vector<std::unique_ptr<const Command>>;

/// Every command, in the order in which the help lists them.
[[nodiscard]] Commands makeCommands();

/// The options that every command takes, before or after its name.
[[nodiscard]] const QList<OptionInfo> &commonOptions();

} // namespace varnel::cli
