#include "shell/views/PageTable.h"

#include "backup/views/RestoreBackup.h"
#include "loginitems/views/LoginItems.h"
#include "settings/views/Quillet.h"
#include "shell/views/Welcome.h"
#include "sysinfo/views/SysInfo.h"
#include "sysinfo/views/SysInfoView.h"

#include <utility>

namespace varnel {

namespace {

// The folders of the program come into being with the pages that use them, in the order in which
// the pages are built: the support folder first, or the backup folder could not be made.

PageGetter makeWelcome(const PageContext &context, Varnel &controller)
{
    PageGetter getter =
        makePage<Welcome, &SharedObject::setWelcome, &Welcome::getWelcomeView>(context, controller);
    context.shared.welcome()->setParentView(&controller);
    return getter;
}

void reloadBackups(SharedObject &shared)
{
    if (const std::shared_ptr<RestoreBackup> page = shared.restoreBackup())
        page->reloadData();
}

void selectBackup(SharedObject &shared, const QString &name)
{
    if (const std::shared_ptr<RestoreBackup> page = shared.restoreBackup())
        page->selectFile(name);
}

PageRow row(PageId page, const QString &interfaceName, const QString &loadFailure,
            decltype(PageRow::make) make)
{
    return {page, interfaceName, loadFailure, page, std::move(make), {}};
}

} // namespace

QList<PageRow> pageTable()
{
    QList<PageRow> table {
        row(PageId::Welcome, QStringLiteral("WelcomeView"),
            QStringLiteral("Error loading Nib for WelcomeView!"), makeWelcome),
        row(PageId::SysInfo, QStringLiteral("SysInfoView"),
            QStringLiteral("Error loading Nib for SysInfoView!"),
            makePage<SysInfo, &SharedObject::setSysInfo, &SysInfo::getCustomView>),
        row(PageId::LoginItems, QStringLiteral("LoginItemsView"),
            QStringLiteral("Error loading Nib for LoginItems!"),
            makePage<LoginItems, &SharedObject::setLoginItems, &LoginItems::getLoginItemsView>),
        row(PageId::RestoreBackup, QStringLiteral("RestoreBackupView"),
            QStringLiteral("Error loading Nib for RestoreBackup!"),
            makePage<RestoreBackup, &SharedObject::setRestoreBackup,
                     &RestoreBackup::getRestoreBackupView>),
        row(PageId::Quillet, QStringLiteral("QuilletView"),
            QStringLiteral("Error loading Nib for Quillet!"),
            makePage<Quillet, &SharedObject::setQuillet, &Quillet::getQuilletView>),
    };
    table.first().frameFrom = PageId::SysInfo;
    table[3].reload = reloadBackups;
    table[3].select = selectBackup;
    return table;
}

} // namespace varnel
