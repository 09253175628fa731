#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "cli/Backups.h"
#include "cli/DryRun.h"
#include "cli/Ending.h"
#include "cli/Lookup.h"
#include "cli/RestoreOutput.h"

#include <QSet>

#include <algorithm>

namespace varnel::cli {

namespace {

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

} // namespace

CommandDescription BackupsRestoreCommand::description() const
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

Result<HomeCommand::Work> BackupsRestoreCommand::prepare(const Request &request) const
{
    const Result<QList<const SettingRow *>> only = settingsNamed(request.options[onlyOption]);
    if (!only)
        return only.error();
    return Work([only = only.value(), &request](const HomeFolder &home) {
        return restoreIn(home, only, request);
    });
}

} // namespace varnel::cli
