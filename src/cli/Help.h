#pragma once

#include "cli/Registry.h"

#include <QString>

namespace varnel::cli {

/// An exit status and what it means.
struct ExitStatusText {
    QString number;
    QString meaning;
};
[[nodiscard]] const QList<ExitStatusText> &exitStatusTexts();

/// The help of the whole program.
[[nodiscard]] QString programHelp(const Commands &commands);
/// The help of one command.
[[nodiscard]] QString commandHelp(const CommandInfo &info);
/// The help of the commands beneath one word.
[[nodiscard]] QString groupHelp(const QString &group, const Commands &commands);

} // namespace varnel::cli
