#include "platform/linux/FolderFlush.h"

#include "base/Logging.h"

#include <fcntl.h>

namespace varnel {

int flushFolder(const FileDescriptor &folder)
{
    // The walk holds folders without the right to read them; flushing needs it.
    const FileDescriptor opened(uninterrupted(
        [&] { return ::openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!opened)
        return errno;
    const bool flushed = uninterrupted([&] { return ::fsync(opened.get()); }) == 0;
    return flushed || errno == EINVAL ? 0 : errno;
}

void flushFolderOf(const QString &path, const FileDescriptor &folder)
{
    if (const int error = flushFolder(folder))
        varnelLog(lcIo, path + u": The folder could not be flushed: " + qt_error_string(error));
}

} // namespace varnel
