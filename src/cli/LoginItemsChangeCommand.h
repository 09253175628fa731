#pragma once

#include "cli/HomeCommand.h"
#include "loginitems/LoginItemChange.h"

namespace varnel::cli {

/// Adds, removes, enables or disables one login item: four commands of one shape.
class LoginItemsChangeCommand : public HomeCommand {
public:
    explicit LoginItemsChangeCommand(LoginItemChange::Action action) : action(action) { }

    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;

private:
    LoginItemChange::Action action;
};

} // namespace varnel::cli
