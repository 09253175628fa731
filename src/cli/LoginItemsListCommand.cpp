#include "cli/LoginItemsListCommand.h"

#include "cli/LoginItemsSession.h"
#include "cli/Outcome.h"
#include "cli/SettingReport.h"
#include "cli/Table.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

QByteArray document(const QList<LoginItemRow> &rows)
{
    QJsonArray items;
    for (const LoginItemRow &row : rows)
        items.append(QJsonObject {
            {u"name"_qs, row.name}, {u"path"_qs, row.path}, {u"enabled"_qs, row.enabled}});
    return jsonDocument({{u"loginItems"_qs, items}});
}

QString table(const QList<LoginItemRow> &rows, const Style &style)
{
    if (rows.isEmpty())
        return u"No login items.\n"_qs;
    Table table;
    for (const LoginItemRow &row : rows)
        table.addRow({{row.enabled ? u"on"_qs : u"off"_qs,
                       row.enabled ? Table::Look::Strong : Table::Look::Quiet},
                      {row.name},
                      {row.path, Table::Look::Quiet}});
    return table.text(style);
}

} // namespace

CommandInfo LoginItemsListCommand::info() const
{
    return {
        u"login-items list"_qs,
        u"Lists what opens at login, and what was taken out of that list"_qs,
        u"\"on\" opens at login; \"off\" is kept by this program and does not. In one's own home\n"
        u"the list is the session's; with --home it is that folder's .config/autostart alone."_qs,
        {},
        {},
        {u"login-items list"_qs, u"login-items list --json --home /mnt/disk/Users/anna"_qs}};
}

ExitStatus LoginItemsListCommand::run(const Request &request, Console &console) const
{
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(home.error());
    HomeSession session(home.value());
    const QList<LoginItemRow> rows = LoginItemsSession(session, {}).rows();
    if (request.has(u"json"_qs))
        console.print(document(rows));
    else
        console.print(table(rows, console.style()));
    return ExitStatus::Done;
}

} // namespace varnel::cli
