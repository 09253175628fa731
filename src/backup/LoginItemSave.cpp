#include "backup/LoginItemSave.h"

#include "backup/LoginItemsOfHome.h"
#include "loginitems/PendingLoginItems.h"

#include <algorithm>
#include <optional>

namespace varnel {

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

QString chosenPath(const LoginItemsOfHome &items, const QList<LoginItemRow> &rows,
                   const LoginItemWish &wish)
{
    const bool known = rowOf(rows, wish.path) || !items.list().keptIn(wish.path).isNull();
    return known ? wish.path : items.list().pathInList(wish.absolutePath);
}

/// Whether there is anything to do; else why not.
Outcome expected(const LoginItemsOfHome &items, LoginItemChange::Action action, State state,
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
    if (isReached(after, change))
        return Outcome::Changed;
    return after == before ? Outcome::Unchanged : Outcome::Halfway;
}

void save(LoginItemsOfHome &items, const QString &backupFile, LoginItemsReport &report)
{
    items.setBackupFile(backupFile);
    // The page has read before it saves, and what it met twice is in one place since.
    const QList<LoginItemRow> before = items.access().readData();
    QList<LoginItemChange> changes;
    PendingLoginItems pending(changes, items.access());
    pending.addDataToChangeDataList(report.change.actionId, report.change.path,
                                    report.change.isEnabled);
    if (const QList<LoginItemFailure> failures = pending.saveChanges(); !failures.isEmpty())
        report.failures = {failures.first().error};
    report.outcome = reached(before, items.rows(), report.change);
    // The item is where it shall be and its way back is kept. What failed beside that (what was
    // removed stands in no store that enabling could take it from) is logged.
    const bool wayBack = items.keepsWayBack(report.change.path);
    if (report.outcome == Outcome::Changed && wayBack)
        report.failures.clear();
    if (wayBack && !report.dryRun)
        report.backupFile = backupFile;
    report.keptIn = items.list().keptIn(report.change.path);
}

/// Of an account's list all or nothing can be read, and without it nobody can tell what is in it.
Result<void> checkList(const LoginItemsOfHome &items)
{
    if (items.listInUse() == LoginItemsList::Session)
        return {};
    const Result<QList<SessionLoginItem>> listed = items.list().snapshot();
    return listed ? Result<void>() : listed.error();
}

/// What the change would be and come to, were nothing to fail.
LoginItemsReport planned(LoginItemsOfHome &items, const LoginItemWish &wish)
{
    const QList<LoginItemRow> rows = items.rows();
    LoginItemsReport report;
    report.change.actionId = wish.action;
    report.change.path = chosenPath(items, rows, wish);
    if (const Result<void> readable = checkList(items); !readable) {
        report.outcome = Outcome::Refused;
        report.failures = {readable.error()};
        return report;
    }
    const State state = stateOf(rows, report.change.path);
    report.change.isEnabled = wish.action == LoginItemChange::Remove && state == State::On;
    report.outcome = expected(items, wish.action, state, report.change.path);
    if (report.outcome == Outcome::Changed && wish.action == LoginItemChange::Enable)
        if (const Result<void> able = items.list().canInsert(report.change.path); !able) {
            report.outcome = Outcome::Refused;
            report.failures = {able.error()};
        }
    return report;
}

} // namespace

bool isReached(const QList<LoginItemRow> &rows, const LoginItemChange &change)
{
    return stateOf(rows, change.path)
        == wantedBy(static_cast<LoginItemChange::Action>(change.actionId));
}

Result<LoginItemsReport> saveLoginItem(Workspace &workspace, const LoginItemWish &wish,
                                       const Workspace::Terms &terms,
                                       std::optional<LoginItemsList> list)
{
    LoginItemsOfHome items(workspace, terms.dryRun, list);
    LoginItemsReport report = planned(items, wish);
    report.dryRun = terms.dryRun;
    report.list = items.listInUse();
    if (report.outcome != Outcome::Changed)
        return report;
    if (const Result<QStringList> begun = workspace.begin(terms); !begun)
        return begun.error();
    save(items, terms.dryRun ? workspace.nextBackupFile() : workspace.backupFile(), report);
    return report;
}

} // namespace varnel
