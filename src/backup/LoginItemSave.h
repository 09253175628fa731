#pragma once

#include "base/Result.h"
#include "home/Workspace.h"
#include "loginitems/LoginItemChange.h"
#include "loginitems/LoginItemRow.h"
#include "loginitems/LoginItemStanding.h"

#include <QList>
#include <QString>

#include <optional>

namespace varnel {

/// What came of one change of the login items.
struct LoginItemsReport {
    bool dryRun = false; ///< nothing was changed: the outcome is what it would be
    LoginItemsList list = LoginItemsList::Session; ///< the one that was meant
    LoginItemChange change;
    enum class Outcome {
        Nothing, ///< it was so already
        Unknown, ///< no such item
        Refused, ///< the list can't have it, and nothing was touched
        Unchanged, ///< the change failed, and the list is as it was
        Halfway, ///< the change failed, and the list is neither as it was nor as wanted
        Changed
    };
    Outcome outcome = Outcome::Nothing;
    QString backupFile; ///< null when no way back is in it
    QList<Error> failures;
    QString keptIn; ///< where a removed entry is kept; null when nothing is
};

/// Whether the item is where the change was to bring it.
[[nodiscard]] bool isReached(const QList<LoginItemRow> &rows, const LoginItemChange &change);

/// What is to become of which application.
struct LoginItemWish {
    LoginItemChange::Action action = LoginItemChange::Add;
    QString path; ///< as it was typed: it may be listed in a form that nobody would type
    QString absolutePath; ///< what is meant where nothing is listed under the other
};

/// One save of one change: its way back into the backup file of the run, then the change. What is
/// so already is left alone, without a backup file. A dry run tells what a save would do, and
/// touches nothing. Without a list, the home's usual one is meant.
///
/// An error means that nothing was changed: the home's folders can't be made.
[[nodiscard]] Result<LoginItemsReport> saveLoginItem(Workspace &workspace,
                                                     const LoginItemWish &wish,
                                                     const Workspace::Terms &terms,
                                                     std::optional<LoginItemsList> list = {});

} // namespace varnel
