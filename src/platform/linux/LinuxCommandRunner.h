#pragma once

#include "base/HomeFolder.h"
#include "platform/CommandRunner.h"

namespace varnel {

/// Runs a child process without standard input, as the user that HomeOwner tells.
class LinuxCommandRunner : public CommandRunner {
public:
    /// For the home that the programs are run on behalf of; without a path for none.
    explicit LinuxCommandRunner(HomeFolder home);

    Result<QString> run(const QString &launchPath, const QStringList &arguments) override;

private:
    HomeFolder home;
};

} // namespace varnel
