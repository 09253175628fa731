#include "platform/linux/FolderListing.h"

#include "platform/linux/CloseFolder.h"
#include "platform/linux/PathWalk.h"

#include <QFile>

#include <memory>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

namespace varnel {

namespace {

std::optional<struct statx> factsOf(const FileDescriptor &folder, const QByteArray &name)
{
    struct statx facts { };
    const int outcome = ::statx(folder.get(), name.constData(), AT_SYMLINK_NOFOLLOW,
                                STATX_TYPE | STATX_MTIME | STATX_BTIME, &facts);
    return outcome == 0 ? std::optional(facts) : std::nullopt;
}

QDateTime creationDate(const struct statx &facts)
{
    constexpr qint64 perSecond = 1000;
    constexpr qint64 nanoseconds = 1000000;
    const bool born = (facts.stx_mask & STATX_BTIME) != 0 && facts.stx_btime.tv_sec != 0;
    const statx_timestamp &time = born ? facts.stx_btime : facts.stx_mtime;
    return QDateTime::fromMSecsSinceEpoch(qint64(time.tv_sec) * perSecond
                                          + time.tv_nsec / nanoseconds)
        .toUTC();
}

QDateTime dateAt(const HomeFolder &home, const QString &path, const FileDescriptor &folder,
                 const QByteArray &name)
{
    std::optional<struct statx> facts = factsOf(folder, name);
    if (facts && S_ISLNK(facts->stx_mode)) {
        const Place place = walkPath(home, path);
        facts = place.error == 0 ? factsOf(place.folder, place.name) : std::nullopt;
    }
    return facts ? creationDate(*facts) : QDateTime();
}

} // namespace

std::variant<QByteArrayList, int> namesIn(const FileDescriptor &folder)
{
    // A descriptor of its own, for the stream closes it and moves its position.
    FileDescriptor opened(::openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened)
        return errno;
    const std::unique_ptr<DIR, CloseFolder> stream(::fdopendir(opened.get()));
    if (!stream)
        return errno;
    opened.release();
    QByteArrayList names;
    errno = 0;
    while (const dirent *entry = ::readdir(stream.get())) {
        if (const QByteArray name(entry->d_name); name != "." && name != "..")
            names.append(name);
        errno = 0;
    }
    if (errno != 0)
        return errno;
    return names;
}

std::variant<QList<FolderEntry>, int> entriesIn(const HomeFolder &home, const QString &path,
                                                const FileDescriptor &folder)
{
    const auto names = namesIn(folder);
    if (const int *error = std::get_if<int>(&names))
        return *error;
    QList<FolderEntry> entries;
    for (const QByteArray &bytes : std::get<QByteArrayList>(names)) {
        const QString name = QFile::decodeName(bytes);
        if (QFile::encodeName(name) == bytes)
            entries.append({name, dateAt(home, path + u'/' + name, folder, bytes)});
    }
    return entries;
}

} // namespace varnel
