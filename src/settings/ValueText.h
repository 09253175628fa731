#pragma once

#include "settings/SettingAccess.h"

namespace varnel {

/// A value that was read, in the words of the setting's own control: a choice's label, a number, a
/// text, the names of the items that are on. What is not there reads "use default value".
[[nodiscard]] QString valueText(const SettingRow &row, const SettingReading &reading);

/// What stands for "use default value" where a setting exchanges a text.
[[nodiscard]] inline QString defaultText()
{
    return QStringLiteral("-1");
}

/// What a setting exchanges for "use default value".
[[nodiscard]] SettingValue defaultValue(const SettingRow &row);

} // namespace varnel
