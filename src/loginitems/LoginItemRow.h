#pragma once

#include <QString>

namespace varnel {

/// One line of the login-items list.
struct LoginItemRow {
    QString name;
    QString path; ///< of the application
    bool enabled = false;
    QString icon; ///< an image file's path, or the name of an icon of the desktop's theme; may lead
                  ///< nowhere

    bool operator==(const LoginItemRow &) const = default;
};

} // namespace varnel
