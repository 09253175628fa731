#include "cli/ListCommand.h"

#include "cli/Lookup.h"
#include "cli/Outcome.h"

namespace varnel::cli {

namespace {

QString table(const QList<SettingReport> &reports, const Style &style)
{
    Table table;
    const SettingRow *previous = nullptr;
    for (const SettingReport &report : reports) {
        if (!previous || previous->module != report.row->module)
            table.addHeading(moduleRow(report.row->module).outlineTitle);
        table.addRow(settingCells(report));
        previous = report.row;
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
            return failure(module.error());
        only = module.value();
    }
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(home.error());

    const HomeSession session(home.value());
    const QList<SettingReport> reports = session.reports(settingsInOutlineOrder(only));
    if (request.has(u"json"_qs))
        console.print(settingsDocument(u"settings"_qs, reports));
    else
        console.print(table(reports, console.style()));
    return readingStatus(session, reports);
}

} // namespace varnel::cli
