#pragma once

#include "backup/BackupRow.h"
#include "backup/KeptBackup.h"
#include "home/Workspace.h"
#include "settings/SavePlan.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace varnel {

/// What a restore did, or would do.
struct RestoreReport {
    QList<SettingChange> changes; ///< settings whose files differ from before
    QHash<int, QString> exact; ///< by number: what those get that come back exactly
    QList<BackupRow> loginItems; ///< login-item rows that were played
    QList<int> skipped; ///< numbers of rows that no setting has
    // Playing stops at the first failure, so there is one at most in both.
    QList<SaveFailure> settingFailures;
    QStringList itemFailures; ///< login items that could not be changed
    QStringList filesWithoutLock; ///< changed while another run was changing them
    RestartFlags restart;

    [[nodiscard]] bool complete() const
    {
        return settingFailures.isEmpty() && itemFailures.isEmpty();
    }
};

/// What was asked for: the whole backup, or certain rows alone, be they all that it has.
enum class RestoredRows { All, Named };

/// Plays rows of a backup file back through the writers of a save, without rows in a backup file;
/// what is kept beside them goes before what they tell. What has no row comes back with All. An
/// error means that nothing was changed: the home's folders can't be made.
[[nodiscard]] Result<RestoreReport> restoreRows(Workspace &workspace, SettingAccess &access,
                                                const QList<BackupRow> &rows, RestoredRows which,
                                                const KeptBackup &kept,
                                                const Workspace::Terms &terms);

} // namespace varnel
