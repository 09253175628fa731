#pragma once

#include "base/Result.h"
#include "settings/Catalogue.h"

#include <QList>

namespace varnel::cli {

/// A setting by number or short name; Invalid, with a text for the user, when there is none.
[[nodiscard]] Result<const SettingRow *> lookUpSetting(const QString &typed);

/// A group by its title, its short location or its module's name ("ScreenCaptureModule", or the
/// same without "Module"), in any letter case; Invalid when there is none.
[[nodiscard]] Result<const ModuleRow *> lookUpGroup(const QString &typed);

/// The settings, group after group in outline order, each group by number; those of one group, when
/// it is given.
[[nodiscard]] QList<const SettingRow *> settingsInOutlineOrder(const ModuleRow *only = nullptr);

} // namespace varnel::cli
