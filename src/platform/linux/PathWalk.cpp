#include "platform/linux/PathWalk.h"

#include <QFile>
#include <QList>

#include <array>
#include <climits>
#include <vector>

#include <fcntl.h>

namespace varnel {

namespace {

constexpr int maximumLinks = 40; // the kernel's own bound
constexpr int lookFlags = O_PATH | O_NOFOLLOW | O_CLOEXEC;

FileDescriptor openIn(const FileDescriptor &folder, const char *name, int flags)
{
    return FileDescriptor(uninterrupted([&] { return ::openat(folder.get(), name, flags); }));
}

QList<QByteArray> namesOf(const QByteArray &path)
{
    QList<QByteArray> names = path.split('/');
    names.removeIf([](const QByteArray &name) { return name.isEmpty() || name == "."; });
    return names;
}

bool isBeneath(const QByteArray &path, const QByteArray &folder)
{
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

class Walk {
public:
    Walk(const HomeFolder &home, const QString &path);
    Place run();

private:
    int begin(const QByteArray &absolute);
    int step(const QByteArray &name);
    int climb();
    int followLink(const FileDescriptor &link);
    Place arrive();

    bool asOwner;
    QByteArray homePath;
    QByteArray path;
    FileDescriptor homeFolder; // after the texts: nothing comes between opening it and errno
    bool confined = true;
    int links = 0;
    std::vector<FileDescriptor> folders; // from the start to where the walk stands
    QList<QByteArray> pending;
    Place place;
};

Walk::Walk(const HomeFolder &home, const QString &path)
    : asOwner(home.asOwner()), homePath(QFile::encodeName(home.path)),
      path(QFile::encodeName(path)), homeFolder(openHome(home))
{
}

/// Puts the walk at the start of an absolute path: 0, or why that is not possible.
int Walk::begin(const QByteArray &absolute)
{
    const bool beneathHome = isBeneath(absolute, homePath);
    if (!beneathHome && confined)
        return EXDEV;
    pending = namesOf(beneathHome ? absolute.mid(homePath.size()) : absolute) + pending;
    folders.clear();
    folders.push_back(beneathHome ? openIn(homeFolder, ".", O_PATH | O_DIRECTORY | O_CLOEXEC)
                                  : FileDescriptor(::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC)));
    return folders.back() ? 0 : errno;
}

int Walk::climb()
{
    if (folders.size() > 1) {
        folders.pop_back();
        return 0;
    }
    if (confined)
        return EXDEV;
    FileDescriptor parent = openIn(folders.back(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (!parent)
        return errno;
    folders.back() = std::move(parent);
    return 0;
}

int Walk::followLink(const FileDescriptor &link)
{
    if (++links > maximumLinks)
        return ELOOP;
    std::array<char, PATH_MAX> text {};
    const ssize_t length = ::readlinkat(link.get(), "", text.data(), text.size());
    if (length < 0)
        return errno;
    const QByteArray target(text.data(), length);
    if (target.startsWith('/'))
        return begin(target);
    pending = namesOf(target) + pending;
    return 0;
}

int Walk::step(const QByteArray &name)
{
    if (name == "..")
        return climb();
    FileDescriptor next = openIn(folders.back(), name.constData(), lookFlags);
    if (!next && errno == ENOENT && pending.isEmpty()) {
        place.name = name;
        return 0;
    }
    struct stat status { };
    if (!next || ::fstat(next.get(), &status) != 0)
        return errno;
    if (S_ISLNK(status.st_mode))
        return followLink(next);
    if (pending.isEmpty()) {
        place.name = name;
        place.status = status;
        return 0;
    }
    if (!S_ISDIR(status.st_mode))
        return ENOTDIR;
    folders.push_back(std::move(next));
    return 0;
}

Place Walk::arrive()
{
    place.folder = std::move(folders.back());
    if (place.name.isEmpty()) {
        // The path ended in "..", or in a link to a folder that was entered on the way.
        place.name = QByteArrayLiteral(".");
        struct stat status { };
        if (::fstat(place.folder.get(), &status) != 0)
            place.error = errno;
        place.status = status;
    }
    return std::move(place);
}

Place Walk::run()
{
    struct stat status { };
    if (!homeFolder || ::fstat(homeFolder.get(), &status) != 0) {
        place.error = errno;
        return std::move(place);
    }
    confined = !asOwner && status.st_uid != ::geteuid();
    place.error = path.startsWith('/') && !path.contains('\0') ? begin(path) : EINVAL;
    while (place.error == 0 && !pending.isEmpty())
        place.error = step(pending.takeFirst());
    return place.error == 0 ? arrive() : std::move(place);
}

bool sameTime(const timespec &left, const timespec &right)
{
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

} // namespace

Place walkPath(const HomeFolder &home, const QString &path)
{
    return Walk(home, path).run();
}

FileDescriptor openHome(const HomeFolder &home)
{
    const QByteArray path =
        home.path.isEmpty() ? QByteArrayLiteral("/") : QFile::encodeName(home.reached(home.path));
    return FileDescriptor(::open(path.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

bool sameFile(const struct stat &left, const struct stat &right)
{
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

bool sameState(const struct stat &left, const struct stat &right)
{
    return sameFile(left, right) && left.st_size == right.st_size
        && sameTime(left.st_mtim, right.st_mtim) && sameTime(left.st_ctim, right.st_ctim);
}

} // namespace varnel
