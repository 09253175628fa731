#pragma once

#include "platform/FileStore.h"
#include "platform/linux/FileDescriptor.h"

#include <variant>

namespace varnel {

struct HomeFolder;

/// What stands in a folder of a home, which is open for reading and to be found at a path, or an
/// errno value. Names that are no UTF-8 are left out; links are followed as walkPath() does.
[[nodiscard]] std::variant<QList<FolderEntry>, int>
entriesIn(const HomeFolder &home, const QString &path, const FileDescriptor &folder);

} // namespace varnel
