#pragma once

#include "platform/DryRunFileStore.h"
#include "platform/DryRunFinderInfo.h"
#include "settings/PreferenceFiles.h"
#include "settings/SettingAccess.h"

#include <QList>

namespace varnel {

/// Writes that are tried out before they are made: whether each would change anything, and which
/// files. Nothing is touched.
class Rehearsal {
public:
    /// Everything outlives this object; store and info are only read. Drafts (where given) spare
    /// the write that follows the work of its trial.
    Rehearsal(HomeFolder home, const FileStore &store, const FinderInfo &finderInfo,
              EditDrafts *drafts = nullptr);

    /// What is read before anything is tried. A file that can't be read then can't be written by a
    /// later wouldChange() either, so no change is ever begun with an old value that was not seen.
    [[nodiscard]] QList<SettingReading> read(const QList<const SettingRow *> &rows) const;

    /// Whether writing the value, after the writes that were tried before it, would change
    /// anything; the error that the write would meet (Unloadable and what reading meets).
    Result<bool> wouldChange(const SettingRow &row, const SettingValue &value);

    /// What would differ from what it is: preference files, then the folder of a flag.
    [[nodiscard]] QStringList changedPaths() const;

private:
    DryRunFileStore store;
    DryRunFinderInfo finderInfo;
    PreferenceFiles files;
    SettingAccess access;
    RestartFlags flags;
};

} // namespace varnel
