#pragma once

#include "base/HomeFolder.h"

#include <QString>
#include <QStringList>

namespace varnel {

/// Where a session looks for what starts at login, and for what its entries speak of.
struct AutostartFolders {
    QString user; ///< the user's autostart folder, inside the home or where XDG_CONFIG_HOME says
    QStringList system; ///< system-wide autostart folders, the most important first
    QStringList applications; ///< installed desktop entries, the most important first
    QStringList programs; ///< the folders of PATH; empty: commands are not looked up
    QStringList desktops; ///< the names of the running desktop
    /// Whether OnlyShowIn, NotShowIn and TryExec are obeyed: they speak of this machine's session.
    bool ofThisSession = true;
    HomeFolder home {}; ///< by which its folders are reached
};

/// The one of the two below that the home asks for.
[[nodiscard]] AutostartFolders autostartFoldersOf(const HomeFolder &home);

/// One's own home: what the environment says, by the rules of the desktop base-directory standard.
[[nodiscard]] AutostartFolders autostartFoldersOfSession(const HomeFolder &home);

/// A home at rest: its own folders alone.
[[nodiscard]] AutostartFolders autostartFoldersOfHome(const HomeFolder &home);

} // namespace varnel
