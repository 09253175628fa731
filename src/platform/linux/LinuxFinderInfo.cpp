#include "platform/linux/LinuxFinderInfo.h"

#include "platform/linux/PathWalk.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/vfs.h>
#include <sys/xattr.h>

namespace varnel {

namespace {

constexpr auto hfsPlusMagic = 0x482b;

/// The file or folder that the path leads to, open for reading; errno tells when it can't be.
FileDescriptor openAt(const HomeFolder &home, const QString &path)
{
    const Place place = walkPath(home, path);
    errno = place.status ? place.error : (place.error != 0 ? place.error : ENOENT);
    if (errno != 0)
        return {};
    if (!S_ISREG(place.status->st_mode) && !S_ISDIR(place.status->st_mode)) {
        errno = ENOTSUP;
        return {};
    }
    return FileDescriptor(uninterrupted([&] {
        return ::openat(place.folder.get(), place.name.constData(),
                        O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
    }));
}

const char *attributeName(const FileDescriptor &file)
{
    struct statfs system { };
    const bool hfsPlus = ::fstatfs(file.get(), &system) == 0 && system.f_type == hfsPlusMagic;
    return hfsPlus ? "osx.com.apple.FinderInfo" : "user.com.apple.FinderInfo";
}

FinderInfo::Reading readFrom(const FileDescriptor &file)
{
    const char *name = attributeName(file);
    FinderInfo::Reading reading;
    reading.isSet = ::fgetxattr(file.get(), name, reading.bytes.data(), reading.bytes.size()) >= 0;
    if (reading.isSet || errno == ENODATA)
        return reading;
    if (errno != ERANGE)
        return {errno, {}, false};
    reading.isSet = true;
    // Longer than it should be: read whole, for the call gives no part of a value.
    std::vector<std::uint8_t> whole(XATTR_SIZE_MAX);
    if (::fgetxattr(file.get(), name, whole.data(), whole.size()) < 0)
        return {errno, {}, false};
    std::copy_n(whole.begin(), reading.bytes.size(), reading.bytes.begin());
    return reading;
}

} // namespace

LinuxFinderInfo::LinuxFinderInfo(HomeFolder home) : home(std::move(home)) { }

FinderInfo::Reading LinuxFinderInfo::read(const QString &path) const
{
    const FileDescriptor file = openAt(home, path);
    return file ? readFrom(file) : Reading {errno, {}, false};
}

int LinuxFinderInfo::write(const QString &path, const FinderInfoBytes &bytes)
{
    const FileDescriptor file = openAt(home, path);
    if (!file)
        return errno;
    const Reading old = readFrom(file);
    if (old.error == 0 && old.bytes == bytes)
        return 0;
    return ::fsetxattr(file.get(), attributeName(file), bytes.data(), bytes.size(), 0) == 0 ? 0
                                                                                            : errno;
}

int LinuxFinderInfo::remove(const QString &path)
{
    const FileDescriptor file = openAt(home, path);
    if (!file)
        return errno;
    return ::fremovexattr(file.get(), attributeName(file)) == 0 || errno == ENODATA ? 0 : errno;
}

} // namespace varnel
