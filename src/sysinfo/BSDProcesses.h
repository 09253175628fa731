#pragma once

#include "platform/ProcessTable.h"

#include <cstddef>

namespace varnel {

/// Reads the kernel's process table. procList must be non-null and point to null, procCount
/// non-null: a call that breaks this ends the program. 0, with an array from malloc in *procList
/// that the caller frees and the number of its records in *procCount; or an errno value, with
/// *procList null and *procCount 0.
int GetBSDProcessList(const ProcessTable &table, std::byte **procList, std::size_t *procCount);

} // namespace varnel
