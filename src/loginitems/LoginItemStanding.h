#pragma once

#include "platform/SessionLoginItems.h"

#include <QList>
#include <QStringList>

namespace varnel {

/// Whose list it is: that of the session on this machine, or that of the Mac account that the home
/// belongs to.
enum class LoginItemsList { Session, Account };

/// One row of the store of disabled items, as it can be put back.
struct StoredRow {
    qint64 place = 0; ///< rows are read in this order
    QStringList columns;
    QStringList values; ///< as a statement writes them

    bool operator==(const StoredRow &) const = default;
};

/// How one login item stands in both places.
struct LoginItemStanding {
    QList<SessionEntry> entries;
    QList<StoredRow> rows;

    bool operator==(const LoginItemStanding &) const = default;
};

/// The same with what it shares with the others of its list.
struct LoginItemsState {
    LoginItemStanding item;
    QStringList order; ///< of the session's list
    bool hasStore = false; ///< there is a file
    bool isSure = true; ///< false: something could not be read
    LoginItemsList list = LoginItemsList::Session;
};

} // namespace varnel
