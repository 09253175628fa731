#include "shell/views/MainWindow.h"

#include "ui/Icons.h"
#include "ui/Theme.h"
#include "ui_MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenu>

namespace varnel {

namespace {

void inkOnBand(QWidget *text)
{
    QPalette palette = text->palette();
    palette.setColor(QPalette::WindowText, Theme::bandInk(palette));
    text->setPalette(palette);
}

} // namespace

MainWindow::MainWindow(const HomeFolder &home) : ui(std::make_unique<Ui::MainWindow>())
{
    ui->setupUi(this);
    setWindowIcon(Icons::icon(QStringLiteral("varnel")));
    dressBand(home);
    dressTabs();
    makeMenu();
    setMinimumSize(Theme::windowMinimumWidth, Theme::windowMinimumHeight);
    resize(Theme::windowWidth, Theme::windowHeight);
    ui->tabView->setFocus(); // the keyboard starts at the pages, not at the menu above them
}

MainWindow::~MainWindow() = default;

void MainWindow::dressBand(const HomeFolder &home)
{
    ui->bandIcon->setPixmap(
        windowIcon().pixmap(QSize(Theme::bandIconSize, Theme::bandIconSize), devicePixelRatioF()));
    Theme::setTextRole(ui->bandName, Theme::TextRole::BandName);
    for (QWidget *small :
         {static_cast<QWidget *>(ui->bandSubtitle), static_cast<QWidget *>(ui->editedHome)})
        small->setFont(Theme::font(Theme::TextRole::Help, font()));
    for (QWidget *text :
         {static_cast<QWidget *>(ui->bandName), static_cast<QWidget *>(ui->bandSubtitle),
          static_cast<QWidget *>(ui->editedHome)})
        inkOnBand(text);
    ui->editedHome->setText(tr("Editing ") + home.path
                            + (home.asOwner() ? tr(" as ") + home.workedAs : QString()));
    if (home.asOwner())
        ui->editedHome->setLastingTip(
            tr("%1\nThis window has the rights of %2, and no others. It does not remember its "
               "size, "
               "opens nothing on this desktop (it offers paths for copying), and lists the "
               "applications of %2 only.")
                .arg(ui->editedHome->text(), home.workedAs));
}

void MainWindow::dressTabs()
{
    const QStringList icons {QStringLiteral("Welcome"), QStringLiteral("SystemInformation"),
                             QStringLiteral("LoginItems"), QStringLiteral("HiddenSettings"),
                             QStringLiteral("RestoreBackup")};
    for (int i = 0; i < ui->tabView->count(); ++i)
        ui->tabView->setTabIcon(i, Icons::icon(icons.value(i)));
}

void MainWindow::makeMenu()
{
    auto *menu = new QMenu(this);
    for (int i = 0; i < ui->tabView->count(); ++i) {
        QAction *page =
            menu->addAction(ui->tabView->tabText(i), QKeySequence(Qt::CTRL | (Qt::Key_1 + i)));
        connect(page, &QAction::triggered, this, [this, i] { goToPage(i); });
        addAction(page);
    }
    menu->addSeparator();
    QAction *keys = menu->addAction(tr("Keyboard Shortcuts"), QKeySequence::HelpContents);
    connect(keys, &QAction::triggered, this, &MainWindow::shortcutsRequested);
    addAction(keys);
    quitAction = menu->addAction(tr("Quit Varnel"), QKeySequence(Qt::CTRL | Qt::Key_Q));
    quitAction->setObjectName(QStringLiteral("quitAction"));
    connect(quitAction, &QAction::triggered, this, &MainWindow::quitRequested);
    addAction(quitAction); // the keys work while the menu is closed, too
    ui->menuButton->setMenu(menu);
}

void MainWindow::goToPage(int index)
{
    if (index == ui->tabView->currentIndex())
        return;
    ui->tabView->setCurrentIndex(index);
    const QWidget *page = ui->tabView->currentWidget();
    for (QWidget *next = page->nextInFocusChain(); next != page; next = next->nextInFocusChain()) {
        const bool stops = (next->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
        if (stops && page->isAncestorOf(next) && next->isVisible() && next->isEnabled()) {
            next->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}

void MainWindow::showPending(qsizetype settings, qsizetype loginItems)
{
    const qsizetype count = settings + loginItems;
    ui->tabView->setPending(ui->tabView->indexOf(ui->quilletView), settings > 0);
    ui->tabView->setPending(ui->tabView->indexOf(ui->loginItemsView), loginItems > 0);
    setWindowModified(count > 0);
    if (count == 0)
        quitAction->setText(tr("Quit Varnel"));
    else
        quitAction->setText(count == 1 ? tr("Quit Without Saving 1 Change")
                                       : tr("Quit Without Saving %1 Changes").arg(count));
}

TabView *MainWindow::tabView() const
{
    return ui->tabView;
}

PageContainer *MainWindow::container(PageId page) const
{
    switch (page) {
    case PageId::Welcome:
        return ui->welcomeView;
    case PageId::SysInfo:
        return ui->sysInfoView;
    case PageId::LoginItems:
        return ui->loginItemsView;
    case PageId::RestoreBackup:
        return ui->restoreBackupView;
    case PageId::Quillet:
        return ui->quilletView;
    }
    return nullptr;
}

QMenu &MainWindow::menu() const
{
    return *ui->menuButton->menu();
}

void MainWindow::setCloseGate(std::function<bool()> gate)
{
    windowShouldClose = std::move(gate);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(!windowShouldClose || windowShouldClose());
    if (!event->isAccepted() && isMinimized())
        raiseToUser(); // what is asked already is hidden with the window
}

void MainWindow::raiseToUser()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    // While a sheet is up the window takes no input: the keyboard belongs to the sheet.
    QWidget *sheet = QApplication::activeModalWidget();
    QWidget *front = sheet != nullptr ? sheet : this;
    front->raise();
    front->activateWindow();
}

} // namespace varnel
