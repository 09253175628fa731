#pragma once

#include <QString>

namespace varnel {

/// Whom the setting views report a user's edits to.
class ChangeReceiver {
public:
    virtual ~ChangeReceiver() = default;

    /// The new value of a setting; the latest counts.
    virtual void addDataToChangeDataList(int settingId, int value, const QString &extra) = 0;
    /// The value on disk before the change; the first counts.
    virtual void addDataToBackupDataList(int settingId, int value, const QString &extra) = 0;
    virtual void enableSaveButton() = 0;
};

} // namespace varnel
