#pragma once

#include "platform/linux/FileDescriptor.h"

#include <QByteArray>

#include <optional>

#include <sys/stat.h>

namespace varnel {

struct FileContent;

// All write a temporary file beside the target, flush it and move it into place in one step: 0, or
// an errno value, and then nothing has changed and no other file is left. EAGAIN when another
// program changed or made the target meanwhile.

/// Puts new bytes in the place of a file, keeping its owner, group, mode and extended attributes.
[[nodiscard]] int replaceFile(const FileDescriptor &folder, const QByteArray &name,
                              const FileContent &old, const QByteArray &bytes);

/// Makes a file, mode 0600.
[[nodiscard]] int createFile(const FileDescriptor &folder, const QByteArray &name,
                             const QByteArray &bytes);

/// The same with a mode of one's own, and a time of change where that can be set; whatever stands
/// there gives way.
[[nodiscard]] int putFile(const FileDescriptor &folder, const QByteArray &name,
                          const QByteArray &bytes, mode_t mode,
                          const std::optional<timespec> &changed = {});

} // namespace varnel
