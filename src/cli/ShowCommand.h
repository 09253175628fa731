#pragma once

#include "cli/OneSettingCommand.h"

namespace varnel::cli {

class ShowCommand : public OneSettingCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] QString text(const SettingReport &report, const Style &style) const override;
};

} // namespace varnel::cli
