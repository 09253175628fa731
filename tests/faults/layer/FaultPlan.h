#pragma once

#include <string>

#include <sys/types.h>

namespace varnel::faults {

/// One system call that concerns the watched folder.
struct Call {
    const char *name = "";
    bool changes = false; ///< it changes a file or folder, or makes a change last
    bool takesSpace = false; ///< a full disk can refuse it
    std::string path; ///< empty: nothing that is watched
    std::string target = {}; ///< of a rename or link: the new name
};

enum class Fate {
    Through,
    StopBefore,
    StopAfter,
    StopHalfway, ///< a write: after half of its bytes; any other: before it
    Fail,
    Meddle, ///< another program does its work before the call
};

/// What happens to which call, taken from the environment once, at the process's first call:
///
/// - VARNEL_FAULT_ROOT: the folder that is watched; without it, nothing is.
/// - VARNEL_FAULT_AT: the number of the call that is met, counted from 1; 0 meets none.
/// - VARNEL_FAULT_DO: before, after or halfway (the process is killed), or ENOSPC, EIO, EACCES,
///   EMFILE (the call fails); FULL fails that one and all later ones that take space; run has
///   another program do its work before the call, run-on before that one and all later ones.
/// - VARNEL_FAULT_COMMAND: for these two, a line for the shell; its end is waited for.
/// - VARNEL_FAULT_CALLS: "changes" counts the calls that change something, "all" the others too.
/// - VARNEL_FAULT_RECORD: a file that gets one line for each counted call: number, name, path,
///   target and what came of it, parted by tabs.
///
/// Only this process is concerned; the variables are removed for its children.
class FaultPlan {
public:
    static FaultPlan &instance();

    /// Whether the call is counted at all.
    [[nodiscard]] bool concerns(const Call &call) const;
    /// Counts it.
    [[nodiscard]] Fate meet(const Call &call);
    /// For Fate::Fail: the errno value.
    [[nodiscard]] int error() const { return failure; }
    void record(const Call &call, const char *outcome) const;
    [[noreturn]] static void stop();
    /// Runs the other program.
    void meddle() const;

private:
    FaultPlan();

    std::string root;
    bool all = false;
    bool staysFull = false;
    bool goesOn = false;
    Fate fate = Fate::Through;
    int failure = 0;
    long at = 0;
    long count = 0;
    int recordFile = -1;
    std::string command;
};

/// The path behind a descriptor; empty when it is none of a file or folder.
[[nodiscard]] std::string pathOf(int descriptor);
/// A name as it is meant in a folder.
[[nodiscard]] std::string pathAt(int folder, const char *name);

} // namespace varnel::faults
