#pragma once

#include <QString>

namespace varnel {

/// The home folder that is worked on: one's own, or a folder named by the user (a mounted disk's, a
/// template's).
struct HomeFolder {
    QString path; ///< absolute, no slash at the end
    bool own = true; ///< taken from the session, not from an argument

    [[nodiscard]] QString preferencesDirectory() const { return path + u"/Library/Preferences"; }
};

} // namespace varnel
