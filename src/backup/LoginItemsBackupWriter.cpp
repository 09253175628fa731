#include "backup/LoginItemsBackupWriter.h"

#include "backup/BackupInsertion.h"
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

BackupRow loginItemRow(int actionId, const QString &path, int enabledFlag)
{
    return {BackupRow::loginItemId, path, QString::number(inverseAction(actionId)),
            QString::number(enabledFlag)};
}

LoginItemsBackupWriter::LoginItemsBackupWriter(QString backupFileName, FileStore &files,
                                               Manner manner)
    : backupFileName(std::move(backupFileName)), files(files), manner(manner)
{
}

Result<void> LoginItemsBackupWriter::addDataToBackupFile(int actionId, const QString &path,
                                                         int enabledFlag)
{
    const QString id = QString::number(BackupRow::loginItemId);
    const BackupRow row = loginItemRow(actionId, path, enabledFlag);
    const BackupInsertion insertion {
        fillIn(u"SELECT * FROM users WHERE id=%d AND value1='%@'", {id, path}),
        fillIn(u"INSERT INTO users VALUES('%d','%@', '%@', '%@')",
               {id, path, row.value2, row.value3})};
    if (manner == Manner::Work)
        varnelLog(lcBackup, fillIn(u"addDataToBackupFile (LoginItemsView): %@", {backupFileName}));
    Result<void> added = manner == Manner::Work
        ? addBackupRow(files, backupFileName, insertion, met)
        : tryBackupRow(files, backupFileName, insertion);
    // What an apostrophe makes of the statements is a row of another path, if any.
    if (added && !path.contains(u'\''))
        kept.insert(path);
    return added;
}

} // namespace varnel
