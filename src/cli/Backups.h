#pragma once

#include "backup/BackupFolder.h"
#include "backup/BackupRow.h"
#include "base/HomeFolder.h"
#include "base/Result.h"
#include "cli/Command.h"
#include "platform/linux/LinuxFileStore.h"

#include <QList>
#include <QString>

namespace varnel::cli {

/// The backup files of a home by the names that are typed. The folder is not made.
class Backups {
public:
    explicit Backups(const HomeFolder &home);

    /// By name, as the restore page lists them first.
    [[nodiscard]] Result<QList<BackupEntry>> listed() const;

    /// Whether a file of that name can be worked on: Invalid for a name with a folder in it,
    /// NotFound for one that is not listed, or why the folder can't be looked into.
    [[nodiscard]] Result<void> check(const QString &name) const;

    // Of a name that was checked:

    [[nodiscard]] Result<QList<BackupRow>> rows(const QString &name) const;
    /// Deletes the file with what belongs to it; a file that is gone is no error.
    [[nodiscard]] Result<void> remove(const QString &name);

private:
    LinuxFileStore store;
    BackupFolder folder;
};

/// NAME, as the commands take it.
[[nodiscard]] ParameterInfo backupParameter(ParameterInfo::Count count = ParameterInfo::Count::One);

} // namespace varnel::cli
