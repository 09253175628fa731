#pragma once

#include "base/Result.h"
#include "platform/linux/FileDescriptor.h"

#include <QByteArray>

#include <chrono>
#include <functional>

#include <sys/types.h>

namespace varnel {

/// One piece of work, done in a copy of this process that may give up rights which this one keeps.
/// It begins at once; several may work side by side.
///
/// What it has to say comes over a pipe, line by line, and is the word of whoever it became: to be
/// checked and escaped, never to be followed. It has no other way out: its standard streams lead
/// nowhere, it has nothing open of what this process has, its session is its own, and it ends when
/// this process ends.
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

    /// To be called while this process has one thread.
    explicit Worker(const Work &work);
    Worker(const Work &work, const Limits &limits);
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;
    /// Ends it, unless it was followed to its end.
    ~Worker();

    /// Once: hands on each line as it comes, until the work's end. Failed when it did not come to
    /// its end: it could not be begun, died, was stopped by somebody, was silent or said too much;
    /// it is then ended, and the text tells why.
    [[nodiscard]] Result<void> follow(const Hear &hear);

    /// Of the process; -1 where it could not be begun.
    [[nodiscard]] pid_t id() const { return process; }

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool waitForBytes() const;
    [[nodiscard]] bool isStopped();
    [[nodiscard]] bool isSilent();
    bool takeBytes(const Hear &hear);
    [[nodiscard]] Result<void> ended();

    Limits limits;
    int notBegun = 0; ///< why it could not be begun, an errno value
    pid_t process = -1;
    FileDescriptor pipe;
    bool gone = false;
    int status = 0;
    QByteArray unfinished;
    qsizetype heard = 0;
    Clock::time_point lastSign;
    qint64 lastTicks = 0;
};

} // namespace varnel
