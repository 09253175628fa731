#include "platform/linux/HomeEntries.h"

#include "platform/linux/FileReplacement.h"
#include "platform/linux/FolderFlush.h"
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

constexpr qint64 nanosecondsPerSecond = 1'000'000'000;

std::optional<timespec> timeOf(std::optional<qint64> time)
{
    if (!time)
        return std::nullopt;
    qint64 seconds = *time / nanosecondsPerSecond;
    if (*time % nanosecondsPerSecond < 0)
        --seconds;
    return timespec {seconds, *time - seconds * nanosecondsPerSecond};
}

/// Runs a call on the folder around a path, open for reading, and the name in it. Both give 0 or an
/// errno value.
int inFolder(const HomeFolder &home, const QString &path,
             const std::function<int(const FileDescriptor &folder, const QByteArray &name)> &call)
{
    const QFileInfo entry(path);
    const Place place = walkPath(home, entry.path());
    if (place.error != 0)
        return place.error;
    const FileDescriptor folder(::openat(place.folder.get(), place.name.constData(),
                                         O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder)
        return errno;
    return call(folder, QFile::encodeName(entry.fileName()));
}

int readLink(const FileDescriptor &folder, const QByteArray &name, QByteArray &text)
{
    std::array<char, PATH_MAX> buffer {};
    const ssize_t length =
        ::readlinkat(folder.get(), name.constData(), buffer.data(), buffer.size());
    if (length < 0)
        return errno;
    text = QByteArray(buffer.data(), length);
    return 0;
}

int unlinkIn(const FileDescriptor &folder, const QByteArray &name)
{
    return ::unlinkat(folder.get(), name.constData(), 0) == 0 ? 0 : errno;
}

Result<void> outcome(const QString &path, int error)
{
    return error == 0 ? Result<void>() : systemError(path, error);
}

} // namespace

Result<EntryForm> formOf(const HomeFolder &home, const QString &path)
{
    EntryForm form;
    const int error =
        inFolder(home, path, [&](const FileDescriptor &folder, const QByteArray &name) {
            struct stat status { };
            if (::fstatat(folder.get(), name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
                return errno;
            form.mode = status.st_mode & ALLPERMS;
            form.changed = status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec;
            return S_ISLNK(status.st_mode) ? readLink(folder, name, form.link) : 0;
        });
    if (error != 0)
        return systemError(path, error);
    return form;
}

Result<void> makeLink(const HomeFolder &home, const QString &path, const QByteArray &target,
                      std::optional<qint64> changed)
{
    return outcome(
        path, inFolder(home, path, [&](const FileDescriptor &folder, const QByteArray &name) {
            if (::symlinkat(target.constData(), folder.get(), name.constData()) != 0)
                return errno;
            // The link counts more than its time.
            const std::array<timespec, 2> times {
                timespec {0, UTIME_OMIT}, timeOf(changed).value_or(timespec {0, UTIME_OMIT})};
            (void)::utimensat(folder.get(), name.constData(), times.data(), AT_SYMLINK_NOFOLLOW);
            return flushFolder(folder);
        }));
}

Result<void> putFile(const HomeFolder &home, const QString &path, const QByteArray &bytes,
                     mode_t mode, std::optional<qint64> changed)
{
    return outcome(path,
                   inFolder(home, path, [&](const FileDescriptor &folder, const QByteArray &name) {
                       const int error = putFile(folder, name, bytes, mode, timeOf(changed));
                       return error == 0 ? flushFolder(folder) : error;
                   }));
}

Result<void> removeEntry(const HomeFolder &home, const QString &path)
{
    const int error =
        inFolder(home, path, [](const FileDescriptor &folder, const QByteArray &name) {
            const int unlinked = unlinkIn(folder, name);
            return unlinked == 0 ? flushFolder(folder) : unlinked;
        });
    return outcome(path, error == ENOENT ? 0 : error);
}

Result<void> removeEntryUnflushed(const HomeFolder &home, const QString &path)
{
    const int error = inFolder(home, path, unlinkIn);
    return outcome(path, error == ENOENT ? 0 : error);
}

} // namespace varnel
