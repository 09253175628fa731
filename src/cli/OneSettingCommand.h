#pragma once

#include "cli/Command.h"
#include "cli/SettingReport.h"

namespace varnel::cli {

/// A command that reads one setting and prints it: alike as JSON, each in its own words as text.
class OneSettingCommand : public Command {
public:
    ExitStatus run(const Request &request, Console &console) const final;

protected:
    [[nodiscard]] static ParameterInfo settingParameter();
    [[nodiscard]] virtual QString text(const SettingReport &report,
                                       const Console &console) const = 0;
};

} // namespace varnel::cli
