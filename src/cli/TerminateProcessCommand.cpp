#include "cli/OtherCommands.h"

#include "base/Literals.h"
#include "sysinfo/ProcessActions.h"

namespace varnel::cli {

CommandDescription TerminateProcessCommand::description() const
{
    return {
        u"Asks a running application to end"_s,
        u"Sends the signal TERM to the process and prints its line. Asks nothing first, and does\n"
        u"not wait for the process to end."_s,
        {processParameter()},
        {},
        {u"processes terminate 4711"_s}};
}

Result<void> TerminateProcessCommand::act(const ProcessRow &row, ProcessManager &manager) const
{
    return killProcess(row, manager);
}

QString TerminateProcessCommand::deed() const
{
    return u"terminated"_s;
}

} // namespace varnel::cli
