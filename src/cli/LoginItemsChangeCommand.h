#pragma once

#include "cli/Command.h"
#include "loginitems/LoginItemChange.h"

namespace varnel::cli {

/// Adds, removes, enables or disables one login item: four commands of one shape.
class LoginItemsChangeCommand : public Command {
public:
    explicit LoginItemsChangeCommand(LoginItemChange::Action action) : action(action) { }

    [[nodiscard]] CommandInfo info() const override;
    ExitStatus run(const Request &request, Console &console) const override;

private:
    LoginItemChange::Action action;
};

} // namespace varnel::cli
