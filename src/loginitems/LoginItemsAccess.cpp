#include "loginitems/LoginItemsAccess.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "platform/SessionLoginItems.h"
#include "plist/BundleIcon.h"

#include <QSet>

#include <optional>
#include <utility>

namespace varnel {

namespace {

QString lastComponent(const QString &path)
{
    return path.section(u'/', -1, -1, QString::SectionSkipEmpty);
}

/// Both have run by now; the first failure is the one to tell.
Result<void> firstFailure(Result<void> first, Result<void> second)
{
    return first.ok() ? std::move(second) : std::move(first);
}

/// What was never stored is gone.
Result<void> orNeverStored(Result<void> deleted)
{
    const bool never = !deleted && deleted.error().code == ErrorCode::NotFound;
    return never ? Result<void>() : std::move(deleted);
}

/// The told logs know nothing of what this layer alone sees.
Error logged(const QString &path, const Error &error)
{
    varnelLog(lcIo, path + u": " + error.text);
    return error;
}

bool isAction(int actionId)
{
    return actionId >= LoginItemChange::Add && actionId <= LoginItemChange::Disable;
}

/// Of what has no whole path, nothing can be made that opens at login.
bool hasWholePath(const QString &path)
{
    return path.startsWith(u'/');
}

Error notWholePath(const QString &path)
{
    return logged(
        path,
        {ErrorCode::Invalid, u"the path does not begin with a slash, so nothing was written"_s});
}

} // namespace

LoginItemsAccess::LoginItemsAccess(SessionLoginItems &list, DisabledItemsStore &store,
                                   InverseKeeper &keeper, const FileReader &files)
    : session {&list, &store}, keeper(keeper), files(files)
{
}

bool LoginItemsAccess::use(LoginItemsList wanted)
{
    const Places &places = wanted == LoginItemsList::Account ? account : session;
    if (places.list == nullptr)
        return false;
    inUse = &places;
    return true;
}

QList<LoginItemRow> LoginItemsAccess::readData(Reading reading)
{
    QList<LoginItemRow> rows;
    QSet<QString> listed;
    if (const Result<QList<SessionLoginItem>> items = list().snapshot()) {
        for (const SessionLoginItem &item : items.value()) {
            const QString icon = item.icon.isEmpty() ? iconOf(item.path) : item.icon;
            rows.append({item.name, item.path, true, icon});
            listed.insert(item.path);
        }
    }
    const auto isListed = [&](const QString &path) {
        if (listed.contains(path))
            return reading == Reading::Clean;
        listed.insert(path);
        LoginItemRow row = newRow(path);
        row.enabled = false;
        rows.append(row);
        return false;
    };
    // A store that can't be read adds nothing; whatever is wrong with it shows at the next change.
    if (reading != Reading::Silent) {
        // Another run may be switching it off just now: stored already, and listed for a moment.
        const auto whileListed = [&](const QString &path, const std::function<void()> &deletion) {
            list().whileListed(path, deletion);
        };
        (void)disabledItems().readDisabledLoginItemsData(isListed, whileListed);
    } else if (const Result<QStringList> stored = disabledItems().storedPaths()) {
        for (const QString &path : stored.value())
            (void)isListed(path);
    }
    return rows;
}

Result<void> LoginItemsAccess::Playback::writeData(int actionId, const QString &path, bool enabled)
{
    changed = path;
    if (actionId == LoginItemChange::Disable || (actionId == LoginItemChange::Add && !enabled))
        stored.insert(path);
    return access.writeData(actionId, path, enabled, false);
}

void LoginItemsAccess::Playback::readData()
{
    const auto isInBoth = [this] {
        const Result<bool> listed = access.list().lists(changed);
        return stored.contains(changed) && (!listed || listed.value());
    };
    if (hasRead && !isInBoth()) {
        access.disabledItems().tellReading();
        return;
    }
    (void)access.readData();
    const Result<QStringList> paths = access.disabledItems().storedPaths();
    hasRead = paths.ok();
    if (paths)
        stored = QSet<QString>(paths.value().begin(), paths.value().end());
}

LoginItemRow LoginItemsAccess::newRow(const QString &path) const
{
    return {lastComponent(path), path, true, iconOf(path)};
}

QString LoginItemsAccess::iconOf(const QString &path) const
{
    const QString icon = list().iconOf(path);
    return icon.isNull() ? bundleIconPath(files, path) : icon;
}

Result<void> LoginItemsAccess::writeData(int actionId, const QString &path, bool enabled,
                                         bool backup)
{
    if (backup) {
        Written written = writeWithWayBack(actionId, path, enabled);
        return firstFailure(std::move(written.change), std::move(written.wayBack));
    }
    if (!isAction(actionId))
        return {};
    // A backup, played back, brings no such path in.
    return hasWholePath(path) ? change(actionId, path, enabled) : notWholePath(path);
}

LoginItemsAccess::Written LoginItemsAccess::writeWithWayBack(int actionId, const QString &path,
                                                             bool enabled)
{
    if (!isAction(actionId))
        return {};
    // Somebody else may have written it into the store, and it must be possible to get rid of it.
    const bool tellsState = actionId == LoginItemChange::Remove;
    if (!hasWholePath(path) && !tellsState)
        return {notWholePath(path), {}};
    std::optional<LoginItemsState> before;
    if (keeper.keepsStates())
        before = stateOf(path);
    Written written;
    written.wayBack = keeper.addDataToBackupFile(actionId, path, tellsState && enabled ? 1 : 0);
    if (before)
        keeper.keepListFile(listFile());
    written.change = change(actionId, path, enabled);
    if (before)
        keeper.keepStates(path, *before, stateOf(path));
    return written;
}

LoginItemsState LoginItemsAccess::stateOf(const QString &path)
{
    const Result<QList<StoredRow>> rows = disabledItems().rowsOf(path);
    return {{list().entriesOf(path), rows ? rows.value() : QList<StoredRow>()},
            list().order(),
            disabledItems().exists(),
            rows.ok(),
            listInUse()};
}

Result<void> LoginItemsAccess::change(int actionId, const QString &path, bool enabled)
{
    switch (actionId) {
    case LoginItemChange::Add:
        return add(path, enabled);
    case LoginItemChange::Remove:
        return remove(path, enabled);
    case LoginItemChange::Enable:
        return enable(path);
    default:
        return disable(path);
    }
}

Result<void> LoginItemsAccess::add(const QString &path, bool enabled)
{
    return enabled ? list().insertAtEnd(path)
                   : disabledItems().addDisabledLoginItemsData(path, selectedBackupFileName);
}

Result<void> LoginItemsAccess::remove(const QString &path, bool enabled)
{
    return enabled ? list().removeEvery(path)
                   : orNeverStored(disabledItems().deleteDisabledLoginItemsData(path));
}

Result<void> LoginItemsAccess::enable(const QString &path)
{
    Result<void> inserted = list().insertAtEnd(path);
    // What did not come into the list stays in the store: else it would be in neither.
    const Result<bool> listed = list().lists(path);
    if (!listed)
        return firstFailure(std::move(inserted), listed.error());
    if (listed.value())
        return firstFailure(std::move(inserted),
                            orNeverStored(disabledItems().deleteDisabledLoginItemsData(path)));
    if (!inserted)
        return inserted;
    return logged(
        path,
        {ErrorCode::Failed, u"not in the list after it was added, so it stays switched off"_s});
}

Result<void> LoginItemsAccess::disable(const QString &path)
{
    // Stored first, then removed, and removed even when storing failed: the session keeps what it
    // removes.
    Result<void> stored = disabledItems().addDisabledLoginItemsData(path, selectedBackupFileName);
    Result<void> removed = list().removeEvery(path);
    // Another run that met it in both places has taken it out of the store.
    const Result<QList<StoredRow>> rows = disabledItems().rowsOf(path);
    if (stored && rows && rows.value().isEmpty())
        stored = disabledItems().addDisabledLoginItemsData(path, selectedBackupFileName);
    return firstFailure(std::move(stored), std::move(removed));
}

} // namespace varnel
