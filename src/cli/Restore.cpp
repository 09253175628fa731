#include "cli/Restore.h"

#include "backup/Playback.h"
#include "cli/Log.h"
#include "cli/LoginItemsSession.h"
#include "settings/Catalogue.h"
#include "settings/SavePlan.h"

namespace varnel::cli {

namespace {

class HomePlayback : public PlaybackTarget {
public:
    explicit HomePlayback(HomeSession &session) : session(session), items(session) { }

    Result<void> writeSetting(int settingId, int value, const QString &extra) override
    {
        const SettingRow *row = findSetting(settingId);
        if (row == nullptr) {
            report.skipped.append(settingId);
            return {};
        }
        (void)session.access().read(*row); // it tells what it meets
        const LogSilence silence(session.isDryRun());
        SavePlan plan(session.access(), {{row, {value, extra}}});
        const SavePlan::Setting planned = plan.settings().front();
        const QList<SaveFailure> failures = plan.write(report.restart);
        report.settingFailures += failures;
        if (!failures.isEmpty())
            return failures.first().error;
        if (planned.differs)
            report.changes.append(planned.change);
        return {};
    }

    Result<void> writeLoginItem(int actionId, const QString &path, bool enabled) override
    {
        report.loginItems.append({BackupRow::loginItemId, path, QString::number(actionId),
                                  QString::number(enabled ? 1 : 0)});
        const LogSilence silence(session.isDryRun());
        Result<void> written = playback.writeData(actionId, path, enabled);
        if (!written)
            report.itemFailures.append(path + u": " + written.error().text);
        return written;
    }

    void readLoginItems() override
    {
        const LogSilence silence(session.isDryRun());
        playback.readData();
    }

    RestoreReport finished()
    {
        report.filesWithoutLock = session.workspace().files().changedWithoutLock();
        return report;
    }

private:
    HomeSession &session;
    LoginItemsSession items;
    LoginItemsAccess::Playback playback {items.access()};
    RestoreReport report;
};

} // namespace

bool RestoreReport::complete() const
{
    return settingFailures.isEmpty() && itemFailures.isEmpty();
}

RestoreReport playRows(HomeSession &session, const QList<BackupRow> &rows)
{
    HomePlayback target(session);
    // The report has the failure that ends it.
    static_cast<void>(playBack(rows, target));
    return target.finished();
}

} // namespace varnel::cli
