#pragma once

#include "base/Result.h"

#include <QString>

namespace varnel {

/// The error that an errno value stands for, its text beginning with the path. EXDEV, which no call
/// of this program gives otherwise, stands for a link that leads out of the home (as the kernel's
/// own confined look-up has it).
[[nodiscard]] Error systemError(const QString &path, int error);

} // namespace varnel
