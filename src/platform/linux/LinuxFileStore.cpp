#include "platform/linux/LinuxFileStore.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/FileReplacement.h"
#include "platform/linux/FolderFlush.h"
#include "platform/linux/FolderListing.h"
#include "platform/linux/HomeEntries.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/SystemError.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <memory>

#include <fcntl.h>

namespace varnel {

namespace {

/// The walk holds folders without the right to read them; locking and listing need it.
FileDescriptor openFolder(const FileDescriptor &parent, const QByteArray &name)
{
    return FileDescriptor(uninterrupted([&] {
        return ::openat(parent.get(), name.constData(),
                        O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    }));
}

bool isForeign(const HomeFolder &home)
{
    if (home.asOwner())
        return false;
    struct stat status { };
    const FileDescriptor folder = openHome(home);
    return !folder || ::fstat(folder.get(), &status) != 0 || status.st_uid != ::geteuid();
}

/// A journal can name any other file of the machine for removal.
bool hasJournal(const Place &place)
{
    const std::array<const char *, 2> endings {"-journal", "-wal"};
    return std::any_of(endings.begin(), endings.end(), [&](const char *ending) {
        struct stat status { };
        const QByteArray name = place.name + ending;
        return ::fstatat(place.folder.get(), name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    });
}

} // namespace

LinuxFileStore::LinuxFileStore(HomeFolder home, std::chrono::milliseconds lockWait)
    : home(std::move(home)), changes(lockWait)
{
}

Error LinuxFileStore::fail(const QString &path, int error) const
{
    Error result = fileError(path, error);
    varnelLog(lcIo, result.text);
    return result;
}

Error LinuxFileStore::failToRead(const QString &path, int error) const
{
    Error result = fileError(path, error);
    if (result.code != ErrorCode::NotFound && !logged.contains(result.text)) {
        logged.insert(result.text);
        varnelLog(lcIo, result.text);
    }
    return result;
}

Result<FileStore::Standing> LinuxFileStore::look(const QString &path) const
{
    const Place place = walkPath(home, path);
    switch (place.error) {
    case 0:
        return place.status ? Standing::Something : Standing::Nothing;
    case ENOENT:
        return Standing::Nothing;
    case EXDEV:
        return Standing::Outside;
    default:
        return fileError(path, place.error);
    }
}

bool LinuxFileStore::areOnePlace(const QString &one, const QString &other) const
{
    const Place first = walkPath(home, one);
    const Place second = walkPath(home, other);
    struct stat around { };
    struct stat otherAround { };
    return first.error == 0 && second.error == 0 && first.name == second.name
        && ::fstat(first.folder.get(), &around) == 0
        && ::fstat(second.folder.get(), &otherAround) == 0 && sameFile(around, otherAround);
}

Result<QList<FolderEntry>> LinuxFileStore::list(const QString &folder) const
{
    const Place place = walkPath(home, folder);
    if (place.error != 0)
        return failToRead(folder, place.error);
    const FileDescriptor opened = openFolder(place.folder, place.name);
    if (!opened)
        return failToRead(folder, errno);
    auto entries = entriesIn(home, folder, opened);
    if (const int *error = std::get_if<int>(&entries))
        return failToRead(folder, *error);
    return std::get<QList<FolderEntry>>(std::move(entries));
}

Result<QStringList> LinuxFileStore::names(const QString &folder) const
{
    const Place place = walkPath(home, folder);
    const FileDescriptor opened =
        place.error == 0 ? openFolder(place.folder, place.name) : FileDescriptor();
    const int error = place.error != 0 ? place.error : errno;
    if (!opened)
        return fileError(folder, error == ENOTDIR ? ENOENT : error);
    const auto found = namesIn(opened);
    if (const int *failed = std::get_if<int>(&found))
        return fileError(folder, *failed);
    QStringList names;
    for (const QByteArray &bytes : std::get<QByteArrayList>(found)) {
        const QString name = QFile::decodeName(bytes);
        if (QFile::encodeName(name) == bytes)
            names.append(name);
    }
    return names;
}

bool LinuxFileStore::exists(const QString &path) const
{
    const Place place = walkPath(home, path);
    return place.error == 0 && place.status.has_value();
}

Result<QByteArray> LinuxFileStore::read(const QString &path) const
{
    return readAt(walkPath(home, path), path);
}

FileReader::Rereader LinuxFileStore::rereader(const QString &path) const
{
    const auto place = std::make_shared<const Place>(walkPath(home, path));
    return [this, place, path] { return ifThere(readAt(*place, path)); };
}

Result<QByteArray> LinuxFileStore::readAt(const Place &place, const QString &path) const
{
    auto content = place.error == 0 ? readFile(place.folder, place.name) : place.error;
    if (auto *found = std::get_if<FileContent>(&content))
        return std::move(found->bytes);
    return failToRead(path, std::get<int>(content));
}

Result<void> LinuxFileStore::update(const QString &path, const Change &change)
{
    Place place = walkPath(home, path);
    if (place.error == ENOENT) {
        const Result<std::optional<QByteArray>> answer = change(std::nullopt);
        if (!answer)
            return answer.error();
        return answer.value() ? Result<void>(fail(path, ENOENT)) : Result<void>();
    }
    if (place.error != 0)
        return fail(path, place.error);
    FileDescriptor folder = openFolder(place.folder, QByteArrayLiteral("."));
    if (!folder)
        return fail(path, errno);
    place.folder = std::move(folder);
    FolderTurn turn(changes, place.folder);
    return updateIn(place, path, change, turn);
}

Result<void> LinuxFileStore::updateIn(const Place &place, const QString &path, const Change &change,
                                      FolderTurn &turn)
{
    const auto content = readFile(place.folder, place.name);
    const auto *old = std::get_if<FileContent>(&content);
    if (old == nullptr && std::get<int>(content) != ENOENT)
        return fail(path, std::get<int>(content));
    Result<std::optional<QByteArray>> answer =
        change(old != nullptr ? std::optional(old->bytes) : std::nullopt);
    if (!answer)
        return answer.error();
    const std::optional<QByteArray> &bytes = answer.value();
    if (!bytes || (old != nullptr && *bytes == old->bytes))
        return {};
    const int error = old != nullptr ? replaceFile(place.folder, place.name, *old, *bytes)
                                     : createFile(place.folder, place.name, *bytes);
    if (error != 0)
        return fail(path, error);
    turn.finish(path);
    return {};
}

Result<void> LinuxFileStore::remove(const QString &path)
{
    Result<void> removed = removeEntryUnflushed(home, path);
    if (!removed)
        varnelLog(lcIo, removed.error().text);
    return removed;
}

Result<void> LinuxFileStore::flush(const QString &folder)
{
    const Place place = walkPath(home, folder);
    int error = place.error;
    if (error == 0) {
        const FileDescriptor opened = openFolder(place.folder, place.name);
        error = opened ? flushFolder(opened) : errno;
    }
    return error == 0 ? Result<void>() : fail(folder, error);
}

/// A name for what the walk came to, in which no link is left but that by which a home is reached.
FileStore::DatabasePlace LinuxFileStore::placeOf(const Place &place, const QString &path) const
{
    const QString folder =
        QFile::symLinkTarget(u"/proc/self/fd/"_s + QString::number(place.folder.get()));
    // Without /proc nothing tells the folder's name.
    if (folder.isEmpty())
        return {path};
    return {home.reached(folder + u'/' + QFile::decodeName(place.name))};
}

Result<FileStore::DatabasePlace> LinuxFileStore::databasePlace(const QString &path) const
{
    const Place place = walkPath(home, path);
    if (place.error == ENOENT || (place.error == 0 && !place.status))
        return fileError(path, ENOENT);
    if (place.error != 0)
        return fail(path, place.error);
    return placeOf(place, path);
}

Result<FileStore::DatabasePlace> LinuxFileStore::readyForDatabase(const QString &path)
{
    const Place place = walkPath(home, path);
    // Without its folder there is no database yet, which is no failure to tell.
    if (place.error == ENOENT)
        return fileError(path, ENOENT);
    if (place.error != 0)
        return fail(path, place.error);
    if (isForeign(home) && hasJournal(place))
        return fail(path, EPERM);
    if (place.status)
        return placeOf(place, path);
    bool isNew = false;
    const Result<void> made = update(path, [&isNew](const std::optional<QByteArray> &old) {
        isNew = !old.has_value(); // or another run has made it meanwhile
        return isNew ? Result<std::optional<QByteArray>>(std::optional(QByteArray("")))
                     : Result<std::optional<QByteArray>>(std::optional<QByteArray>());
    });
    if (!made)
        return made.error();
    DatabasePlace ready = placeOf(place, path);
    ready.isNew = isNew;
    return ready;
}

void LinuxFileStore::sweep(const QString &folderPath)
{
    const Place place = walkPath(home, folderPath);
    const FileDescriptor folder =
        place.error == 0 ? openFolder(place.folder, place.name) : FileDescriptor();
    // Whatever keeps it from being swept will be told when a file there is to be changed.
    if (folder)
        changes.sweep(folder);
}

} // namespace varnel
