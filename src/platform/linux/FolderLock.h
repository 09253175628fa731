#pragma once

#include "platform/linux/FileDescriptor.h"

#include <chrono>

namespace varnel {

/// An advisory lock on a folder, held until the end of the object's life. Two runs of this program
/// that change files of the folder wait for each other; nobody else is kept from anything.
class FolderLock {
public:
    enum class State {
        Held,
        TimedOut, ///< somebody else held it all the time
        Unavailable, ///< the file system knows no locks on folders
    };

    /// Tries for that long; a wait of zero tries once. The folder must be open for reading.
    FolderLock(const FileDescriptor &folder, std::chrono::milliseconds wait);
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;
    ~FolderLock();

    [[nodiscard]] State state() const { return taken; }

private:
    const FileDescriptor &folder;
    State taken;
};

/// Whether somebody else holds the lock now. The folder must be open for reading, and not be locked
/// by the caller. Who asks is in nobody's way but a run's that wants the lock in the same moment.
[[nodiscard]] bool isLocked(const FileDescriptor &folder);

} // namespace varnel
