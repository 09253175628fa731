#pragma once

#include "settings/RestartFlags.h"

#include <QStringList>

namespace varnel::cli {

/// The processes of the flagged applications, as the close-applications sheet orders them.
[[nodiscard]] QStringList restartNames(RestartFlags flags);

} // namespace varnel::cli
