#include "home/Workspace.h"

#include "platform/FileStore.h"
#include "platform/SessionLoginItems.h"
#include "shell/Tools.h"

#include <utility>

namespace varnel {

Workspace::Workspace(HomeFolder home, const HomePorts &homePorts)
    : homeFolder(std::move(home)), ports(homePorts)
{
}

Result<void> Workspace::beginWriting(StandardFolders::Missing missing) const
{
    Result<void> made = ports.standardFolders.ensure(homeFolder, missing);
    if (made)
        sweep();
    return made;
}

Result<QStringList> Workspace::foldersToMake(StandardFolders::Missing missing) const
{
    return ports.standardFolders.toMake(homeFolder, missing);
}

void Workspace::sweep() const
{
    for (const QString &folder :
         Tools::foldersWrittenTo(homeFolder) + ports.loginItems.foldersWrittenTo())
        ports.files.sweep(folder);
}

const QString &Workspace::backupFile()
{
    if (chosenBackupFile.isNull()) {
        const Tools tools(homeFolder, ports.folders, ports.runner);
        static_cast<void>(tools.pathForBackupFolder());
        static_cast<void>(tools.pathForSupportFolder());
        static_cast<void>(tools.pathForBackupFolder());
        chosenBackupFile = tools.createBackupFile();
    }
    return chosenBackupFile;
}

QString Workspace::nextBackupFile() const
{
    return Tools::nextBackupFile(homeFolder);
}

} // namespace varnel
