#pragma once

#include "cli/HomeCommand.h"
#include "platform/linux/Worker.h"

namespace varnel::cli {

/// Does a command's work in one home in a process of its own, which may become the home's owner.
///
/// What comes back is the owner's word: a status and flags that are none are not taken, what a
/// terminal would obey is made visible, and no path in it is opened here. Log lines come as they
/// are written.
class HomeWorker {
public:
    explicit HomeWorker(bool json, const Style &style, const Worker &worker = Worker())
        : json(json), style(style), worker(worker)
    {
    }

    /// `writes`: whether the work may have changed something when it ends before its time.
    [[nodiscard]] HomeOutcome run(const std::function<HomeOutcome()> &work, bool writes) const;

private:
    bool json;
    Style style;
    Worker worker;
};

} // namespace varnel::cli
