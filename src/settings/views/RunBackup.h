#pragma once

#include "settings/PendingChanges.h"

namespace varnel {

class SharedObject;

/// Keeps old values in the backup file of the run, whose name the shared state may learn only after
/// the pages are made.
class RunBackup : public OldValueKeeper {
public:
    explicit RunBackup(SharedObject &shared) : shared(shared) { }

    Result<void> addDataToBackupFile(const ChangeRecord &record) override;

private:
    SharedObject &shared;
};

} // namespace varnel
