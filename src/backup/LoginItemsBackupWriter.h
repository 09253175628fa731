#pragma once

#include "backup/BackupInsertion.h"
#include "backup/BackupRow.h"
#include "loginitems/LoginItemsAccess.h"

#include <QSet>
#include <QString>

namespace varnel {

class FileStore;

/// The way back from a change.
[[nodiscard]] BackupRow loginItemRow(int actionId, const QString &path, int enabledFlag);

/// Puts the way back from login-item changes into the backup file of a run.
class LoginItemsBackupWriter : public InverseKeeper {
public:
    /// TryOut: nothing is made, and nothing told.
    enum class Manner { Work, TryOut };
    /// The path may not exist yet; the first row has `files` make the file.
    LoginItemsBackupWriter(QString backupFileName, FileStore &files, Manner manner = Manner::Work);

    /// Another file for what follows.
    void setBackupFile(const QString &fileName) { backupFileName = fileName; }

    /// The first row of a path wins. Values go into the statements as they are.
    Result<void> addDataToBackupFile(int actionId, const QString &path, int enabledFlag) override;

    /// What the last row met; of no meaning where it was tried out.
    [[nodiscard]] MetFile metFile() const { return met; }
    /// Whether a way back of the path stands in the file, be it from before.
    [[nodiscard]] bool keeps(const QString &path) const { return kept.contains(path); }

private:
    QString backupFileName;
    FileStore &files;
    Manner manner;
    MetFile met = MetFile::None;
    QSet<QString> kept;
};

} // namespace varnel
