#include "cli/BackupFileOfRun.h"

#include "cli/HomeSession.h"
#include "platform/linux/LinuxCommandRunner.h"
#include "shell/Tools.h"

namespace varnel::cli {

QString backupFileOfRun(HomeSession &session)
{
    LinuxCommandRunner runner(session.home());
    const Tools tools(session.home(), session.folderMaker(), runner);
    static_cast<void>(tools.pathForBackupFolder());
    static_cast<void>(tools.pathForSupportFolder());
    static_cast<void>(tools.pathForBackupFolder());
    return tools.createBackupFile();
}

} // namespace varnel::cli
