#pragma once

#include "cli/HomeCommand.h"
#include "cli/SettingReport.h"

namespace varnel::cli {

/// A command that reads one setting and prints it: alike as JSON, each in its own words as text.
class OneSettingCommand : public HomeCommand {
protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
    [[nodiscard]] static ParameterInfo settingParameter();
    [[nodiscard]] virtual QString text(const SettingReport &report, const Style &style) const = 0;
};

} // namespace varnel::cli
