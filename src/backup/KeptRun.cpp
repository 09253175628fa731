#include "backup/KeptRun.h"

#include "backup/BackupWriter.h"
#include "base/Literals.h"
#include "base/Logging.h"
#include "base/Text.h"
#include "home/Workspace.h"
#include "platform/FileStore.h"
#include "platform/FolderMaker.h"
#include "platform/KeptFolders.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

constexpr qsizetype statesRemembered = 2;

QString stemOf(const QString &backupFile)
{
    return QFileInfo(backupFile).completeBaseName();
}

/// The backup file's name without its ending; null where the folder is none of a run.
QString stemOfFolder(const QString &name)
{
    static const QRegularExpression pattern(u"\\A(.+)-[0-9a-f]{16}\\z"_s);
    return pattern.match(name).captured(1);
}

QStringList runFolders(const Workspace &workspace)
{
    const Result<QStringList> names =
        workspace.keptFolders().list(Tools::keptFolderOf(workspace.home()));
    return names ? names.value() : QStringList();
}

/// The paths of those folders of runs whose backup files are not there, or only just made.
QStringList withoutBackup(const Workspace &workspace, const QStringList &names,
                          const QString &newBackup = {})
{
    QStringList folders;
    for (const QString &name : names) {
        const QString stem = stemOfFolder(name);
        const QString backup = Tools::backupFolderOf(workspace.home()) + stem + u".sqlite";
        if (!stem.isNull() && (stem == newBackup || !workspace.files().exists(backup)))
            folders.append(Tools::keptFolderOf(workspace.home()) + name + u'/');
    }
    return folders;
}

void remember(KeptPreferences &kept, const QByteArray &after)
{
    const QByteArray digest = digestOf(after);
    kept.written.removeAll(digest);
    kept.written.append(digest);
    if (kept.written.size() > statesRemembered)
        kept.written.removeFirst();
}

OldKey forSetting(int setting, OldKey key)
{
    key.setting = setting;
    return key;
}

/// Whether the run has left the file so, or found it so.
bool isKnown(const KeptPreferences &kept, const std::optional<QByteArray> &bytes)
{
    if (!bytes)
        return kept.whole == KeptPreferences::Whole::Absent;
    const QByteArray digest = digestOf(*bytes);
    return digest == kept.digest || kept.written.contains(digest);
}

bool hasRowOf(const KeptIndex &index, const BackupRow &row)
{
    return std::any_of(index.rows.begin(), index.rows.end(),
                       [&](const BackupRow &each) { return each.subject() == row.subject(); });
}

} // namespace

KeptRun::KeptRun(Workspace &work, std::function<QString()> file)
    : workspace(work), backupFile(std::move(file)), itemRows({}, work.files())
{
}

Result<void> KeptRun::addDataToBackupFile(const ChangeRecord &record)
{
    BackupWriter writer(backupFile(), workspace.files());
    Result<void> kept = writer.addDataToBackupFile(record);
    meet(writer.metFile());
    note(record, kept.ok());
    return kept;
}

void KeptRun::meet(MetFile met)
{
    // Whoever restored or deleted the run's file gave up what was kept, too.
    if (met != MetFile::Stood)
        startAnew();
    hasBackupFile = met != MetFile::None;
    // A folder that has been kept under this name before belongs to a file that is gone.
    if (met == MetFile::Made)
        hasParent = sweepKeptFolders(workspace, stemOf(backupFile()));
}

/// The new backup file gets the rows of the whole run once more, so the keys stay theirs.
void KeptRun::startAnew()
{
    // Where it can't be removed, it must not pass for a living run's.
    if (!folder.isEmpty() && !workspace.keptFolders().discard(folder))
        workspace.keptFolders().release(folder);
    folder.clear();
    isIndexWritten = false;
    index.rows.clear();
    index.withoutRow.clear();
    index.libraryFlag.reset();
    index.itemsWithoutRow.clear();
    index.loginItems = {};
    hasNewStates = false;
    for (KeptPreferences &file : index.files)
        file.written.clear();
}

void KeptRun::note(const ChangeRecord &record, bool kept)
{
    // As the file gives it back: half a character outside of the basic plane is none in UTF-8.
    const BackupRow row {record.locationId, QString::number(record.actionId),
                         textOfUtf8(record.extraData.toUtf8()), u""_s};
    if (hasRowOf(index, row))
        return;
    index.withoutRow.removeAll(row.id);
    if (kept)
        index.rows.append(row);
    else
        index.withoutRow.append(row.id);
}

Result<void> KeptRun::addDataToBackupFile(int actionId, const QString &path, int enabledFlag)
{
    itemRows.setBackupFile(backupFile());
    Result<void> kept = itemRows.addDataToBackupFile(actionId, path, enabledFlag);
    meet(itemRows.metFile());
    note(loginItemRow(actionId, path, enabledFlag), kept.ok());
    return kept;
}

void KeptRun::note(const BackupRow &row, bool kept)
{
    const auto isSame = [&](const BackupRow &each) { return each.subject() == row.subject(); };
    if (hasRowOf(index, row))
        return;
    if (kept) {
        index.itemsWithoutRow.removeIf(isSame);
        index.rows.append(row);
    } else if (std::none_of(index.itemsWithoutRow.begin(), index.itemsWithoutRow.end(), isSame)) {
        index.itemsWithoutRow.append(row);
    }
}

/// Kept once, and put back once it says the same again: what others did to it meanwhile can't be
/// lost by that.
void KeptRun::keepListFile(const QString &file)
{
    KeptItems &kept = index.loginItems;
    if (file.isNull() || kept.file || !kept.items.isEmpty() || !hasFolder())
        return;
    const Result<std::optional<QByteArray>> now = workspace.files().readIfThere(file);
    if (!now)
        return;
    KeptPreferences whole;
    whole.path = belowHome(file);
    whole.name = u"loginitems.plist"_s;
    keepWhole(whole, {file, now.value(), {}, {}});
    kept.file = whole;
    // The list is changed next, and by then what is kept has to last. The notes of it come with the
    // first state.
    writeIndex();
}

void KeptRun::keepStates(const QString &path, const LoginItemsState &before,
                         const LoginItemsState &after)
{
    KeptItems &kept = index.loginItems;
    if (kept.items.isEmpty()) {
        kept.hadStore = before.hasStore;
        kept.list = before.list;
    }
    keepOrder(before.order, after.order);
    // What was done to another list comes back by its row alone.
    const bool isSure = before.isSure && after.isSure && before.list == kept.list;
    const auto item = std::find_if(kept.items.begin(), kept.items.end(),
                                   [&](const KeptItem &each) { return each.path == path; });
    if (item != kept.items.end()) {
        item->disturbed = item->disturbed || !isSure || item->after != before.item;
        item->after = after.item;
    } else {
        kept.items.append({path, before.item, after.item, !isSure});
    }
    hasNewStates = true;
}

void KeptRun::keepOrder(const QStringList &before, const QStringList &after)
{
    KeptItems &kept = index.loginItems;
    if (kept.items.isEmpty())
        kept.orderBefore = before;
    // What others inserted between two saves stands behind all that was there.
    for (const QString &name : before)
        if (!kept.orderBefore.contains(name) && !kept.orderAfter.contains(name)
            && !kept.items.isEmpty())
            kept.orderBefore.append(name);
    kept.orderDisturbed = kept.orderDisturbed || !haveOneOrder(kept.orderAfter, before);
    kept.orderAfter = after;
}

bool KeptRun::tellsOfLoginItems() const
{
    return !index.loginItems.items.isEmpty() && workspace.files().exists(backupFile());
}

void KeptRun::finishKeeping()
{
    if (hasNewStates && hasFolder())
        writeIndex();
    hasNewStates = false;
}

bool KeptRun::hasFolder()
{
    if (!hasBackupFile || !folder.isEmpty())
        return hasBackupFile;
    const QString parent = Tools::keptFolderOf(workspace.home());
    if (!hasParent) {
        const Result<void> made = workspace.folders().makeFolder(workspace.home(), parent);
        if (!made) {
            varnelLog(lcIo, made.error().text);
            return false;
        }
    }
    const Result<QString> own = workspace.keptFolders().make(parent, stemOf(backupFile()));
    folder = own ? own.value() : QString();
    return own.ok();
}

void KeptRun::keepFiles(const QList<ReplacedFile> &files,
                        const std::optional<ChangedFlag> &libraryFlag)
{
    const bool replaces = std::any_of(files.begin(), files.end(),
                                      [](const ReplacedFile &file) { return bool(file.after); });
    if ((replaces || libraryFlag) && !hasFolder())
        return;
    for (const ReplacedFile &file : files)
        keep(file);
    if (libraryFlag)
        keep(*libraryFlag);
    if (!folder.isEmpty() && (!files.isEmpty() || libraryFlag))
        writeIndex();
}

void KeptRun::keep(const ReplacedFile &file)
{
    KeptPreferences &kept = notesOf(belowHome(file.path));
    keysBefore.insert(kept.path, kept.keys);
    addKeys(kept, file.keys);
    if (!file.after)
        return;
    if (kept.written.isEmpty())
        keepWhole(kept, file);
    else if (!isKnown(kept, file.before))
        kept.disturbed = true;
    remember(kept, *file.after);
}

KeptPreferences &KeptRun::notesOf(const QString &path)
{
    if (KeptPreferences *known = index.find(path))
        return *known;
    KeptPreferences kept;
    kept.path = path;
    kept.name = QString::number(index.files.size() + 1) + u".plist";
    index.files.append(kept);
    return index.files.last();
}

/// What is replaced for the first time; for the first time again, where the run has started anew:
/// then it comes back whole only where it has come back before.
void KeptRun::keepWhole(KeptPreferences &kept, const ReplacedFile &file)
{
    const KeptPreferences earlier = kept;
    kept.whole = KeptPreferences::Whole::NotKept;
    kept.digest.clear();
    const Result<KeptFolders::Kept> whole =
        workspace.keptFolders().keep(file.path, folder, kept.name);
    if (whole) {
        kept.whole = KeptPreferences::Whole::Kept;
        kept.digest = digestOf(whole.value().bytes);
        kept.size = whole.value().bytes.size();
        kept.disturbed = kept.disturbed || whole.value().bytes != file.before;
    } else if (whole.error().code == ErrorCode::NotFound) {
        kept.whole = KeptPreferences::Whole::Absent;
        kept.disturbed = kept.disturbed || file.before.has_value();
    }
    if (earlier.whole != KeptPreferences::Whole::NotKept
        && (earlier.whole != kept.whole || earlier.digest != kept.digest))
        kept.disturbed = true;
}

/// Each from the version before its first change, whichever setting that was for; of one that was
/// never changed, from when it was first wanted.
void KeptRun::addKeys(KeptPreferences &kept, const QList<OldKey> &keys)
{
    for (OldKey key : keys) {
        for (OldKey &earlier : kept.keys) {
            if (earlier.keyPath != key.keyPath)
                continue;
            if (key.changed && !earlier.changed)
                earlier = forSetting(earlier.setting, key);
            else
                key = forSetting(key.setting, earlier);
        }
        if (!kept.keys.contains(key))
            kept.keys.append(key);
    }
}

void KeptRun::keepAfresh(const ReplacedFile &file)
{
    const QString path = belowHome(file.path);
    KeptPreferences *kept = folder.isEmpty() ? nullptr : index.find(path);
    if (kept == nullptr)
        return;
    kept->disturbed = kept->disturbed || !isKnown(*kept, file.before);
    kept->keys = keysBefore.value(path);
    addKeys(*kept, file.keys);
    remember(*kept, *file.after);
    writeIndex();
}

void KeptRun::keep(const ChangedFlag &changed)
{
    if (!index.libraryFlag)
        index.libraryFlag = {changed.before, changed.after};
    KeptFlag &flag = *index.libraryFlag;
    const FinderInfoBytes &before = changed.before.bytes;
    flag.disturbed = flag.disturbed || (before != flag.written && before != flag.before.bytes);
    flag.written = changed.after;
}

void KeptRun::writeIndex()
{
    const QByteArray bytes = index.toBytes();
    if (bytes.size() > KeptIndex::largestFile)
        varnelLog(lcBackup, folder + keptIndexName() + u": too big: the rows alone bring it back");
    // What fails has been logged; the rows are a way back without it.
    isIndexWritten = workspace.keptFolders().write(folder, keptIndexName(), bytes).ok()
        && bytes.size() <= KeptIndex::largestFile;
}

bool KeptRun::hasWayBack(int setting) const
{
    const bool hasRow =
        std::any_of(index.rows.begin(), index.rows.end(),
                    [&](const BackupRow &row) { return !row.isLoginItem() && row.id == setting; });
    const bool hasKeys =
        std::any_of(index.files.begin(), index.files.end(), [&](const KeptPreferences &file) {
            return std::any_of(file.keys.begin(), file.keys.end(),
                               [&](const OldKey &key) { return key.setting == setting; });
        });
    return hasRow || (isIndexWritten && index.withoutRow.contains(setting) && hasKeys);
}

bool KeptRun::hasWayBack(const QString &path) const
{
    const auto isOfPath = [&](const BackupRow &row) {
        return row.isLoginItem() && row.loginItemPath() == path;
    };
    return std::any_of(index.rows.begin(), index.rows.end(), isOfPath)
        || (isIndexWritten
            && std::any_of(index.itemsWithoutRow.begin(), index.itemsWithoutRow.end(), isOfPath));
}

QString KeptRun::belowHome(const QString &path) const
{
    return path.mid(workspace.home().path.size() + 1);
}

bool haveOneOrder(const QStringList &some, const QStringList &others)
{
    const auto shared = [](QStringList names, const QStringList &with) {
        const QSet<QString> there(with.begin(), with.end());
        names.removeIf([&](const QString &name) { return !there.contains(name); });
        return names;
    };
    return shared(some, others) == shared(others, some);
}

QStringList keptFoldersOf(const Workspace &workspace, const QString &backupFile)
{
    QStringList folders;
    for (const QString &name : runFolders(workspace))
        if (stemOfFolder(name) == stemOf(backupFile))
            folders.append(Tools::keptFolderOf(workspace.home()) + name + u'/');
    return folders;
}

QStringList keptFoldersWithoutBackup(const Workspace &workspace)
{
    return withoutBackup(workspace, runFolders(workspace));
}

bool sweepKeptFolders(const Workspace &workspace, const QString &newBackup)
{
    const QString parent = Tools::keptFolderOf(workspace.home());
    const Result<QStringList> names = workspace.keptFolders().sweep(parent);
    for (const QString &folder :
         withoutBackup(workspace, names ? names.value() : QStringList(), newBackup))
        static_cast<void>(workspace.keptFolders().discard(folder));
    return names.ok();
}

} // namespace varnel
