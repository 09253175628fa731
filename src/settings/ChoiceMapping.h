#pragma once

#include "plist/Value.h"
#include "settings/SettingRow.h"

#include <optional>

namespace varnel {

/// The index of the choice whose own value a stored value is, of several the first; none where it
/// is no choice's. Choices of numbers and booleans compare integer values, choices of texts compare
/// strings in the way of the row.
[[nodiscard]] std::optional<int> choiceOfStored(const SettingRow &row, const plist::Value &stored);
/// The index of the choice that a stored value selects: that one, else the default's.
[[nodiscard]] int indexOfStored(const SettingRow &row, const plist::Value &stored);

/// What choosing an index writes; none removes. Every index out of range removes.
[[nodiscard]] StoredValue storedOfIndex(const SettingRow &row, int index);

/// As a value of a property list; none for none.
[[nodiscard]] std::optional<plist::NewValue> newValue(const StoredValue &value);

} // namespace varnel
