#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "cli/Lookup.h"

namespace varnel::cli {

ParameterInfo OneSettingCommand::settingParameter()
{
    return {u"SETTING"_s, u"number or short name"_s, ParameterInfo::Count::One, Completes::Setting};
}

Result<HomeCommand::Work> OneSettingCommand::prepare(const Request &request) const
{
    const Result<const SettingRow *> row = lookUpSetting(request.arguments.first());
    if (!row)
        return row.error();
    return Work([this, row = row.value()](const HomeFolder &home) {
        const HomeSession session(home);
        const QList<SettingReport> reports = session.reports({row});
        const SettingReport &report = reports.first();
        HomeOutcome outcome;
        outcome.text = [this, report](const Style &style) { return text(report, style); };
        outcome.object = [report] { return settingObject(report); };
        outcome.noteUnreadableFiles(session, reports);
        // What a file that can't be read holds is not known: no value would be the right answer.
        if (outcome.status == ExitStatus::Failed) {
            outcome.text = nullptr;
            outcome.object = nullptr;
        }
        return outcome;
    });
}

} // namespace varnel::cli
