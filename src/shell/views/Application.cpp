#include "shell/views/Application.h"

#include "base/Literals.h"
#include "platform/linux/CallersFolders.h"
#include "platform/linux/EarlyFonts.h"
#include "platform/linux/HomeOwner.h"
#include "platform/linux/LinuxHome.h"
#include "platform/linux/LinuxInstanceGuard.h"
#include "platform/linux/LinuxStandardFolders.h"
#include "platform/linux/LinuxTerminal.h"
#include "platform/linux/X11ClientList.h"
#include "shell/SharedObject.h"
#include "shell/Tools.h"
#include "shell/views/AccessibilityBus.h"
#include "ui/Theme.h"

#include <QApplication>

#include <cstdio>
#include <optional>
#include <utility>

namespace varnel {

namespace {

constexpr int standardOutput = 1;

enum ExitStatus { Done = 0, Usage = 2, Failed = 3 };

int refuse(int status, const QString &why)
{
    std::fputs((u"varnel: " + why + u'\n').toLocal8Bit().constData(), stderr);
    return status;
}

int answer(const QString &text)
{
    const Result<void> written = LinuxTerminal::writeAll(standardOutput, text.toLocal8Bit());
    return written ? Done : refuse(Failed, u"standard output: " + written.error().text);
}

Result<HomeFolder> chosenHome(const StartOptions &options)
{
    return options.home ? namedHome(*options.home) : ownHome();
}

bool becomesOwner(const Result<HomeFolder> &home)
{
    const Result<HomeOwner> owner = home ? HomeOwner::of(home.value()) : home.error();
    return owner && owner.value().isAnother();
}

/// The home as it is worked on from here: with its owner's rights where they are not the caller's,
/// and with its standard folders where they may be made.
Result<HomeFolder> takeUp(const HomeFolder &chosen, const StartOptions &options)
{
    if (becomesOwner(chosen)) {
        connectToAccessibilityBus();
        keepDisplayConnection();
    }
    Result<HomeFolder> home = workAsOwner(chosen);
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

int openWindow(const HomeFolder &chosen, const StartOptions &options)
{
    MainWindow *window = nullptr;
    LinuxInstanceGuard guard;
    const auto raise = [&window] {
        if (window != nullptr)
            window->raiseToUser();
    };
    // The lock lies in a folder of the caller's.
    if (guard.acquire(chosen.path, raise) == InstanceGuard::Outcome::AlreadyRunning)
        return Done;
    // Opened with the caller's rights; what lies on it is read with those of the home's owner.
    std::optional<LinuxSystemDisk> disk;
    if (options.systemRoot)
        disk.emplace(*options.systemRoot);
    const Result<HomeFolder> home = takeUp(chosen, options);
    if (!home)
        return refuse(Failed, home.error().text);
    if (!disk)
        disk.emplace(home.value());
    Application application(home.value(), *std::move(disk));
    window = &application.window();
    window->show();
    return QApplication::exec();
}

} // namespace

Application::Application(const HomeFolder &home, LinuxSystemDisk systemDisk)
    : homePorts(home, Tools::supportFolderOf(home)), workspace(home, homePorts.ports()),
      files(workspace.files()), host(workspace, std::move(systemDisk)), mainWindow(home),
      windowSize(mainWindow, home.asOwner() ? WindowSize::Memory::None : WindowSize::Memory::Kept),
      backup(workspace, [] { return SharedObject::getSharedObject().backupFileName(); }),
      context {workspace, SharedObject::getSharedObject(), files, dialogs, backup, &host.ports()},
      controller(context, mainWindow), quitFlow(context, mainWindow, &VarnelAppDelegate::terminate)
{
    workspace.sweep();
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
    LinuxTerminal::prepareStreams();
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
        // Read otherwise than typed, it could name another's home.
        if (i > 0 && arguments.last().toLocal8Bit() != argv[i])
            return refuse(Usage, u"an argument is not UTF-8 text"_s);
    }
    const StartOptions early = parseStartOptions(arguments);
    if (!early.answer.isEmpty())
        return answer(early.answer);
    // Before there is a second thread; the rights themselves go once the display is there.
    const Result<HomeFolder> earlyHome = chosenHome(early);
    const bool renounced = becomesOwner(earlyHome) && HomeOwner::renounce() == 0;
    leaveFoldersOfOthers();
    EarlyFonts fonts;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("varnel"));
    QApplication::setApplicationVersion(QStringLiteral(VARNEL_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("varnel"));
    // Without the toolkit's own options, which the application object has taken out.
    const StartOptions options = parseStartOptions(QApplication::arguments());
    if (!options.mistake.isEmpty())
        return refuse(Usage, options.mistake + u" Try varnel --help.");
    const Result<HomeFolder> home = options.home == early.home ? earlyHome : chosenHome(options);
    if (!home)
        return refuse(Failed, home.error().text);
    if (becomesOwner(home) && !renounced)
        return refuse(Failed, home.value().path + u": can't be worked on as its owner");
    fonts.wait();
    Theme::apply(application);
    return openWindow(home.value(), options);
}

} // namespace varnel
