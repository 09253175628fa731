#pragma once

#include "backup/BackupFolder.h"
#include "cli/Command.h"

namespace varnel::cli {

/// Whether a backup file of the name that was typed can be worked on: Invalid for a name with a
/// folder in it, else what the folder says.
[[nodiscard]] inline Result<void> checkBackup(const BackupFolder &folder, const QString &name)
{
    if (name.contains(u'/'))
        return Error {ErrorCode::Invalid,
                      u'\'' + name + u"' is no name of a backup file; 'backups list' names them"};
    const Result<QString> found = folder.find(name);
    return found ? Result<void>() : found.error();
}

/// NAME, as the commands take it.
[[nodiscard]] inline ParameterInfo
backupParameter(ParameterInfo::Count count = ParameterInfo::Count::One)
{
    return {QStringLiteral("NAME"),
            QStringLiteral("name of a backup file, as 'backups list' shows it"), count,
            Completes::Backup};
}

} // namespace varnel::cli
