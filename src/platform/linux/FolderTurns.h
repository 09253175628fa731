#pragma once

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FolderLock.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <chrono>
#include <utility>

namespace varnel {

/// What a run remembers of the folders in which it takes its turn to change files. All that changes
/// files of one home shares one of these.
class FolderTurns {
public:
    /// lockWait bounds the wait for another run that changes files in the same folder.
    explicit FolderTurns(std::chrono::milliseconds lockWait) : lockWait(lockWait) { }

    /// The files that were changed without a lock, because another run did not give it up in time.
    [[nodiscard]] const QStringList &withoutLock() const { return unlocked; }

    /// Removes what dead runs left in a folder (open for reading), unless another run is at it.
    void sweep(const FileDescriptor &folder);

private:
    friend class FolderTurn;

    [[nodiscard]] std::chrono::milliseconds patience() const;
    void sweepOnce(const FileDescriptor &folder);

    std::chrono::milliseconds lockWait;
    QStringList unlocked;
    QSet<std::pair<quint64, quint64>> swept; ///< device and inode of folders
};

/// One change in a folder, made while no other run of this program makes one there: until the end
/// of the object's life. Where the lock is not given up in time, the change is made without.
class FolderTurn {
public:
    /// The folder must be open for reading; both outlive this object.
    FolderTurn(FolderTurns &turns, const FileDescriptor &folder);

    /// To be called once the change is made: puts it on the disk, and notes that it was made
    /// without the lock, if it was.
    void finish(const QString &path);

private:
    FolderTurns &turns;
    const FileDescriptor &folder;
    FolderLock lock;
};

} // namespace varnel
