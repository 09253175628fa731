#include "platform/linux/LinuxFolderMaker.h"

#include "platform/linux/FolderFlush.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/SystemError.h"

#include <fcntl.h>

namespace varnel {

namespace {

/// Hands a folder that this process has just made to the home's owner: 0 or an errno value.
int giveToOwner(const Place &place, const HomeFolder &home)
{
    struct stat owner { };
    const FileDescriptor homeFolder = openHome(home);
    if (!homeFolder || ::fstat(homeFolder.get(), &owner) != 0)
        return errno;
    if (owner.st_uid == ::geteuid())
        return 0;
    const FileDescriptor made(::openat(place.folder.get(), place.name.constData(),
                                       O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat now { };
    if (!made || ::fstat(made.get(), &now) != 0)
        return errno;
    if (now.st_uid != ::geteuid())
        return EPERM; // somebody has put another one in its place
    return ::fchown(made.get(), owner.st_uid, owner.st_gid) == 0 ? 0 : errno;
}

int makeAt(const Place &place, const HomeFolder &home)
{
    const char *name = place.name.constData();
    // EEXIST: another run was faster.
    if (::mkdirat(place.folder.get(), name, S_IRWXU) != 0)
        return errno == EEXIST ? 0 : errno;
    const int error = giveToOwner(place, home);
    // One that its owner can't use is worse than none; the next run can try again.
    if (error != 0)
        ::unlinkat(place.folder.get(), name, AT_REMOVEDIR);
    return error;
}

} // namespace

Result<void> LinuxFolderMaker::makeFolder(const HomeFolder &home, const QString &path)
{
    const Place place = walkPath(home, path);
    if (place.status)
        return {};
    if (const int error = place.error != 0 ? place.error : makeAt(place, home))
        return systemError(path, error);
    // What is put into the folder is only as lasting as the folder itself.
    flushFolderOf(path, place.folder);
    return {};
}

} // namespace varnel
