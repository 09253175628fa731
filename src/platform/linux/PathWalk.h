#pragma once

#include "base/HomeFolder.h"
#include "platform/linux/FileDescriptor.h"

#include <QByteArray>
#include <QString>

#include <optional>

#include <sys/stat.h>

namespace varnel {

/// Where a path leads once every link on its way is followed: a folder that is held open, so that
/// nobody can put another one in its place, and a name in it that is no link.
struct Place {
    /// 0, or why the walk ended early: ENOENT when a folder on the way is missing, EXDEV when a
    /// link leads out of the home and that is not allowed.
    int error = 0;
    FileDescriptor folder; ///< opened with O_PATH
    QByteArray name; ///< "." when the path leads to the folder itself
    std::optional<struct stat> status; ///< what stands there; none when nothing does
};

/// Walks a path of a home folder, one name after the other.
///
/// In the process's own home (its user owns the folder) links are followed wherever they lead. In
/// anybody else's they may only lead to places beneath the home: relative links that do not climb
/// out of it, and absolute ones that begin with the home's path. An absolute link of a home at rest
/// that names the place where the home used to be ("/Users/...") is refused like any other, for on
/// this machine it would lead to somebody else's files. A dangling link leads to the place where
/// its target would be.
[[nodiscard]] Place walkPath(const HomeFolder &home, const QString &path);

/// The home folder, opened with O_PATH; errno tells when it can't be.
[[nodiscard]] FileDescriptor openHome(const HomeFolder &home);

/// Whether both are the same file, by whatever name.
[[nodiscard]] bool sameFile(const struct stat &left, const struct stat &right);

/// Whether both are the same file, unchanged since.
[[nodiscard]] bool sameState(const struct stat &left, const struct stat &right);

} // namespace varnel
