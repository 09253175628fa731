#pragma once

#include "cli/Command.h"
#include "profiles/Profile.h"

namespace varnel::cli {

[[nodiscard]] ParameterInfo profileParameter();

/// The profile in the file that the first argument names, or on standard input where that is "-",
/// read to its end. Invalid for what is no sound profile, Failed for what can't be read; the text
/// names the file.
[[nodiscard]] Result<Profile> profileNamedBy(const Request &request);

} // namespace varnel::cli
