#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace varnel {

/// One option of the desktop program, for its help and its manual page.
struct StartOption {
    QString name; ///< without the dashes
    QString valueName; ///< null for a switch
    QString help; ///< no capital, no full stop
};

/// In the order in which the help lists them.
[[nodiscard]] const QList<StartOption> &startOptionList();

/// What the command line asks of the desktop program.
struct StartOptions {
    std::optional<QString> home; ///< as typed
    bool newHome = false; ///< make the standard folders of that home
    std::optional<QString> systemRoot; ///< as typed: whose system version is told
    QString answer; ///< a text to print in place of opening the window
    QString mistake; ///< what is wrong with the command line
};

/// The arguments begin with the program's name. Needs no application object.
[[nodiscard]] StartOptions parseStartOptions(const QStringList &arguments);

} // namespace varnel
