#include "platform/linux/HeldFolders.h"

#include "platform/linux/FolderFlush.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/TemporaryFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>

namespace varnel {

namespace {

QString keyOf(const QString &folder)
{
    return QDir::cleanPath(folder);
}

QByteArray nameOf(const QString &folder)
{
    return QFile::encodeName(QFileInfo(keyOf(folder)).fileName());
}

bool isSame(const FileDescriptor &left, const FileDescriptor &right)
{
    struct stat one { };
    struct stat other { };
    return ::fstat(left.get(), &one) == 0 && ::fstat(right.get(), &other) == 0
        && sameFile(one, other);
}

} // namespace

FileDescriptor openFolderIn(const FileDescriptor &parent, const QByteArray &name)
{
    return FileDescriptor(uninterrupted([&] {
        return ::openat(parent.get(), name.constData(),
                        O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    }));
}

FileDescriptor HeldFolders::openParent(const QString &path) const
{
    const Place place = walkPath(home, path);
    if (place.error == 0)
        return openFolderIn(place.folder, place.name);
    errno = place.error;
    return {};
}

HeldFolders::Opened HeldFolders::open(const QString &folderPath) const
{
    const QString path = keyOf(folderPath);
    const auto own = held.find(path);
    Opened opened;
    opened.name = nameOf(path);
    opened.parent = own != held.end() ? openFolderIn(own->second.parent, QByteArrayLiteral("."))
                                      : openParent(QFileInfo(path).path());
    if (opened.parent)
        opened.folder = openFolderIn(opened.parent, opened.name);
    if (!opened.folder)
        opened.error = errno;
    else if (own != held.end() && !isSame(own->second.folder, opened.folder))
        opened.error = EAGAIN;
    return opened;
}

int HeldFolders::hold(const QString &folderPath, Opened opened)
{
    const QString path = keyOf(folderPath);
    const auto [entry, added] = held.try_emplace(path, std::move(opened.folder), opened.parent);
    const FileDescriptor &folder = entry->second.folder;
    int error = 0;
    if (entry->second.lock.state() == FolderLock::State::TimedOut)
        error = EWOULDBLOCK;
    else if (const FileDescriptor now = openFolderIn(opened.parent, opened.name); !now)
        error = errno;
    else if (!isSame(now, folder))
        error = ENOENT; // somebody removed it between its being opened and locked
    if (error != 0)
        held.erase(entry);
    else if (entry->second.lock.state() == FolderLock::State::Held)
        sweepLeftovers(folder);
    return error;
}

int HeldFolders::make(const FileDescriptor &parent, const QString &path)
{
    Opened made;
    made.name = nameOf(path);
    if (::mkdirat(parent.get(), made.name.constData(), S_IRWXU) != 0)
        return errno;
    made.parent = openFolderIn(parent, QByteArrayLiteral("."));
    made.folder = openFolderIn(parent, made.name);
    int error = made.parent && made.folder ? 0 : errno;
    if (error == 0)
        error = hold(path, std::move(made));
    if (error == 0)
        error = flushFolder(parent);
    if (error != 0) {
        release(path);
        ::unlinkat(parent.get(), nameOf(path).constData(), AT_REMOVEDIR);
    }
    return error;
}

bool HeldFolders::isHeld(const QString &path) const
{
    return held.find(keyOf(path)) != held.end();
}

void HeldFolders::release(const QString &path)
{
    held.erase(keyOf(path));
}

} // namespace varnel
