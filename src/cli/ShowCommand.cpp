#include "cli/HomeCommands.h"

#include "base/Literals.h"

namespace varnel::cli {

CommandDescription ShowCommand::description() const
{
    return {u"Shows everything about one setting"_s,
            {},
            {settingParameter()},
            {},
            {u"show dock-size"_s, u"show 1008 --json"_s}};
}

QString ShowCommand::text(const SettingReport &report, const Style &style) const
{
    return settingSheet(report, style);
}

} // namespace varnel::cli
