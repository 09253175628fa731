#include "home/Workspace.h"

#include "base/Containers.h"
#include "platform/FileStore.h"
#include "platform/SessionLoginItems.h"

#include <utility>

namespace varnel {

Workspace::Workspace(HomeFolder home, const HomePorts &homePorts)
    : homeFolder(std::move(home)), ports(homePorts)
{
}

Result<QStringList> Workspace::begin(const Terms &terms) const
{
    if (terms.dryRun)
        return ports.standardFolders.toMake(homeFolder, terms.folders);
    if (const Result<void> made = ports.standardFolders.ensure(homeFolder, terms.folders); !made)
        return made.error();
    sweep();
    return QStringList();
}

void Workspace::sweep() const
{
    QStringList folders = Tools::foldersWrittenTo(homeFolder) + ports.loginItems.foldersWrittenTo();
    if (ports.files.exists(containersOf(homeFolder)))
        for (const QString &application : containedApplications())
            folders.append(containerPreferences(homeFolder, application));
    for (const QString &folder : std::as_const(folders))
        ports.files.sweep(folder);
}

const QString &Workspace::backupFile()
{
    if (chosenBackupFile.isNull()) {
        const Tools own = tools();
        static_cast<void>(own.pathForBackupFolder());
        static_cast<void>(own.pathForSupportFolder());
        static_cast<void>(own.pathForBackupFolder());
        chosenBackupFile = own.createBackupFile();
    }
    return chosenBackupFile;
}

QString Workspace::nextBackupFile() const
{
    return Tools::nextBackupFile(homeFolder);
}

} // namespace varnel
