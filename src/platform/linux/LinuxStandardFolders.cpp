#include "platform/linux/LinuxStandardFolders.h"

#include "base/Logging.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/SystemError.h"

#include <fcntl.h>

namespace varnel {

namespace {

/// Gives a folder just made by this process to the home's owner: 0 or an errno value.
int giveToOwner(const FileDescriptor &parent, const QByteArray &name, const HomeFolder &home)
{
    struct stat owner { };
    const FileDescriptor homeFolder = openHome(home);
    if (!homeFolder || ::fstat(homeFolder.get(), &owner) != 0)
        return errno;
    if (owner.st_uid == ::geteuid())
        return 0;
    const FileDescriptor made(
        ::openat(parent.get(), name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!made)
        return errno;
    return ::fchown(made.get(), owner.st_uid, owner.st_gid) == 0 ? 0 : errno;
}

int makeFolder(const Place &place, const HomeFolder &home)
{
    const char *name = place.name.constData();
    // EEXIST: another run was faster.
    if (::mkdirat(place.folder.get(), name, S_IRWXU) != 0)
        return errno == EEXIST ? 0 : errno;
    const int error = giveToOwner(place.folder, place.name, home);
    if (error != 0)
        ::unlinkat(place.folder.get(), name, AT_REMOVEDIR);
    return error;
}

Error fail(const QString &path, int error)
{
    Error result = systemError(path, error);
    varnelLog(lcIo, result.text);
    return result;
}

Result<void> ensureFolder(const HomeFolder &home, const QString &path)
{
    const Place place = walkPath(home, path);
    if (place.error != 0)
        return fail(path, place.error);
    if (!place.status) {
        const int error = makeFolder(place, home);
        return error == 0 ? Result<void>() : fail(path, error);
    }
    return S_ISDIR(place.status->st_mode) ? Result<void>() : fail(path, ENOTDIR);
}

/// Whether somebody could take the folder for a Mac home.
Result<void> needLibrary(const HomeFolder &home)
{
    const Place place = walkPath(home, home.path + u"/Library");
    if (place.error != 0 && place.error != ENOENT)
        return fail(home.path + u"/Library", place.error);
    if (place.status && S_ISDIR(place.status->st_mode))
        return {};
    return Error {ErrorCode::NotFound,
                  home.path + u": No folder \"Library\" in it; is this a home folder?"};
}

} // namespace

Result<void> LinuxStandardFolders::ensure(const HomeFolder &home, Missing missing)
{
    if (missing == Missing::NeedLibrary) {
        if (Result<void> library = needLibrary(home); !library)
            return library;
    }
    for (const QStringView name :
         {u"/Library", u"/Library/Preferences", u"/Library/Application Support"}) {
        if (Result<void> made = ensureFolder(home, home.path + name); !made)
            return made;
    }
    return {};
}

} // namespace varnel
