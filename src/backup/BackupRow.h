#pragma once

#include <QString>

namespace varnel {

/// One row of a backup file, as text. The number 250 marks a login-item row, any other a
/// hidden-setting row.
struct BackupRow {
    static constexpr int loginItemId = 250;

    int id = 0;
    QString value1;
    QString value2;
    QString value3;

    [[nodiscard]] bool isLoginItem() const { return id == loginItemId; }

    /// What the row is about: a file has one of each.
    [[nodiscard]] QString subject() const;

    // A hidden-setting row: the value that its writer takes back.
    [[nodiscard]] int settingAction() const;
    [[nodiscard]] QString extraData() const { return value2; }

    // A login-item row: the inverse change.
    [[nodiscard]] QString loginItemPath() const { return value1; }
    [[nodiscard]] int loginItemAction() const;
    [[nodiscard]] int enabledFlag() const;

    bool operator==(const BackupRow &) const = default;
};

} // namespace varnel
