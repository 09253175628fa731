#pragma once

#include "settings/PreferencePlaces.h"
#include "settings/SettingRow.h"

namespace varnel {

/// The preference domain of a setting, as its application calls it, "com.apple.dock"; null for a
/// setting that is no preference. The file of all applications' settings is named as in
/// configuration profiles,
/// ".GlobalPreferences".
[[nodiscard]] inline QString domainOf(const SettingRow &row)
{
    return row.file.isEmpty() ? QString() : PreferencePlaces::domainOf(row.file);
}

inline const QString globalDomain = QStringLiteral(".GlobalPreferences");

} // namespace varnel
