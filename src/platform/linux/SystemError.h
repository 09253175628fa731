#pragma once

#include "base/Result.h"

#include <QString>

namespace varnel {

/// The error that an errno value stands for, its text beginning with the path. EXDEV, which no call
/// of this program gives otherwise, stands for a link that leads out of the home (as the kernel's
/// own confined look-up has it).
[[nodiscard]] Error systemError(const QString &path, int error);

/// The same for what the reading and replacing of files gives: EISDIR stands for whatever is no
/// regular file, EAGAIN for a file that another program is changing.
[[nodiscard]] Error fileError(const QString &path, int error);

} // namespace varnel
