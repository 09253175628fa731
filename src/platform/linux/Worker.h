#pragma once

#include "base/Result.h"

#include <QByteArray>

#include <chrono>
#include <functional>

namespace varnel {

/// One piece of work, done in a copy of this process that may give up rights which this one keeps.
///
/// What it has to say comes over a pipe, line by line, and is the word of whoever it became: to be
/// checked and escaped, never to be followed. It has no other way out: its standard streams lead
/// nowhere, its session is its own, and it ends when this process ends.
class Worker {
public:
    /// Says one line; a line feed in it would part it in two.
    using Tell = std::function<void(const QByteArray &line)>;
    using Work = std::function<void(const Tell &tell)>;
    using Hear = std::function<void(const QByteArray &line)>;

    struct Limits {
        /// Who says nothing and does not use the processor for so long is ended.
        std::chrono::milliseconds silence = std::chrono::seconds(120);
        /// All lines together; a disk's worth of answers must not fill the memory.
        qsizetype bytes = qsizetype(128) << 20;
    };

    Worker() = default;
    explicit Worker(const Limits &limits) : limits(limits) { }

    /// Does the work and hands on each line as it comes. Failed when the work did not come to its
    /// end: it could not be begun, died, was stopped by somebody, was silent or said too much; it
    /// is then ended, and the text tells why. To be called while this process has one thread.
    [[nodiscard]] Result<void> run(const Work &work, const Hear &hear) const;

private:
    Limits limits;
};

} // namespace varnel
