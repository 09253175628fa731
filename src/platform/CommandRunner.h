#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace varnel {

/// Runs a program, its standard output and standard error merged into one pipe, and waits for its
/// end.
class CommandRunner {
public:
    virtual ~CommandRunner() = default;

    /// Starts launchPath (absolute) with the arguments as given and reads its merged output to the
    /// end. The text of the output, whatever the exit status; an error only when the program could
    /// not be started. The child runs with the rights of the process's real user, never with
    /// root's on behalf of somebody else's home.
    [[nodiscard]] virtual Result<QString> run(const QString &launchPath,
                                              const QStringList &arguments) = 0;
};

} // namespace varnel
