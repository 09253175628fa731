#include "platform/linux/HomeEntries.h"

#include "platform/linux/PathWalk.h"
#include "platform/linux/SystemError.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <climits>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varnel {

namespace {

/// Runs a call on the folder around a path, open for reading, and the name in it: 0, or an errno
/// value.
int inFolder(const HomeFolder &home, const QString &path,
             const std::function<int(int folder, const char *name)> &call)
{
    const QFileInfo entry(path);
    const Place place = walkPath(home, entry.path());
    if (place.error != 0)
        return place.error;
    const FileDescriptor folder(::openat(place.folder.get(), place.name.constData(),
                                         O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder)
        return errno;
    return call(folder.get(), QFile::encodeName(entry.fileName()).constData()) == 0 ? 0 : errno;
}

Result<void> outcome(const QString &path, int error)
{
    return error == 0 ? Result<void>() : systemError(path, error);
}

} // namespace

QByteArray linkText(const HomeFolder &home, const QString &path)
{
    QByteArray text;
    // An error reads as no link.
    (void)inFolder(home, path, [&](int folder, const char *name) {
        std::array<char, PATH_MAX> buffer {};
        const ssize_t length = ::readlinkat(folder, name, buffer.data(), buffer.size());
        if (length < 0)
            return -1;
        text = QByteArray(buffer.data(), length);
        return 0;
    });
    return text;
}

mode_t modeOf(const HomeFolder &home, const QString &path)
{
    struct stat status { };
    const int error = inFolder(home, path, [&](int folder, const char *name) {
        return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW);
    });
    return error == 0 ? status.st_mode & 07777 : 0;
}

Result<void> makeLink(const HomeFolder &home, const QString &path, const QByteArray &target)
{
    return outcome(path, inFolder(home, path, [&](int folder, const char *name) {
                       return ::symlinkat(target.constData(), folder, name);
                   }));
}

Result<void> setMode(const HomeFolder &home, const QString &path, mode_t mode)
{
    return outcome(path, inFolder(home, path, [&](int folder, const char *name) {
                       const FileDescriptor file(
                           ::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
                       return file ? ::fchmod(file.get(), mode) : -1;
                   }));
}

Result<void> removeEntry(const HomeFolder &home, const QString &path)
{
    const int error = inFolder(home, path, [](int folder, const char *name) {
        return ::unlinkat(folder, name, 0) == 0 ? ::fsync(folder) : -1;
    });
    return outcome(path, error == ENOENT ? 0 : error);
}

} // namespace varnel
