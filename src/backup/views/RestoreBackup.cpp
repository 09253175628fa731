#include "backup/views/RestoreBackup.h"

#include "backup/views/RestoreBackupView.h"
#include "shell/Tools.h"

namespace varnel {

RestoreBackup::RestoreBackup(const PageContext &context)
{
    if (context.interfaceLoads(QStringLiteral("RestoreBackupView")))
        view = WidgetOwner<RestoreBackupView>(std::make_unique<RestoreBackupView>(context));
    else
        // A page that is not there still leaves the folder behind that the first save needs.
        (void)Tools(context.home, context.folders, context.runner).pathForBackupFolder();
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

} // namespace varnel
