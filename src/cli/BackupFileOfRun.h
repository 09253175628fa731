#pragma once

#include <QString>

namespace varnel::cli {

class HomeSession;

/// The name of this run's backup file. The backup folder is tried before the folder above it, and
/// again after: so it is there for the first save of a first run.
[[nodiscard]] QString backupFileOfRun(HomeSession &session);

} // namespace varnel::cli
