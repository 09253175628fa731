#pragma once

#include "platform/CommandRunner.h"

namespace varnel {

/// Runs a child process without standard input.
class LinuxCommandRunner : public CommandRunner {
public:
    Result<QString> run(const QString &launchPath, const QStringList &arguments) override;
};

} // namespace varnel
