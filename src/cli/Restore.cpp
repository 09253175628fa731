#include "cli/Restore.h"

#include "backup/LoginItemsBackupWriter.h"
#include "backup/Playback.h"
#include "cli/Log.h"
#include "loginitems/LoginItemsAccess.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/LinuxSessionLoginItems.h"
#include "settings/Catalogue.h"
#include "settings/Rehearsal.h"
#include "shell/Tools.h"

namespace varnel::cli {

namespace {

/// The login items of a home, without its page.
class HomeLoginItems {
public:
    HomeLoginItems(const HomeFolder &home, FileStore &store)
        : list(home, home.own ? autostartFoldersOfSession(home) : autostartFoldersOfHome(home),
               Tools::supportFolderOf(home), store, maker, hostFiles),
          disabled(Tools::supportFolderOf(home)), access(list, disabled, noBackup, hostFiles)
    {
    }

    Result<void> write(int actionId, const QString &path, bool enabled)
    {
        constexpr bool backup = false;
        return access.writeData(actionId, path, enabled, backup);
    }

private:
    LinuxFolderMaker maker;
    LinuxFileReader hostFiles;
    LinuxSessionLoginItems list;
    DisabledItemsStore disabled;
    LoginItemsBackupWriter noBackup {QString()}; ///< asked for nothing
    LoginItemsAccess access;
};

class HomePlayback : public PlaybackTarget {
public:
    HomePlayback(HomeSession &session, RestoreMode mode)
        : session(session), mode(mode),
          rehearsal(session.home(), session.fileStore(), session.finder()),
          items(session.home(), session.fileStore())
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
        Result<void> written = write(*row, wanted, differs);
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
        if (mode == RestoreMode::DryRun)
            return;
        if (const Result<void> written = items.write(actionId, path, enabled); !written)
            report.itemFailures.append(path + u": " + written.error().text);
    }

    RestoreReport finished()
    {
        if (mode == RestoreMode::DryRun)
            report.restart = rehearsal.restartFlags();
        report.filesWithoutLock = session.fileStore().changedWithoutLock();
        return report;
    }

private:
    Result<bool> tryOut(const SettingRow &row, const SettingValue &value)
    {
        // Trying a write out would log as the write itself does.
        const LogSilence silence;
        return rehearsal.wouldChange(row, value);
    }

    Result<void> write(const SettingRow &row, const SettingValue &value,
                       const Result<bool> &differs)
    {
        if (mode == RestoreMode::Play)
            return session.access().write(row, value, report.restart);
        return differs ? Result<void>() : differs.error();
    }

    HomeSession &session;
    RestoreMode mode;
    Rehearsal rehearsal;
    HomeLoginItems items;
    RestoreReport report;
};

} // namespace

bool RestoreReport::complete() const
{
    return settingFailures.isEmpty() && itemFailures.isEmpty();
}

RestoreReport playRows(HomeSession &session, const QList<BackupRow> &rows, RestoreMode mode)
{
    HomePlayback target(session, mode);
    // The report has the failure that ends it.
    static_cast<void>(playBack(rows, target));
    return target.finished();
}

} // namespace varnel::cli
