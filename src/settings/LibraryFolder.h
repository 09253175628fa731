#pragma once

#include "platform/FinderInfo.h"
#include "settings/SettingReading.h"

#include <QString>

namespace varnel {

/// What the setting of the Library folder shows for that folder's Finder information. One whose
/// information can't be read counts as hidden.
[[nodiscard]] SettingReading libraryReading(const FinderInfo::Reading &reading);

/// The information with the invisible flag set or cleared, and nothing else touched.
[[nodiscard]] FinderInfoBytes withInvisibility(FinderInfoBytes bytes, bool invisible);

/// Whether the Finder hides a file or folder. One whose Finder information can't be read counts as
/// hidden.
[[nodiscard]] bool isInvisible(const FinderInfo &finderInfo, const QString &path);

/// Sets or clears the invisible flag and touches nothing else. 0, or the error number of the read
/// (nothing is written then) or of the write. A flag that already is so is not written: where none
/// was ever set, there would now be one.
[[nodiscard]] int setFileInvisibility(FinderInfo &finderInfo, const QString &path, bool invisible);

} // namespace varnel
