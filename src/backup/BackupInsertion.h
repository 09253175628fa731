#pragma once

#include "base/Result.h"

#include <QString>

namespace varnel {

class FileStore;

/// One row for a backup file: the statement that looks for an earlier row of the same thing, and
/// the one that adds it. Both stand as they are, values in them unescaped.
struct BackupInsertion {
    QString searchQuery;
    QString insertQuery;
};

/// What a row met in the place of its backup file.
enum class MetFile {
    None, ///< and none could be made
    Made,
    Stood,
};

/// Has `files` ready the place, opens the file, makes the table, adds the row unless the search
/// finds one, closes it. Each step is logged to lcBackup, but a file that can't be opened is to
/// lcIo. The errors name the file and carry the library's text.
Result<void> addBackupRow(FileStore &files, const QString &backupFileName,
                          const BackupInsertion &insertion, MetFile &met);

/// What would become of the row in a new file of that name: tried out in a private one, without a
/// word in the log.
[[nodiscard]] Result<void> tryBackupRow(const FileStore &files, const QString &backupFileName,
                                        const BackupInsertion &insertion);

} // namespace varnel
