#include "platform/linux/LinuxSystemDisk.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/SystemError.h"

#include <QFile>

#include <utility>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>

namespace varnel {

namespace {

const QString hostRoot = QStringLiteral("/");

/// The home's folder is where its owner can begin who has no way to it by its name.
QString reachedThrough(const HomeFolder &home)
{
    return home.own || home.systemRoot().isNull() ? home.systemRoot()
                                                  : home.reached(home.path) + u"/../..";
}

} // namespace

LinuxSystemDisk::LinuxSystemDisk(QString root, const QString &reachedAt)
    : rootPath(std::move(root)),
      folder(::open(QFile::encodeName(reachedAt).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC))
{
    error = folder ? 0 : errno;
}

LinuxSystemDisk::LinuxSystemDisk(const QString &root) : LinuxSystemDisk(root, root) { }

LinuxSystemDisk::LinuxSystemDisk(const HomeFolder &home)
    : LinuxSystemDisk(home.systemRoot(), reachedThrough(home))
{
}

FileDescriptor LinuxSystemDisk::open(const QString &path) const
{
    if (!folder) {
        errno = error;
        return {};
    }
    const QByteArray below = QFile::encodeName(path.mid(rootPath.size()));
    open_how how {};
    how.flags = O_PATH | O_CLOEXEC;
    // The machine's own disk is where every call resolves links.
    if (rootPath == hostRoot)
        return FileDescriptor(::openat(folder.get(), below.constData(), int(how.flags)));
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    // EAGAIN: something was renamed meanwhile, and the kernel could not be sure.
    constexpr int attempts = 8;
    int file = -1;
    for (int attempt = 0; attempt < attempts && file < 0; ++attempt) {
        file = int(::syscall(SYS_openat2, folder.get(), below.constData(), &how, sizeof how));
        if (file < 0 && errno != EAGAIN)
            break;
    }
    return FileDescriptor(file);
}

bool LinuxSystemDisk::exists(const QString &path) const
{
    return bool(open(path));
}

Result<QByteArray> LinuxSystemDisk::read(const QString &path) const
{
    const FileDescriptor file = open(path);
    if (!file && errno == ENOSYS)
        return Error {ErrorCode::Failed,
                      path + u": this kernel is too old to keep the links of a disk on it"};
    if (!file)
        return systemError(path, errno == ENOTDIR ? ENOENT : errno);
    auto content = readFound(file);
    if (auto *found = std::get_if<FileContent>(&content))
        return std::move(found->bytes);
    return fileError(path, std::get<int>(content));
}

} // namespace varnel
