#pragma once

#include "backup/KeptRun.h"
#include "home/Workspace.h"
#include "platform/linux/LinuxHomePorts.h"
#include "settings/PreferenceFiles.h"
#include "shell/SharedObject.h"
#include "shell/views/HostServices.h"
#include "shell/views/MainWindow.h"
#include "support/FakeCommandRunner.h"
#include "support/gui/FakeDialogs.h"
#include "support/TemporaryHome.h"
#include "ui/PageContext.h"

#include <QStringList>

namespace varnel::test {

/// The main window on a home, with no page in it yet, and what its pages are given.
struct WindowOnHome {
    explicit WindowOnHome(const HomeFolder &folder)
        : linuxPorts(folder, Tools::supportFolderOf(folder)),
          workspace(folder, withRunner(linuxPorts.ports(), runner)),
          host(workspace, LinuxSystemDisk(folder.path)), window(folder)
    {
    }
    WindowOnHome(const WindowOnHome &) = delete;
    WindowOnHome &operator=(const WindowOnHome &) = delete;

    static HomePorts withRunner(const HomePorts &ports, CommandRunner &runner)
    {
        return {ports.files,           ports.finderInfo, ports.folders,      ports.keptFolders,
                ports.standardFolders, ports.loginItems, ports.applications, runner};
    }

    SharedObject shared;
    LinuxHomePorts linuxPorts;
    FakeCommandRunner runner;
    Workspace workspace;
    PreferenceFiles files {workspace.files()};
    FakeDialogs dialogs;
    /// The home is the disk of its system, too: no version is told unless a test puts one there.
    HostServices host;
    QStringList failing; ///< the interface descriptions that do not load
    KeptRun backup {workspace, [this] { return shared.backupFileName(); }};
    PageContext context {
        workspace, shared, files, dialogs, backup, &host.ports(), [this](const QString &name) {
            return !failing.contains(name);
        }};
    MainWindow window;
};

struct HomeOfAWindow {
    TemporaryHome home;
};

/// That window on a home of the test's own.
struct WindowFixture : HomeOfAWindow, WindowOnHome {
    WindowFixture() : WindowOnHome(HomeOfAWindow::home.home()) { }
};

} // namespace varnel::test
