#pragma once

#include "loginitems/LoginItemsAccess.h"

#include <QList>

namespace varnel {

/// What went wrong with one change of a save.
struct LoginItemFailure {
    LoginItemChange change;
    bool isWayBack = false; ///< the change was made, as far as this failure goes
    Error error;
};

/// The pending login-item changes of a run, over a list that somebody else holds.
class PendingLoginItems {
public:
    PendingLoginItems(QList<LoginItemChange> &changes, LoginItemsAccess &access);

    /// One change for each path, the latest, at the end of the list.
    void addDataToChangeDataList(int actionId, const QString &path, bool enabled);

    /// Makes the changes in list order, each with its backup row, and empties the list. Failures
    /// stop nothing; they are returned in order, that of a change before that of its way back.
    QList<LoginItemFailure> saveChanges();

    void dropChanges();

private:
    QList<LoginItemChange> &changes;
    LoginItemsAccess &access;
};

/// "Add "…"" and its like; "Error" for an unknown action.
[[nodiscard]] QString loginItemActionString(int actionId, const QString &path);

} // namespace varnel
