#include "platform/linux/FileReading.h"

#include "platform/linux/PathWalk.h"

#include <cstdint>

#include <fcntl.h>
#include <sys/mman.h>

namespace varnel {

namespace {

/// Has the system lay a large buffer out at once, in large pages where it offers them: else each of
/// the thousands of small ones takes a trap of its own. What is no whole large page at the end
/// stays small, so that no memory is taken beyond the buffer. A system that can do neither says so,
/// and nothing is lost.
void layOut(QByteArray &buffer)
{
    constexpr std::uintptr_t smallPage = 4096;
    constexpr std::uintptr_t largePage = std::uintptr_t(2) << 20;
    if (buffer.size() < qsizetype(largePage))
        return;
    const auto start = reinterpret_cast<std::uintptr_t>(buffer.data());
    const std::uintptr_t end = start + static_cast<std::uintptr_t>(buffer.size());
    const std::uintptr_t first = (start + smallPage - 1) & ~(smallPage - 1);
    char *from = buffer.data() + (first - start);
    if (const std::uintptr_t last = end & ~(largePage - 1); first < last)
        (void)::madvise(from, last - first, MADV_HUGEPAGE);
    (void)::madvise(from, (end & ~(smallPage - 1)) - first, MADV_POPULATE_WRITE);
}

/// Reads until the end of the file, or until the buffer is full.
ssize_t fill(const FileDescriptor &file, QByteArray &buffer)
{
    ssize_t filled = 0;
    while (filled < buffer.size()) {
        const ssize_t count = uninterrupted([&] {
            return ::pread(file.get(), buffer.data() + filled,
                           static_cast<size_t>(buffer.size() - filled), filled);
        });
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        filled += count;
    }
    return filled;
}

/// One attempt: 0, EAGAIN when the file changed under the reader, or another errno value.
int readOnce(FileContent &content, qint64 most)
{
    if (::fstat(content.file.get(), &content.status) != 0)
        return errno;
    if (!S_ISREG(content.status.st_mode))
        return EISDIR;
    if (content.status.st_size > most)
        return EFBIG;
    // One byte more than there should be shows that the file grew.
    content.bytes = QByteArray(content.status.st_size + 1, Qt::Uninitialized);
    layOut(content.bytes);
    const ssize_t filled = fill(content.file, content.bytes);
    struct stat after { };
    if (filled < 0 || ::fstat(content.file.get(), &after) != 0)
        return errno;
    if (filled != content.status.st_size || after.st_size != content.status.st_size
        || after.st_mtim.tv_sec != content.status.st_mtim.tv_sec
        || after.st_mtim.tv_nsec != content.status.st_mtim.tv_nsec)
        return EAGAIN;
    content.bytes.truncate(filled);
    return 0;
}

/// Why the entry must not be opened, or 0. Opening a device can have effects of its own.
int refusal(const FileDescriptor &folder, const QByteArray &name)
{
    struct stat status { };
    if (::fstatat(folder.get(), name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno;
    return S_ISREG(status.st_mode) || S_ISLNK(status.st_mode) ? 0 : EISDIR;
}

FileDescriptor openToRead(const FileDescriptor &folder, const QByteArray &name)
{
    // Should a FIFO have taken the file's place since, O_NONBLOCK keeps the program from waiting.
    const auto opened = [&](int more) {
        return FileDescriptor(uninterrupted([&] {
            return ::openat(folder.get(), name.constData(),
                            O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC | more);
        }));
    };
    FileDescriptor file = opened(O_NOATIME);
    // Only the owner may hide that a file was read.
    return file || errno != EPERM ? std::move(file) : opened(0);
}

std::variant<FileContent, int> readOpened(FileDescriptor file, qint64 most)
{
    FileContent content;
    content.file = std::move(file);
    if (!content.file)
        return errno;
    constexpr int attempts = 5;
    int error = EAGAIN;
    for (int attempt = 0; attempt < attempts && error == EAGAIN; ++attempt)
        error = readOnce(content, most);
    if (error != 0)
        return error;
    return content;
}

} // namespace

std::variant<FileContent, int> readFile(const FileDescriptor &folder, const QByteArray &name,
                                        qint64 most)
{
    if (const int error = refusal(folder, name))
        return error;
    return readOpened(openToRead(folder, name), most);
}

std::variant<FileContent, int> readFound(const FileDescriptor &found, qint64 most)
{
    struct stat status { };
    if (::fstat(found.get(), &status) != 0)
        return errno;
    if (!S_ISREG(status.st_mode))
        return EISDIR;
    const QByteArray again = "/proc/self/fd/" + QByteArray::number(found.get());
    return readOpened(FileDescriptor(uninterrupted([&] {
                          return ::open(again.constData(), O_RDONLY | O_NOCTTY | O_CLOEXEC);
                      })),
                      most);
}

int compareWithRead(const FileDescriptor &folder, const QByteArray &name, const struct stat &read)
{
    struct stat now { };
    if (::fstatat(folder.get(), name.constData(), &now, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? EAGAIN : errno;
    return sameState(now, read) ? 0 : EAGAIN;
}

} // namespace varnel
