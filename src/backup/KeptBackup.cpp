#include "backup/KeptBackup.h"

#include "backup/KeptRun.h"
#include "base/Literals.h"
#include "base/Logging.h"
#include "home/Workspace.h"
#include "platform/FileStore.h"
#include "platform/KeptFolders.h"
#include "plist/PropertyList.h"
#include "settings/Catalogue.h"
#include "settings/PreferencePlaces.h"

#include <QDir>
#include <QMap>

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

/// The subjects whose only row is the one that was written.
QSet<QString> standingRows(const KeptIndex &index, const QList<BackupRow> &rows)
{
    QSet<QString> standing;
    for (const BackupRow &written : index.rows) {
        const QString subject = written.subject();
        const auto isSame = [&](const BackupRow &row) { return row.subject() == subject; };
        if (rows.contains(written) && std::count_if(rows.begin(), rows.end(), isSame) == 1)
            standing.insert(subject);
    }
    return standing;
}

/// None where the bytes are no property list.
std::optional<plist::Object> rootOf(const QByteArray &bytes)
{
    const Result<plist::PropertyList> list = plist::PropertyList::open(bytes);
    return list ? list.value().object({}) : std::nullopt;
}

QSet<int> settingsIn(const KeptPreferences &file)
{
    QSet<int> settings;
    for (const OldKey &key : file.keys)
        settings.insert(key.setting);
    return settings;
}

/// Every other failure has been logged by who met it.
void logIfGone(const QString &path, const Error &error)
{
    if (error.code == ErrorCode::NotFound)
        varnelLog(lcBackup, path + u": left out: it is not there any more");
}

} // namespace

KeptBackup::KeptBackup(const Workspace &work, const QString &backupFile,
                       const QList<BackupRow> &rows)
    : workspace(work)
{
    for (const BackupRow &row : rows)
        withRow.insert(row.subject());
    for (const QString &folder : keptFoldersOf(workspace, backupFile))
        load(folder, rows);
}

void KeptBackup::load(const QString &folder, const QList<BackupRow> &rows)
{
    const Result<bool> inUse = workspace.keptFolders().isInUse(folder);
    if (!inUse || inUse.value()) {
        varnelLog(lcBackup, folder + u": left out: another run is at work with it");
        return;
    }
    const Result<QByteArray> notes =
        workspace.keptFolders().read(folder, keptIndexName(), KeptIndex::largestFile);
    if (!notes) {
        logIfGone(folder + keptIndexName(), notes.error());
        return;
    }
    Result<KeptIndex> index = KeptIndex::fromBytes(notes.value());
    if (index
        && !std::all_of(index.value().files.begin(), index.value().files.end(),
                        [this](const KeptPreferences &file) { return isInPlace(file); }))
        index = Error {ErrorCode::Unloadable, u"a file of its notes is none of its settings'"_s};
    if (!index) {
        varnelLog(lcBackup, folder + u": left out: " + index.error().text);
        return;
    }
    Run run {folder, std::move(index).value(), {}, false};
    run.standing = standingRows(run.index, rows);
    run.allStand = run.standing.size() == run.index.rows.size();
    runs.push_back(std::move(run));
}

bool KeptBackup::counts(const Run &run, int setting) const
{
    const QString subject = QString::number(setting);
    return run.standing.contains(subject)
        || (run.allStand && !withRow.contains(subject) && run.index.withoutRow.contains(setting));
}

QString KeptBackup::pathOf(const KeptPreferences &file) const
{
    return workspace.home().path + u'/' + file.path;
}

/// What is written to is not for the notes to choose.
bool KeptBackup::isInPlace(const KeptPreferences &file) const
{
    const PreferencePlaces places(workspace.home(), workspace.files());
    return std::all_of(file.keys.begin(), file.keys.end(), [&](const OldKey &key) {
        const SettingRow *row = findSetting(key.setting);
        return row == nullptr || places.mayHaveHeld(pathOf(file), row->file);
    });
}

QList<OldKeys> KeptBackup::filesOf(int setting) const
{
    for (const Run &run : runs) {
        if (!counts(run, setting))
            continue;
        QList<OldKeys> files;
        for (const KeptPreferences &file : run.index.files) {
            OldKeys old {pathOf(file), {}};
            std::copy_if(file.keys.begin(), file.keys.end(), std::back_inserter(old.keys),
                         [&](const OldKey &key) { return key.setting == setting; });
            if (!old.keys.isEmpty())
                files.append(old);
        }
        if (!files.isEmpty())
            return files;
    }
    return {};
}

std::optional<QList<OldKey>> KeptBackup::keysOf(int setting) const
{
    QList<OldKey> keys;
    for (const OldKeys &file : filesOf(setting))
        keys += file.keys;
    return keys.isEmpty() ? std::nullopt : std::optional(keys);
}

const KeptFlag *KeptBackup::libraryFlag(int setting) const
{
    const SettingRow *row = findSetting(setting);
    if (row == nullptr || row->mechanism != Mechanism::LibraryFolder)
        return nullptr;
    for (const Run &run : runs)
        if (run.index.libraryFlag && !run.index.libraryFlag->disturbed && counts(run, setting))
            return &*run.index.libraryFlag;
    return nullptr;
}

QString KeptBackup::whyNotExact(const BackupRow &row) const
{
    if (row.isLoginItem() ? isExact(row.loginItemPath())
                          : keysOf(row.id) || libraryFlag(row.id) != nullptr)
        return {};
    const bool isWritten = std::any_of(runs.begin(), runs.end(), [&](const Run &run) {
        return std::any_of(
            run.index.rows.begin(), run.index.rows.end(),
            [&](const BackupRow &written) { return written.subject() == row.subject(); });
    });
    return isWritten ? u"its line is not as it was written"_s : u"nothing more is kept of it"_s;
}

qint64 KeptBackup::size() const
{
    qint64 bytes = 0;
    for (const Run &run : runs) {
        const Result<QStringList> names = workspace.files().names(run.folder);
        const auto sizeOf = [&](const KeptPreferences &file) {
            const bool isThere = file.whole == KeptPreferences::Whole::Kept && names
                && names.value().contains(file.name);
            return isThere ? file.size : 0;
        };
        for (const KeptPreferences &file : run.index.files)
            bytes += sizeOf(file);
        if (run.index.loginItems.file)
            bytes += sizeOf(*run.index.loginItems.file);
    }
    return bytes;
}

QList<int> KeptBackup::settingsWithoutRow() const
{
    QList<int> settings;
    for (const Run &run : runs)
        for (const int setting : run.index.withoutRow)
            if (counts(run, setting) && !settings.contains(setting))
                settings.append(setting);
    return settings;
}

const KeptBackup::Run *KeptBackup::runOfLoginItems() const
{
    const auto hasItems = [](const Run &run) { return !run.index.loginItems.items.isEmpty(); };
    // Of two runs that wrote rows into one backup file neither knows what the other did.
    if (std::count_if(runs.begin(), runs.end(), hasItems) != 1)
        return nullptr;
    return &*std::find_if(runs.begin(), runs.end(), hasItems);
}

const KeptItems *KeptBackup::loginItems() const
{
    const Run *run = runOfLoginItems();
    return run != nullptr ? &run->index.loginItems : nullptr;
}

bool KeptBackup::counts(const KeptItem &item) const
{
    const Run *run = runOfLoginItems();
    if (run == nullptr || item.disturbed)
        return false;
    const QList<BackupRow> lost = itemsWithoutRow();
    return run->standing.contains(BackupRow {BackupRow::loginItemId, item.path, {}, {}}.subject())
        || std::any_of(lost.begin(), lost.end(),
                       [&](const BackupRow &row) { return row.loginItemPath() == item.path; });
}

bool KeptBackup::isExact(const QString &loginItem) const
{
    const KeptItems *items = loginItems();
    const KeptItem *item = items != nullptr ? items->find(loginItem) : nullptr;
    return item != nullptr && counts(*item);
}

QList<BackupRow> KeptBackup::itemsWithoutRow() const
{
    const Run *run = runOfLoginItems();
    if (run == nullptr || !run->allStand)
        return {};
    QList<BackupRow> rows = run->index.itemsWithoutRow;
    rows.removeIf([&](const BackupRow &row) { return withRow.contains(row.subject()); });
    return rows;
}

void KeptBackup::putBackList(const QString &path) const
{
    const Run *run = runOfLoginItems();
    if (run == nullptr || !run->index.loginItems.file
        || run->index.loginItems.file->whole != KeptPreferences::Whole::Kept)
        return;
    const KeptPreferences &file = *run->index.loginItems.file;
    std::optional<plist::Object> was;
    const auto isRight = [&](const QByteArray &bytes) {
        was = rootOf(bytes);
        return was && digestOf(bytes) == file.digest;
    };
    const auto saysTheSame = [&](const std::optional<QByteArray> &now) {
        const std::optional<plist::Object> root = now ? rootOf(*now) : std::nullopt;
        return root && root->saysTheSameAs(*was);
    };
    const Result<KeptFolders::PutBack> done =
        workspace.keptFolders().putBack(run->folder, file.name, path, isRight, saysTheSame);
    if (done && done.value() == KeptFolders::PutBack::WrongKept)
        varnelLog(lcBackup, run->folder + file.name + u": left out: not what was kept");
}

Result<void> KeptBackup::removeStore(const QString &path, const QByteArray &bytes) const
{
    const Result<bool> taken = workspace.keptFolders().takeAway(
        QDir::cleanPath(path), [&](const std::optional<QByteArray> &now) { return now == bytes; });
    return taken ? Result<void>() : taken.error();
}

bool KeptBackup::putBackWhole(const QString &path, const QSet<int> &settings) const
{
    const QString belowHome = path.mid(workspace.home().path.size() + 1);
    const auto hasFile = [&](const Run &run) {
        return std::any_of(run.index.files.begin(), run.index.files.end(),
                           [&](const KeptPreferences &file) { return file.path == belowHome; });
    };
    // Of two runs that wrote rows into one backup file neither knows what the other did.
    if (std::count_if(runs.begin(), runs.end(), hasFile) != 1)
        return false;
    const Run &run = *std::find_if(runs.begin(), runs.end(), hasFile);
    const KeptPreferences file = *KeptIndex(run.index).find(belowHome);
    if (file.disturbed || settingsIn(file) != settings)
        return false;
    const auto isOurs = [&](const std::optional<QByteArray> &now) {
        return now && file.written.contains(digestOf(*now));
    };
    KeptFolders &kept = workspace.keptFolders();
    if (file.whole == KeptPreferences::Whole::Absent) {
        const Result<bool> taken = kept.takeAway(path, isOurs);
        return taken && taken.value();
    }
    if (file.whole == KeptPreferences::Whole::NotKept)
        return false;
    const auto isRight = [&](const QByteArray &bytes) { return digestOf(bytes) == file.digest; };
    const Result<KeptFolders::PutBack> done =
        kept.putBack(run.folder, file.name, path, isRight, isOurs);
    if (!done)
        logIfGone(run.folder + file.name, done.error());
    else if (done.value() == KeptFolders::PutBack::WrongKept)
        varnelLog(lcBackup, run.folder + file.name + u": left out: not what was kept");
    return done && done.value() == KeptFolders::PutBack::Done;
}

namespace {

QString nameOf(const BackupRow &row)
{
    if (row.isLoginItem())
        return row.loginItemPath();
    const SettingRow *setting = findSetting(row.id);
    return setting != nullptr ? setting->label : QString::number(row.id);
}

QString exactText(const plist::Object &object)
{
    const QString type = plist::nameOf(object.type());
    const QString text = object.text();
    if (text.isNull())
        return type + u" of " + QString::number(object.count());
    return type + u' ' + text;
}

} // namespace

QString exactnessSentence(const KeptBackup &kept, const QList<BackupRow> &rows)
{
    if (rows.isEmpty())
        return {};
    QMap<QString, QStringList> lines; // by reason
    for (const BackupRow &row : rows)
        if (const QString why = kept.whyNotExact(row); !why.isNull())
            lines[why].append(nameOf(row));
    if (lines.isEmpty())
        return u"Everything in this file comes back exactly."_s;
    if (lines.first().size() == rows.size())
        return u"All of it comes back only as the lines say: "_s + lines.firstKey() + u'.';
    QStringList reasons;
    for (auto reason = lines.begin(); reason != lines.end(); ++reason)
        reasons.append(reason.value().join(u", ") + u": " + reason.key());
    return u"Comes back only as its line says: "_s + reasons.join(u"; ") + u'.';
}

QString exactText(const KeptFlag &flag)
{
    const FinderInfoBytes &bytes = flag.before.bytes;
    return flag.before.isSet
        ? u"bytes "_s
            + QString::fromLatin1(
                QByteArrayView(bytes.data(), qsizetype(bytes.size())).toByteArray().toHex())
        : u"nothing"_s;
}

QString exactnessInWords(const KeptBackup &kept, const QList<BackupRow> &rows)
{
    if (rows.isEmpty())
        return {};
    const auto byRow = std::count_if(rows.begin(), rows.end(), [&kept](const BackupRow &row) {
        return !kept.whyNotExact(row).isNull();
    });
    if (byRow == 0)
        return u"comes back exactly"_s;
    return byRow == rows.size()
        ? u"comes back as its lines say"_s
        : u"%1 of %2 come back exactly"_s.arg(rows.size() - byRow).arg(rows.size());
}

QString exactText(const QList<OldKey> &keys)
{
    QStringList texts;
    for (const OldKey &key : keys)
        texts.append(key.object ? exactText(*key.object) : u"nothing"_s);
    return texts.join(u", ");
}

} // namespace varnel
