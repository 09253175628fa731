#pragma once

#include "settings/SettingAccess.h"

#include <QString>

#include <optional>

namespace varnel {

/// Whom the setting views report a user's edits to, and who knows what became of them.
class ChangeReceiver {
public:
    virtual ~ChangeReceiver() = default;

    /// The new value of a setting; the latest counts.
    virtual void addDataToChangeDataList(int settingId, int value, const QString &extra) = 0;
    /// The value on disk before the change; the first counts.
    virtual void addDataToBackupDataList(int settingId, int value, const QString &extra) = 0;
    virtual void enableSaveButton() = 0;

    /// The reported value of a setting that waits to be saved; none when nothing waits.
    [[nodiscard]] virtual std::optional<SettingValue> pendingValue(int settingId) const = 0;

    /// Whether the setting's last change could not be saved.
    [[nodiscard]] virtual bool wasNotSaved(int /*settingId*/) const { return false; }
};

} // namespace varnel
