#include "cli/LoginItemsSave.h"

#include "backup/BackupReader.h"
#include "cli/Log.h"
#include "cli/LoginItemsSession.h"
#include "loginitems/PendingLoginItems.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace varnel::cli {

namespace {

using Outcome = LoginItemsReport::Outcome;

enum class State { Absent, Off, On };

std::optional<LoginItemRow> rowOf(const QList<LoginItemRow> &rows, const QString &path)
{
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const LoginItemRow &each) { return each.path == path; });
    return row == rows.end() ? std::nullopt : std::optional(*row);
}

State stateOf(const QList<LoginItemRow> &rows, const QString &path)
{
    const std::optional<LoginItemRow> row = rowOf(rows, path);
    if (!row)
        return State::Absent;
    return row->enabled ? State::On : State::Off;
}

State wantedBy(LoginItemChange::Action action)
{
    switch (action) {
    case LoginItemChange::Remove:
        return State::Absent;
    case LoginItemChange::Enable:
        return State::On;
    case LoginItemChange::Add:
    case LoginItemChange::Disable:
        break;
    }
    return State::Off;
}

QString chosenPath(const LoginItemsSession &items, const QList<LoginItemRow> &rows,
                   const QString &typed)
{
    // A path may be listed in a form that nobody would type today.
    if (rowOf(rows, typed) || !items.list().keptIn(typed).isNull())
        return typed;
    return QDir::cleanPath(QFileInfo(typed).absoluteFilePath());
}

/// Whether there is anything to do; else why not.
Outcome expected(const LoginItemsSession &items, LoginItemChange::Action action, State state,
                 const QString &path)
{
    if (action == LoginItemChange::Add)
        return state == State::Absent ? Outcome::Changed : Outcome::Nothing;
    if (state == wantedBy(action) && action != LoginItemChange::Remove)
        return Outcome::Nothing;
    // What was removed can be enabled again, for it is still kept.
    const bool comesBack = action == LoginItemChange::Enable && !items.list().keptIn(path).isNull();
    return state == State::Absent && !comesBack ? Outcome::Unknown : Outcome::Changed;
}

Outcome reached(const QList<LoginItemRow> &before, const QList<LoginItemRow> &after,
                const LoginItemChange &change)
{
    const State wanted = wantedBy(static_cast<LoginItemChange::Action>(change.actionId));
    if (stateOf(after, change.path) == wanted)
        return Outcome::Changed;
    return after == before ? Outcome::Unchanged : Outcome::Halfway;
}

bool hasWayBack(const QString &backupFile, const QString &path, const FileStore &files)
{
    const Result<QList<BackupRow>> rows = readBackupRows(backupFile, files);
    return rows && std::any_of(rows.value().begin(), rows.value().end(), [&](const BackupRow &row) {
               return row.isLoginItem() && row.loginItemPath() == path;
           });
}

void save(LoginItemsSession &items, HomeSession &session, LoginItemsReport &report)
{
    const QString backupFile = session.workspace().backupFile();
    items.setBackupFile(backupFile);
    // The page has read before it saves, and what it met twice is in one place since.
    const QList<LoginItemRow> before = items.access().readData();
    QList<LoginItemChange> changes;
    PendingLoginItems pending(changes, items.access());
    pending.addDataToChangeDataList(report.change.actionId, report.change.path,
                                    report.change.isEnabled);
    report.failures = pending.saveChanges();
    report.outcome = reached(before, items.rows(), report.change);
    // The item is where it shall be and its way back is kept. What failed beside that (what was
    // removed stands in no store that enabling could take it from) is logged.
    const bool wayBack = hasWayBack(backupFile, report.change.path, session.workspace().files());
    if (report.outcome == Outcome::Changed && wayBack)
        report.failures.clear();
    if (wayBack && !session.isDryRun())
        report.backupFile = backupFile;
    report.keptIn = items.list().keptIn(report.change.path);
}

/// What the change would be and come to, were nothing to fail.
LoginItemsReport planned(LoginItemsSession &items, LoginItemChange::Action action,
                         const QString &path)
{
    const QList<LoginItemRow> rows = items.rows();
    LoginItemsReport report;
    report.change.actionId = action;
    report.change.path = chosenPath(items, rows, path);
    const State state = stateOf(rows, report.change.path);
    report.change.isEnabled = action == LoginItemChange::Remove && state == State::On;
    report.outcome = expected(items, action, state, report.change.path);
    return report;
}

} // namespace

ExitStatus LoginItemsReport::status() const
{
    switch (outcome) {
    case Outcome::Unknown:
        return ExitStatus::Negative;
    case Outcome::Unchanged:
        // What did not come into the list has its way back in a backup file by then.
        return change.actionId == LoginItemChange::Enable ? ExitStatus::Partly : ExitStatus::Failed;
    case Outcome::Halfway:
        return ExitStatus::Partly;
    case Outcome::Nothing:
    case Outcome::Changed:
        break;
    }
    return failures.isEmpty() ? ExitStatus::Done : ExitStatus::Partly;
}

Result<LoginItemsReport> saveLoginItem(HomeSession &session, LoginItemChange::Action action,
                                       const QString &path, StandardFolders::Missing folders)
{
    LoginItemsSession items(session);
    LoginItemsReport report = planned(items, action, path);
    report.dryRun = session.isDryRun();
    if (report.outcome != Outcome::Changed)
        return report;
    const LogSilence silence(session.isDryRun());
    if (const Result<void> ready = session.beginWriting(folders); !ready)
        return ready.error();
    save(items, session, report);
    return report;
}

} // namespace varnel::cli
