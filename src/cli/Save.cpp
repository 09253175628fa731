#include "cli/Save.h"

#include "backup/BackupWriter.h"
#include "base/Logging.h"
#include "cli/BackupFileOfRun.h"
#include "cli/Log.h"
#include "settings/Catalogue.h"
#include "settings/Rehearsal.h"

#include <QFileInfo>
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

Result<OldValues> settingsToWrite(HomeSession &session, const QList<WantedValue> &wanted)
{
    // Trying a write out would log as the write itself does.
    const LogSilence silence;
    Rehearsal rehearsal(session.home(), session.fileStore(), session.finder(), session.drafts());
    const QList<WantedValue> last = lastOfEach(wanted);
    QList<const SettingRow *> rows;
    for (const WantedValue &each : last)
        rows.append(each.row);
    const QList<SettingReading> readings = rehearsal.read(rows);
    OldValues old;
    for (qsizetype i = 0; i < last.size(); ++i) {
        const Result<bool> change = rehearsal.wouldChange(*last[i].row, last[i].value);
        if (!change && change.error().code != ErrorCode::Unloadable)
            return change.error();
        if (!change || change.value())
            old.insert(last[i].row->id, readings[i].value);
    }
    return old;
}

bool written(const QList<SaveFailure> &failures, int settingId)
{
    return std::none_of(failures.begin(), failures.end(), [&](const SaveFailure &failure) {
        return failure.step == SaveFailure::Step::Write && failure.record.locationId == settingId;
    });
}

SaveReport save(HomeSession &session, const QList<WantedValue> &wanted, const OldValues &old)
{
    const QString backupFile = backupFileOfRun(session.home());
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
    if (QFileInfo::exists(backupFile))
        report.backupFile = backupFile;
    report.filesWithoutLock = session.fileStore().changedWithoutLock();
    return report;
}

SaveReport rehearse(HomeSession &session, const QList<WantedValue> &wanted, const OldValues &old)
{
    const LogSilence silence;
    Rehearsal rehearsal(session.home(), session.fileStore(), session.finder());
    SaveReport report;
    report.dryRun = true;
    for (const WantedValue &each : lastOfEach(wanted)) {
        const int id = each.row->id;
        if (!old.contains(id))
            continue;
        const Result<bool> tried = rehearsal.wouldChange(*each.row, each.value);
        if (tried)
            report.changes.append({each.row, old[id], each.value});
        else
            report.failures.append({SaveFailure::Step::Write,
                                    {id, each.value.number, each.value.text},
                                    tried.error()});
    }
    report.restart = rehearsal.restartFlags();
    return report;
}

} // namespace

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
    if (const Result<void> ready = session.beginWriting(folders); !ready)
        return ready.error();
    const Result<OldValues> old = settingsToWrite(session, wanted);
    if (!old) {
        // Trying it out was silent; here is what ends the command.
        varnelLog(lcIo, old.error().text);
        return old.error();
    }
    return old.value().isEmpty() ? SaveReport() : save(session, wanted, old.value());
}

Result<SaveReport> rehearseSave(HomeSession &session, const QList<WantedValue> &wanted)
{
    const Result<OldValues> old = settingsToWrite(session, wanted);
    if (!old)
        return old.error();
    return rehearse(session, wanted, old.value());
}

} // namespace varnel::cli
