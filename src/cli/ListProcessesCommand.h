#pragma once

#include "cli/Command.h"

namespace varnel::cli {

/// Stands twice in the registry: "processes" alone lists them too.
class ListProcessesCommand : public Command {
public:
    explicit ListProcessesCommand(QString name);

    [[nodiscard]] CommandDescription description() const override;
    ExitStatus run(const Request &request, Console &console) const override;

private:
    QString name;
};

} // namespace varnel::cli
