#pragma once

#include "profiles/Profile.h"

#include <QJsonObject>

namespace varnel {

/// Nothing, or why a setting's value can't stand in a profile, in words with the setting's name: a
/// number that no control offers, a text that is no Unicode. For what is found in a home; what was
/// read from a profile can stand in one.
[[nodiscard]] Result<void> checkForProfile(const SettingChange &setting);

// What readProfile() reads as the same again. Settings stand under their short names, choices as
// labels, the default of numbers and texts as -1.

[[nodiscard]] QJsonObject profileObject(const Profile &profile);
/// That object as a file.
[[nodiscard]] QByteArray profileJson(const Profile &profile);
/// As XML; Invalid when a text holds a character that XML cannot hold.
[[nodiscard]] Result<QByteArray> profilePropertyList(const Profile &profile);

} // namespace varnel
