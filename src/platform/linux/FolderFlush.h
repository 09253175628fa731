#pragma once

#include "platform/linux/FileDescriptor.h"

#include <QString>

namespace varnel {

/// Puts a folder's entries on the disk, as fsync() of a file does with its content: without it a
/// power cut in the next moments could take a new, renamed or removed entry back. 0, or an errno
/// value; a file system that can't flush folders counts as having done it.
[[nodiscard]] int flushFolder(const FileDescriptor &folder);

/// The same for whoever can't take the change back any more: a failure is logged to lcIo, with the
/// path of what was changed.
void flushFolderOf(const QString &path, const FileDescriptor &folder);

} // namespace varnel
