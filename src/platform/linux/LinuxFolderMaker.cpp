#include "platform/linux/LinuxFolderMaker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace varnel {

namespace {

class Descriptor {
public:
    explicit Descriptor(int opened) : fd(opened) { }
    Descriptor(Descriptor &&other) noexcept : fd(std::exchange(other.fd, -1)) { }
    Descriptor &operator=(Descriptor &&) = delete;
    ~Descriptor()
    {
        if (fd >= 0)
            ::close(fd);
    }
    [[nodiscard]] int get() const { return fd; }

private:
    int fd;
};

Error fromErrno(const QString &path, int error)
{
    const ErrorCode code = error == ENOENT ? ErrorCode::NotFound
        : error == EXDEV || error == EACCES || error == EPERM || error == EROFS
        ? ErrorCode::NotPermitted
        : ErrorCode::Failed;
    return {code, path + u": " + QString::fromLocal8Bit(std::strerror(error))};
}

/// The folder at a path relative to the home; for somebody else's home the kernel refuses every
/// step that would leave it.
Descriptor openParent(int homeFd, const QString &relative, bool stayBeneath)
{
    const QByteArray name = QFile::encodeName(relative.isEmpty() ? QStringLiteral(".") : relative);
    open_how how {};
    how.flags = O_DIRECTORY | O_CLOEXEC;
    how.resolve = stayBeneath ? RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS : 0;
    return Descriptor(int(::syscall(SYS_openat2, homeFd, name.constData(), &how, sizeof how)));
}

/// Hands a folder that this process has just made to the home's owner.
int giveToOwner(int parentFd, const char *name, const struct stat &home)
{
    const Descriptor made(
        ::openat(parentFd, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat now { };
    if (made.get() < 0 || ::fstat(made.get(), &now) != 0)
        return errno;
    if (now.st_uid != ::geteuid())
        return EPERM; // somebody has put another one in its place
    return ::fchown(made.get(), home.st_uid, home.st_gid) == 0 ? 0 : errno;
}

} // namespace

Result<void> LinuxFolderMaker::makeFolder(const HomeFolder &home, const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (!clean.startsWith(home.path + u'/'))
        return Error {ErrorCode::Invalid, path + u": not inside " + home.path};
    const Descriptor homeFd(
        ::open(QFile::encodeName(home.path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat owner { };
    if (homeFd.get() < 0 || ::fstat(homeFd.get(), &owner) != 0)
        return fromErrno(home.path, errno);

    const bool foreign = owner.st_uid != ::geteuid();
    const QString relative = clean.mid(home.path.size() + 1);
    const qsizetype slash = relative.lastIndexOf(u'/');
    const Descriptor parent = openParent(homeFd.get(), relative.left(qMax(slash, 0)), foreign);
    if (parent.get() < 0)
        return fromErrno(path, errno);
    const QByteArray name = QFile::encodeName(relative.mid(slash + 1));
    if (::mkdirat(parent.get(), name.constData(), 0700) != 0)
        return errno == EEXIST ? Result<void>() : fromErrno(path, errno);
    if (!foreign)
        return {};
    const int error = giveToOwner(parent.get(), name.constData(), owner);
    return error == 0 ? Result<void>() : fromErrno(path, error);
}

} // namespace varnel
