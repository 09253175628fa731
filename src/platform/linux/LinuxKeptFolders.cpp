#include "platform/linux/LinuxKeptFolders.h"

#include "base/Logging.h"
#include "platform/linux/FileKeeping.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/FileReplacement.h"
#include "platform/linux/FolderFlush.h"
#include "platform/linux/FolderListing.h"
#include "platform/linux/FolderTurns.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/SystemError.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <fcntl.h>

namespace varnel {

namespace {

QString inFolder(const QString &folder, const QString &name)
{
    return QDir::cleanPath(folder) + u'/' + name;
}

/// A name that leads out of its folder may stand in somebody's notes.
bool isSingle(const QString &name)
{
    return !name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/')
        && !name.contains(QChar(u'\0'));
}

/// Those of a folder's names that folders have, links left out, or an errno value.
std::variant<QByteArrayList, int> foldersIn(const FileDescriptor &parent)
{
    const auto names = namesIn(parent);
    if (const int *error = std::get_if<int>(&names))
        return *error;
    QByteArrayList folders;
    for (const QByteArray &name : std::get<QByteArrayList>(names)) {
        struct stat status { };
        const bool seen =
            ::fstatat(parent.get(), name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0;
        // One that can't be looked at must not pass for none.
        if (!seen && errno != ENOENT)
            return errno;
        if (seen && S_ISDIR(status.st_mode))
            folders.append(name);
    }
    return folders;
}

/// A kept file; a link in its place is no file.
std::variant<FileContent, int> readKept(const FileDescriptor &folder, const QString &name,
                                        qint64 most)
{
    auto content = readFile(folder, QFile::encodeName(name), most);
    if (const int *error = std::get_if<int>(&content); error != nullptr && *error == ELOOP)
        return EISDIR;
    return content;
}

/// A file that was read there, unless somebody protected it or changes it.
int removeFile(const Place &place, const FileContent &now)
{
    if (::faccessat(place.folder.get(), place.name.constData(), W_OK, AT_EACCESS) != 0)
        return errno;
    if (const int changed = compareWithRead(place.folder, place.name, now.status))
        return changed;
    return ::unlinkat(place.folder.get(), place.name.constData(), 0) == 0 ? 0 : errno;
}

/// For a file that was there a moment ago.
int goneMeansChanged(int error)
{
    return error == ENOENT ? EAGAIN : error;
}

/// The folder that a file is to be changed in, open for reading.
int readyToChange(Place &place)
{
    if (place.error != 0)
        return place.error;
    FileDescriptor folder = openFolderIn(place.folder, QByteArrayLiteral("."));
    if (!folder)
        return errno;
    place.folder = std::move(folder);
    return 0;
}

int removeFolder(const FileDescriptor &parent, const QByteArray &name)
{
    if (::unlinkat(parent.get(), name.constData(), AT_REMOVEDIR) != 0)
        return errno;
    return flushFolder(parent);
}

/// Removes every file of a folder in which there are no folders.
int empty(const FileDescriptor &folder)
{
    const auto folders = foldersIn(folder);
    if (const int *error = std::get_if<int>(&folders))
        return *error;
    if (!std::get<QByteArrayList>(folders).isEmpty())
        return ENOTEMPTY;
    const auto names = namesIn(folder);
    if (const int *error = std::get_if<int>(&names))
        return *error;
    for (const QByteArray &name : std::get<QByteArrayList>(names)) {
        if (::unlinkat(folder.get(), name.constData(), 0) != 0 && errno != ENOENT)
            return errno;
    }
    return 0;
}

} // namespace

LinuxKeptFolders::LinuxKeptFolders(HomeFolder home, FolderTurns &turns)
    : home(home), held(std::move(home)), turns(turns)
{
}

Error LinuxKeptFolders::fail(const QString &path, int error)
{
    Error result = fileError(path, error);
    if (error == EFBIG)
        result.code = ErrorCode::TooBig;
    if (result.code != ErrorCode::NotFound)
        varnelLog(lcIo, result.text);
    return result;
}

Result<QString> LinuxKeptFolders::make(const QString &parentPath, const QString &name)
{
    const QString start = inFolder(parentPath, name) + u'-';
    if (!isSingle(name))
        return fail(start, EINVAL);
    const FileDescriptor parent = held.openParent(parentPath);
    if (!parent)
        return fail(parentPath, errno);
    constexpr int attempts = 16;
    int error = EEXIST;
    // Another run that looks at a new folder before it is locked may take it for a dead run's.
    for (int attempt = 0;
         attempt < attempts && (error == EEXIST || error == EWOULDBLOCK || error == ENOENT);
         ++attempt) {
        constexpr int digits = 16;
        const quint64 random = QRandomGenerator::system()->generate64();
        const QString path = start + QString::number(random, 16).rightJustified(digits, u'0');
        error = held.make(parent, path);
        if (error == 0)
            return QString(path + u'/');
    }
    return fail(start, error);
}

Result<bool> LinuxKeptFolders::hold(const QString &folder)
{
    HeldFolders::Opened opened = held.open(folder);
    if (opened.error != 0)
        return fail(folder, opened.error);
    if (held.isHeld(folder))
        return true;
    const int error = held.hold(folder, std::move(opened));
    if (error == 0 || error == EWOULDBLOCK)
        return error == 0;
    return fail(folder, error);
}

void LinuxKeptFolders::release(const QString &folder)
{
    held.release(folder);
}

Result<bool> LinuxKeptFolders::isInUse(const QString &folder) const
{
    const HeldFolders::Opened opened = held.open(folder);
    if (opened.error != 0)
        return fail(folder, opened.error);
    return !held.isHeld(folder) && isLocked(opened.folder);
}

Result<QStringList> LinuxKeptFolders::namesIn(const FileDescriptor &parent, const QString &path)
{
    const auto folders = parent ? foldersIn(parent) : errno;
    if (const int *error = std::get_if<int>(&folders))
        return fail(path, *error);
    QStringList names;
    for (const QByteArray &bytes : std::get<QByteArrayList>(folders)) {
        const QString name = QFile::decodeName(bytes);
        if (QFile::encodeName(name) == bytes)
            names.append(name);
    }
    return names;
}

Result<QStringList> LinuxKeptFolders::list(const QString &parentPath) const
{
    return namesIn(held.openParent(parentPath), parentPath);
}

Result<QStringList> LinuxKeptFolders::sweep(const QString &parentPath)
{
    const FileDescriptor parent = held.openParent(parentPath);
    Result<QStringList> names = namesIn(parent, parentPath);
    // Whatever keeps one from being swept will be told when something is done with it.
    for (const QString &name : names ? names.value() : QStringList()) {
        if (const FileDescriptor folder = openFolderIn(parent, QFile::encodeName(name)))
            turns.sweep(folder);
    }
    return names;
}

Result<KeptFolders::Kept> LinuxKeptFolders::keep(const QString &path, const QString &folder,
                                                 const QString &name)
{
    const QString keptPath = inFolder(folder, name);
    // That nothing stands at the path is told by that alone.
    const auto failToKeep = [&](int error) {
        return fail(keptPath, error == ENOENT ? ESTALE : error);
    };
    const HeldFolders::Opened opened = held.open(folder);
    if (opened.error != 0 || !isSingle(name))
        return failToKeep(opened.error != 0 ? opened.error : EINVAL);
    Place place = walkPath(home, path);
    if (place.error != 0)
        return fail(path, place.error);
    // Another run that is replacing the file would take the new time of change for somebody else's.
    std::optional<FolderTurn> turn;
    if (readyToChange(place) == 0)
        turn.emplace(turns, place.folder);
    auto content = readFile(place.folder, place.name);
    if (const int *error = std::get_if<int>(&content))
        return fail(path, *error);
    auto &file = std::get<FileContent>(content);
    const auto kept = keepFile(place, file, opened.folder, QFile::encodeName(name));
    if (const int *error = std::get_if<int>(&kept))
        return *error == EAGAIN || *error == EFBIG ? fail(path, *error) : failToKeep(*error);
    withNewNames.insert(folder);
    return Kept {std::move(file.bytes), std::get<KeptAs>(kept) == KeptAs::Link};
}

Result<QByteArray> LinuxKeptFolders::read(const QString &folder, const QString &name,
                                          qint64 most) const
{
    const HeldFolders::Opened opened = held.open(folder);
    if (opened.error != 0 || !isSingle(name))
        return fail(inFolder(folder, name), opened.error != 0 ? opened.error : EINVAL);
    auto content = readKept(opened.folder, name, most);
    if (const int *error = std::get_if<int>(&content))
        return fail(inFolder(folder, name), *error);
    return std::move(std::get<FileContent>(content).bytes);
}

Result<void> LinuxKeptFolders::write(const QString &folder, const QString &name,
                                     const QByteArray &bytes)
{
    const HeldFolders::Opened opened = held.open(folder);
    int error = opened.error != 0 || isSingle(name) ? opened.error : EINVAL;
    // Notes never stand beside a name that a power cut could take back.
    if (error == 0 && withNewNames.remove(folder))
        error = flushFolder(opened.folder);
    if (error == 0)
        error = putFile(opened.folder, QFile::encodeName(name), bytes, S_IRUSR | S_IWUSR);
    if (error == 0)
        error = flushFolder(opened.folder);
    return error == 0 ? Result<void>() : fail(inFolder(folder, name), error);
}

Result<KeptFolders::PutBack> LinuxKeptFolders::putBack(const QString &folder, const QString &name,
                                                       const QString &path,
                                                       const RightKept &rightKept,
                                                       const Accept &accept)
{
    const HeldFolders::Opened opened = held.open(folder);
    if (opened.error != 0 || !isSingle(name))
        return fail(inFolder(folder, name), opened.error != 0 ? opened.error : EINVAL);
    const auto content = readKept(opened.folder, name, maximumFileSize);
    if (const int *error = std::get_if<int>(&content))
        return fail(inFolder(folder, name), *error);
    const KeptFile kept {opened.folder, QFile::encodeName(name), std::get<FileContent>(content)};
    if (!rightKept(kept.content.bytes))
        return PutBack::WrongKept;
    Place place = walkPath(home, path);
    if (const int error = readyToChange(place))
        return fail(path, error);
    FolderTurn turn(turns, place.folder);
    const auto present = readFile(place.folder, place.name);
    const auto *now = std::get_if<FileContent>(&present);
    if (now == nullptr && std::get<int>(present) != ENOENT)
        return fail(path, std::get<int>(present));
    if (!accept(now != nullptr ? std::optional(now->bytes) : std::nullopt))
        return PutBack::Declined;
    if (const int error = putKeptFile(kept, place, now))
        return fail(path, goneMeansChanged(error));
    turn.finish(path);
    flushFolderOf(inFolder(folder, name), opened.folder);
    return PutBack::Done;
}

Result<bool> LinuxKeptFolders::takeAway(const QString &path, const Accept &accept)
{
    Place place = walkPath(home, path);
    if (place.error == ENOENT)
        return true;
    if (const int error = readyToChange(place))
        return fail(path, error);
    FolderTurn turn(turns, place.folder);
    const auto present = readFile(place.folder, place.name);
    const auto *now = std::get_if<FileContent>(&present);
    if (now == nullptr && std::get<int>(present) == ENOENT)
        return true;
    if (now == nullptr)
        return fail(path, std::get<int>(present));
    if (!accept(now->bytes))
        return false;
    if (const int error = removeFile(place, *now))
        return fail(path, goneMeansChanged(error));
    turn.finish(path);
    return true;
}

Result<bool> LinuxKeptFolders::removeFolderIfEmpty(const QString &path)
{
    const HeldFolders::Opened opened = held.open(path);
    const int error = opened.parent ? removeFolder(opened.parent, opened.name) : opened.error;
    if (error == 0 || error == ENOENT)
        return true;
    if (error == ENOTEMPTY || error == EEXIST)
        return false;
    return fail(path, error);
}

Result<bool> LinuxKeptFolders::discard(const QString &folder)
{
    const HeldFolders::Opened opened = held.open(folder);
    if (opened.error == ENOENT) {
        release(folder);
        return true;
    }
    if (opened.error != 0)
        return fail(folder, opened.error);
    const bool heldBefore = held.isHeld(folder);
    const Result<bool> ours = hold(folder);
    if (!ours || !ours.value())
        return ours;
    int error = empty(opened.folder);
    if (error == 0)
        error = removeFolder(opened.parent, opened.name);
    if (error == 0 || !heldBefore)
        release(folder);
    return error == 0 ? Result<bool>(true) : fail(folder, error);
}

} // namespace varnel
