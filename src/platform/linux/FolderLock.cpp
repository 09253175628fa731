#include "platform/linux/FolderLock.h"

#include <thread>

#include <sys/file.h>

namespace varnel {

namespace {

FolderLock::State take(const FileDescriptor &folder, std::chrono::milliseconds wait)
{
    using Clock = std::chrono::steady_clock;
    // Trying rather than blocking, because only tries can be bounded without a signal.
    constexpr std::chrono::milliseconds pause(5);
    const Clock::time_point end = Clock::now() + wait;
    for (;;) {
        if (uninterrupted([&] { return ::flock(folder.get(), LOCK_EX | LOCK_NB); }) == 0)
            return FolderLock::State::Held;
        if (errno != EWOULDBLOCK)
            return FolderLock::State::Unavailable;
        if (Clock::now() >= end)
            return FolderLock::State::TimedOut;
        std::this_thread::sleep_for(pause);
    }
}

} // namespace

FolderLock::FolderLock(const FileDescriptor &folder, std::chrono::milliseconds wait)
    : folder(folder), taken(take(folder, wait))
{
}

FolderLock::~FolderLock()
{
    if (taken == State::Held)
        ::flock(folder.get(), LOCK_UN);
}

bool isLocked(const FileDescriptor &folder)
{
    // A shared one, so that two who ask don't take each other for a holder.
    if (uninterrupted([&] { return ::flock(folder.get(), LOCK_SH | LOCK_NB); }) != 0)
        return errno == EWOULDBLOCK;
    ::flock(folder.get(), LOCK_UN);
    return false;
}

} // namespace varnel
