#pragma once

#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFinderInfo.h"
#include "platform/linux/LinuxFolderMaker.h"
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
    TemporaryHome home;
    SharedObject shared;
    LinuxFileStore store {home.home()};
    PreferenceFiles files {store};
    LinuxFinderInfo finderInfo {home.home()};
    LinuxFolderMaker folders;
    FakeCommandRunner runner;
    FakeDialogs dialogs;
    /// No system version is told; the files of the edited home are real, the session's are read.
    HostServices host {home.home(), home.path(), store, folders};
    QStringList failing; ///< the interface descriptions that do not load
    PageContext context {home.home(),
                         shared,
                         files,
                         finderInfo,
                         folders,
                         runner,
                         dialogs,
                         &host.ports(),
                         [this](const QString &name) { return !failing.contains(name); }};
    MainWindow window {home.home()};
};

} // namespace varnel::test
