#pragma once

#include "profiles/Profile.h"
#include "profiles/Translation.h"

#include <QDateTime>

#include <optional>

namespace varnel {

/// The profile as a configuration profile, which a device manager delivers to live Macs: a payload
/// of preferences for each domain. The same settings get the same identifiers.
///
/// Without a time the manager keeps the values as they are ("forced"); with one it sets them once,
/// and again only when the profile comes with a later time.
///
/// Left out are settings that are no preference, keys inside a dictionary (the whole dictionary
/// would be replaced), and defaults (no payload removes a key). Invalid when a text holds a
/// character that XML cannot hold.
[[nodiscard]] Result<Translation> configurationProfile(const Profile &profile,
                                                       const std::optional<QDateTime> &onceSince);

} // namespace varnel
