#pragma once

#include "platform/linux/FileDescriptor.h"

#include <QByteArray>

#include <variant>

#include <sys/stat.h>

namespace varnel {

/// A file as it was at one moment.
struct FileContent {
    FileDescriptor file; ///< open for reading
    QByteArray bytes;
    struct stat status { };
};

/// The content of a regular file of a folder, or an errno value: ENOENT where nothing stands,
/// EISDIR for anything but a regular file (which is never waited for), EFBIG above maximumFileSize,
/// EAGAIN when the file does not stop changing while it is read, ELOOP for a link.
[[nodiscard]] std::variant<FileContent, int> readFile(const FileDescriptor &folder,
                                                      const QByteArray &name);

/// No preference file comes near this size (bytes). A planted one that pretends to must not cost
/// the program its memory.
constexpr qint64 maximumFileSize = qint64(1) << 30;

} // namespace varnel
