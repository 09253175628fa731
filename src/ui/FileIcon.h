#pragma once

#include <QIcon>
#include <QString>

namespace varnel {

/// The image of a file (any format that the toolkit has a plugin for, icns among them), or, for a
/// name without a slash, the icon of that name in the desktop's theme. Null where there is none:
/// nothing stands in for it.
[[nodiscard]] QIcon fileIcon(const QString &pathOrName);

} // namespace varnel
