#pragma once

#include "base/Result.h"
#include "sysinfo/ProcessList.h"

namespace varnel {

class Desktop;

/// Has the desktop show the application's bundle in its file manager; nothing is waited for.
void showInFinder(const ProcessRow &row, Desktop &desktop);

/// Asks the process to end, with signal 15 and nothing else; logs the result when it could be
/// sent. Nobody waits for the process to follow.
Result<void> killProcess(const ProcessRow &row, ProcessManager &manager);

} // namespace varnel
