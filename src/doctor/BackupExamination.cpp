#include "doctor/BackupExamination.h"

#include "backup/BackupReader.h"
#include "backup/KeptRun.h"
#include "base/Containers.h"
#include "base/Literals.h"
#include "doctor/Examination.h"
#include "loginitems/DisabledItemsStore.h"
#include "platform/KeptFolders.h"
#include "platform/SessionLoginItems.h"
#include "shell/Tools.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <optional>

namespace varnel {

namespace {

using Entry = HomeInspection::Entry;

QString sizeOf(qint64 bytes)
{
    return QString::number(bytes);
}

QString backupFolderOf(const Workspace &workspace)
{
    return QDir::cleanPath(Tools::backupFolderOf(workspace.home()));
}

/// Whose journal or log a file is, by its name; null: nobody's.
QString databaseOf(const QString &path)
{
    constexpr std::array<QStringView, 3> endings {u"-journal", u"-wal", u"-shm"};
    for (const QStringView ending : endings) {
        const QString database = path.chopped(std::min(ending.size(), path.size()));
        if (path.endsWith(ending) && database.endsWith(u".sqlite"))
            return database;
    }
    return {};
}

/// Whether a living run is at work with a database: it has that locked, or what it keeps with it.
bool isInUse(const Examination &examination, const QString &database)
{
    const Workspace &workspace = examination.workspace;
    if (examination.inspection.isLocked(database))
        return true;
    if (database.section(u'/', 0, -2) != backupFolderOf(workspace))
        return false;
    const QStringList folders = keptFoldersOf(workspace, database);
    return std::any_of(folders.begin(), folders.end(), [&](const QString &folder) {
        const Result<bool> inUse = workspace.keptFolders().isInUse(folder);
        return inUse && inUse.value();
    });
}

/// A writer may end, and the next one begin, while its journal is looked at.
bool isLeft(const Examination &examination, const QString &journal, const QString &database)
{
    return !isInUse(examination, database) && examination.inspection.look(journal)
        && !isInUse(examination, database);
}

/// What every folder of the program's may hold.
void findLeftovers(Examination &examination, const QString &folder, const QList<Entry> &entries)
{
    for (const Entry &entry : entries) {
        const QString path = folder + u'/' + entry.name;
        const QString database = databaseOf(path);
        if (entry.isLeftBehind)
            examination.add(FindingKind::TemporaryFileLeft, path, {sizeOf(entry.size)});
        else if (!database.isNull() && isLeft(examination, path, database))
            examination.add(FindingKind::JournalLeft, path, {sizeOf(entry.size)});
    }
}

/// A run begins its backup file empty, before it has anything to keep.
bool isEmpty(const Examination &examination, const QString &path)
{
    const Result<Entry> entry = examination.inspection.look(path);
    return entry && entry.value().kind == Entry::Kind::File && entry.value().size == 0;
}

/// Why a database can't be read; none where it can, and where that is for a living run's sake.
template <typename Read>
std::optional<Error> whyUnreadable(const Examination &examination, const QString &path,
                                   const Read &read)
{
    if (read())
        return std::nullopt;
    if (isInUse(examination, path))
        return std::nullopt;
    // The run that was in the way may have ended since.
    const auto again = read();
    if (again || isInUse(examination, path))
        return std::nullopt;
    return again.error();
}

void addUnreadable(Examination &examination, const QString &path, const Error &error)
{
    if (error.code == ErrorCode::NotPermitted)
        examination.addUnread(path, error);
    else if (!examination.isOutOfReach(path))
        examination.add(FindingKind::UnreadableDatabase, path, error);
}

void examineBackup(Examination &examination, const QString &path, const Entry &entry)
{
    examination.checkRights(path);
    if (isEmpty(examination, path))
        return;
    const std::optional<Error> error = whyUnreadable(
        examination, path, [&] { return readBackupRows(path, examination.workspace.files()); });
    if (error)
        addUnreadable(examination, path, *error);
    // Where kept files can't be looked at, nobody can tell.
    else if (examination.diagnosis.kept && !isInUse(examination, path)
             && keptFoldersOf(examination.workspace, path).isEmpty())
        examination.add(FindingKind::BackupWithoutKept, path, {sizeOf(entry.size)});
}

void examineBackupFolder(Examination &examination)
{
    const QString folder = backupFolderOf(examination.workspace);
    const std::optional<QList<Entry>> entries = examination.list(folder);
    if (!entries)
        return;
    findLeftovers(examination, folder, *entries);
    Diagnosis::Stock stock;
    for (const Entry &entry : *entries) {
        if (!entry.name.endsWith(u".sqlite") || entry.kind == Entry::Kind::Folder)
            continue;
        ++stock.count;
        stock.bytes += entry.size;
        examineBackup(examination, folder + u'/' + entry.name, entry);
    }
    examination.diagnosis.backups = stock;
}

qint64 examineRun(Examination &examination, const QString &folder)
{
    const QList<Entry> entries = examination.list(folder).value_or(QList<Entry>());
    findLeftovers(examination, folder, entries);
    qint64 bytes = 0;
    for (const Entry &entry : entries)
        bytes += entry.size;
    return bytes;
}

void examineKeptFolder(Examination &examination)
{
    const Workspace &workspace = examination.workspace;
    const QString parent = Tools::keptFolderOf(workspace.home());
    const bool seesBackups = examination.list(backupFolderOf(workspace)).has_value();
    const QStringList orphans = seesBackups ? keptFoldersWithoutBackup(workspace) : QStringList();
    const std::optional<QList<Entry>> entries = examination.list(QDir::cleanPath(parent));
    if (!entries)
        return;
    Diagnosis::Stock stock;
    for (const Entry &entry : *entries) {
        if (entry.kind != Entry::Kind::Folder)
            continue;
        const QString folder = parent + entry.name;
        const qint64 bytes = examineRun(examination, folder);
        ++stock.count;
        stock.bytes += bytes;
        const Result<bool> inUse = workspace.keptFolders().isInUse(folder);
        if (orphans.contains(QString(folder + u'/')) && inUse && !inUse.value())
            examination.add(FindingKind::KeptWithoutBackup, folder, {sizeOf(bytes)});
    }
    examination.diagnosis.kept = stock;
}

void examineStore(Examination &examination, LoginItemsList list)
{
    DisabledItemsStore store(Tools::supportFolderOf(examination.workspace.home()),
                             examination.workspace.files(), DisabledItemsStore::Manner::TryOut,
                             list);
    const QString path = QDir::cleanPath(store.path());
    examination.checkRights(path);
    const std::optional<Error> error =
        whyUnreadable(examination, path, [&] { return store.rowsOf(u"/"_s); });
    if (error)
        addUnreadable(examination, path, {error->code, path + u": " + error->text});
}

/// The folders in which saves put files, but for those that are looked at above.
QStringList otherFolders(const Workspace &workspace)
{
    const HomeFolder &home = workspace.home();
    QStringList folders {home.preferencesDirectory(), Tools::supportFolderOf(home),
                         Tools::removedAccountItemsOf(home)};
    for (const QString &application : containedApplications())
        folders.append(containerPreferences(home, application));
    return folders + workspace.loginItems().foldersWrittenTo();
}

} // namespace

void examineBackups(Examination &examination)
{
    for (const QString &each : otherFolders(examination.workspace)) {
        const QString folder = QDir::cleanPath(each);
        findLeftovers(examination, folder, examination.list(folder).value_or(QList<Entry>()));
    }
    examineKeptFolder(examination);
    examineBackupFolder(examination);
    for (const LoginItemsList list : {LoginItemsList::Session, LoginItemsList::Account})
        examineStore(examination, list);
}

} // namespace varnel
