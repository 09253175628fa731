#include "cli/RestartNames.h"

#include "shell/QuitDecision.h"

namespace varnel::cli {

QStringList restartNames(RestartFlags flags)
{
    return processesToEnd(closeRows(flags));
}

} // namespace varnel::cli
