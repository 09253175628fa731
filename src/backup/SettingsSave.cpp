#include "backup/SettingsSave.h"

#include "backup/BackupWriter.h"
#include "backup/KeptRun.h"
#include "base/Logging.h"
#include "platform/FileStore.h"
#include "settings/Catalogue.h"

#include <algorithm>

namespace varnel {

namespace {

/// Why nothing can be written: files that are no property lists are no reason.
std::optional<Error> obstacle(const SavePlan &plan)
{
    for (const SavePlan::Setting &setting : plan.settings()) {
        if (!setting.error || setting.error->code == ErrorCode::Unloadable)
            continue;
        // A file that could not be read has been logged.
        if (setting.write.hidesLibrary)
            varnelLog(lcIo, setting.error->text);
        return setting.error;
    }
    return std::nullopt;
}

QList<const SettingRow *> notMadeIn(const SavePlan &plan)
{
    QList<const SettingRow *> rows;
    for (const SavePlan::Setting &setting : plan.settings())
        if (setting.notMade)
            rows.append(setting.change.row);
    return rows;
}

/// The failures that can be foreseen.
QList<SaveFailure> foreseen(const SavePlan &plan, const BackupWriter &writer)
{
    QList<SaveFailure> failures;
    for (const SettingChange &change : plan.firstNamed())
        if (const Result<void> kept = writer.tryOut(oldValueOf(change)); !kept)
            failures.append({SaveFailure::Step::Backup, change, kept.error()});
    for (const SavePlan::Setting &setting : plan.settings())
        if (setting.error)
            failures.append({SaveFailure::Step::Write, setting.change, *setting.error});
    return failures;
}

RestartFlags flagsOf(const SavePlan &plan)
{
    RestartFlags flags;
    for (const SavePlan::Setting &setting : plan.settings())
        if (setting.write.restarts)
            flags |= *setting.write.restarts;
    return flags;
}

bool isWritten(const QList<SaveFailure> &failures, const SettingRow &row)
{
    return std::none_of(failures.begin(), failures.end(), [&](const SaveFailure &failure) {
        return failure.step == SaveFailure::Step::Write && failure.change.row == &row;
    });
}

bool hasRows(const QList<SaveFailure> &failures, size_t settings)
{
    return size_t(std::count_if(failures.begin(), failures.end(),
                                [](const SaveFailure &failure) {
                                    return failure.step == SaveFailure::Step::Backup;
                                }))
        < settings;
}

void carryOut(SavePlan &plan, Workspace &workspace, SaveReport &report)
{
    if (report.dryRun) {
        report.failures =
            foreseen(plan, BackupWriter(workspace.nextBackupFile(), workspace.files()));
        report.restart = flagsOf(plan);
    } else {
        KeptRun keeper(workspace, [&] { return workspace.backupFile(); });
        report.failures = plan.commit(keeper, report.restart);
        if (hasRows(report.failures, plan.settings().size()))
            report.backupFile = workspace.backupFile();
        report.filesWithoutLock = workspace.files().changedWithoutLock();
    }
    for (const SavePlan::Setting &setting : plan.settings())
        if (isWritten(report.failures, *setting.change.row))
            report.changes.append(setting.change);
}

} // namespace

Result<SaveReport> saveSettings(Workspace &workspace, SettingAccess &access,
                                const QList<SettingChange> &wanted, const Workspace::Terms &terms)
{
    const Result<QStringList> made = workspace.begin(terms);
    if (!made)
        return made.error();
    SavePlan plan(access, wanted, made.value().contains(access.libraryPath()));
    if (const std::optional<Error> error = obstacle(plan))
        return *error;
    SaveReport report;
    report.dryRun = terms.dryRun;
    report.notMade = notMadeIn(plan);
    plan.keepWhatDiffers();
    report.notTakenOver = plan.notTakenOver();
    if (!plan.settings().empty())
        carryOut(plan, workspace, report);
    return report;
}

} // namespace varnel
