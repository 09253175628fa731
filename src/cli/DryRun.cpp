#include "cli/DryRun.h"

#include "base/Literals.h"

namespace varnel::cli {

OptionInfo dryRunOption()
{
    return {u"dry-run"_s, {}, u"print what would change, and touch nothing"_s};
}

bool isDryRun(const Request &request)
{
    return request.has(dryRunOption().name);
}

} // namespace varnel::cli
