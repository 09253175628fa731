#pragma once

#include "platform/CommandRunner.h"

namespace varnel {

class LinuxCommandRunner : public CommandRunner {
public:
    Result<QString> run(const QString &launchPath, const QStringList &arguments) override;
};

} // namespace varnel
