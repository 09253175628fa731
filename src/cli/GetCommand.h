#pragma once

#include "cli/OneSettingCommand.h"

namespace varnel::cli {

class GetCommand : public OneSettingCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    /// With --key: what stands in the file, whatever the setting makes of it.
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
    [[nodiscard]] QString text(const SettingReport &report, const Style &style) const override;
};

} // namespace varnel::cli
