#include "loginitems/views/LoginItemChangesInfoWindow.h"

#include "base/Logging.h"
#include "loginitems/PendingLoginItems.h"
#include "shell/SharedObject.h"

#include <utility>

namespace varnel {

LoginItemChangesInfoWindow::LoginItemChangesInfoWindow(SharedObject &shared, QWidget *parent)
    : ListSheet(QStringLiteral("Pending changes"), {{QStringLiteral("Description")}}, lcLoginItems,
                parent),
      shared(shared)
{
    setObjectName(QStringLiteral("loginItemChangesInfoWindow"));
    setEmptyText(QStringLiteral("Nothing is pending: a change waits here until it is saved"));
}

void LoginItemChangesInfoWindow::readChangesData()
{
    QList<QStringList> rows;
    for (const LoginItemChange &change : std::as_const(shared.loginItemCommands()))
        rows.append({loginItemActionString(change.actionId, change.path)});
    setRows(std::move(rows));
}

} // namespace varnel
