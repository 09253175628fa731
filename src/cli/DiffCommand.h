#pragma once

#include "cli/HomeCommand.h"

namespace varnel::cli {

class DiffCommand : public HomeCommand {
public:
    [[nodiscard]] CommandInfo info() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

} // namespace varnel::cli
