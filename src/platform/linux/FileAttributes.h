#pragma once

#include "platform/linux/FileDescriptor.h"

#include <sys/stat.h>

namespace varnel {

/// Gives a file, made by this process, the owner, group, mode and extended attributes (access
/// control lists among them) of another: 0, or the errno value of the first that can't be given.
///
/// Left out, as the kernel itself does whenever somebody writes to a file: the set-user-id and
/// set-group-id bits and the file's capabilities. Security labels are the kernel's own business and
/// are given where it lets us.
[[nodiscard]] int copyAttributes(const FileDescriptor &from, const struct stat &status,
                                 const FileDescriptor &to);

/// The same for a file that is to stand for the other: with those bits, the capabilities and the
/// times too, all as far as the system allows it, and so are owner and group. No file of another
/// owner or group gets the bits. Nothing must be written to it afterwards.
[[nodiscard]] int copyAllAttributes(const FileDescriptor &from, const struct stat &status,
                                    const FileDescriptor &to);

/// Gives an older file what somebody changed of its successor's owner, group, mode and extended
/// attributes: 0, or the errno value of the first that can't be given. What copyAttributes() leaves
/// out nobody changed, and the older file keeps it.
[[nodiscard]] int takeOverAttributes(const FileDescriptor &successor, const struct stat &status,
                                     const FileDescriptor &file);

/// Gives a file a mode, where it does not have it: 0 or an errno value.
[[nodiscard]] int setMode(const FileDescriptor &file, mode_t mode);

} // namespace varnel
