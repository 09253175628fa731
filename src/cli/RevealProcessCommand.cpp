#include "cli/OtherCommands.h"

#include "base/Literals.h"
#include "cli/HomeSession.h"
#include "platform/linux/LinuxDesktop.h"
#include "sysinfo/ProcessActions.h"

namespace varnel::cli {

CommandDescription RevealProcessCommand::description() const
{
    return {
        u"Shows a running application in the file manager"_s,
        u"Prints the application's line and does not wait for the file manager. Where there is\n"
        u"none that can show a file, the folder around it is opened."_s,
        {processParameter()},
        {},
        {u"processes reveal 4711"_s}};
}

Result<void> RevealProcessCommand::act(const ProcessRow &row, ProcessManager &) const
{
    LinuxDesktop desktop(sessionHome());
    showInFinder(row, desktop);
    return {};
}

QString RevealProcessCommand::deed() const
{
    return u"revealed"_s;
}

} // namespace varnel::cli
