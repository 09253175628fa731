#include "shell/Tools.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "platform/FolderMaker.h"
#include "shell/TerminalCommand.h"

#include <QFileInfo>

#include <memory>
#include <utility>
#include <vector>

namespace varnel {

Tools::Tools(HomeFolder homeFolder, FolderMaker &folderMaker, CommandRunner &commandRunner)
    : home(std::move(homeFolder)), folders(folderMaker), runner(commandRunner)
{
}

QString Tools::ensured(const QString &path) const
{
    if (QFileInfo::exists(home.reached(path)))
        return path;
    const Result<void> made = folders.makeFolder(home, path);
    // The caller gets the path regardless, and finds out when it writes there. A missing parent is
    // the usual case of a first run, not worth a line.
    if (!made && made.error().code != ErrorCode::NotFound)
        varnelLog(lcIo, made.error().text);
    return path;
}

QString Tools::supportFolderOf(const HomeFolder &home)
{
    return home.path + u"/Library/Application Support/Varnel/";
}

QString Tools::backupFolderOf(const HomeFolder &home)
{
    return supportFolderOf(home) + u"Backup/";
}

QString Tools::keptFolderOf(const HomeFolder &home)
{
    return supportFolderOf(home) + u"Kept/";
}

QStringList Tools::foldersWrittenTo(const HomeFolder &home)
{
    return {home.preferencesDirectory(), supportFolderOf(home), backupFolderOf(home),
            removedAccountItemsOf(home)};
}

QString Tools::removedAccountItemsOf(const HomeFolder &home)
{
    return supportFolderOf(home) + u"RemovedAccountItems/";
}

QString Tools::pathForSupportFolder() const
{
    return ensured(supportFolderOf(home));
}

QString Tools::pathForBackupFolder() const
{
    return ensured(backupFolderOf(home));
}

QString Tools::pathForDataFile() const
{
    return pathForSupportFolder() + u"Pellora.userdata";
}

QString Tools::nextBackupFile(const HomeFolder &home)
{
    const QString folder = backupFolderOf(home);
    QString path;
    int number = 0;
    do {
        path = folder + u"quillet" + QString::number(++number) + u".sqlite";
    } while (QFileInfo::exists(home.reached(path)));
    return path;
}

QString Tools::createBackupFile() const
{
    static_cast<void>(pathForBackupFolder());
    const QString path = nextBackupFile(home);
    varnelLog(lcShell, fillIn(u"Backup File Name: %@", {path}));
    return path;
}

bool Tools::killApp(const QString &name) const
{
    auto command = std::make_unique<TerminalCommand>(runner);
    const auto data = std::make_shared<TaskData>();
    data->setLaunchPath(QStringLiteral("/usr/bin/killall"));
    data->setArguments({name});
    command->setTaskData(data);
    const bool ran = command->executeCommand();

    // Each one stays registered for the ends of child processes until the run is over.
    static std::vector<std::unique_ptr<TerminalCommand>> keptForTheRun;
    keptForTheRun.push_back(std::move(command));
    return ran;
}

} // namespace varnel
