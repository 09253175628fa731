#include "backup/BackupWriter.h"

#include "backup/BackupInsertion.h"
#include "base/Literals.h"
#include "base/Logging.h"
#include "base/Text.h"

namespace varnel {

namespace {

BackupInsertion insertionOf(const ChangeRecord &record)
{
    const QString id = QString::number(record.locationId);
    return {fillIn(u"SELECT * FROM users WHERE id=%d", {id}),
            fillIn(u"INSERT INTO users VALUES('%d','%@', '%@', '%@')",
                   {id, QString::number(record.actionId), record.extraData, u""_s})};
}

} // namespace

BackupWriter::BackupWriter(QString backupFileName, FileStore &files)
    : backupFileName(std::move(backupFileName)), files(files)
{
}

Result<void> BackupWriter::addDataToBackupFile(const ChangeRecord &record)
{
    varnelLog(lcBackup, fillIn(u"addDataToBackupFile (Quillet): %@", {backupFileName}));
    return addBackupRow(files, backupFileName, insertionOf(record), met);
}

Result<void> BackupWriter::tryOut(const ChangeRecord &record) const
{
    return tryBackupRow(files, backupFileName, insertionOf(record));
}

} // namespace varnel
