#pragma once

#include "settings/SettingRow.h"

#include <QList>

namespace varnel {

/// One group of settings, the module that owns their views.
struct ModuleRow {
    ModuleId id = ModuleId::General;
    QString outlineTitle; ///< "QuickTime Player X"
    QString shortLocation; ///< "QuickTime Player"; the long form is "Quillet -> " and this
    QString icon; ///< resource name, "QuickTimePlayerX"
    QString moduleClass; ///< "QuickTimePlayerModule"
    QString interfaceName; ///< "QuickTimePlayerView"; "Error loading Nib for …!" names it
    QStringList pageOrder; ///< view classes, top to bottom
    QStringList readOrder; ///< view classes that readData re-reads, in order
};

/// All fifty rows, by number.
[[nodiscard]] const QList<SettingRow> &catalogue();

/// Null for an unknown number.
[[nodiscard]] const SettingRow *findSetting(int id);

/// By number or short name, as a person types it; null when unknown.
[[nodiscard]] const SettingRow *findSetting(QStringView idOrName);

/// The nine modules in outline order.
[[nodiscard]] const QList<ModuleRow> &modules();
[[nodiscard]] const ModuleRow &moduleRow(ModuleId id);

/// The rows that one view class carries, in number order (three for the lock and display-control
/// views).
[[nodiscard]] QList<const SettingRow *> rowsOfView(QStringView viewClass);

/// What the row of a view that carries several settings says of itself; null for any other view.
struct RowCaption {
    QString title;
    QString help;
};
[[nodiscard]] const RowCaption *captionOfSeveral(QStringView viewClass);

/// "Quillet -> Dock".
[[nodiscard]] QString locationString(const SettingRow &row);
/// "Dock".
[[nodiscard]] QString shortLocationString(const SettingRow &row);

} // namespace varnel
