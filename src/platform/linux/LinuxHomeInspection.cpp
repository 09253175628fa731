#include "platform/linux/LinuxHomeInspection.h"

#include "base/Literals.h"
#include "platform/linux/FolderListing.h"
#include "platform/linux/HeldFolders.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/ProcText.h"
#include "platform/linux/SystemError.h"
#include "platform/linux/TemporaryFile.h"
#include "platform/linux/UserDatabase.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <algorithm>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varnel {

namespace {

/// As the work on the home would have it: the owner of its folder, or, where that is the
/// administrator, of the folder Library in it.
uid_t ownerOf(const HomeFolder &home)
{
    const FileDescriptor opened = openHome(home);
    struct stat status { };
    if (home.asOwner() || !opened || ::fstat(opened.get(), &status) != 0)
        return ::geteuid();
    struct stat library { };
    if (status.st_uid == 0
        && ::fstatat(opened.get(), "Library", &library, AT_SYMLINK_NOFOLLOW) == 0)
        return library.st_uid;
    return status.st_uid;
}

QString nameOf(uid_t user)
{
    const std::optional<UserEntry> entry = userEntry(user);
    return entry ? QString::fromLocal8Bit(entry->name) : QString::number(user);
}

HomeInspection::Entry::Kind kindOf(mode_t mode)
{
    using Kind = HomeInspection::Entry::Kind;
    if (S_ISDIR(mode))
        return Kind::Folder;
    if (S_ISLNK(mode))
        return Kind::Link;
    return S_ISREG(mode) ? Kind::File : Kind::Other;
}

bool letsOwnerIn(const struct stat &status)
{
    const mode_t wanted = S_ISDIR(status.st_mode) ? S_IRWXU : S_IRUSR | S_IWUSR;
    return status.st_uid == 0 || S_ISLNK(status.st_mode) || (status.st_mode & wanted) == wanted;
}

std::optional<ProcStat> statOf(const QString &process)
{
    QFile file(process + u"/stat");
    return file.open(QIODevice::ReadOnly) ? parseProcStat(file.readAll()) : std::nullopt;
}

/// This process and those that started it.
QSet<int> ownLine(const QString &procFolder)
{
    QSet<int> line;
    for (int id = ::getpid(); id > 0 && !line.contains(id);) {
        line.insert(id);
        id = statOf(procFolder + u'/' + QString::number(id)).value_or(ProcStat()).parentId;
    }
    return line;
}

} // namespace

LinuxHomeInspection::LinuxHomeInspection(HomeFolder homeFolder, QString folder)
    : home(std::move(homeFolder)), procFolder(std::move(folder)), ownerId(ownerOf(home))
{
}

QString LinuxHomeInspection::owner() const
{
    return nameOf(ownerId);
}

bool LinuxHomeInspection::hasOwnersRights() const
{
    return ::geteuid() == ownerId;
}

HomeInspection::Entry LinuxHomeInspection::entryOf(const QString &name,
                                                   const struct stat &status) const
{
    constexpr int octal = 8;
    constexpr int digits = 4;
    constexpr mode_t bits = 07777;
    Entry entry;
    entry.name = name;
    entry.kind = kindOf(status.st_mode);
    entry.size = status.st_size;
    entry.owner = nameOf(status.st_uid);
    entry.isHomeOwners = status.st_uid == ownerId;
    entry.mode = QString::number(status.st_mode & bits, octal).rightJustified(digits, u'0');
    entry.letsOwnerIn = letsOwnerIn(status);
    return entry;
}

Result<HomeInspection::Entry> LinuxHomeInspection::look(const QString &path) const
{
    const QString name = path.section(u'/', -1);
    if (path == home.path) {
        // The walk begins in it, which a mode may forbid.
        const FileDescriptor opened = openHome(home);
        struct stat status { };
        if (!opened || ::fstat(opened.get(), &status) != 0)
            return systemError(path, errno);
        return entryOf(name, status);
    }
    const Place place = walkPath(home, path);
    if (place.error != 0)
        return systemError(path, place.error);
    if (!place.status)
        return systemError(path, ENOENT);
    return entryOf(name, *place.status);
}

Result<void> LinuxHomeInspection::checkEntry(const QString &path) const
{
    const Place place = walkPath(home, path);
    struct stat status { };
    int error = place.error;
    if (error == 0
        && ::fstatat(place.folder.get(), QByteArray(place.name + "/.").constData(), &status, 0)
            != 0)
        error = errno;
    return error == 0 ? Result<void>() : systemError(path, error);
}

Result<QList<HomeInspection::Entry>> LinuxHomeInspection::list(const QString &path) const
{
    const Place place = walkPath(home, path);
    if (place.error != 0)
        return systemError(path, place.error);
    const FileDescriptor folder = openFolderIn(place.folder, place.name);
    if (!folder)
        return systemError(path, errno == ENOTDIR ? ENOENT : errno);
    const auto names = namesIn(folder);
    if (const int *error = std::get_if<int>(&names))
        return systemError(path, *error);
    QList<Entry> entries;
    for (const QByteArray &bytes : std::get<QByteArrayList>(names)) {
        const QString name = QFile::decodeName(bytes);
        struct stat status { };
        if (QFile::encodeName(name) != bytes
            || ::fstatat(folder.get(), bytes.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        entries.append(entryOf(name, status));
        entries.last().isLeftBehind = isLeftBehind(folder, bytes);
    }
    std::sort(entries.begin(), entries.end(),
              [](const Entry &one, const Entry &other) { return one.name < other.name; });
    return entries;
}

bool LinuxHomeInspection::isLocked(const QString &database) const
{
    // The bytes that the library locks, wherever the file ends: two of writers, 510 of readers.
    constexpr off_t firstLockByte = 0x40000000;
    constexpr off_t lockBytes = 512;
    const Place place = walkPath(home, database);
    if (place.error != 0 || !place.status || !S_ISREG(place.status->st_mode))
        return false;
    const FileDescriptor file(::openat(place.folder.get(), place.name.constData(),
                                       O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct flock lock { };
    lock.l_type = F_WRLCK; // the one that every other lock is in the way of
    lock.l_whence = SEEK_SET;
    lock.l_start = firstLockByte;
    lock.l_len = lockBytes;
    return file && ::fcntl(file.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

bool LinuxHomeInspection::hasThisHome(const QString &process) const
{
    QFile file(process + u"/environ");
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray variable("HOME=");
    for (const QByteArray &each : file.readAll().split('\0')) {
        if (!each.startsWith(variable))
            continue;
        const QByteArray path = each.mid(variable.size());
        struct stat theirs { };
        struct stat ours { };
        const FileDescriptor opened = openHome(home);
        return path == QFile::encodeName(home.path)
            || (path.startsWith('/') && opened && ::stat(path.constData(), &theirs) == 0
                && ::fstat(opened.get(), &ours) == 0 && sameFile(theirs, ours));
    }
    return false;
}

QList<HomeInspection::Process> LinuxHomeInspection::processes() const
{
    QList<Process> processes;
    const QSet<int> own = ownLine(procFolder);
    for (const QString &name : QDir(procFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const int id = name.toInt(&isNumber);
        const QString process = procFolder + u'/' + name;
        struct stat status { };
        if (!isNumber || own.contains(id) || ::stat(qPrintable(process), &status) != 0
            || status.st_uid != ownerId || !hasThisHome(process))
            continue;
        if (const std::optional<ProcStat> stat = statOf(process))
            processes.append({id, QString::fromLocal8Bit(stat->command)});
    }
    std::sort(processes.begin(), processes.end(),
              [](const Process &one, const Process &other) { return one.id < other.id; });
    return processes;
}

} // namespace varnel
