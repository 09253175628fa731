#include "cli/TerminateProcessCommand.h"

#include "sysinfo/ProcessActions.h"

namespace varnel::cli {

CommandInfo TerminateProcessCommand::info() const
{
    return {
        u"processes terminate"_qs,
        u"Asks a running application to end"_qs,
        u"Sends the signal TERM to the process and prints its line. Asks nothing first, and does\n"
        u"not wait for the process to end."_qs,
        {processParameter()},
        {},
        {u"processes terminate 4711"_qs}};
}

Result<void> TerminateProcessCommand::act(const ProcessRow &row, ProcessManager &manager) const
{
    return killProcess(row, manager);
}

QString TerminateProcessCommand::deed() const
{
    return u"terminated"_qs;
}

} // namespace varnel::cli
