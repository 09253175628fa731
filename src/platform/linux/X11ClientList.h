#pragma once

#include <QSet>

#include <optional>

namespace varnel {

/// The processes of this machine that own a managed top-level window of the X display. None where
/// there is no X display, no X client library, or no window manager that keeps a client list.
[[nodiscard]] std::optional<QSet<int>> windowOwners();

/// Makes the connection to the X server that windowOwners() uses from here on, and keeps it: for a
/// process that may not be able to make one later, having given up its rights.
void keepDisplayConnection();

} // namespace varnel
