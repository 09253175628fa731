#include "platform/linux/FileKeeping.h"

#include "platform/KeptFolders.h"
#include "platform/linux/FileAttributes.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/FolderFlush.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/TemporaryFile.h"

#include <fcntl.h>

namespace varnel {

namespace {

int flushFile(const FileDescriptor &file)
{
    const bool flushed = uninterrupted([&] { return ::fsync(file.get()); }) == 0;
    // A file system that can't flush, or is not written to, has nothing to lose.
    return flushed || errno == EINVAL || errno == EROFS ? 0 : errno;
}

/// 0 where that very file stands at a name, else EAGAIN or another errno value.
int isAt(const FileDescriptor &folder, const QByteArray &name, const struct stat &file)
{
    struct stat status { };
    if (::fstatat(folder.get(), name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? EAGAIN : errno;
    return sameFile(status, file) ? 0 : EAGAIN;
}

int unlinkIn(const FileDescriptor &folder, const QByteArray &name)
{
    return ::unlinkat(folder.get(), name.constData(), 0) == 0 ? 0 : errno;
}

/// The name may lead to another file by now.
int linkByName(const Place &place, const struct stat &read, const FileDescriptor &folder,
               const QByteArray &name)
{
    if (::linkat(place.folder.get(), place.name.constData(), folder.get(), name.constData(), 0)
        != 0)
        return errno == ENOENT ? EAGAIN : errno;
    const int error = isAt(folder, name, read);
    if (error != 0)
        (void)unlinkIn(folder, name);
    return error;
}

int linkFile(const Place &place, const FileContent &content, const FileDescriptor &folder,
             const QByteArray &name)
{
    // The very file that was read, whatever stands at its name by now.
    const QByteArray opened = "/proc/self/fd/" + QByteArray::number(content.file.get());
    if (::linkat(AT_FDCWD, opened.constData(), folder.get(), name.constData(), AT_SYMLINK_FOLLOW)
        == 0)
        return 0;
    // There is no /proc, or no name of that file's is left.
    return errno == ENOENT ? linkByName(place, content.status, folder, name) : errno;
}

/// Whether a file that can't have a further name may be copied: the refusal tells nothing against
/// that.
bool isAboutLinks(int error)
{
    switch (error) {
    case EXDEV: // another file system
    case EPERM: // one without links; a file that the user could not write to
    case EACCES: // the same, by a security module
    case EMLINK:
    case EOPNOTSUPP:
    case ENOSYS:
    case EINVAL:
        return true;
    default:
        return false;
    }
}

int copyFile(const FileContent &content, const FileDescriptor &folder, const QByteArray &name)
{
    if (content.bytes.size() > KeptFolders::biggestCopy)
        return EFBIG;
    TemporaryFile copy(folder, name);
    if (const int error = copy.create())
        return error;
    if (const int error = copy.write(content.bytes))
        return error;
    if (const int error = copyAllAttributes(content.file, content.status, copy.descriptor()))
        return error;
    if (const int error = copy.flush())
        return error;
    return copy.becomeTarget();
}

/// The way back to another file system: a copy takes the place, then the kept file is removed.
int putCopy(const KeptFile &kept, const Place &place, const FileContent *now)
{
    struct stat status { };
    if (::fstat(kept.content.file.get(), &status) != 0)
        return errno;
    // What it was when it was kept, for the attributes may have been given a moment ago.
    status.st_atim = kept.content.status.st_atim;
    TemporaryFile copy(place.folder, place.name);
    if (const int error = copy.create())
        return error;
    if (const int error = copy.write(kept.content.bytes))
        return error;
    if (const int error = copyAllAttributes(kept.content.file, status, copy.descriptor()))
        return error;
    struct stat made { };
    if (::fstat(copy.descriptor().get(), &made) != 0)
        return errno;
    if (made.st_uid != status.st_uid || made.st_gid != status.st_gid)
        return EPERM;
    if (const int error = copy.flush())
        return error;
    if (now == nullptr) {
        const int moved = copy.becomeTarget();
        return moved == EEXIST ? EAGAIN : moved;
    }
    if (const int changed = compareWithRead(place.folder, place.name, now->status))
        return changed;
    return copy.replaceTarget();
}

int moveTo(const KeptFile &kept, const Place &place, const FileContent *now)
{
    if (now == nullptr) {
        const int moved = moveToFreeName(kept.folder, kept.name, place.folder, place.name);
        return moved == EEXIST ? EAGAIN : moved;
    }
    if (const int changed = compareWithRead(place.folder, place.name, now->status))
        return changed;
    return ::renameat(kept.folder.get(), kept.name.constData(), place.folder.get(),
                      place.name.constData())
            == 0
        ? 0
        : errno;
}

/// The file's owner, mode and attributes are settled, and on the disk.
int settle(const KeptFile &kept, const Place &place, const FileContent *now)
{
    if (now != nullptr) {
        // The folder's rights would do, but who made the file read-only did not want it changed.
        if (::faccessat(place.folder.get(), place.name.constData(), W_OK, AT_EACCESS) != 0)
            return errno;
        if (const int error = takeOverAttributes(now->file, now->status, kept.content.file))
            return error;
    }
    return flushFile(kept.content.file);
}

} // namespace

std::variant<KeptAs, int> keepFile(const Place &place, const FileContent &content,
                                   const FileDescriptor &folder, const QByteArray &name)
{
    // Whoever wrote it may not have waited for the disk.
    if (const int error = flushFile(content.file))
        return error;
    const int unlinked = linkFile(place, content, folder, name);
    if (unlinked == 0)
        return KeptAs::Link;
    if (!isAboutLinks(unlinked))
        return unlinked;
    if (const int error = copyFile(content, folder, name))
        return error;
    return KeptAs::Copy;
}

int putKeptFile(const KeptFile &kept, const Place &place, const FileContent *now)
{
    // It was kept and never replaced. A rename would leave both names.
    if (now != nullptr && sameFile(now->status, kept.content.status))
        return unlinkIn(kept.folder, kept.name);
    if (const int error = settle(kept, place, now))
        return error;
    if (const int error = isAt(kept.folder, kept.name, kept.content.status))
        return error;
    const int moved = moveTo(kept, place, now);
    if (moved == 0)
        return isAt(place.folder, place.name, kept.content.status);
    if (moved != EXDEV)
        return moved;
    if (const int error = putCopy(kept, place, now))
        return error;
    // It is done. What it was made of must not go before the copy is sure to stay.
    if (flushFolder(place.folder) == 0)
        (void)unlinkIn(kept.folder, kept.name);
    return 0;
}

} // namespace varnel
