#include "cli/CommandFamilies.h"

#include "backup/BackupFolder.h"
#include "backup/KeptBackup.h"
#include "backup/Playback.h"
#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/Ending.h"
#include "cli/HomeCommand.h"
#include "cli/Lookup.h"
#include "cli/RestoreOutput.h"
#include "cli/TextWidth.h"
#include "settings/Catalogue.h"
#include "settings/ValueText.h"

#include <QJsonArray>
#include <QSet>

#include <algorithm>

namespace varnel::cli {

namespace {

/// Whether a backup file of the name that was typed can be worked on: Invalid for a name with a
/// folder in it, else what the folder says.
Result<void> checkBackup(const BackupFolder &folder, const QString &name)
{
    if (name.contains(u'/'))
        return Error {ErrorCode::Invalid,
                      u'\'' + name + u"' is no name of a backup file; 'backups list' names them"};
    const Result<QString> found = folder.find(name);
    return found ? Result<void>() : found.error();
}

/// NAME, as the commands take it.
ParameterInfo backupParameter(ParameterInfo::Count count = ParameterInfo::Count::One)
{
    return {u"NAME"_s, u"name of a backup file, as 'backups list' shows it"_s, count,
            Completes::Backup};
}

/// A file that can't be read brings nothing back.
QJsonObject entryObject(const BackupEntry &entry, const BackupFolder &folder,
                        const Workspace &workspace)
{
    const QString file = folder.pathOf(entry.name);
    const Result<QList<BackupRow>> read = folder.read(file);
    const QList<BackupRow> rows = read ? read.value() : QList<BackupRow>();
    const KeptBackup kept(workspace, file, rows);
    const bool exact = read && std::all_of(rows.begin(), rows.end(), [&](const BackupRow &row) {
                           return kept.whyNotExact(row).isNull();
                       });
    return {{u"name"_s, entry.name},
            {u"createdDate"_s, creationText(entry.createdDate)},
            {u"exact"_s, exact},
            {u"keptBytes"_s, kept.size()}};
}

QString listText(const QList<BackupEntry> &entries, const Style &style)
{
    Table table;
    for (const BackupEntry &entry : entries)
        table.addRow({{entry.name}, {creationText(entry.createdDate), Table::Look::Quiet}});
    return entries.isEmpty() ? u"No backup files yet: one is made at the first save.\n"_s
                             : table.text(style);
}

CommandDescription describeList()
{
    return {u"Lists the backup files"_s,
            {},
            {},
            {},
            {u"backups list"_s, u"backups list --json --home /mnt/disk/Users/anna"_s}};
}

Result<HomeCommand::Work> prepareList(const Request &request)
{
    return HomeCommand::Work([&request](const HomeFolder &home) {
        HomeSession session(home);
        const BackupFolder folder(session.workspace());
        Result<QList<BackupEntry>> listed = folder.list();
        if (!listed)
            return HomeOutcome::failed(listed.error());
        QList<BackupEntry> &entries = listed.value();
        constexpr bool ascending = true; // the flag is named against its effect
        sortByName(entries, ascending);
        HomeOutcome outcome;
        outcome.text = [entries](const Style &style) { return listText(entries, style); };
        if (!request.has(u"json"_s))
            return outcome;
        QJsonArray backups;
        for (const BackupEntry &entry : entries)
            backups.append(entryObject(entry, folder, session.workspace()));
        outcome.object = [backups] { return QJsonObject {{u"backups"_s, backups}}; };
        return outcome;
    });
}

BackupLine lineOf(const BackupRow &row)
{
    return describeRow(row, [](int settingId, int value, const QString &extra) {
        const SettingRow *setting = findSetting(settingId);
        return setting == nullptr
            ? QStringList()
            : QStringList {locationString(*setting), shortLocationString(*setting),
                           actionString(*setting, {value, extra})};
    });
}

/// A backup file with what is kept beside it.
struct Contents {
    QList<BackupRow> rows;
    QStringList whyNotExact; ///< of each row; null where it comes back exactly
    QList<BackupRow> withoutRow; ///< come back all the same, exactly
};

Contents contentsOf(const QList<BackupRow> &rows, const KeptBackup &kept)
{
    Contents contents {rows, {}, {}};
    for (const BackupRow &row : rows)
        contents.whyNotExact.append(kept.whyNotExact(row));
    for (const int setting : kept.settingsWithoutRow()) {
        const SettingRow *row = findSetting(setting);
        const std::optional<QList<OldKey>> keys = kept.keysOf(setting);
        if (row == nullptr || !keys)
            continue;
        const SettingValue old = readingOf(*row, *keys).value;
        contents.withoutRow.append({setting, QString::number(old.number), old.text, u""_s});
    }
    contents.withoutRow += kept.itemsWithoutRow();
    return contents;
}

QJsonObject lineObject(const BackupRow &row, bool exact)
{
    const BackupLine line = lineOf(row);
    return {{u"id"_s, row.id},
            {u"value1"_s, row.value1},
            {u"value2"_s, row.value2},
            {u"value3"_s, row.value3},
            {u"location"_s, line.location},
            {u"description"_s, line.description},
            {u"exact"_s, exact}};
}

QJsonObject contentsObject(const QString &name, const Contents &contents)
{
    QJsonArray rows;
    for (qsizetype at = 0; at < contents.rows.size(); ++at)
        rows.append(lineObject(contents.rows[at], contents.whyNotExact[at].isNull()));
    QJsonArray withoutRow;
    for (const BackupRow &row : contents.withoutRow)
        withoutRow.append(lineObject(row, true));
    return {{u"name"_s, name}, {u"rows"_s, rows}, {u"withoutRow"_s, withoutRow}};
}

/// What the row would bring about. The sentence of a number is fixed, and has a "%s" in its place.
QString sentence(const BackupRow &row, const BackupLine &line)
{
    const SettingRow *setting = findSetting(row.id);
    const bool named = setting != nullptr && setting->kind == ValueKind::Number
        && row.settingAction() != defaultValue(*setting).number;
    return named ? line.description + u" ("
            + labelText(*setting, {row.settingAction(), row.extraData()}) + u')'
                 : line.description;
}

void addLine(Table &table, const BackupRow &row, const QString &exactness)
{
    const BackupLine line = lineOf(row);
    table.addRow({{QString::number(row.id), Table::Look::Quiet},
                  {line.location},
                  {sentence(row, line), Table::Look::Strong},
                  {exactness, Table::Look::Quiet}});
}

QString contentsText(const Contents &contents, const Style &style)
{
    Table table;
    for (qsizetype at = 0; at < contents.rows.size(); ++at) {
        const QString &why = contents.whyNotExact[at];
        addLine(table, contents.rows[at], why.isNull() ? u"exactly"_s : u"not exactly: " + why);
    }
    for (const BackupRow &row : contents.withoutRow)
        addLine(table, row, u"exactly; it has no row"_s);
    return contents.rows.isEmpty() && contents.withoutRow.isEmpty()
        ? u"This file holds no changes that can be undone.\n"_s
        : table.text(style);
}

CommandDescription describeShow()
{
    return {u"Shows what restoring a backup file would do"_s,
            u"A row of a setting that this program does not know stands without words; restoring\n"
            u"skips it."_s,
            {backupParameter()},
            {},
            {u"backups show quillet1.sqlite"_s, u"backups show quillet1.sqlite --json"_s}};
}

Result<HomeCommand::Work> prepareShow(const Request &request)
{
    return HomeCommand::Work([name = request.arguments.first()](const HomeFolder &home) {
        HomeSession session(home);
        const BackupFolder folder(session.workspace());
        if (const Result<void> sound = checkBackup(folder, name); !sound)
            return HomeOutcome::failed(sound.error());
        const Result<QList<BackupRow>> read = folder.read(folder.pathOf(name));
        if (!read)
            return HomeOutcome::failed(read.error());
        const KeptBackup kept(session.workspace(), folder.pathOf(name), read.value());
        const Contents contents = contentsOf(read.value(), kept);
        HomeOutcome outcome;
        outcome.text = [contents](const Style &style) { return contentsText(contents, style); };
        outcome.object = [name, contents] { return contentsObject(name, contents); };
        return outcome;
    });
}

const QString onlyOption = QStringLiteral("only");
const QString keepOption = QStringLiteral("keep");

Result<QList<const SettingRow *>> settingsNamed(const QStringList &typed)
{
    QList<const SettingRow *> settings;
    for (const QString &each : typed) {
        const Result<const SettingRow *> setting = lookUpSetting(each);
        if (!setting)
            return setting.error();
        settings.append(setting.value());
    }
    return settings;
}

/// The settings that the file has no row for.
QStringList missingFrom(const QList<BackupRow> &rows, const QList<const SettingRow *> &settings)
{
    QStringList missing;
    for (const SettingRow *setting : settings) {
        const bool held = std::any_of(rows.begin(), rows.end(),
                                      [&](const BackupRow &row) { return row.id == setting->id; });
        if (!held)
            missing.append(setting->name);
    }
    return missing;
}

QList<BackupRow> rowsOf(const QList<BackupRow> &rows, const QList<const SettingRow *> &settings)
{
    QSet<int> wanted;
    for (const SettingRow *setting : settings)
        wanted.insert(setting->id);
    QList<BackupRow> kept;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(kept),
                 [&](const BackupRow &row) { return wanted.contains(row.id); });
    return kept;
}

HomeOutcome holdsNothingOf(const QString &name, const QStringList &settings)
{
    HomeOutcome outcome;
    outcome.status = ExitStatus::Negative;
    outcome.messages.append(name + u" holds nothing of " + settings.join(u", "));
    return outcome;
}

HomeOutcome outcomeOf(const Restoration &done)
{
    const RestoreReport &report = done.report;
    const bool changed = !(report.changes.isEmpty() && report.loginItems.isEmpty());
    HomeOutcome outcome;
    outcome.messages = restoreMessages(report);
    outcome.changes = done.deleted || changed;
    outcome.dryRun = done.dryRun;
    outcome.restart = report.restart;
    outcome.text = [done](const Style &style) { return restoreText(done, style); };
    outcome.object = [done] { return restoreObject(done); };
    if (!report.complete() || !report.filesWithoutLock.isEmpty())
        outcome.status = ExitStatus::Partly;
    return outcome;
}

/// Deletes the file whose rows were played.
void deletePlayed(BackupFolder &folder, Restoration &done, QStringList &messages)
{
    Result<void> removed = checkBackup(folder, done.name);
    if (removed)
        removed = folder.removeForGood(done.name);
    done.deleted = removed.ok();
    if (!removed)
        messages.append(removed.error().text);
}

HomeOutcome restoreIn(const HomeFolder &home, const QList<const SettingRow *> &only,
                      const Request &request)
{
    const QString &name = request.arguments.first();
    HomeSession session(home);
    BackupFolder folder(session.workspace());
    if (const Result<void> sound = checkBackup(folder, name); !sound)
        return HomeOutcome::failed(sound.error());
    Result<QList<BackupRow>> rows = folder.read(folder.pathOf(name));
    if (!rows)
        return HomeOutcome::failed(rows.error());
    const KeptBackup kept(session.workspace(), folder.pathOf(name), rows.value());
    if (!only.isEmpty()) {
        const QStringList missing = missingFrom(rows.value(), only);
        if (!missing.isEmpty())
            return holdsNothingOf(name, missing);
        rows = rowsOf(rows.value(), only);
    }
    const Workspace::Terms terms = termsOf(home, request);
    const Result<RestoreReport> played =
        restoreRows(session.workspace(), session.access(), rows.value(),
                    only.isEmpty() ? RestoredRows::All : RestoredRows::Named, kept, terms);
    if (!played)
        return HomeOutcome::failed(played.error());

    Restoration done {name, terms.dryRun, played.value()};
    const bool deletes = done.report.complete() && only.isEmpty() && !request.has(keepOption);
    QStringList problems;
    if (deletes && !done.dryRun)
        deletePlayed(folder, done, problems);
    HomeOutcome outcome = outcomeOf(done);
    outcome.changes = outcome.changes || deletes;
    if (!problems.isEmpty())
        outcome.status = ExitStatus::Partly;
    outcome.messages += problems;
    return outcome;
}

CommandDescription describeRestore()
{
    return {u"Puts the values of a backup file back and deletes the file"_s,
            u"Stops at the first setting or login item that can't be put back; the file then "
            u"stays. It\n"
            u"also stays with --only. Nothing is added to any backup file."_s,
            {backupParameter()},
            {{onlyOption, u"SETTING"_s, u"these settings alone; keeps the file"_s, true,
              Completes::Setting},
             {keepOption, {}, u"keep the file"_s},
             dryRunOption(),
             Ending::option()},
            {u"backups restore quillet1.sqlite"_s, u"backups restore quillet1.sqlite --dry-run"_s,
             u"backups restore quillet1.sqlite --only dock-size 1008"_s}};
}

Result<HomeCommand::Work> prepareRestore(const Request &request)
{
    const Result<QList<const SettingRow *>> only = settingsNamed(request.options[onlyOption]);
    if (!only)
        return only.error();
    return HomeCommand::Work([only = only.value(), &request](const HomeFolder &home) {
        return restoreIn(home, only, request);
    });
}

/// Checked before the first is deleted: a slip in one name deletes nothing.
Result<void> check(const BackupFolder &folder, const QStringList &names)
{
    for (const QString &name : names)
        if (Result<void> sound = checkBackup(folder, name); !sound)
            return sound;
    return {};
}

QString deletedText(const QStringList &names, bool dry)
{
    QString text;
    for (const QString &name : names)
        text += (dry ? u"Would delete "_s : u"Deleted "_s) + printable(name) + u'\n';
    return text;
}

HomeOutcome deleteFrom(const HomeFolder &home, const QStringList &names, bool dry)
{
    HomeSession session(home);
    BackupFolder folder(session.workspace());
    if (const Result<void> sound = check(folder, names); !sound)
        return HomeOutcome::failed(sound.error());
    HomeOutcome outcome;
    QStringList deleted;
    for (const QString &name : names) {
        const Result<void> removed = dry ? Result<void>() : folder.removeForGood(name);
        if (removed)
            deleted.append(name);
        else
            outcome.messages.append(removed.error().text);
    }
    outcome.changes = !deleted.isEmpty();
    outcome.dryRun = dry;
    outcome.text = [deleted, dry](const Style &) { return deletedText(deleted, dry); };
    outcome.object = [deleted, dry] {
        return QJsonObject {{u"deleted"_s, QJsonArray::fromStringList(deleted)},
                            {u"dryRun"_s, dry}};
    };
    if (deleted.size() < names.size())
        outcome.status = deleted.isEmpty() ? ExitStatus::Failed : ExitStatus::Partly;
    return outcome;
}

CommandDescription describeDelete()
{
    return {
        u"Deletes backup files"_s,
        u"What they hold can't be undone any more. All names are checked first: when one of\n"
        u"them is wrong, nothing is deleted."_s,
        {backupParameter(ParameterInfo::Count::OneOrMore)},
        {dryRunOption()},
        {u"backups delete quillet1.sqlite"_s, u"backups delete quillet1.sqlite quillet2.sqlite"_s}};
}

Result<HomeCommand::Work> prepareDelete(const Request &request)
{
    QStringList names = request.arguments;
    names.removeDuplicates();
    return HomeCommand::Work([names, dry = isDryRun(request)](const HomeFolder &home) {
        return deleteFrom(home, names, dry);
    });
}

} // namespace

Commands backupsCommands()
{
    return {{u"backups list"_s, {}, homeCommand<describeList, prepareList>},
            {u"backups show"_s, {}, homeCommand<describeShow, prepareShow>},
            {u"backups restore"_s, {}, homeCommand<describeRestore, prepareRestore>},
            {u"backups delete"_s, {}, homeCommand<describeDelete, prepareDelete>}};
}

} // namespace varnel::cli
