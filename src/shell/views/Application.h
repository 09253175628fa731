#pragma once

#include "backup/KeptRun.h"
#include "platform/linux/LinuxHomePorts.h"
#include "platform/linux/TerminationSignals.h"
#include "settings/PreferenceFiles.h"
#include "shell/StartOptions.h"
#include "shell/views/HostServices.h"
#include "shell/views/MainWindow.h"
#include "shell/views/QuitFlow.h"
#include "shell/views/Varnel.h"
#include "shell/views/VarnelAppDelegate.h"
#include "shell/views/WindowSize.h"
#include "ui/QtDialogs.h"

#include <optional>

namespace varnel {

/// The desktop program on one home folder: puts the host's services, the pages and the window
/// together, and shows the window.
class Application {
public:
    /// The application object exists already.
    Application(const HomeFolder &home, LinuxSystemDisk systemDisk);
    ~Application();
    Q_DISABLE_COPY_MOVE(Application)

    [[nodiscard]] MainWindow &window() { return mainWindow; }

private:
    LinuxHomePorts homePorts;
    Workspace workspace;
    PreferenceFiles files;
    HostServices host;
    QtDialogs dialogs;
    VarnelAppDelegate delegate;
    MainWindow mainWindow;
    WindowSize windowSize;
    KeptRun backup;
    PageContext context;
    Varnel controller;
    QuitFlow quitFlow;
    /// Watched for once an event loop can be ended; until then they end the process by themselves.
    std::optional<TerminationSignals> terminationSignals;
};

/// The whole of varnel, from the command line to the exit status: 0, 2 for a command line that is
/// not understood, 3 for a home folder that can't be worked on.
int runApplication(int argc, char **argv);

} // namespace varnel
