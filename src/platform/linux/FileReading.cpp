#include "platform/linux/FileReading.h"

#include <optional>

#include <fcntl.h>

namespace varnel {

namespace {

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
int readOnce(FileContent &content)
{
    if (::fstat(content.file.get(), &content.status) != 0)
        return errno;
    if (!S_ISREG(content.status.st_mode))
        return EISDIR;
    if (content.status.st_size > maximumFileSize)
        return EFBIG;
    // One byte more than there should be shows that the file grew.
    content.bytes.resize(content.status.st_size + 1);
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

} // namespace

std::variant<FileContent, int> readFile(const FileDescriptor &folder, const QByteArray &name)
{
    if (const int error = refusal(folder, name))
        return error;
    // Should a FIFO have taken the file's place since, O_NONBLOCK keeps the program from waiting.
    FileContent content;
    content.file = FileDescriptor(uninterrupted([&] {
        return ::openat(folder.get(), name.constData(),
                        O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
    }));
    if (!content.file)
        return errno;
    constexpr int attempts = 5;
    int error = EAGAIN;
    for (int attempt = 0; attempt < attempts && error == EAGAIN; ++attempt)
        error = readOnce(content);
    if (error != 0)
        return error;
    return content;
}

} // namespace varnel
