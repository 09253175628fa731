#pragma once

#include <QSet>

#include <optional>

namespace varnel {

/// The processes of this machine that own a managed top-level window of the X display. None where
/// there is no X display, no X client library, or no window manager that keeps a client list.
[[nodiscard]] std::optional<QSet<int>> windowOwners();

} // namespace varnel
