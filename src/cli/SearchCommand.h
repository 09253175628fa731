#pragma once

#include "cli/HomeCommand.h"

namespace varnel::cli {

class SearchCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    [[nodiscard]] Result<Work> prepare(const Request &request) const override;
};

} // namespace varnel::cli
