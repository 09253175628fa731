#include "shell/views/PageTable.h"

#include "settings/views/Quillet.h"
#include "shell/Tools.h"
#include "sysinfo/views/SysInfo.h"
#include "sysinfo/views/SysInfoView.h"

#include <utility>

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
            QStringLiteral("Error loading Nib for WelcomeView!"), {}),
        row(PageId::SysInfo, QStringLiteral("SysInfoView"),
            QStringLiteral("Error loading Nib for SysInfoView!"),
            makePage<SysInfo, &SharedObject::setSysInfo, &SysInfo::getCustomView>),
        row(PageId::LoginItems, QStringLiteral("LoginItemsView"),
            QStringLiteral("Error loading Nib for LoginItems!"), makeSupportFolder),
        row(PageId::RestoreBackup, QStringLiteral("RestoreBackupView"),
            QStringLiteral("Error loading Nib for RestoreBackup!"), makeBackupFolder),
        row(PageId::Quillet, QStringLiteral("QuilletView"),
            QStringLiteral("Error loading Nib for Quillet!"),
            makePage<Quillet, &SharedObject::setQuillet, &Quillet::getQuilletView>),
    };
    table.first().frameFrom = PageId::SysInfo;
    return table;
}

} // namespace varnel
