#pragma once

#include "loginitems/LoginItemsAccess.h"

#include <QString>

namespace varnel {

class FileStore;

/// Puts the way back from login-item changes into the backup file of a run.
class LoginItemsBackupWriter : public InverseKeeper {
public:
    /// The path may not exist yet; the first row has `files` make the file.
    LoginItemsBackupWriter(QString backupFileName, FileStore &files);

    /// Another file for what follows.
    void setBackupFile(const QString &fileName) { backupFileName = fileName; }

    /// The first row of a path wins. Values go into the statements as they are.
    Result<void> addDataToBackupFile(int actionId, const QString &path, int enabledFlag) override;

private:
    QString backupFileName;
    FileStore &files;
};

} // namespace varnel
