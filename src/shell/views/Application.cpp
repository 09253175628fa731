#include "shell/views/Application.h"

#include "platform/linux/EarlyFonts.h"
#include "platform/linux/LinuxHome.h"
#include "platform/linux/LinuxInstanceGuard.h"
#include "platform/linux/LinuxSessionLoginItems.h"
#include "platform/linux/LinuxStandardFolders.h"
#include "shell/SharedObject.h"
#include "shell/Tools.h"
#include "ui/Theme.h"

#include <QApplication>

#include <cstdio>

namespace varnel {

namespace {

enum ExitStatus { Done = 0, Usage = 2, NoHome = 3 };

void say(std::FILE *where, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), where);
}

int refuse(int status, const QString &why)
{
    say(stderr, u"varnel: " + why + u'\n');
    return status;
}

/// The home folder, with its standard folders where they may be made.
Result<HomeFolder> chooseHome(const StartOptions &options)
{
    Result<HomeFolder> home = options.home ? namedHome(*options.home) : ownHome();
    if (!home)
        return home;
    const auto missing = options.home && !options.newHome ? StandardFolders::Missing::NeedLibrary
                                                          : StandardFolders::Missing::Make;
    const Result<void> ensured = LinuxStandardFolders().ensure(home.value(), missing);
    // A home that can't be written to (a disk mounted to be read) can still be looked at.
    if (!ensured && ensured.error().code == ErrorCode::NotFound)
        return ensured.error();
    return home;
}

int openWindow(const HomeFolder &home, const QString &systemRoot)
{
    MainWindow *window = nullptr;
    LinuxInstanceGuard guard;
    const auto raise = [&window] {
        if (window != nullptr)
            window->raiseToUser();
    };
    if (guard.acquire(home.path, raise) == InstanceGuard::Outcome::AlreadyRunning)
        return Done;
    Application application(home, systemRoot);
    window = &application.window();
    window->show();
    return QApplication::exec();
}

} // namespace

Application::Application(const HomeFolder &home, const QString &systemRoot)
    : store(home), files(store), finderInfo(home), runner(home),
      host(home, systemRoot, store, folders), mainWindow(home),
      windowSize(mainWindow), context {home,    SharedObject::getSharedObject(),
                                       files,   finderInfo,
                                       folders, runner,
                                       dialogs, &host.ports()},
      controller(context, mainWindow), quitFlow(context, mainWindow, &VarnelAppDelegate::terminate)
{
    for (const QString &folder : Tools::foldersWrittenTo(home)
             + LinuxSessionLoginItems::foldersWrittenTo(home, Tools::supportFolderOf(home)))
        store.sweep(folder);
    bool closeAsked = false;
    mainWindow.setCloseGate([&closeAsked] {
        closeAsked = true;
        return false;
    });
    QObject::connect(&mainWindow, &MainWindow::quitRequested, &VarnelAppDelegate::terminate);
    delegate.setWindow(&mainWindow);
    // The first page is to be seen while the others are built. What a person does waits until all
    // are there; so does a request to close, which other programs may send.
    controller.awakeFromNib([this] {
        mainWindow.show();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    });
    mainWindow.setCloseGate([this] { return quitFlow.windowShouldClose(); });
    if (closeAsked)
        QMetaObject::invokeMethod(&mainWindow, &QWidget::close, Qt::QueuedConnection);
    terminationSignals.emplace(&VarnelAppDelegate::terminate);
    delegate.applicationDidFinishLaunching();
}

Application::~Application()
{
    windowSize.remember();
}

int runApplication(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    if (const StartOptions early = parseStartOptions(arguments); !early.answer.isEmpty()) {
        say(stdout, early.answer);
        return Done;
    }
    EarlyFonts fonts;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("varnel"));
    QApplication::setApplicationVersion(QStringLiteral(VARNEL_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("varnel"));
    // Without the toolkit's own options, which the application object has taken out.
    const StartOptions options = parseStartOptions(QApplication::arguments());
    if (!options.mistake.isEmpty())
        return refuse(Usage, options.mistake + u" Try varnel --help.");
    const Result<HomeFolder> home = chooseHome(options);
    if (!home)
        return refuse(NoHome, home.error().text);
    fonts.wait();
    Theme::apply(application);
    return openWindow(home.value(), options.systemRoot);
}

} // namespace varnel
