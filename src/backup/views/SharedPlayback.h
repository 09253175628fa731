#pragma once

#include "backup/LoginItemsPlayback.h"
#include "backup/Playback.h"
#include "backup/Restore.h"
#include "backup/SettingsPlayback.h"

#include <optional>

namespace varnel {

class LoginItemsView;
class SharedObject;

/// Plays a backup back through the pages of the run: their writers, their flags, and their
/// controls. The settings' read again after each row, from what was played so far, for what they
/// log and which of them keep what they show depends on every state in between; the list of login
/// items is shown at the end.
class SharedPlayback : public PlaybackTarget {
public:
    /// What is kept beside the rows outlives this object.
    SharedPlayback(SharedObject &shared, const KeptBackup &kept) : shared(shared), kept(kept) { }

    Result<void> writeSetting(int settingId, int value, const QString &extra) override;
    Result<void> settleSettings() override;
    Result<void> writeLoginItem(int actionId, const QString &path, bool enabled) override;
    void readLoginItems() override;
    Result<void> writeWithoutRows() override;
    Result<void> finish() override;

    /// What was done, once it is finished.
    [[nodiscard]] const RestoreReport &report() const { return done; }

private:
    [[nodiscard]] LoginItemsView *loginItemsView() const;
    [[nodiscard]] LoginItemsPlayback *loginItemsPlayback();
    [[nodiscard]] Result<void> writeItemsWithoutRows();
    [[nodiscard]] SettingsPlayback *settingsPlayback();
    Result<void> told(Result<void> result);

    SharedObject &shared;
    const KeptBackup &kept;
    std::optional<SettingsPlayback> settings;
    std::optional<LoginItemsPlayback> loginItems;
    RestoreReport done;
};

} // namespace varnel
