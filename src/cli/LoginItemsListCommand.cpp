#include "cli/HomeCommands.h"

#include "backup/LoginItemsOfHome.h"
#include "base/Literals.h"
#include "cli/Table.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

QJsonObject listObject(const QList<LoginItemRow> &rows)
{
    QJsonArray items;
    for (const LoginItemRow &row : rows)
        items.append(QJsonObject {
            {u"name"_s, row.name}, {u"path"_s, row.path}, {u"enabled"_s, row.enabled}});
    return {{u"loginItems"_s, items}};
}

QString table(const QList<LoginItemRow> &rows, const Style &style)
{
    if (rows.isEmpty())
        return u"No login items.\n"_s;
    Table table;
    for (const LoginItemRow &row : rows)
        table.addRow({{row.enabled ? u"on"_s : u"off"_s,
                       row.enabled ? Table::Look::Strong : Table::Look::Quiet},
                      {row.name},
                      {row.path, Table::Look::Quiet}});
    return table.text(style);
}

} // namespace

CommandDescription LoginItemsListCommand::description() const
{
    return {
        u"Lists what opens at login, and what was taken out of that list"_s,
        u"\"on\" opens at login; \"off\" is kept by this program and does not. In one's own home\n"
        u"the list is the session's; with --home it is that folder's .config/autostart alone."_s,
        {},
        {},
        {u"login-items list"_s, u"login-items list --json --home /mnt/disk/Users/anna"_s}};
}

Result<HomeCommand::Work> LoginItemsListCommand::prepare(const Request &) const
{
    return Work([](const HomeFolder &home) {
        HomeSession session(home);
        const QList<LoginItemRow> rows = LoginItemsOfHome(session.workspace()).rows();
        HomeOutcome outcome;
        outcome.text = [rows](const Style &style) { return table(rows, style); };
        outcome.object = [rows] { return listObject(rows); };
        return outcome;
    });
}

} // namespace varnel::cli
