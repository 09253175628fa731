#include "cli/ShowCommand.h"

namespace varnel::cli {

CommandInfo ShowCommand::info() const
{
    return {u"show"_qs, u"Shows everything about one setting"_qs,      {}, {settingParameter()},
            {},         {u"show dock-size"_qs, u"show 1008 --json"_qs}};
}

QString ShowCommand::text(const SettingReport &report, const Style &style) const
{
    return settingSheet(report, style);
}

} // namespace varnel::cli
