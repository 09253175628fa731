#include "backup/LoginItemsBackupWriter.h"

#include "backup/BackupInsertion.h"
#include "backup/BackupRow.h"
#include "base/Logging.h"
#include "base/Text.h"

#include <utility>

namespace varnel {

namespace {

int inverseAction(int actionId)
{
    switch (actionId) {
    case LoginItemChange::Add:
        return LoginItemChange::Remove;
    case LoginItemChange::Remove:
        return LoginItemChange::Add;
    case LoginItemChange::Enable:
        return LoginItemChange::Disable;
    case LoginItemChange::Disable:
        return LoginItemChange::Enable;
    default:
        return LoginItemChange::Remove;
    }
}

} // namespace

LoginItemsBackupWriter::LoginItemsBackupWriter(QString backupFileName, FileStore &files)
    : backupFileName(std::move(backupFileName)), files(files)
{
}

Result<void> LoginItemsBackupWriter::addDataToBackupFile(int actionId, const QString &path,
                                                         int enabledFlag)
{
    varnelLog(lcBackup, fillIn(u"addDataToBackupFile (LoginItemsView): %@", {backupFileName}));
    const QString id = QString::number(BackupRow::loginItemId);
    return addBackupRow(files, backupFileName,
                        {fillIn(u"SELECT * FROM users WHERE id=%d AND value1='%@'", {id, path}),
                         fillIn(u"INSERT INTO users VALUES('%d','%@', '%@', '%@')",
                                {id, path, QString::number(inverseAction(actionId)),
                                 QString::number(enabledFlag)})});
}

} // namespace varnel
