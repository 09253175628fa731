#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

namespace varnel {

/// The session's home folder: HOME where it is an absolute path, else what the user database says.
/// Taken as it stands there, for that is the path that people know; only slashes at its end go.
/// NotFound when there is no such folder, Invalid when it is something else.
[[nodiscard]] Result<HomeFolder> ownHome();

/// A folder named by the user, made absolute, its links resolved and slashes at its end cut: it
/// goes on meaning the same folder, whatever happens to the links. NotFound when there is no such
/// folder, Invalid when it is something else or the name is empty.
[[nodiscard]] Result<HomeFolder> namedHome(const QString &directory);

} // namespace varnel
