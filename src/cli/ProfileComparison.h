#pragma once

#include "cli/HomeSession.h"
#include "profiles/Profile.h"

namespace varnel::cli {

/// A setting that has another value in a home than a profile wants.
struct SettingDifference {
    const SettingRow *row = nullptr;
    SettingValue current;
    SettingValue wanted;
};

/// A home beside a profile.
struct ProfileComparison {
    QList<SettingReport> reports; ///< of all the profile's settings, in its order
    QList<SettingDifference> differences;
    /// The settings to hand to a save: those that differ, and those whose file can't be read, so
    /// that the save tells why.
    QList<WantedValue> toSave;
    /// A line for each setting that differs and that a save would leave as it is, since it would
    /// have to make what only the application makes.
    QStringList unsavable;

    /// Nothing is written.
    [[nodiscard]] static ProfileComparison of(HomeSession &session, const Profile &profile);
};

} // namespace varnel::cli
