#pragma once

#include "base/Result.h"
#include "cli/Command.h"
#include "sysinfo/ProcessList.h"

namespace varnel::cli {

// The commands that are about no home, each in the source that is named after it.

class SystemCommand : public Command {
public:
    [[nodiscard]] CommandDescription description() const override;
    ExitStatus run(const Request &request, Console &console) const override;
};

/// Stands twice in the registry: "processes" alone lists them too.
class ListProcessesCommand : public Command {
public:
    explicit ListProcessesCommand(QString name);

    [[nodiscard]] CommandDescription description() const override;
    ExitStatus run(const Request &request, Console &console) const override;

private:
    QString name;
};

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

class RevealProcessCommand : public OneProcessCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    Result<void> act(const ProcessRow &row, ProcessManager &manager) const override;
    [[nodiscard]] QString deed() const override;
};

class TerminateProcessCommand : public OneProcessCommand {
public:
    [[nodiscard]] CommandDescription description() const override;

protected:
    Result<void> act(const ProcessRow &row, ProcessManager &manager) const override;
    [[nodiscard]] QString deed() const override;
};

class EndCommand : public Command {
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
