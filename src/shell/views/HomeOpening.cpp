#include "shell/views/HomeOpening.h"

#include "base/Literals.h"
#include "platform/Desktop.h"
#include "platform/linux/LinuxDesktop.h"
#include "shell/RecentHomes.h"
#include "shell/views/MainWindow.h"
#include "ui/AlertSheet.h"
#include "ui/Icons.h"
#include "ui/QtDialogs.h"

#include <QAction>
#include <QGuiApplication>
#include <QMenu>

namespace varnel {

namespace {

constexpr int widestPath = 360;

/// A program that knows its home's name alone; a relative one would be another's.
void startWindow(Desktop &desktop, const QString &path)
{
    desktop.launch(QCoreApplication::applicationFilePath(), {}, {u"--home"_s, path});
}

/// As a menu shows it: no letter of a path is a key.
QString menuText(const QMenu &menu, const QString &path)
{
    return menu.fontMetrics()
        .elidedText(path, Qt::ElideMiddle, widestPath)
        .replace(u'&', u"&&"_s)
        .simplified();
}

bool hasDisplay()
{
    const QString platform = QGuiApplication::platformName();
    return platform != u"offscreen" && platform != u"minimal";
}

} // namespace

HomeOpening::HomeOpening(MainWindow &mainWindow, Dialogs &asking, Desktop &host,
                         const HomeFolder &edited)
    : window(mainWindow), dialogs(asking), desktop(host), home(edited)
{
    fill(window.menu());
}

void HomeOpening::fill(QMenu &menu)
{
    QAction *first = menu.actions().value(0);
    auto *chooser = new QAction(tr("Open Home Folder…"), &menu);
    chooser->setObjectName(QStringLiteral("openHomeAction"));
    chooser->setShortcut(QKeySequence::Open);
    menu.insertAction(first, chooser);
    window.addAction(chooser); // the keys work while the menu is closed, too
    end = menu.insertSeparator(first);
    connect(chooser, &QAction::triggered, this, &HomeOpening::choose);
    connect(&window, &MainWindow::openHomeRequested, this, &HomeOpening::choose);
    connect(&menu, &QMenu::aboutToShow, this, &HomeOpening::listRecent);
    if (!home.asOwner())
        return;
    chooser->setEnabled(false);
    chooser->setToolTip(
        tr("This window has the rights of %1, which another home is not opened with. "
           "Start Varnel again for it.")
            .arg(home.workedAs));
    menu.setToolTipsVisible(true);
}

void HomeOpening::listRecent()
{
    qDeleteAll(recent);
    recent.clear();
    if (home.asOwner())
        return;
    QMenu &menu = window.menu();
    for (const QString &path : RecentHomes::list()) {
        if (path == home.path)
            continue;
        auto *action = new QAction(menuText(menu, path), &menu);
        connect(action, &QAction::triggered, this, [this, path] { start(path); });
        menu.insertAction(end, action);
        recent.append(action);
    }
}

void HomeOpening::choose()
{
    if (home.asOwner())
        return;
    const QString last = RecentHomes::list().value(0, home.path);
    if (const auto chosen = dialogs.chooseFolder(&window, last.section(u'/', 0, -2)))
        start(*chosen);
}

void HomeOpening::start(const QString &path)
{
    startWindow(desktop, path);
}

bool askAboutFolder(const Error &error, bool isEmpty)
{
    if (!hasDisplay())
        return false;
    Alert alert {QObject::tr("Varnel can't open this folder as a home."),
                 error.text,
                 {QObject::tr("Close")}};
    if (isEmpty)
        alert.buttons.prepend(QObject::tr("Make a Home Folder"));
    int answer = SecondButton;
    AlertSheet sheet(nullptr, alert, [&answer](int code) { answer = code; });
    sheet.setWindowTitle(QStringLiteral("Varnel")); // alone on the screen, it tells whose it is
    sheet.setWindowIcon(Icons::icon(QStringLiteral("varnel")));
    sheet.exec();
    return isEmpty && answer == FirstButton;
}

void chooseHomeAndStart()
{
    const QString last = RecentHomes::list().value(0, u"/"_s);
    LinuxDesktop desktop {HomeFolder()};
    if (const auto chosen = QtDialogs().chooseFolder(nullptr, last.section(u'/', 0, -2)))
        startWindow(desktop, *chosen);
}

} // namespace varnel
