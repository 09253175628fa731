#pragma once

#include "base/Result.h"
#include "cli/Console.h"

namespace varnel::cli {

/// Says what went wrong and gives the status to end with: Usage for what was typed wrong, else
/// Failed.
inline ExitStatus failure(Console &console, const Error &error)
{
    console.message(error.text);
    return error.code == ErrorCode::Invalid ? ExitStatus::Usage : ExitStatus::Failed;
}

} // namespace varnel::cli
