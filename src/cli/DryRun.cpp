#include "cli/DryRun.h"

namespace varnel::cli {

OptionInfo dryRunOption()
{
    return {u"dry-run"_qs, {}, u"print what would change, and touch nothing"_qs};
}

bool isDryRun(const Request &request)
{
    return request.has(dryRunOption().name);
}

} // namespace varnel::cli
