#pragma once

#include "backup/Playback.h"

namespace varnel {

class LoginItemsView;
class SharedObject;

/// Plays a backup back through the pages of the run: their writers, their flags, and their
/// controls, which read again after each row.
class SharedPlayback : public PlaybackTarget {
public:
    explicit SharedPlayback(SharedObject &shared) : shared(shared) { }

    Result<void> writeSetting(int settingId, int value, const QString &extra) override;
    Result<void> writeLoginItem(int actionId, const QString &path, bool enabled) override;
    void readLoginItems() override;

private:
    [[nodiscard]] LoginItemsView *loginItemsView() const;

    SharedObject &shared;
};

} // namespace varnel
