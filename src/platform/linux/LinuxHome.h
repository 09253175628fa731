#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

namespace varnel {

/// The session's home folder: HOME, or what the user database says where HOME is not set or empty.
/// Taken as it stands there, for that is the path that people know; only slashes at its end go.
/// NotFound when there is no such folder, Invalid when it is something else, when HOME is no
/// absolute path, and when the path is not UTF-8.
[[nodiscard]] Result<HomeFolder> ownHome();

/// A folder named by the user, made absolute, its links resolved and slashes at its end cut: it
/// goes on meaning the same folder, whatever happens to the links. NotFound when there is no such
/// folder, Invalid when it is something else, the name is empty or the path is not UTF-8.
[[nodiscard]] Result<HomeFolder> namedHome(const QString &directory);

} // namespace varnel
