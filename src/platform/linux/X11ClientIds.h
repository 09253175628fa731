#pragma once

#include "platform/linux/XcbLibrary.h"

#include <QSet>

#include <optional>
#include <vector>

namespace varnel {

/// The processes that these windows belong to, as the X server knows them from its connections:
/// also of programs that do not write their process id on their windows, or write one that counts
/// only in a sandbox. None where the server has no such extension (X-Resource 1.2).
[[nodiscard]] std::optional<QSet<int>> clientProcesses(const XcbLibrary &x,
                                                       xcb_connection_t *connection,
                                                       const std::vector<xcb_window_t> &windows);

} // namespace varnel
