#include "shell/TerminalCommand.h"

#include "base/Logging.h"
#include "platform/CommandRunner.h"

#include <QList>

#include <utility>

namespace varnel {

namespace {

QList<TerminalCommand *> &liveCommands()
{
    static QList<TerminalCommand *> commands;
    return commands;
}

} // namespace

TerminalCommand::TerminalCommand(CommandRunner &commandRunner) : runner(commandRunner)
{
    liveCommands().append(this);
}

TerminalCommand::~TerminalCommand()
{
    liveCommands().removeOne(this);
}

void TerminalCommand::setTaskData(const std::shared_ptr<const TaskData> &data)
{
    currentTaskData = data;
    count = 1;
}

bool TerminalCommand::executeCommand()
{
    if (current && count < 1)
        return false;
    const auto data = currentTaskData.lock();
    current = data ? *data : TaskData();
    const TaskData child = *current;
    const Result<QString> output = runner.run(child.launchPath(), child.arguments());
    if (!output) {
        // No child, no end of one: the task stays set until some other child ends.
        varnelLog(lcIo, output.error().text);
        return false;
    }
    postChildEnded();
    return true;
}

void TerminalCommand::finishedTask()
{
    current.reset();
}

void TerminalCommand::postChildEnded()
{
    for (TerminalCommand *command : std::as_const(liveCommands()))
        command->finishedTask();
}

} // namespace varnel
