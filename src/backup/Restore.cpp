#include "backup/Restore.h"

#include "backup/LoginItemsOfHome.h"
#include "backup/LoginItemsPlayback.h"
#include "backup/Playback.h"
#include "backup/SettingsPlayback.h"
#include "platform/FileStore.h"
#include "settings/Catalogue.h"

namespace varnel {

namespace {

/// Plays rows on a home, or in a plan that nobody carries out.
class HomePlayback : public PlaybackTarget {
public:
    /// What has no row is played where `all` rows are.
    HomePlayback(Workspace &workspace, SettingAccess &access, const KeptBackup &kept, bool all,
                 bool dryRun, bool libraryIsMade)
        : access(access), kept(kept),
          settings(access, report.restart, &kept,
                   dryRun ? SettingsPlayback::Manner::TryOut : SettingsPlayback::Manner::Play,
                   libraryIsMade),
          items(workspace, dryRun),
          playback(items.access(), kept,
                   dryRun ? LoginItemsPlayback::Manner::TryOut : LoginItemsPlayback::Manner::Play),
          all(all), dryRun(dryRun)
    {
    }

    Result<void> writeSetting(int settingId, int value, const QString &extra) override
    {
        const SettingRow *row = findSetting(settingId);
        if (row == nullptr) {
            report.skipped.append(settingId);
            return {};
        }
        (void)access.read(*row); // it tells what it meets
        return settings.write(*row, {value, extra});
    }

    Result<void> settleSettings() override
    {
        // A dry run's plan goes on: nothing of it comes to stand in the home.
        return dryRun ? Result<void>() : settings.carryOut();
    }

    Result<void> writeLoginItem(int actionId, const QString &path, bool enabled) override
    {
        report.loginItems.append({BackupRow::loginItemId, path, QString::number(actionId),
                                  QString::number(enabled ? 1 : 0)});
        Result<void> written = playback.writeData(actionId, path, enabled);
        if (!written)
            report.itemFailures.append(path + u": " + written.error().text);
        return written;
    }

    void readLoginItems() override { playback.readData(); }

    Result<void> writeWithoutRows() override
    {
        if (!all)
            return {};
        Result<void> written = settings.writeWithoutRows();
        if (written && kept.loginItems() != nullptr) {
            if (written = settleSettings(); written)
                written = told(playback.writeWithoutRows());
            report.loginItems += playback.playedWithoutRows();
        }
        return written;
    }

    Result<void> finish() override
    {
        const Result<void> written = settings.carryOut();
        const Result<void> placed = told(playback.finish());
        report.changes = settings.changes();
        for (const SettingChange &change : std::as_const(report.changes)) {
            const int id = change.row->id;
            if (const auto keys = kept.keysOf(id))
                report.exact.insert(id, exactText(*keys));
            else if (const KeptFlag *flag = kept.libraryFlag(id))
                report.exact.insert(id, exactText(*flag));
        }
        if (settings.failure())
            report.settingFailures.append(*settings.failure());
        return written ? placed : written;
    }

    RestoreReport report;

private:
    Result<void> told(Result<void> done)
    {
        if (!done)
            report.itemFailures.append(done.error().text);
        return done;
    }

    SettingAccess &access;
    const KeptBackup &kept;
    SettingsPlayback settings;
    LoginItemsOfHome items;
    LoginItemsPlayback playback;
    bool all;
    bool dryRun;
};

} // namespace

Result<RestoreReport> restoreRows(Workspace &workspace, SettingAccess &access,
                                  const QList<BackupRow> &rows, RestoredRows which,
                                  const KeptBackup &kept, const Workspace::Terms &terms)
{
    const Result<QStringList> made = workspace.begin(terms);
    if (!made)
        return made.error();
    HomePlayback target(workspace, access, kept, which == RestoredRows::All, terms.dryRun,
                        made.value().contains(access.libraryPath()));
    // The report has the failure that ends it.
    static_cast<void>(playBack(rows, target));
    target.report.filesWithoutLock = workspace.files().changedWithoutLock();
    return target.report;
}

} // namespace varnel
