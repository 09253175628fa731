#pragma once

#include <QString>

namespace varnel {

/// One pending login-item change.
struct LoginItemChange {
    enum Action { Add = 0, Remove = 1, Enable = 2, Disable = 3 };

    int actionId = Add; ///< "action_id"
    QString path; ///< of the application
    bool isEnabled = false;

    bool operator==(const LoginItemChange &) const = default;
};

} // namespace varnel
