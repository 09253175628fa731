#pragma once

#include "home/Workspace.h"
#include "settings/SavePlan.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace varnel {

/// What came of one save of settings.
struct SaveReport {
    bool dryRun = false; ///< nothing was written: the rest is what would be
    QString backupFile; ///< null when no old value is in it
    QList<SettingChange> changes;
    QList<SaveFailure> failures;
    QStringList filesWithoutLock; ///< changed while another run was changing them
    /// Settings whose dictionary or file is not there, and is not made by a save.
    QList<const SettingRow *> notMade;
    QStringList notTakenOver; ///< as SavePlan tells
    RestartFlags restart;
};

/// One save: the old values into the backup file of the run, then the new ones. Of several values
/// for one setting the last counts. What would leave a file as it is is not written and gets no
/// row; when that is all, no backup file is made. A dry run tells what a save would do, and touches
/// nothing.
///
/// An error means that nothing was changed: the home's folders can't be made, or a file can't be
/// read at all. A file that is no property list is left alone and told among the failures.
[[nodiscard]] Result<SaveReport> saveSettings(Workspace &workspace, SettingAccess &access,
                                              const QList<SettingChange> &wanted,
                                              const Workspace::Terms &terms);

} // namespace varnel
