#pragma once

#include "platform/linux/FileDescriptor.h"

#include <QByteArray>

#include <variant>

#include <sys/stat.h>

namespace varnel {

/// No preference file comes near this size (bytes). A planted one that pretends to must not cost
/// the program its memory.
constexpr qint64 maximumFileSize = qint64(1) << 30;

/// A file as it was at one moment.
struct FileContent {
    FileDescriptor file; ///< open for reading
    QByteArray bytes;
    struct stat status { };
};

/// The content of a regular file of a folder, or an errno value: ENOENT where nothing stands,
/// EISDIR for anything but a regular file (which is never waited for), EFBIG above `most` bytes,
/// EAGAIN when the file does not stop changing while it is read, ELOOP for a link. Whoever owns the
/// file leaves its time of reading as it was.
[[nodiscard]] std::variant<FileContent, int>
readFile(const FileDescriptor &folder, const QByteArray &name, qint64 most = maximumFileSize);
/// The same of a file that was found, and is held with O_PATH.
[[nodiscard]] std::variant<FileContent, int> readFound(const FileDescriptor &found,
                                                       qint64 most = maximumFileSize);

/// 0 while a file that was read still stands there unchanged; EAGAIN when another program changed,
/// replaced or removed it, or another errno value.
[[nodiscard]] int compareWithRead(const FileDescriptor &folder, const QByteArray &name,
                                  const struct stat &read);

} // namespace varnel
