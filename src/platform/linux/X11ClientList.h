#pragma once

#include <QSet>

#include <optional>

namespace varnel {

/// The processes that own a managed top-level window of the X display. None where there is no X
/// display or its window manager keeps no client list.
[[nodiscard]] std::optional<QSet<int>> windowOwners();

} // namespace varnel
