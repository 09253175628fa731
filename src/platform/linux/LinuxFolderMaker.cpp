#include "platform/linux/LinuxFolderMaker.h"

#include "platform/linux/FolderFlush.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/SystemError.h"

#include <sys/stat.h>

namespace varnel {

namespace {

int makeAt(const Place &place)
{
    const int made = ::mkdirat(place.folder.get(), place.name.constData(), S_IRWXU);
    // EEXIST: another run was faster.
    return made == 0 || errno == EEXIST ? 0 : errno;
}

} // namespace

Result<void> LinuxFolderMaker::makeFolder(const HomeFolder &home, const QString &path)
{
    const Place place = walkPath(home, path);
    return place.status ? Result<void>() : makeFolderAt(path, place);
}

Result<void> makeFolderAt(const QString &path, const Place &place)
{
    if (const int error = place.error != 0 ? place.error : makeAt(place))
        return systemError(path, error);
    // What is put into the folder is only as lasting as the folder itself.
    flushFolderOf(path, place.folder);
    return {};
}

} // namespace varnel
