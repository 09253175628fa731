#pragma once

namespace varnel {

/// To be called by a process with root's rights before a library looks for settings, fonts or
/// caches: variables of the environment that lead through somebody else's folder ("sudo -E", "su")
/// are taken out of it, since that somebody has a say in what is read and written there. HOME leads
/// to the caller's own home folder then.
void leaveFoldersOfOthers();

} // namespace varnel
