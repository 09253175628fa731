#pragma once

#include "settings/PreferenceFiles.h"
#include "settings/SettingReading.h"

#include <optional>

namespace varnel {

/// What writing a value of a setting does, as far as that can be told without a home.
struct SettingWrite {
    /// In the setting's file, in order; none for the Library folder. A dictionary that is missing
    /// on the way to a key is never made: the change is left out.
    QList<KeyChange> changes;
    PreferenceFiles::IfMissing ifMissing = PreferenceFiles::IfMissing::LeaveMissing;
    /// In place of the changes: what stood there before is put back, object by object.
    std::optional<QList<OldKey>> exactly;
    std::optional<bool> hidesLibrary; ///< of the Library folder only
    std::optional<RestartFlag> restarts;

    [[nodiscard]] static SettingWrite of(const SettingRow &row, const SettingValue &value);
};

} // namespace varnel
