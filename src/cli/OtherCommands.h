#pragma once

#include "cli/Command.h"

namespace varnel::cli {

// The commands that are about no home, each in the source that is named after it.

class SystemCommand : public Command {
public:
    [[nodiscard]] CommandDescription description() const override;
    ExitStatus run(const Request &request, Console &console) const override;
};

/// Prints the script that completes this program's command lines in a shell.
class CompletionCommand : public Command {
public:
    [[nodiscard]] CommandDescription description() const override;
    ExitStatus run(const Request &request, Console &console) const override;
};

} // namespace varnel::cli
