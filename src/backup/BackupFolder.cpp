#include "backup/BackupFolder.h"

#include "backup/BackupReader.h"
#include "backup/KeptRun.h"
#include "base/Logging.h"
#include "base/Text.h"
#include "base/UntouchedDatabase.h"
#include "home/Workspace.h"
#include "platform/KeptFolders.h"
#include "shell/Tools.h"

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

bool hasBackupExtension(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 && QStringView(name).mid(dot + 1) == u"sqlite";
}

Error leadsOut(const QString &path)
{
    return {ErrorCode::NotPermitted, path + u": a link leads out of the home"};
}

Error logged(Error error)
{
    varnelLog(lcIo, error.text);
    return error;
}

template <typename Less> void sortBy(QList<BackupEntry> &entries, bool ascending, Less less)
{
    std::stable_sort(entries.begin(), entries.end(), [&](const auto &a, const auto &b) {
        return ascending ? less(a, b) : less(b, a);
    });
}

} // namespace

BackupFolder::BackupFolder(QString path, FileStore &files) : folder(std::move(path)), files(files)
{
}

BackupFolder::BackupFolder(const Workspace &work)
    : BackupFolder(Tools::backupFolderOf(work.home()), work.files())
{
    workspace = &work;
}

/// Other obstacles are left to whoever then meets them.
Result<void> BackupFolder::checkWay(const QString &to) const
{
    const Result<FileStore::Standing> standing = files.look(to);
    if (!standing || standing.value() != FileStore::Standing::Outside)
        return {};
    return logged(leadsOut(to));
}

Result<QList<BackupEntry>> BackupFolder::list() const
{
    if (const Result<void> way = checkWay(folder); !way)
        return way.error();
    const Result<QList<FolderEntry>> names = files.list(folder);
    if (!names && names.error().code != ErrorCode::NotFound)
        return names.error();
    QList<BackupEntry> entries = names ? names.value() : QList<BackupEntry>();
    entries.removeIf([](const BackupEntry &entry) { return !hasBackupExtension(entry.name); });
    return entries;
}

QString BackupFolder::pathOf(const QString &name) const
{
    return fillIn(u"%@%@", {folder, name});
}

Result<QString> BackupFolder::find(const QString &name) const
{
    QString file = pathOf(name);
    if (const Result<void> way = checkWay(file); !way)
        return way.error();
    const Result<QList<BackupEntry>> entries = list();
    const Result<FileStore::Standing> standing = files.look(file);
    if (entries) {
        const QList<BackupEntry> &all = entries.value();
        if (std::any_of(all.begin(), all.end(),
                        [&](const BackupEntry &entry) { return entry.name == name; }))
            return file;
        if (!standing)
            return logged(standing.error());
    } else if (!standing || standing.value() != FileStore::Standing::Nothing) {
        return entries.error();
    }
    return Error {ErrorCode::NotFound, file + u": no such backup file"};
}

bool BackupFolder::exists(const QString &file) const
{
    return files.exists(file);
}

Result<QList<BackupRow>> BackupFolder::read(const QString &file) const
{
    if (const Result<void> way = checkWay(file); !way)
        return way.error();
    Result<QList<BackupRow>> rows = readBackupRows(file, files);
    if (!rows && rows.error().code == ErrorCode::NotFound)
        return logged(rows.error());
    return rows;
}

Result<QList<BackupRow>> BackupFolder::glanceAt(const QString &file) const
{
    const Result<FileStore::Standing> standing = files.look(file);
    if (standing && standing.value() == FileStore::Standing::Outside)
        return leadsOut(file);
    return readBackupRows(file, files, Telling::Silent);
}

Result<void> BackupFolder::remove(const QString &file)
{
    if (Result<void> way = checkWay(file); !way)
        return way;
    const QStringList companions = companionsOf(file);
    Result<void> removed = files.remove(file);
    for (const QString &companion : companions) {
        if (!removed)
            break;
        removed = files.remove(companion);
    }
    if (removed)
        removedFiles.append(file);
    return removed;
}

Result<void> BackupFolder::flush()
{
    Result<void> flushed = files.flush(folder);
    if (!flushed || workspace == nullptr)
        return flushed;
    // Without its backup file it is of no use to anybody; what a failure leaves is swept by a save.
    for (const QString &file : std::exchange(removedFiles, {}))
        for (const QString &kept : keptFoldersOf(*workspace, file))
            static_cast<void>(workspace->keptFolders().discard(kept));
    return flushed;
}

Result<void> BackupFolder::removeForGood(const QString &name)
{
    Result<void> removed = remove(pathOf(name));
    return removed ? flush() : removed;
}

QString creationText(const QDateTime &createdDate)
{
    if (!createdDate.isValid())
        return {};
    return createdDate.toString(u"yyyy-MM-dd HH:mm:ss") + u" +0000";
}

void sortByName(QList<BackupEntry> &entries, bool sortDescending)
{
    sortBy(entries, sortDescending, [](const BackupEntry &a, const BackupEntry &b) {
        return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
    });
}

void sortByDate(QList<BackupEntry> &entries, bool sortDescending)
{
    sortBy(entries, sortDescending, [](const BackupEntry &a, const BackupEntry &b) {
        return a.createdDate < b.createdDate;
    });
}

} // namespace varnel
