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

HomeSession::Mode sessionMode(const Request &request)
{
    return isDryRun(request) ? HomeSession::Mode::DryRun : HomeSession::Mode::Work;
}

} // namespace varnel::cli
