#pragma once

#include "base/HomeFolder.h"
#include "cli/SettingReport.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFinderInfo.h"
#include "settings/PreferenceFiles.h"
#include "settings/SettingAccess.h"

namespace varnel::cli {

/// The core, joined to the host for one home folder.
class HomeSession {
public:
    explicit HomeSession(const HomeFolder &home);

    HomeSession(const HomeSession &) = delete;
    HomeSession &operator=(const HomeSession &) = delete;

    [[nodiscard]] const HomeFolder &home() const { return access.home(); }
    [[nodiscard]] SettingReport report(const SettingRow &row) const
    {
        return {&row, access.read(row)};
    }

    LinuxFileStore store;
    LinuxFinderInfo finderInfo;
    PreferenceFiles files;
    SettingAccess access;
};

} // namespace varnel::cli
