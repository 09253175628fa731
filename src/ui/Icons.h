#pragma once

#include <QIcon>
#include <QString>

namespace varnel::Icons {

/// The program's own drawing of that name ("Dock", "compass", "RestoreBackup", "varnel"); letter
/// case counts. It follows the palette, and turns light on a selected row. Null when there is no
/// such drawing.
[[nodiscard]] QIcon icon(const QString &resourceName);

/// The icon for a ground in the accent, where it stands in the colouring that it has on a selected
/// row.
[[nodiscard]] QIcon onAccent(const QIcon &icon);

} // namespace varnel::Icons
