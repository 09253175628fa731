#include "cli/Backups.h"

#include "base/Literals.h"
#include "shell/Tools.h"

namespace varnel::cli {

Backups::Backups(const HomeFolder &home) : store(home), folder(Tools::backupFolderOf(home), store)
{
}

Result<QList<BackupEntry>> Backups::listed() const
{
    Result<QList<BackupEntry>> entries = folder.list();
    constexpr bool ascending = true; // the flag is named against its effect
    if (entries)
        sortByName(entries.value(), ascending);
    return entries;
}

Result<void> Backups::check(const QString &name) const
{
    if (name.contains(u'/'))
        return Error {ErrorCode::Invalid,
                      u'\'' + name + u"' is no name of a backup file; 'backups list' names them"};
    const Result<QString> found = folder.find(name);
    return found ? Result<void>() : found.error();
}

Result<QList<BackupRow>> Backups::rows(const QString &name) const
{
    return folder.read(folder.pathOf(name));
}

Result<void> Backups::remove(const QString &name)
{
    Result<void> removed = folder.remove(folder.pathOf(name));
    return removed ? folder.flush() : removed;
}

ParameterInfo backupParameter(ParameterInfo::Count count)
{
    return {u"NAME"_s, u"name of a backup file, as 'backups list' shows it"_s, count,
            Completes::Backup};
}

} // namespace varnel::cli
