#include "platform/linux/TemporaryFile.h"

#include "platform/linux/FolderListing.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace varnel {

namespace {

QByteArray newName(const QByteArray &target)
{
    // The longest names that file systems take have 255 bytes.
    constexpr qsizetype kept = 160;
    const quint64 random = QRandomGenerator::system()->generate64();
    return '.' + target.left(kept) + ".varnel-" + QByteArray::number(::getpid()) + '-'
        + QByteArray::number(random, 16).rightJustified(16, '0');
}

bool isTemporaryName(const QByteArray &name)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A\\..+\\.varnel-[0-9]+-[0-9a-f]{16}\\z"),
        QRegularExpression::DotMatchesEverythingOption);
    return pattern.match(QString::fromLatin1(name)).hasMatch();
}

bool lockNow(const FileDescriptor &file)
{
    return uninterrupted([&] { return ::flock(file.get(), LOCK_EX | LOCK_NB); }) == 0;
}

/// The file with its lock, where nobody else has that.
FileDescriptor takeOver(const FileDescriptor &folder, const QByteArray &name)
{
    FileDescriptor file(uninterrupted([&] {
        return ::openat(folder.get(), name.constData(),
                        O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
    }));
    struct stat status { };
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || !lockNow(file))
        return {};
    return file;
}

} // namespace

TemporaryFile::TemporaryFile(const FileDescriptor &folder, const QByteArray &name)
    : folder(folder), target(name)
{
}

TemporaryFile::~TemporaryFile()
{
    if (!temporaryName.isEmpty())
        ::unlinkat(folder.get(), temporaryName.constData(), 0);
}

int TemporaryFile::create()
{
    constexpr int attempts = 16;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const QByteArray name = newName(target);
        file = FileDescriptor(uninterrupted([&] {
            return ::openat(folder.get(), name.constData(),
                            O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
        }));
        if (file) {
            temporaryName = name;
            // Without it (a file system without locks) a sweep by another run, which does not
            // happen under the folder's lock, would make this change fail; nothing would be lost.
            static_cast<void>(lockNow(file));
            return 0;
        }
        if (errno != EEXIST)
            return errno;
    }
    return EEXIST;
}

int TemporaryFile::write(const QByteArray &bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count = uninterrupted([&] {
            return ::write(file.get(), bytes.constData() + written,
                           static_cast<size_t>(bytes.size() - written));
        });
        if (count < 0)
            return errno;
        written += count;
    }
    return 0;
}

int TemporaryFile::flush()
{
    return uninterrupted([&] { return ::fsync(file.get()); }) == 0 ? 0 : errno;
}

int TemporaryFile::replaceTarget()
{
    if (::renameat(folder.get(), temporaryName.constData(), folder.get(), target.constData()) != 0)
        return errno;
    temporaryName.clear();
    return 0;
}

int TemporaryFile::becomeTarget()
{
    const int error = moveToFreeName(folder, temporaryName, folder, target);
    if (error == 0)
        temporaryName.clear();
    return error;
}

int moveToFreeName(const FileDescriptor &from, const QByteArray &name, const FileDescriptor &to,
                   const QByteArray &freeName)
{
    if (::renameat2(from.get(), name.constData(), to.get(), freeName.constData(), RENAME_NOREPLACE)
        == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    // A file system without that kind of rename.
    struct stat status { };
    if (::fstatat(to.get(), freeName.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        return EEXIST;
    if (errno != ENOENT)
        return errno;
    return ::renameat(from.get(), name.constData(), to.get(), freeName.constData()) == 0 ? 0
                                                                                         : errno;
}

bool isLeftBehind(const FileDescriptor &folder, const QByteArray &name)
{
    return isTemporaryName(name) && takeOver(folder, name);
}

void sweepLeftovers(const FileDescriptor &folder)
{
    const auto names = namesIn(folder);
    const auto *found = std::get_if<QByteArrayList>(&names);
    for (const QByteArray &name : found != nullptr ? *found : QByteArrayList()) {
        const FileDescriptor file =
            isTemporaryName(name) ? takeOver(folder, name) : FileDescriptor();
        // Nothing depends on it: what can't be removed now is tried again by the next run.
        if (file)
            ::unlinkat(folder.get(), name.constData(), 0);
    }
}

} // namespace varnel
