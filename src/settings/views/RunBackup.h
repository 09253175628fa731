#pragma once

#include "settings/PendingChanges.h"

namespace varnel {

class FileStore;
class SharedObject;

/// Keeps old values in the backup file of the run, whose name the shared state may learn only after
/// the pages are made.
class RunBackup : public OldValueKeeper {
public:
    RunBackup(SharedObject &shared, FileStore &files) : shared(shared), files(files) { }

    Result<void> addDataToBackupFile(const ChangeRecord &record) override;

private:
    SharedObject &shared;
    FileStore &files;
};

} // namespace varnel
