#include "cli/OneSettingCommand.h"

#include "cli/Lookup.h"
#include "cli/Outcome.h"

namespace varnel::cli {

ParameterInfo OneSettingCommand::settingParameter()
{
    return {u"SETTING"_qs, u"number or short name"_qs};
}

ExitStatus OneSettingCommand::run(const Request &request, Console &console) const
{
    const Result<const SettingRow *> row = lookUpSetting(request.arguments.first());
    if (!row)
        return failure(row.error());
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(home.error());

    const HomeSession session(home.value());
    const QList<SettingReport> reports = session.reports({row.value()});
    if (request.has(u"json"_qs))
        console.print(jsonDocument(settingObject(reports.first())));
    else
        console.print(text(reports.first(), console));
    return readingStatus(session, reports);
}

} // namespace varnel::cli
