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

/// The main window on a home of the test's own, with no page in it yet, and what its pages are
/// given.
struct WindowFixture {
    static HomePorts withRunner(const HomePorts &ports, CommandRunner &runner)
    {
        return {ports.files,           ports.finderInfo, ports.folders,      ports.keptFolders,
                ports.standardFolders, ports.loginItems, ports.applications, runner};
    }

    TemporaryHome home;
    SharedObject shared;
    LinuxHomePorts linuxPorts {home.home(), Tools::supportFolderOf(home.home())};
    FakeCommandRunner runner;
    Workspace workspace {home.home(), withRunner(linuxPorts.ports(), runner)};
    PreferenceFiles files {workspace.files()};
    FakeDialogs dialogs;
    /// No system version is told; the files of the edited home are real, the session's are read.
    HostServices host {workspace, LinuxSystemDisk(home.path())};
    QStringList failing; ///< the interface descriptions that do not load
    KeptRun backup {workspace, [this] { return shared.backupFileName(); }};
    PageContext context {
        workspace, shared, files, dialogs, backup, &host.ports(), [this](const QString &name) {
            return !failing.contains(name);
        }};
    MainWindow window {home.home()};
};

} // namespace varnel::test
