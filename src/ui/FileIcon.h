#pragma once

#include <QIcon>
#include <QString>

namespace varnel {

/// The image of a file (any format that the toolkit has a plugin for, icns among them) for the rows
/// of a table, or, for a name without a slash, the icon of that name in the desktop's theme. Null
/// where there is none: nothing stands in for it. Null too for a picture of more than four million
/// pixels: small files can hold huge ones, and whoever made an entry or a bundle chose them.
[[nodiscard]] QIcon fileIcon(const QString &pathOrName);

} // namespace varnel
