#pragma once

#include "backup/BackupRow.h"
#include "base/Result.h"

#include <QList>
#include <QString>

namespace varnel {

class FileStore;

/// Reads the rows of a backup file, in file order. The file may come from anywhere: it is opened
/// read-only, never created and never written, without extensions, triggers or views, values
/// limited in size. Not a regular file, not a database, locked, without the table `users` or with
/// fewer than four columns: an error, which is logged to lcIo unless there is no such file. Null
/// columns read as empty text or 0.
[[nodiscard]] Result<QList<BackupRow>> readBackupRows(const QString &path);

/// The same for a file of a home, found where its store finds it.
/// To describe a file that nobody has asked to be read, nothing is logged.
enum class Telling { Log, Silent };
[[nodiscard]] Result<QList<BackupRow>> readBackupRows(const QString &path, const FileStore &files,
                                                      Telling telling = Telling::Log);

} // namespace varnel
