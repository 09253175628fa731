#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace varnel {

// Single names in folders of a home, under the same rule for links as the file store. The name at
// the end of a path is taken as it stands: a link is looked at, made or removed, never followed.

/// What a link says; null where no link stands.
[[nodiscard]] QByteArray linkText(const HomeFolder &home, const QString &path);

/// The permission bits; 0 where nothing stands.
[[nodiscard]] mode_t modeOf(const HomeFolder &home, const QString &path);

[[nodiscard]] Result<void> makeLink(const HomeFolder &home, const QString &path,
                                    const QByteArray &target);
[[nodiscard]] Result<void> setMode(const HomeFolder &home, const QString &path, mode_t mode);

/// Removes a file or a link. Nothing there is no error.
[[nodiscard]] Result<void> removeEntry(const HomeFolder &home, const QString &path);

} // namespace varnel
