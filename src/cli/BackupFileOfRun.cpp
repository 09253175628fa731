#include "cli/BackupFileOfRun.h"

#include "platform/linux/LinuxCommandRunner.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "shell/Tools.h"

namespace varnel::cli {

QString backupFileOfRun(const HomeFolder &home)
{
    LinuxFolderMaker folders;
    LinuxCommandRunner runner(home);
    const Tools tools(home, folders, runner);
    static_cast<void>(tools.pathForBackupFolder());
    static_cast<void>(tools.pathForSupportFolder());
    static_cast<void>(tools.pathForBackupFolder());
    return tools.createBackupFile();
}

} // namespace varnel::cli
