#pragma once

#include "base/HomeFolder.h"

#include <QString>

namespace varnel::cli {

/// The name of this run's backup file. The backup folder is tried before the folder above it, and
/// again after: so it is there for the first save of a first run.
[[nodiscard]] QString backupFileOfRun(const HomeFolder &home);

} // namespace varnel::cli
