#include "cli/Restore.h"

#include "backup/Playback.h"
#include "cli/Log.h"
#include "cli/LoginItemsSession.h"
#include "settings/Catalogue.h"
#include "settings/Rehearsal.h"

namespace varnel::cli {

namespace {

class HomePlayback : public PlaybackTarget {
public:
    explicit HomePlayback(HomeSession &session)
        : session(session),
          rehearsal(session.home(), session.fileStore(), session.finder(), session.drafts()),
          items(session)
    {
    }

    Result<void> writeSetting(int settingId, int value, const QString &extra) override
    {
        const SettingRow *row = findSetting(settingId);
        if (row == nullptr) {
            report.skipped.append(settingId);
            return {};
        }
        const SettingValue wanted {value, extra};
        const SettingValue old = session.access().read(*row).value;
        const Result<bool> differs = tryOut(*row, wanted);
        Result<void> written = write(*row, wanted);
        if (!written)
            report.settingFailures.append(
                {SaveFailure::Step::Write, {settingId, value, extra}, written.error()});
        else if (differs && differs.value())
            report.changes.append({row, old, wanted});
        return written;
    }

    void writeLoginItem(int actionId, const QString &path, bool enabled) override
    {
        report.loginItems.append({BackupRow::loginItemId, path, QString::number(actionId),
                                  QString::number(enabled ? 1 : 0)});
        const LogSilence silence(session.isDryRun());
        if (const Result<void> written = items.access().writeData(actionId, path, enabled, false);
            !written)
            report.itemFailures.append(path + u": " + written.error().text);
    }

    RestoreReport finished()
    {
        report.filesWithoutLock = session.changedWithoutLock();
        return report;
    }

private:
    Result<bool> tryOut(const SettingRow &row, const SettingValue &value)
    {
        // Trying a write out would log as the write itself does.
        const LogSilence silence;
        return rehearsal.wouldChange(row, value);
    }

    Result<void> write(const SettingRow &row, const SettingValue &value)
    {
        const LogSilence silence(session.isDryRun());
        return session.access().write(row, value, report.restart);
    }

    HomeSession &session;
    Rehearsal rehearsal;
    LoginItemsSession items;
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
