#pragma once

#include "profiles/Profile.h"
#include "profiles/Translation.h"

namespace varnel {

/// The profile as a script of the standard shell, for an account that somebody is logged in to: it
/// calls the Mac's own tools ("defaults", "chflags") to the same effect, then ends the applications
/// concerned. Values of a key that is left out stand there as a comment. The script ends with 1
/// when one of the tools fails, and goes on till then.
[[nodiscard]] Translation defaultsScript(const Profile &profile);

} // namespace varnel
