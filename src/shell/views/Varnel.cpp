#include "shell/views/Varnel.h"

#include "base/Logging.h"
#include "home/Workspace.h"
#include "settings/views/Quillet.h"
#include "shell/SharedObject.h"
#include "shell/views/PageContainer.h"
#include "shell/views/ShortcutsSheet.h"
#include "shell/views/TabView.h"
#include "ui/Dialogs.h"

#include <QShortcut>

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

constexpr int hiddenSettingsTab = 3;
constexpr int restoreBackupTab = 4;

} // namespace

Varnel::Varnel(const PageContext &pageContext, MainWindow &mainWindow, QList<PageRow> rows)
    : context(pageContext), window(mainWindow), pages(std::move(rows))
{
    context.pendingChanged = [this] {
        window.showPending(context.shared.quilletCommands().size(),
                           context.shared.loginItemCommands().size());
    };
    context.showBackup = [this](const QString &name) { showBackup(name); };
    context.shared.setBackupFileName(context.workspace.tools().createBackupFile());
}

void Varnel::awakeFromNib(const std::function<void()> &afterPage)
{
    connect(window.tabView(), &QTabWidget::currentChanged, this,
            &Varnel::tabViewShouldSelectTabViewItem);
    for (qsizetype place = 0; place < pages.size(); ++place) {
        if (place > 0 && afterPage)
            afterPage();
        build(pages.at(place));
    }
    window.tabView()->setCurrentIndex(0);
    connectSearch();
    connect(&window, &MainWindow::shortcutsRequested, this, &Varnel::showShortcuts);
}

void Varnel::showShortcuts()
{
    auto *sheet = new ShortcutsSheet(&window);
    connect(sheet, &QDialog::finished, sheet, &QObject::deleteLater);
    context.dialogs.showSheet(sheet);
}

void Varnel::connectSearch()
{
    // The page of the hidden settings has the same keys for itself while it is shown.
    auto *find = new QShortcut(QKeySequence::Find, &window);
    connect(find, &QShortcut::activated, this, [this] {
        showWelcomeTabView();
        if (const std::shared_ptr<Quillet> quillet = context.shared.quillet())
            quillet->startSearch();
    });
    connect(window.tabView(), &QTabWidget::currentChanged, find,
            [find](int index) { find->setEnabled(index != hiddenSettingsTab); });
}

void Varnel::build(const PageRow &row)
{
    if (row.make)
        getters[row.page] = row.make(context, *this);
    if (context.interfaceLoads(row.interfaceName))
        show(row.page);
    else
        varnelLog(lcShell, row.loadFailure);
}

void Varnel::show(PageId page)
{
    removeSubview(page);
    const PageContainer *frame = window.container(row(page).frameFrom);
    const QSize size = frame != nullptr ? frame->size() : QSize(0, 0);
    PageContainer *container = window.container(page);
    const PageGetter getter = getters.value(page);
    QWidget *view = getter ? getter() : nullptr;
    if (container != nullptr && view != nullptr)
        container->addSubview(view, size);
}

void Varnel::removeSubview(PageId page)
{
    PageContainer *container = window.container(page);
    if (container == nullptr || container->subviews().isEmpty())
        return;
    container->subviews().first()->setParent(nullptr);
    container->update();
}

const PageRow &Varnel::row(PageId page) const
{
    return *std::find_if(pages.begin(), pages.end(),
                         [page](const PageRow &candidate) { return candidate.page == page; });
}

bool Varnel::tabViewShouldSelectTabViewItem(int index)
{
    const QString label = window.tabView()->tabText(index);
    const auto &reload = row(PageId::RestoreBackup).reload;
    if (reload && label.compare(u"Restore Backup", Qt::CaseInsensitive) == 0)
        reload(context.shared);
    varnelLog(lcShell, label);
    return true;
}

void Varnel::openAnotherHome()
{
    emit window.openHomeRequested();
}

void Varnel::showWelcomeTabView()
{
    window.tabView()->setCurrentIndex(hiddenSettingsTab);
}

void Varnel::showBackup(const QString &name)
{
    window.tabView()->setCurrentIndex(restoreBackupTab);
    if (const auto &select = row(PageId::RestoreBackup).select)
        select(context.shared, name);
}

void Varnel::showWelcomeView()
{
    show(PageId::Welcome);
}

void Varnel::showSysInfoView()
{
    show(PageId::SysInfo);
}

void Varnel::showLoginItemsView()
{
    show(PageId::LoginItems);
}

void Varnel::showRestoreBackupView()
{
    show(PageId::RestoreBackup);
}

void Varnel::showQuilletView()
{
    show(PageId::Quillet);
}

void Varnel::removeWelcomeSubview()
{
    removeSubview(PageId::Welcome);
}

void Varnel::removeSysInfoSubview()
{
    removeSubview(PageId::SysInfo);
}

void Varnel::removeLoginItemsSubview()
{
    removeSubview(PageId::LoginItems);
}

void Varnel::removeRestoreBackupSubview()
{
    removeSubview(PageId::RestoreBackup);
}

void Varnel::removeQuilletSubview()
{
    removeSubview(PageId::Quillet);
}

} // namespace varnel
