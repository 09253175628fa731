#include "shell/views/PageTable.h"

#include "shell/Tools.h"

namespace varnel {

namespace {

// The folders of the program come into being with the pages that use them, in the order in which
// the pages are built: the support folder first, or the backup folder could not be made.

PageGetter makeSupportFolder(const PageContext &context, Varnel &)
{
    (void)Tools(context.home, context.folders, context.runner).pathForSupportFolder();
    return {};
}

PageGetter makeBackupFolder(const PageContext &context, Varnel &)
{
    (void)Tools(context.home, context.folders, context.runner).pathForBackupFolder();
    return {};
}

PageRow row(PageId page, const QString &interfaceName, const QString &loadFailure)
{
    return {page, interfaceName, loadFailure, page, {}, {}};
}

} // namespace

QList<PageRow> pageTable()
{
    PageRow welcome = row(PageId::Welcome, QStringLiteral("WelcomeView"),
                          QStringLiteral("Error loading Nib for WelcomeView!"));
    welcome.frameFrom = PageId::SysInfo;
    const PageRow sysInfo = row(PageId::SysInfo, QStringLiteral("SysInfoView"),
                                QStringLiteral("Error loading Nib for SysInfoView!"));
    PageRow loginItems = row(PageId::LoginItems, QStringLiteral("LoginItemsView"),
                             QStringLiteral("Error loading Nib for LoginItems!"));
    loginItems.make = makeSupportFolder;
    PageRow restoreBackup = row(PageId::RestoreBackup, QStringLiteral("RestoreBackupView"),
                                QStringLiteral("Error loading Nib for RestoreBackup!"));
    restoreBackup.make = makeBackupFolder;
    const PageRow quillet = row(PageId::Quillet, QStringLiteral("QuilletView"),
                                QStringLiteral("Error loading Nib for Quillet!"));
    return {welcome, sysInfo, loginItems, restoreBackup, quillet};
}

} // namespace varnel
