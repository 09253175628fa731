#pragma once

#include <QByteArray>

#include <optional>

#include <sys/types.h>

namespace varnel {

/// What the system's user database says of a user.
struct UserEntry {
    QByteArray name;
    QByteArray home;
    QByteArray fullName; ///< the first of the comma-separated fields beside the account
    gid_t group = 0;
};

/// None of a user that it does not know, or where it can't be asked.
[[nodiscard]] std::optional<UserEntry> userEntry(uid_t user);

/// Has what the system needs for asking loaded, so that copies of this process need not do so.
void prepareUserDatabase();

} // namespace varnel
