#pragma once

#include "settings/SettingRow.h"

namespace varnel {

/// The preference domain of a setting's file, "com.apple.dock"; null for a setting that is no
/// preference. The file of all applications' settings is named as in configuration profiles,
/// ".GlobalPreferences".
[[nodiscard]] inline QString domainOf(const SettingRow &row)
{
    QString domain = row.file.mid(1);
    if (domain.endsWith(u".plist"))
        domain.chop(6);
    return domain;
}

inline const QString globalDomain = QStringLiteral(".GlobalPreferences");

} // namespace varnel
