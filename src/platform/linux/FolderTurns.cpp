#include "platform/linux/FolderTurns.h"

#include "base/Logging.h"
#include "platform/linux/FolderFlush.h"
#include "platform/linux/TemporaryFile.h"

#include <sys/stat.h>

namespace varnel {

std::chrono::milliseconds FolderTurns::patience() const
{
    // Who has waited in vain once does not wait again for each of fifty settings.
    return unlocked.isEmpty() ? lockWait : std::chrono::milliseconds::zero();
}

void FolderTurns::sweep(const FileDescriptor &folder)
{
    const FolderLock lock(folder, std::chrono::milliseconds::zero());
    if (lock.state() == FolderLock::State::Held)
        sweepOnce(folder);
}

void FolderTurns::sweepOnce(const FileDescriptor &folder)
{
    struct stat status { };
    if (::fstat(folder.get(), &status) != 0)
        return;
    const std::pair<quint64, quint64> identity(status.st_dev, status.st_ino);
    if (swept.contains(identity))
        return;
    swept.insert(identity);
    sweepLeftovers(folder);
}

FolderTurn::FolderTurn(FolderTurns &turns, const FileDescriptor &folder)
    : turns(turns), folder(folder), lock(folder, turns.patience())
{
    if (lock.state() == FolderLock::State::Held)
        turns.sweepOnce(folder);
}

void FolderTurn::finish(const QString &path)
{
    // The change is made; only a power cut in the next moments could still take it back.
    flushFolderOf(path, folder);
    if (lock.state() != FolderLock::State::TimedOut)
        return;
    varnelLog(lcIo, path + u": Changed although another run is changing files beside it");
    if (!turns.unlocked.contains(path))
        turns.unlocked.append(path);
}

} // namespace varnel
