#include "settings/views/RunBackup.h"

#include "backup/BackupWriter.h"
#include "shell/SharedObject.h"

namespace varnel {

Result<void> RunBackup::addDataToBackupFile(const ChangeRecord &record)
{
    return BackupWriter(shared.backupFileName(), files).addDataToBackupFile(record);
}

} // namespace varnel
