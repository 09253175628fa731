#pragma once

#include "cli/ExitStatus.h"
#include "cli/HomeSession.h"
#include "settings/PendingChanges.h"
#include "settings/WantedValue.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace varnel {
class Rehearsal;
}

namespace varnel::cli {

/// A setting that a save has written.
struct SavedChange {
    const SettingRow *row = nullptr;
    SettingValue oldValue;
    SettingValue newValue;
};

/// What came of one save.
struct SaveReport {
    bool dryRun = false; ///< nothing was written: the rest is what would be
    QString backupFile; ///< null when no old value is in it
    QList<SavedChange> changes;
    QList<SaveFailure> failures;
    QStringList filesWithoutLock; ///< changed while another run was changing them
    /// Settings whose dictionary or file is not there, and is not made by a save.
    QList<const SettingRow *> notMade;
    RestartFlags restart;

    /// Failed only when nothing was written and no file was met that can't be loaded.
    [[nodiscard]] ExitStatus status() const;
};

/// Whether the trials so far have left a setting with that value.
[[nodiscard]] bool isThere(const Rehearsal &rehearsal, const WantedValue &wanted);

/// What to say of a setting that a save leaves as it is, since it would have to make what only the
/// application makes.
[[nodiscard]] QString notMadeHere(const SettingRow &row);

/// One save, as the window would make it: the old values into a backup file of this run, then the
/// new ones. Of several values for one setting the last counts. What would leave a file as it is
/// is not written and gets no row; when that is all, no backup file is made. A dry run is the same
/// save, and names no backup file.
///
/// An error means that nothing was changed: the home's folders can't be made, or a file can't be
/// read at all. A file that is no property list is left alone and told among the failures.
[[nodiscard]] Result<SaveReport> saveSettings(HomeSession &session,
                                              const QList<WantedValue> &wanted,
                                              StandardFolders::Missing folders);

} // namespace varnel::cli
