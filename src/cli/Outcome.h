#pragma once

#include "cli/Console.h"
#include "cli/ExitStatus.h"

#include "base/Result.h"

namespace varnel::cli {

/// Says what went wrong and gives the status to end with: Usage for what was typed wrong, else
/// Failed.
ExitStatus failure(const Error &error);

} // namespace varnel::cli
