#pragma once

#include "cli/OneProcessCommand.h"

namespace varnel::cli {

class RevealProcessCommand : public OneProcessCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    Result<void> act(const ProcessRow &row, ProcessManager &manager) const override;
    [[nodiscard]] QString deed() const override;
};

} // namespace varnel::cli
