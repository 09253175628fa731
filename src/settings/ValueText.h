#pragma once

#include "base/Result.h"
#include "settings/SettingAccess.h"

#include <QString>

#include <optional>

namespace varnel {

/// The value that a text names for a setting, or Invalid with a text for the user.
///
/// Choices: a label (any letter case, blanks at its end not needed), an index, "-1" or "default".
/// Numbers: a whole number in the control's range, "-1" or "default". The bar's items: four digits
/// 0 or 1 with ";" between, their names with "," between, "none", "-1" or "default". Texts: any
/// text; only "-1" is the default.
[[nodiscard]] Result<SettingValue> parseValue(const SettingRow &row, const QString &typed);

/// Digits, with a minus sign at most; nothing that a locale or a blank could change. None for
/// anything else, and beyond 32 bits.
[[nodiscard]] std::optional<int> wholeNumber(const QString &typed);

/// The value as it is exchanged: an index, a number, a text.
[[nodiscard]] QString exchangedText(const SettingRow &row, const SettingValue &value);

/// The value in words: the choice's label, "48 pixels", names, "use default value".
[[nodiscard]] QString labelText(const SettingRow &row, const SettingValue &value);

/// Said of a text setting that stores something else, whose value is the text form of that.
[[nodiscard]] inline QString notTextNote()
{
    return QStringLiteral("not a text");
}

/// The value that was read, in words: with that note where it holds.
[[nodiscard]] QString readInWords(const SettingRow &row, const SettingReading &reading);

/// What stands for the default where a setting exchanges a text.
[[nodiscard]] inline QString defaultText()
{
    return QStringLiteral("-1");
}

/// The value that stands for the default.
[[nodiscard]] SettingValue defaultValue(const SettingRow &row);

/// Whether two values of a setting write the same: they are the same, or two choices with one
/// meaning, such as a default that is another choice's value.
[[nodiscard]] bool meanTheSame(const SettingRow &row, const SettingValue &one,
                               const SettingValue &other);

} // namespace varnel
