#pragma once

#include "backup/Playback.h"
#include "loginitems/LoginItemsAccess.h"

#include <optional>

namespace varnel {

class LoginItemsView;
class SharedObject;

/// Plays a backup back through the pages of the run: their writers and their flags. After each row
/// is told what reading again would tell; the controls read once, at the end.
class SharedPlayback : public PlaybackTarget {
public:
    explicit SharedPlayback(SharedObject &shared) : shared(shared) { }

    Result<void> writeSetting(int settingId, int value, const QString &extra) override;
    Result<void> writeLoginItem(int actionId, const QString &path, bool enabled) override;
    void readLoginItems() override;
    void finish() override;

private:
    [[nodiscard]] LoginItemsView *loginItemsView() const;

    SharedObject &shared;
    std::optional<LoginItemsAccess::Playback> loginItems;
    bool settingsChanged = false;
};

} // namespace varnel
