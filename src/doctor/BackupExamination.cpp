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

bool isJournal(const QString &name)
{
    constexpr std::array<QStringView, 3> endings {u".sqlite-journal", u".sqlite-wal",
                                                  u".sqlite-shm"};
    return std::any_of(endings.begin(), endings.end(),
                       [&](QStringView ending) { return name.endsWith(ending); });
}

/// What every folder of the program's may hold.
void findLeftovers(Examination &examination, const QString &folder, const QList<Entry> &entries)
{
    for (const Entry &entry : entries) {
        const QString path = folder + u'/' + entry.name;
        if (entry.isLeftBehind)
            examination.add(FindingKind::TemporaryFileLeft, path, {sizeOf(entry.size)});
        else if (isJournal(entry.name))
            examination.add(FindingKind::JournalLeft, path, {sizeOf(entry.size)});
    }
}

void examineBackup(Examination &examination, const QString &path, const Entry &entry)
{
    examination.checkRights(path);
    const Result<QList<BackupRow>> rows = readBackupRows(path, examination.workspace.files());
    if (!rows && rows.error().code == ErrorCode::NotPermitted)
        examination.addUnread(path, rows.error());
    else if (!rows)
        examination.add(FindingKind::UnreadableDatabase, path, rows.error());
    // Where kept files can't be looked at, nobody can tell.
    if (rows && examination.diagnosis.kept && keptFoldersOf(examination.workspace, path).isEmpty())
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

void examineStore(Examination &examination)
{
    DisabledItemsStore store(Tools::supportFolderOf(examination.workspace.home()),
                             examination.workspace.files(), DisabledItemsStore::Manner::TryOut);
    const QString path = QDir::cleanPath(store.path());
    examination.checkRights(path);
    const Result<QList<StoredRow>> rows = store.rowsOf(u"/"_s);
    if (rows)
        return;
    const Error named {rows.error().code, path + u": " + rows.error().text};
    if (rows.error().code == ErrorCode::NotPermitted)
        examination.addUnread(path, named);
    else
        examination.add(FindingKind::UnreadableDatabase, path, named);
}

/// The folders in which saves put files, but for those that are looked at above.
QStringList otherFolders(const Workspace &workspace)
{
    const HomeFolder &home = workspace.home();
    QStringList folders {home.preferencesDirectory(), Tools::supportFolderOf(home)};
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
    examineStore(examination);
}

} // namespace varnel
