#pragma once

#include "backup/BackupFolder.h"
#include "backup/BackupRow.h"
#include "base/HomeFolder.h"
#include "base/Result.h"
#include "cli/Command.h"

#include <QList>
#include <QString>

namespace varnel::cli {

/// The backup files of the home, by name, as the restore page lists them first; none where there is
/// no folder of them, which is not made. An error where the folder can't be read.
[[nodiscard]] Result<QList<BackupEntry>> backupsOf(const HomeFolder &home);

/// The whole path of a backup file of that name. Invalid for a name with a folder in it, NotFound
/// for one that is not listed, NotPermitted where a link leads out of somebody else's home or the
/// folder may not be read.
[[nodiscard]] Result<QString> backupPath(const HomeFolder &home, const QString &name);

/// The rows of that file.
[[nodiscard]] Result<QList<BackupRow>> backupRows(const HomeFolder &home, const QString &name);

/// Deletes a file of that path with what belongs to it; a file that is gone is no error.
[[nodiscard]] Result<void> deleteBackup(const HomeFolder &home, const QString &path);

/// NAME, as the commands take it.
[[nodiscard]] ParameterInfo backupParameter(ParameterInfo::Count count = ParameterInfo::Count::One);

} // namespace varnel::cli
