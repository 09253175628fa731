#include "backup/views/RestoreBackup.h"

#include "backup/views/RestoreBackupView.h"
#include "home/Workspace.h"
#include "settings/PreferenceFiles.h"

namespace varnel {

RestoreBackup::RestoreBackup(const PageContext &context)
{
    if (context.interfaceLoads(QStringLiteral("RestoreBackupView")))
        view = WidgetOwner<RestoreBackupView>(std::make_unique<RestoreBackupView>(context));
    else
        // A page that is not there still leaves the folder behind that the first save needs.
        (void)backupFolderOf(context);
}

RestoreBackup::~RestoreBackup() = default;

QWidget *RestoreBackup::getRestoreBackupView()
{
    return view.get();
}

void RestoreBackup::reloadData()
{
    if (view)
        view->reloadData();
}

void RestoreBackup::selectFile(const QString &name)
{
    if (view)
        view->selectFile(name);
}

BackupFolder backupFolderOf(const PageContext &context)
{
    static_cast<void>(context.workspace.tools().pathForBackupFolder());
    return BackupFolder(context.workspace);
}

} // namespace varnel
