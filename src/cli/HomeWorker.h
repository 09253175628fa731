#pragma once

#include "cli/HomeCommand.h"
#include "platform/linux/Worker.h"

namespace varnel::cli {

/// Does a command's work in one home in a process of its own, which may become the home's owner.
/// It begins at once.
///
/// What comes back is the owner's word: a status and flags that are none are not taken, what a
/// terminal would obey is made visible, and no path in it is opened here.
class HomeWorker {
public:
    /// `writes`: whether the work may have changed something when it ends before its time.
    HomeWorker(const std::function<HomeOutcome()> &work, bool writes, bool json,
               const Style &style);

    /// Once, when the work is done; log lines come as they are written.
    [[nodiscard]] HomeOutcome outcome();

private:
    bool writes;
    Style style;
    Worker worker;
};

} // namespace varnel::cli
