#pragma once

#include "cli/Command.h"

namespace varnel::cli {

/// Prints the script that completes this program's command lines in a shell.
class CompletionCommand : public Command {
public:
    [[nodiscard]] CommandDescription description() const override;
    ExitStatus run(const Request &request, Console &console) const override;
};

} // namespace varnel::cli
