#include "backup/Restore.h"

#include "backup/LoginItemsOfHome.h"
#include "backup/Playback.h"
#include "platform/FileStore.h"
#include "settings/Catalogue.h"

#include <optional>

namespace varnel {

namespace {

/// Plays rows on a home, or in a plan that nobody commits.
class HomePlayback : public PlaybackTarget {
public:
    HomePlayback(Workspace &workspace, SettingAccess &access, std::optional<SavePlan> dryRun)
        : access(access), tried(std::move(dryRun)), items(workspace, tried.has_value())
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
        const WantedValue wanted {row, {value, extra}};
        return tried ? tryOut(*tried, wanted) : write(wanted);
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

    RestoreReport report;

private:
    Result<void> write(const WantedValue &wanted)
    {
        SavePlan plan(access, {wanted});
        const SavePlan::Setting planned = plan.settings().front();
        const QList<SaveFailure> failures = plan.write(report.restart);
        return noted(planned,
                     failures.isEmpty() ? std::nullopt : std::optional(failures.front().error));
    }

    Result<void> tryOut(SavePlan &plan, const WantedValue &wanted)
    {
        const SavePlan::Setting &planned = plan.add(wanted);
        if (planned.write.restarts)
            report.restart |= *planned.write.restarts;
        return noted(planned, planned.error);
    }

    Result<void> noted(const SavePlan::Setting &planned, const std::optional<Error> &error)
    {
        const auto &[row, oldValue, newValue] = planned.change;
        if (error) {
            report.settingFailures.append(
                {SaveFailure::Step::Write, recordOf(*row, newValue), *error});
            return *error;
        }
        if (planned.differs)
            report.changes.append(planned.change);
        return {};
    }

    SettingAccess &access;
    std::optional<SavePlan> tried;
    LoginItemsOfHome items;
    LoginItemsAccess::Playback playback {items.access()};
};

} // namespace

Result<RestoreReport> restoreRows(Workspace &workspace, SettingAccess &access,
                                  const QList<BackupRow> &rows, const Workspace::Terms &terms)
{
    const Result<QStringList> made = workspace.begin(terms);
    if (!made)
        return made.error();
    std::optional<SavePlan> dryRun;
    if (terms.dryRun)
        dryRun.emplace(access, QList<WantedValue>(), made.value().contains(access.libraryPath()));
    HomePlayback target(workspace, access, std::move(dryRun));
    // The report has the failure that ends it.
    static_cast<void>(playBack(rows, target));
    target.report.filesWithoutLock = workspace.files().changedWithoutLock();
    return target.report;
}

} // namespace varnel
