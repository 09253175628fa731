#include "loginitems/PendingLoginItems.h"

#include "base/Text.h"

#include <algorithm>
#include <utility>

namespace varnel {

PendingLoginItems::PendingLoginItems(QList<LoginItemChange> &changes, LoginItemsAccess &access)
    : changes(changes), access(access)
{
}

void PendingLoginItems::addDataToChangeDataList(int actionId, const QString &path, bool enabled)
{
    const auto old =
        std::find_if(changes.cbegin(), changes.cend(),
                     [&](const LoginItemChange &change) { return change.path == path; });
    if (old != changes.cend())
        changes.erase(old);
    changes.append({actionId, path, enabled});
}

QList<LoginItemFailure> PendingLoginItems::saveChanges()
{
    QList<LoginItemFailure> failures;
    const LoginItemsAccess::Together together(access);
    for (const LoginItemChange &change : std::as_const(changes)) {
        const LoginItemsAccess::Written written =
            access.writeWithWayBack(change.actionId, change.path, change.isEnabled);
        if (!written.change)
            failures.append({change, false, written.change.error()});
        if (!written.wayBack)
            failures.append({change, true, written.wayBack.error()});
    }
    changes.clear();
    return failures;
}

void PendingLoginItems::dropChanges()
{
    changes.clear();
}

QString loginItemActionString(int actionId, const QString &path)
{
    switch (actionId) {
    case LoginItemChange::Add:
        return fillIn(u"Add \"%@\"", {path});
    case LoginItemChange::Remove:
        return fillIn(u"Remove \"%@\"", {path});
    case LoginItemChange::Enable:
        return fillIn(u"Enable \"%@\"", {path});
    case LoginItemChange::Disable:
        return fillIn(u"Disable \"%@\"", {path});
    default:
        return QStringLiteral("Error");
    }
}

} // namespace varnel
