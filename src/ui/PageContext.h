#pragma once

#include <QString>

#include <functional>

namespace varnel {

class Desktop;
class Dialogs;
class FileReader;
class KeptRun;
class PreferenceFiles;
class ProcessManager;
class ProcessTable;
class SessionLoginItems;
class SharedObject;
class SystemFacts;
class Workspace;

/// The machine and the session that the program runs in.
struct HostPorts {
    SystemFacts &facts;
    ProcessTable &processTable;
    ProcessManager &processManager;
    Desktop &desktop;
    FileReader &files;
    SessionLoginItems &loginItems;
    FileReader &systemDisk; ///< of the system whose version is told
    QString systemRoot = QStringLiteral("/"); ///< its folder; null: none is known
};

/// What the pages are given by the program that makes them. Everything named here outlives them.
struct PageContext {
    Workspace &workspace;
    SharedObject &shared;
    PreferenceFiles &files; ///< of the workspace's home
    Dialogs &dialogs;
    KeptRun &backup; ///< keeps what all pages change
    HostPorts *host = nullptr; ///< null where no page asks for it
    /// Whether the interface description of that name ("GeneralView") loads. Compiled-in
    /// descriptions always do; a page asks all the same, because a page that fails must leave the
    /// others standing.
    std::function<bool(const QString &interfaceName)> interfaceLoads = [](const QString &) {
        return true;
    };
    /// Called when other changes wait to be saved than before.
    std::function<void()> pendingChanged {};
    /// Goes to the page of the backup files, with that one selected; none where there is no such
    /// page.
    std::function<void(const QString &name)> showBackup {};
};

} // namespace varnel
