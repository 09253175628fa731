#pragma once

#include "cli/HomeSession.h"
#include "profiles/Profile.h"
#include "settings/PendingChanges.h"

namespace varnel::cli {

/// A home beside a profile.
struct ProfileComparison {
    QList<SettingReport> reports; ///< of all the profile's settings, in its order
    QList<SettingChange> differences; ///< from what the home holds to what is wanted
    /// The settings to hand to a save, in its order.
    QList<SettingChange> toSave;
    /// Settings whose file can't be loaded. They are not handed to a save: it would keep their old
    /// values anew at each run, and change nothing.
    QList<SaveFailure> failures;
    /// A line for each setting that differs and that a save would leave as it is, since it would
    /// have to make what only the application makes.
    QStringList unsavable;

    /// Nothing is written.
    [[nodiscard]] static ProfileComparison of(HomeSession &session, const Profile &profile);

private:
    void tryOut(HomeSession &session, const QList<SettingChange> &settings);
};

} // namespace varnel::cli
