#pragma once

#include "cli/Command.h"

namespace varnel::cli {

class EndCommand : public Command {
public:
    [[nodiscard]] CommandDescription description() const override;
    ExitStatus run(const Request &request, Console &console) const override;
};

} // namespace varnel::cli
