#include "settings/views/QuilletChangesInfoWindow.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "settings/views/Quillet.h"

namespace varnel {

QuilletChangesInfoWindow::QuilletChangesInfoWindow(const Quillet &controller,
                                                   const QList<ChangeRecord> &commands,
                                                   QWidget *parent)
    : ListSheet(QStringLiteral("Pending changes"),
                {{QStringLiteral("Location")}, {QStringLiteral("Description")}}, lcSettings,
                parent),
      controller(controller), commands(commands)
{
    setObjectName(QStringLiteral("quilletChangesInfoWindow"));
    setEmptyText(QStringLiteral("Nothing is pending: a change waits here until it is saved"));
}

void QuilletChangesInfoWindow::readChangesData()
{
    QList<QStringList> rows;
    for (const ChangeRecord &command : commands) {
        const QStringList texts =
            controller.actionString(command.locationId, command.actionId, command.extraData);
        if (!texts.isEmpty())
            rows.append({texts.at(1), texts.at(2)});
    }
    varnelLog(lcSettings, fillIn(u"readChangesData %ld", {QString::number(rows.size())}));
    setRows(std::move(rows));
}

} // namespace varnel
