#pragma once

#include "platform/FileStore.h"
#include "platform/linux/FileDescriptor.h"

#include <QByteArrayList>

#include <variant>

namespace varnel {

struct HomeFolder;

/// Every name in a folder but "." and "..", or an errno value.
[[nodiscard]] std::variant<QByteArrayList, int> namesIn(const FileDescriptor &folder);

/// What stands in a folder of a home, which is open for reading and to be found at a path, or an
/// errno value. Names that are no UTF-8 are left out; links are followed as walkPath() does.
[[nodiscard]] std::variant<QList<FolderEntry>, int>
entriesIn(const HomeFolder &home, const QString &path, const FileDescriptor &folder);

} // namespace varnel
