#pragma once

#include "backup/BackupFolder.h"
#include "ui/PageContext.h"
#include "ui/WidgetOwner.h"

namespace varnel {

class RestoreBackupView;

/// The restore page's controller.
class RestoreBackup {
public:
    explicit RestoreBackup(const PageContext &context);
    ~RestoreBackup();
    RestoreBackup(const RestoreBackup &) = delete;
    RestoreBackup &operator=(const RestoreBackup &) = delete;

    /// Null when its interface description does not load.
    [[nodiscard]] QWidget *getRestoreBackupView();

    /// Lists the backup files again.
    void reloadData();
    /// Selects that file alone, if it is listed.
    void selectFile(const QString &name);

private:
    WidgetOwner<RestoreBackupView> view;
};

/// The backup folder of the home that is edited; it is made when it is missing.
[[nodiscard]] BackupFolder backupFolderOf(const PageContext &context);

} // namespace varnel
