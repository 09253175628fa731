#pragma once

#include "base/Result.h"
#include "settings/SettingRow.h"

#include <QString>

namespace varnel::cli {

/// A preference file as the Mac's own preferences tool names it: "com.apple.dock", a path to such a
/// file, or the domain that is every application's.
struct PreferenceDomain {
    QString file; ///< as SettingRow has it: "/com.apple.dock.plist"
    QString home; ///< the home folder that a path leads to; null where no path was given. Which of
                  ///< its files is meant is for PreferencePlaces to say, not for the path

    /// Whether that can be no setting's number or short name, which have neither dot nor slash.
    [[nodiscard]] static bool looksLikeOne(const QString &typed);

    /// In any letter case, as the Mac's file system finds it. Invalid for a file of no setting, and
    /// for a path that leads to no home's Library/Preferences, nor to its application's container.
    [[nodiscard]] static Result<PreferenceDomain> parse(const QString &typed);

    /// "com.apple.dock", "NSGlobalDomain".
    [[nodiscard]] QString name() const;

    /// The setting of that key; of two the lower number. Invalid when there is none, and for a key
    /// inside a dictionary, which that tool can't name.
    [[nodiscard]] Result<const SettingRow *> settingWithKey(const QString &key) const;
};

} // namespace varnel::cli
