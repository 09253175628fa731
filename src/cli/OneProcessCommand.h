#pragma once

#include "base/Result.h"
#include "cli/Command.h"
#include "sysinfo/ProcessList.h"

namespace varnel::cli {

/// A command that does something with one of the listed applications.
class OneProcessCommand : public Command {
public:
    ExitStatus run(const Request &request, Console &console) const final;

protected:
    [[nodiscard]] static ParameterInfo processParameter();

    virtual Result<void> act(const ProcessRow &row, ProcessManager &manager) const = 0;
    /// What was done, as the JSON member that holds the process.
    [[nodiscard]] virtual QString deed() const = 0;
};

} // namespace varnel::cli
