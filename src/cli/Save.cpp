#include "cli/Save.h"

#include "backup/BackupWriter.h"
#include "base/Logging.h"
#include "cli/BackupFileOfRun.h"
#include "cli/Log.h"
#include "settings/Catalogue.h"
#include "settings/Rehearsal.h"
#include "settings/ValueText.h"

#include <QHash>

#include <algorithm>

namespace varnel::cli {

namespace {

/// One value for each setting, in the order of the last mention.
QList<WantedValue> lastOfEach(const QList<WantedValue> &wanted)
{
    QList<WantedValue> last;
    for (const WantedValue &each : wanted) {
        last.removeIf([&](const WantedValue &earlier) { return earlier.row == each.row; });
        last.append(each);
    }
    return last;
}

/// The old values of the settings that need a write, by number.
using OldValues = QHash<int, SettingValue>;

/// What is to be written, and what a save never makes.
struct Trial {
    OldValues old;
    QList<const SettingRow *> notMade;
};

Result<Trial> tryOut(HomeSession &session, const QList<WantedValue> &wanted)
{
    // Trying a write out would log as the write itself does.
    const LogSilence silence;
    Rehearsal rehearsal(session.home(), session.fileStore(), session.finder(), session.drafts());
    const QList<WantedValue> last = lastOfEach(wanted);
    QList<const SettingRow *> rows;
    for (const WantedValue &each : last)
        rows.append(each.row);
    const QList<SettingReading> readings = rehearsal.read(rows);
    Trial trial;
    for (qsizetype i = 0; i < last.size(); ++i) {
        const Result<bool> change = rehearsal.wouldChange(*last[i].row, last[i].value);
        if (!change && change.error().code != ErrorCode::Unloadable)
            return change.error();
        if (!change || change.value())
            trial.old.insert(last[i].row->id, readings[i].value);
        else if (!meanTheSame(*last[i].row, readings[i].value, last[i].value)
                 && !isThere(rehearsal, last[i]))
            trial.notMade.append(last[i].row);
    }
    return trial;
}

bool written(const QList<SaveFailure> &failures, int settingId)
{
    return std::none_of(failures.begin(), failures.end(), [&](const SaveFailure &failure) {
        return failure.step == SaveFailure::Step::Write && failure.record.locationId == settingId;
    });
}

qsizetype countOf(const QList<SaveFailure> &failures, SaveFailure::Step step)
{
    return std::count_if(failures.begin(), failures.end(),
                         [&](const SaveFailure &failure) { return failure.step == step; });
}

SaveReport save(HomeSession &session, const QList<WantedValue> &wanted, const OldValues &old)
{
    const QString backupFile = backupFileOfRun(session);
    BackupWriter writer(backupFile, session.fileStore());
    QList<ChangeRecord> changes;
    QList<ChangeRecord> backups;
    SaveReport report;
    PendingChanges pending(changes, backups, report.restart, session.access(), writer);
    for (const WantedValue &each : wanted) {
        const int id = each.row->id;
        if (!old.contains(id))
            continue;
        pending.addDataToBackupDataList(id, old[id].number, old[id].text);
        pending.addDataToChangeDataList(id, each.value.number, each.value.text);
    }
    const QList<ChangeRecord> asked = changes;
    report.failures = pending.saveChanges();
    for (const ChangeRecord &record : asked)
        if (written(report.failures, record.locationId))
            report.changes.append({findSetting(record.locationId),
                                   old[record.locationId],
                                   {record.actionId, record.extraData}});
    if (!session.isDryRun() && countOf(report.failures, SaveFailure::Step::Backup) < backups.size())
        report.backupFile = backupFile;
    report.filesWithoutLock = session.changedWithoutLock();
    return report;
}

} // namespace

bool isThere(const Rehearsal &rehearsal, const WantedValue &wanted)
{
    return meanTheSame(*wanted.row, rehearsal.read({wanted.row}).first().value, wanted.value);
}

QString notMadeHere(const SettingRow &row)
{
    return row.name + u": not there to be changed; its application has to make it first";
}

ExitStatus SaveReport::status() const
{
    if (failures.isEmpty() && filesWithoutLock.isEmpty())
        return ExitStatus::Done;
    const bool leftAlone = std::any_of(failures.begin(), failures.end(), [](const auto &failure) {
        return failure.step == SaveFailure::Step::Write
            && failure.error.code == ErrorCode::Unloadable;
    });
    return changes.isEmpty() && !leftAlone ? ExitStatus::Failed : ExitStatus::Partly;
}

Result<SaveReport> saveSettings(HomeSession &session, const QList<WantedValue> &wanted,
                                StandardFolders::Missing folders)
{
    const LogSilence silence(session.isDryRun());
    if (const Result<void> ready = session.beginWriting(folders); !ready)
        return ready.error();
    const Result<Trial> trial = tryOut(session, wanted);
    if (!trial) {
        // Trying it out was silent; here is what ends the command.
        varnelLog(lcIo, trial.error().text);
        return trial.error();
    }
    const OldValues &old = trial.value().old;
    SaveReport report = old.isEmpty() ? SaveReport() : save(session, wanted, old);
    report.dryRun = session.isDryRun();
    report.notMade = trial.value().notMade;
    return report;
}

} // namespace varnel::cli
