#pragma once

#include "cli/Completes.h"

#include <QString>
#include <QStringList>

namespace varnel::cli {

/// In single quotes, for bash and zsh.
[[nodiscard]] QString quoted(const QStringList &words);
/// In single quotes, for fish, which knows backslashes in them.
[[nodiscard]] QString quotedForFish(const QString &text);
[[nodiscard]] QString quotedForFish(const QStringList &words);

/// What the scripts call it: "setting", "login-item"; null for Nothing and Words.
[[nodiscard]] QString scriptName(Completes completes);

} // namespace varnel::cli
