#include "cli/OneSettingCommand.h"

#include "cli/Failure.h"
#include "cli/HomeSession.h"
#include "cli/Lookup.h"

namespace varnel::cli {

ParameterInfo OneSettingCommand::settingParameter()
{
    return {u"SETTING"_qs, u"number or short name"_qs};
}

ExitStatus OneSettingCommand::run(const Request &request, Console &console) const
{
    const Result<const SettingRow *> row = lookUpSetting(request.arguments.first());
    if (!row)
        return failure(console, row.error());
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(console, home.error());

    const SettingReport report = HomeSession(home.value()).report(*row.value());
    if (request.has(u"json"_qs))
        console.print(jsonDocument(settingObject(report)));
    else
        console.print(text(report, console));
    return ExitStatus::Done;
}

} // namespace varnel::cli
