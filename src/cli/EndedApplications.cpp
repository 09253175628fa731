#include "cli/EndedApplications.h"

#include "platform/linux/LinuxCommandRunner.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "shell/Tools.h"

namespace varnel::cli {

QStringList processesEndedFor(const QList<CloseRow> &rows)
{
    return processesToEnd(rows) << systemInterfaceProcess();
}

Result<void> endProcesses(const QStringList &processes, const HomeFolder &home)
{
    LinuxFolderMaker folders;
    LinuxCommandRunner runner(home);
    const Tools tools(home, folders, runner);
    for (const QString &process : processes)
        if (!tools.killApp(process))
            return Error {ErrorCode::Failed,
                          process
                              + u" is not ended: killall could not be run (--verbose tells why)"};
    return {};
}

} // namespace varnel::cli
