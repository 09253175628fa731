#pragma once

#include "settings/SettingRow.h"

#include <QStringList>

namespace varnel::cli {

/// The values of a setting that can be offered to somebody who types: labels of choices, names of
/// items, "default". None for a setting that takes any text.
[[nodiscard]] QStringList valueWords(const SettingRow &row);

/// The applications that may have to read their settings anew, as the sheet names them.
[[nodiscard]] QStringList applicationNames();

} // namespace varnel::cli
