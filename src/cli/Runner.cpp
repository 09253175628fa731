#include "cli/Runner.h"

#include "cli/ExitStatus.h"

namespace varnel::cli {

int run(int, char **)
{
    return int(ExitStatus::Usage);
}

} // namespace varnel::cli
