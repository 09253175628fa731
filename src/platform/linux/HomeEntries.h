#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <optional>

#include <sys/types.h>

namespace varnel {

// Single names in folders of a home, under the same rule for links as the file store. The name at
// the end of a path is taken as it stands: a link is looked at, made or removed, never followed.

/// What stands at a name.
struct EntryForm {
    mode_t mode = 0; ///< the permission bits
    QByteArray link; ///< what a link says; null for anything else
    qint64 changed = 0; ///< when its bytes last changed, in nanoseconds since 1970
};

/// NotFound where nothing stands.
[[nodiscard]] Result<EntryForm> formOf(const HomeFolder &home, const QString &path);

[[nodiscard]] Result<void> makeLink(const HomeFolder &home, const QString &path,
                                    const QByteArray &target, std::optional<qint64> changed = {});

/// Puts a whole file there in one step, for the home's owner; whatever stands there gives way.
[[nodiscard]] Result<void> putFile(const HomeFolder &home, const QString &path,
                                   const QByteArray &bytes, mode_t mode,
                                   std::optional<qint64> changed = {});

/// Removes a file or a link, and flushes the folder. Nothing there is no error.
[[nodiscard]] Result<void> removeEntry(const HomeFolder &home, const QString &path);
/// The same for one of many, after the last of which the folder is flushed once.
[[nodiscard]] Result<void> removeEntryUnflushed(const HomeFolder &home, const QString &path);

} // namespace varnel
