#include "platform/linux/LinuxStandardFolders.h"

#include "base/Logging.h"
#include "platform/linux/FolderListing.h"
#include "platform/linux/HeldFolders.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/SystemError.h"

namespace varnel {

namespace {

Result<void> ensureFolder(const HomeFolder &home, const QString &path)
{
    const Place place = walkPath(home, path);
    if (!place.status)
        return makeFolderAt(path, place);
    return S_ISDIR(place.status->st_mode) ? Result<void>() : systemError(path, ENOTDIR);
}

/// Whether the folder can be taken for a Mac home.
Result<void> needLibrary(const HomeFolder &home)
{
    const QString library = home.path + u"/Library";
    const Place place = walkPath(home, library);
    if (place.error != 0 && place.error != ENOENT)
        return systemError(library, place.error);
    if (place.status && S_ISDIR(place.status->st_mode))
        return {};
    return Error {ErrorCode::NotFound,
                  home.path
                      + u": No folder \"Library\" in it; is this a home folder?"
                        u" (--new-home makes one of it)"};
}

/// Each after the one that it stands in.
QStringList foldersOf(const HomeFolder &home)
{
    const QString library = home.path + u"/Library";
    return {library, library + u"/Preferences", library + u"/Application Support"};
}

Result<void> ensureAll(const HomeFolder &home, StandardFolders::Missing missing)
{
    if (missing == StandardFolders::Missing::NeedLibrary) {
        if (Result<void> library = needLibrary(home); !library)
            return library;
    }
    for (const QString &folder : foldersOf(home)) {
        if (Result<void> made = ensureFolder(home, folder); !made)
            return made;
    }
    return {};
}

} // namespace

Result<QStringList> LinuxStandardFolders::toMake(const HomeFolder &home, Missing missing) const
{
    if (missing == Missing::NeedLibrary) {
        if (const Result<void> library = needLibrary(home); !library)
            return library.error();
    }
    const QStringList all = foldersOf(home);
    QStringList folders;
    for (const QString &path : all) {
        const Place place = walkPath(home, path);
        const bool inNewFolder = place.error == ENOENT && folders.contains(all.first());
        if (place.error != 0 && !inNewFolder)
            return systemError(path, place.error);
        if (!place.status)
            folders.append(path);
        else if (!S_ISDIR(place.status->st_mode))
            return systemError(path, ENOTDIR);
    }
    return folders;
}

bool LinuxStandardFolders::isEmpty(const HomeFolder &home)
{
    const Place place = walkPath(home, home.path);
    const FileDescriptor folder =
        place.error == 0 ? openFolderIn(place.folder, place.name) : FileDescriptor();
    const auto names = folder ? namesIn(folder) : errno;
    return std::holds_alternative<QByteArrayList>(names)
        && std::get<QByteArrayList>(names).isEmpty();
}

Result<void> LinuxStandardFolders::ensure(const HomeFolder &home, Missing missing)
{
    Result<void> made = ensureAll(home, missing);
    // That this is no home folder at all is for the program to say, once, in its own words.
    if (!made && made.error().code != ErrorCode::NotFound)
        varnelLog(lcIo, made.error().text);
    return made;
}

} // namespace varnel
