#pragma once

#include "base/Result.h"
#include "settings/SavePlan.h"

#include <QList>
#include <QStringList>

#include <optional>

namespace varnel {

/// The pending changes of a run and the old values to back up, over lists that somebody else holds.
class PendingChanges {
public:
    /// The lists and flags are the caller's (the run's shared state) and outlive this object.
    PendingChanges(QList<ChangeRecord> &changes, QList<ChangeRecord> &backups, RestartFlags &flags,
                   SettingAccess &access, OldValueKeeper &keeper);

    /// One record for each setting, the latest, at the end of the list.
    void addDataToChangeDataList(int settingId, int value, const QString &extra);
    /// One record for each setting, the first.
    void addDataToBackupDataList(int settingId, int value, const QString &extra);

    /// The new value of a setting that waits to be saved; none when nothing waits.
    [[nodiscard]] std::optional<SettingValue> pendingValue(int settingId) const;

    /// Writes one value through the setting's writer; an unknown number does nothing.
    Result<void> writeData(int settingId, int value, const QString &extra);

    /// Location, short location, action text; empty for an unknown number.
    [[nodiscard]] QStringList actionString(int settingId, int value, const QString &extra) const;

    /// Backup rows in list order, then the writes, as SavePlan makes them, in list order; empties
    /// the pending list, keeps the backup list. Failures never stop it; they are returned in the
    /// order in which they happened.
    QList<SaveFailure> saveChanges();

    /// Empties the pending list only.
    void dropChanges();

private:
    QList<ChangeRecord> &changes;
    QList<ChangeRecord> &backups;
    RestartFlags &flags;
    SettingAccess &access;
    OldValueKeeper &keeper;
};

} // namespace varnel
