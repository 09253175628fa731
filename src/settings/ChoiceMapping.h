#pragma once

#include "plist/Value.h"
#include "settings/SettingRow.h"

namespace varnel {

/// The index of the choice that a stored value selects: the first whose own value it is, else the
/// default's. Choices of numbers and booleans compare integer values, choices of texts compare
/// strings in the way of the row.
[[nodiscard]] int indexOfStored(const SettingRow &row, const plist::Value &stored);

/// What choosing an index writes; none removes. Every index out of range removes.
[[nodiscard]] StoredValue storedOfIndex(const SettingRow &row, int index);

/// As a value of a property list; none for none.
[[nodiscard]] std::optional<plist::NewValue> newValue(const StoredValue &value);

} // namespace varnel
