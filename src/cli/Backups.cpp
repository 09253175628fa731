#include "cli/Backups.h"

#include "backup/BackupReader.h"
#include "base/Literals.h"
#include "base/Logging.h"
#include "base/UntouchedDatabase.h"
#include "platform/linux/HomeEntries.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/SystemError.h"
#include "shell/Tools.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

#include <cerrno>

namespace varnel::cli {

namespace {

/// The folder of backup files stands there, or may stand there, and can't be read.
std::optional<Error> whyNotRead(const HomeFolder &home)
{
    const QString folder = Tools::backupFolderOf(home);
    const Place place = walkPath(home, folder);
    int error = place.error;
    if (error == 0 && place.status && !QFileInfo(folder).isReadable())
        error = EACCES;
    if (error == 0 || error == ENOENT || error == EXDEV)
        return {};
    return systemError(folder, error);
}

} // namespace

Result<QList<BackupEntry>> backupsOf(const HomeFolder &home)
{
    QList<BackupEntry> entries = listBackups(Tools::backupFolderOf(home));
    if (entries.isEmpty()) {
        if (std::optional<Error> unread = whyNotRead(home))
            return *std::move(unread);
    }
    constexpr bool ascending = true; // the flag is named against its effect
    sortByName(entries, ascending);
    return entries;
}

namespace {

/// Why a file of the backup folder is not listed.
Error whyNotListed(const HomeFolder &home, const QString &path)
{
    const Place place = walkPath(home, path);
    if (place.error != 0 && place.error != ENOENT && place.error != EXDEV) {
        varnelLog(lcIo, systemError(path, place.error).text);
        return systemError(path, place.error);
    }
    // It stands there: then the folder is one that may be searched and not read.
    if (place.status && path.endsWith(u".sqlite")) {
        Error error = systemError(Tools::backupFolderOf(home), EACCES);
        varnelLog(lcIo, path + u": " + error.text);
        return error;
    }
    return {ErrorCode::NotFound, path + u": no such backup file"};
}

} // namespace

Result<QString> backupPath(const HomeFolder &home, const QString &name)
{
    if (name.contains(u'/'))
        return Error {ErrorCode::Invalid,
                      u'\'' + name + u"' is no name of a backup file; 'backups list' names them"};
    const QString folder = Tools::backupFolderOf(home);
    const QString path = folder + name;
    const QList<BackupEntry> entries = listBackups(folder);
    const bool listed = std::any_of(entries.begin(), entries.end(),
                                    [&](const BackupEntry &entry) { return entry.name == name; });
    if (!listed)
        return whyNotListed(home, path);
    if (walkPath(home, path).error == EXDEV)
        return Error {ErrorCode::NotPermitted, path + u": a link leads out of the home"};
    return path;
}

Result<QList<BackupRow>> backupRows(const HomeFolder &home, const QString &name)
{
    const Result<QString> path = backupPath(home, name);
    if (!path)
        return path.error();
    return readBackupRows(path.value());
}

Result<void> deleteBackup(const HomeFolder &home, const QString &path)
{
    const QStringList companions = companionsOf(path);
    Result<void> removed = removeEntry(home, path);
    for (const QString &companion : companions) {
        if (!removed)
            break;
        removed = removeEntry(home, companion);
    }
    return removed;
}

ParameterInfo backupParameter(ParameterInfo::Count count)
{
    return {u"NAME"_s, u"name of a backup file, as 'backups list' shows it"_s, count,
            Completes::Backup};
}

} // namespace varnel::cli
