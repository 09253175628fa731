#pragma once

#include "backup/BackupInsertion.h"
#include "settings/SavePlan.h"

#include <QString>

namespace varnel {

class FileStore;

/// Puts the old values of hidden settings into the backup file of a run, one SQLite database opened
/// and closed for each row.
class BackupWriter : public OldValueKeeper {
public:
    /// The path may not exist yet; the first row has `files` make the file.
    BackupWriter(QString backupFileName, FileStore &files);

    /// The first row of a setting wins. Values go into the statements as they are: text with an
    /// apostrophe fails, is logged with the library's text, and is returned as an error.
    Result<void> addDataToBackupFile(const ChangeRecord &record) override;

    /// What the last row met.
    [[nodiscard]] MetFile metFile() const { return met; }

    /// What it would answer in a new file. Nothing is made, and nothing logged.
    [[nodiscard]] Result<void> tryOut(const ChangeRecord &record) const;

private:
    QString backupFileName;
    FileStore &files;
    MetFile met = MetFile::None;
};

} // namespace varnel
