#include "sysinfo/ProcessActions.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "platform/Desktop.h"

#include <cerrno>
#include <system_error>

namespace varnel {

namespace {

constexpr int terminateSignal = 15;

} // namespace

void showInFinder(const ProcessRow &row, Desktop &desktop)
{
    desktop.reveal(row.bundleLocation);
}

Result<void> killProcess(const ProcessRow &row, ProcessManager &manager)
{
    const int outcome = manager.kill(row.processId, terminateSignal);
    if (outcome != 0) {
        const std::string why = std::generic_category().message(errno);
        return Error {ErrorCode::Failed, row.process + u": " + QString::fromStdString(why)};
    }
    varnelLog(lcSysInfo, fillIn(u"%d", {QString::number(outcome)}));
    return {};
}

} // namespace varnel
