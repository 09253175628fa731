#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "cli/Lookup.h"

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

CommandDescription ListCommand::description() const
{
    return {
        u"Lists the settings with their values"_s,
        {},
        {{u"GROUP"_s,
          u"one group only: General, Dock, Finder, ... in any letter case; quote one with a blank"_s,
          ParameterInfo::Count::Optional, Completes::Group}},
        {},
        {u"list"_s, u"list Dock"_s, u"list --json --home /mnt/disk/Users/anna"_s}};
}

Result<HomeCommand::Work> ListCommand::prepare(const Request &request) const
{
    const ModuleRow *only = nullptr;
    if (!request.arguments.isEmpty()) {
        const Result<const ModuleRow *> module = lookUpGroup(request.arguments.first());
        if (!module)
            return module.error();
        only = module.value();
    }
    return Work([only](const HomeFolder &home) {
        const HomeSession session(home);
        const QList<SettingReport> reports = session.reports(settingsInOutlineOrder(only));
        HomeOutcome outcome;
        outcome.text = [reports](const Style &style) { return table(reports, style); };
        outcome.object = [reports] { return settingsObject(u"settings"_s, reports); };
        outcome.noteUnreadableFiles(session, reports);
        return outcome;
    });
}

} // namespace varnel::cli
