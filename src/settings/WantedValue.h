#pragma once

#include "settings/SettingReading.h"

namespace varnel {

/// A setting and the value that it shall have.
struct WantedValue {
    const SettingRow *row = nullptr;
    SettingValue value;

    bool operator==(const WantedValue &) const = default;
};

} // namespace varnel
