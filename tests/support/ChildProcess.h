#pragma once

#include <cerrno>

#include <sys/wait.h>
#include <unistd.h>

namespace varnel::test {

/// Runs the work, which tells whether it went well, in a copy of this process. The copy ends past
/// every destructor, as a killed process would. Give its id to endOf().
template <typename Work> pid_t inChild(const Work &work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    return child;
}

/// Waits for a child and tells whether its work went well.
[[nodiscard]] inline bool endOf(pid_t child)
{
    int status = -1;
    while (::waitpid(child, &status, 0) == -1 && errno == EINTR) { }
    return child > 0 && status == 0;
}

} // namespace varnel::test
