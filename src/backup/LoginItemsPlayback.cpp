#include "backup/LoginItemsPlayback.h"

#include "backup/KeptBackup.h"
#include "backup/KeptRun.h"

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

QStringList namesOf(const KeptItem &item)
{
    QStringList names;
    for (const SessionEntry &entry : item.before.entries + item.after.entries)
        names.append(entry.name);
    return names;
}

/// The order now, with those names where they stood before: each behind the nearest that stood
/// before it and is still there, but for those that the run has `moved` itself.
QStringList placed(QStringList now, const QSet<QString> &names, const QStringList &before,
                   const QSet<QString> &moved)
{
    now.removeIf([&](const QString &name) { return names.contains(name); });
    for (qsizetype at = 0; at < before.size(); ++at) {
        if (!names.contains(before[at]))
            continue;
        qsizetype place = -1;
        for (qsizetype earlier = at - 1; earlier >= 0 && place < 0; --earlier)
            if (names.contains(before[earlier]) || !moved.contains(before[earlier]))
                place = now.indexOf(before[earlier]);
        now.insert(place + 1, before[at]);
    }
    return now;
}

} // namespace

LoginItemsPlayback::LoginItemsPlayback(LoginItemsAccess &loginItems, const KeptBackup &keptBackup,
                                       Manner playManner)
    : access(loginItems), kept(keptBackup), manner(playManner), notes(keptBackup.loginItems()),
      list(loginItems, notes), playback(loginItems)
{
}

/// Before anything is played: what others have changed since the run stays as they left it. What
/// was put back already counts as untouched.
void LoginItemsPlayback::look()
{
    if (std::exchange(hasLooked, true) || notes == nullptr || manner == Manner::TryOut)
        return;
    for (const KeptItem &item : notes->items) {
        if (!kept.counts(item))
            continue;
        const LoginItemsState now = access.stateOf(item.path);
        Found &state = found[item.path];
        state.entries =
            now.item.entries == item.after.entries || now.item.entries == item.before.entries;
        state.rows =
            now.isSure && (now.item.rows == item.after.rows || now.item.rows == item.before.rows);
        orderFound = now.order;
    }
    orderIsOurs = !notes->orderDisturbed
        && (haveOneOrder(orderFound, notes->orderAfter)
            || haveOneOrder(orderFound, notes->orderBefore));
}

const KeptItem *LoginItemsPlayback::ourItem(const QString &path) const
{
    return found.value(path).entries ? notes->find(path) : nullptr;
}

Result<void> LoginItemsPlayback::writeData(int actionId, const QString &path, bool enabled)
{
    look();
    if (const auto state = found.find(path); state != found.end())
        state->isPlayed = true;
    Result<void> written = playback.writeData(actionId, path, enabled);
    // A table of other columns takes no path alone, but the row that it had.
    const KeptItem *item = ourItem(path);
    if (!written && item != nullptr && !item->before.rows.isEmpty() && found.value(path).rows
        && access.stateOf(path).item.entries == item->before.entries
        && access.disabledItems().putRows({{path, item->before.rows}}))
        return {};
    return written;
}

void LoginItemsPlayback::readData()
{
    playback.readData();
}

Result<void> LoginItemsPlayback::writeWithoutRows()
{
    look();
    for (const BackupRow &row : kept.itemsWithoutRow()) {
        const QString path = row.loginItemPath();
        if (manner == Manner::TryOut) {
            withoutRows.append(row);
            continue;
        }
        const KeptItem *item = ourItem(path);
        if (item == nullptr)
            continue;
        withoutRows.append(row);
        found[path].isPlayed = true;
        const bool wasListed = !item->before.entries.isEmpty();
        if (wasListed != access.stateOf(path).item.entries.isEmpty())
            continue;
        // Only in the list: the store's statements are what the path has failed in.
        const int action = wasListed ? LoginItemChange::Add : LoginItemChange::Remove;
        if (Result<void> written = playback.writeData(action, path, true); !written)
            return written;
        playback.readData();
    }
    return {};
}

Result<void> LoginItemsPlayback::finish()
{
    QSet<QString> names;
    QSet<QString> moved;
    QList<DisabledItemsStore::PathRows> rows;
    bool anyPlayed = false;
    for (auto state = found.begin(); state != found.end(); ++state) {
        const KeptItem *item = ourItem(state.key());
        if (item == nullptr || !state->isPlayed)
            continue;
        const LoginItemStanding now = access.stateOf(item->path).item;
        if (now.entries != item->before.entries)
            continue;
        anyPlayed = true;
        for (const QString &name : namesOf(*item))
            if (!orderFound.contains(name) || notes->orderBefore.contains(name)
                || notes->orderAfter.contains(name))
                names.insert(name);
        if (state->rows && now.rows != item->before.rows)
            rows.append({item->path, item->before.rows});
    }
    for (const KeptItem &item : notes != nullptr ? notes->items : QList<KeptItem>())
        for (const QString &name : namesOf(item))
            moved.insert(name);
    Result<void> put;
    if (orderIsOurs && !names.isEmpty())
        put = access.reorder(
            [&](const QStringList &now) { return placed(now, names, notes->orderBefore, moved); });
    if (put && !rows.isEmpty())
        put = access.disabledItems().putRows(rows);
    if (put && anyPlayed && !notes->hadStore)
        removeEmptyStore();
    if (put && anyPlayed && !access.listFile().isNull())
        kept.putBackList(access.listFile());
    return put;
}

void LoginItemsPlayback::removeEmptyStore()
{
    DisabledItemsStore &store = access.disabledItems();
    // What fails has been logged; an empty store does no harm.
    if (const std::optional<QByteArray> bytes = store.emptyStore())
        (void)kept.removeStore(store.path(), *bytes);
}

} // namespace varnel
