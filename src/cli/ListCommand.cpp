#include "cli/ListCommand.h"

#include "cli/Failure.h"
#include "cli/HomeSession.h"
#include "cli/Lookup.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

QByteArray json(const QList<SettingGroup> &groups, const HomeSession &session)
{
    QJsonArray settings;
    for (const SettingGroup &group : groups)
        for (const SettingRow *row : group.rows)
            settings.append(settingObject(session.report(*row)));
    return jsonDocument({{u"settings"_qs, settings}});
}

QString table(const QList<SettingGroup> &groups, const HomeSession &session, const Style &style)
{
    Table table;
    for (const SettingGroup &group : groups) {
        table.addHeading(group.module->outlineTitle);
        for (const SettingRow *row : group.rows)
            table.addRow(settingCells(session.report(*row)));
    }
    return table.text(style);
}

} // namespace

CommandInfo ListCommand::info() const
{
    return {u"list"_qs,
            u"Lists the settings with their values"_qs,
            {},
            {{u"GROUP"_qs, u"one group only: General, Dock, Finder, ... in any letter case"_qs,
              ParameterInfo::Count::Optional}},
            {},
            {u"list"_qs, u"list Dock"_qs, u"list --json --home /mnt/disk/Users/anna"_qs}};
}

ExitStatus ListCommand::run(const Request &request, Console &console) const
{
    const ModuleRow *only = nullptr;
    if (!request.arguments.isEmpty()) {
        const Result<const ModuleRow *> module = lookUpGroup(request.arguments.first());
        if (!module)
            return failure(console, module.error());
        only = module.value();
    }
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(console, home.error());

    const HomeSession session(home.value());
    const QList<SettingGroup> groups = settingGroups(only);
    if (request.has(u"json"_qs))
        console.print(json(groups, session));
    else
        console.print(table(groups, session, console.style()));
    return ExitStatus::Done;
}

} // namespace varnel::cli
