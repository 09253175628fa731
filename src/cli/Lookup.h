#pragma once

#include "base/Result.h"
#include "settings/Catalogue.h"

#include <QList>

namespace varnel::cli {

/// One group and its settings, by number.
struct SettingGroup {
    const ModuleRow *module = nullptr;
    QList<const SettingRow *> rows;
};

/// A setting by number or short name; Invalid, with a text for the user, when there is none.
[[nodiscard]] Result<const SettingRow *> lookUpSetting(const QString &typed);

/// A group by its title, its short location or its module's name ("ScreenCaptureModule", or the
/// same without "Module"), in any letter case; Invalid when there is none.
[[nodiscard]] Result<const ModuleRow *> lookUpGroup(const QString &typed);

/// The groups in outline order; only the one named, when a name is given.
[[nodiscard]] QList<SettingGroup> settingGroups(const ModuleRow *only = nullptr);

} // namespace varnel::cli
