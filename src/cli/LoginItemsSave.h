#pragma once

#include "cli/ExitStatus.h"
#include "cli/HomeSession.h"
#include "loginitems/LoginItemChange.h"

#include <QList>
#include <QString>

namespace varnel::cli {

/// What came of one change of the login items.
struct LoginItemsReport {
    bool dryRun = false; ///< nothing was changed: the outcome is what it would be
    LoginItemChange change;
    enum class Outcome {
        Nothing, ///< it was so already
        Unknown, ///< no such item
        Unchanged, ///< the change failed, and the list is as it was
        Halfway, ///< the change failed, and the list is neither as it was nor as wanted
        Changed
    };
    Outcome outcome = Outcome::Nothing;
    QString backupFile; ///< null when no way back is in it
    QList<Error> failures;
    QString keptIn; ///< where a removed entry is kept; null when nothing is

    [[nodiscard]] ExitStatus status() const;
};

/// One save of one change, as the window would make it: its way back into a backup file of this
/// run, then the change. `path` is looked for as it is typed, then as an absolute path. What is so
/// already is left alone, without a backup file. A dry run is the same save, and names no backup
/// file.
///
/// An error means that nothing was changed: the home's folders can't be made.
[[nodiscard]] Result<LoginItemsReport> saveLoginItem(HomeSession &session,
                                                     LoginItemChange::Action action,
                                                     const QString &path,
                                                     StandardFolders::Missing folders);

} // namespace varnel::cli
