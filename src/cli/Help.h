#pragma once

#include "cli/Registry.h"

#include <QString>

namespace varnel::cli {

/// The help of the whole program.
[[nodiscard]] QString programHelp(const Commands &commands);
/// The help of one command.
[[nodiscard]] QString commandHelp(const CommandInfo &info);
/// The help of the commands beneath one word.
[[nodiscard]] QString groupHelp(const QString &group, const Commands &commands);

} // namespace varnel::cli
