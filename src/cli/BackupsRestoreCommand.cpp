#include "cli/BackupsRestoreCommand.h"

#include "cli/Backups.h"
#include "cli/Lookup.h"
#include "cli/Outcome.h"
#include "cli/Restore.h"
#include "cli/RestoreOutput.h"
#include "cli/SettingReport.h"
#include "platform/linux/HomeEntries.h"
#include "platform/linux/LinuxStandardFolders.h"

#include <QSet>

#include <algorithm>

namespace varnel::cli {

namespace {

const QString onlyOption = QStringLiteral("only");
const QString keepOption = QStringLiteral("keep");
const QString dryRunOption = QStringLiteral("dry-run");

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

Result<void> makeFolders(const HomeFolder &home, const Request &request)
{
    LinuxStandardFolders standardFolders;
    return standardFolders.ensure(home, foldersToMake(home, request));
}

} // namespace

CommandInfo BackupsRestoreCommand::info() const
{
    return {
        u"backups restore"_qs,
        u"Puts the values of a backup file back and deletes the file"_qs,
        u"Stops at the first setting that can't be written; the file then stays. It also stays\n"
        u"with --only and when a login item could not be changed. Nothing is added to any backup\n"
        u"file."_qs,
        {backupParameter()},
        {{onlyOption, u"SETTING"_qs, u"these settings alone; keeps the file"_qs, true},
         {keepOption, {}, u"keep the file"_qs},
         {dryRunOption, {}, u"print what would change, and touch nothing"_qs}},
        {u"backups restore quillet1.sqlite"_qs, u"backups restore quillet1.sqlite --dry-run"_qs,
         u"backups restore quillet1.sqlite --only dock-size 1008"_qs}};
}

ExitStatus BackupsRestoreCommand::run(const Request &request, Console &console) const
{
    const QString &name = request.arguments.first();
    const Result<QList<const SettingRow *>> only = settingsNamed(request.options[onlyOption]);
    if (!only)
        return failure(only.error());
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(home.error());
    Result<QList<BackupRow>> rows = backupRows(home.value(), name);
    if (!rows)
        return failure(rows.error());
    if (request.has(onlyOption)) {
        const QStringList missing = missingFrom(rows.value(), only.value());
        if (!missing.isEmpty()) {
            console.message(name + u" holds nothing of " + missing.join(u", "));
            return ExitStatus::Negative;
        }
        rows = rowsOf(rows.value(), only.value());
    }
    const bool dry = request.has(dryRunOption);
    if (!dry)
        if (const Result<void> made = makeFolders(home.value(), request); !made)
            return failure(made.error());

    HomeSession session(home.value());
    Restoration done {
        name, dry, playRows(session, rows.value(), dry ? RestoreMode::DryRun : RestoreMode::Play)};
    for (const QString &message : restoreMessages(done.report))
        console.message(message);
    bool asItShould = done.report.complete() && done.report.filesWithoutLock.isEmpty();
    if (!dry && done.report.complete() && !request.has(onlyOption) && !request.has(keepOption)) {
        const Result<void> removed =
            removeEntry(home.value(), backupPath(home.value(), name).value());
        done.deleted = removed.ok();
        asItShould = asItShould && removed.ok();
        if (!removed)
            console.message(removed.error().text);
    }
    if (done.deleted
        || (!dry && !(done.report.changes.isEmpty() && done.report.loginItems.isEmpty())))
        console.noteWrite();
    if (request.has(u"json"_qs))
        console.print(jsonDocument(restoreObject(done)));
    else
        console.print(restoreText(done, console.style()));
    return asItShould ? ExitStatus::Done : ExitStatus::Partly;
}

} // namespace varnel::cli
