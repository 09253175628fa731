#pragma once

#include "shell/TaskData.h"

#include <memory>
#include <optional>

namespace varnel {

class CommandRunner;

/// Runs one program at a time and waits for it, throwing its output away.
///
/// Every command that is alive hears of the end of every child process and then drops its own task,
/// whoever's child it was.
class TerminalCommand {
public:
    /// The runner outlives the command's last executeCommand().
    explicit TerminalCommand(CommandRunner &runner);
    ~TerminalCommand();
    TerminalCommand(const TerminalCommand &) = delete;
    TerminalCommand &operator=(const TerminalCommand &) = delete;

    /// What to run next. The command does not keep the record alive.
    void setTaskData(const std::shared_ptr<const TaskData> &data);

    /// Runs the record to its end. False when it was refused (a task is set although no record was
    /// ever given), or when the program could not be started, which is logged.
    bool executeCommand();

    /// What each command does at the end of any child process.
    void finishedTask();

    /// Tells every live command that a child process has ended.
    static void postChildEnded();

    /// The child that is running, or whose start failed; none after the end of any child.
    [[nodiscard]] const std::optional<TaskData> &task() const { return current; }
    /// 0, or 1 once a record has been given.
    [[nodiscard]] int taskCount() const { return count; }

private:
    CommandRunner &runner;
    std::optional<TaskData> current;
    std::weak_ptr<const TaskData> currentTaskData;
    int count = 0;
};

} // namespace varnel
