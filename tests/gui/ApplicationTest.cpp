#include "shell/views/Application.h"
#include "shell/SharedObject.h"
#include "shell/StartOptions.h"
#include "shell/views/VarnelAppDelegate.h"
#include "support/gui/WindowFixture.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

StartOptions parsed(const QStringList &arguments)
{
    return parseStartOptions(QStringList(QStringLiteral("varnel")) + arguments);
}

/// A window that refuses to be closed.
struct StubbornWindow : QWidget {
    void closeEvent(QCloseEvent *event) override { event->ignore(); }
};

} // namespace

TEST(StartOptions, NothingMeansOnesOwnHome)
{
    const StartOptions options = parsed({});
    EXPECT_EQ(options.home, std::nullopt);
    EXPECT_FALSE(options.newHome);
    EXPECT_TRUE(options.answer.isEmpty());
    EXPECT_TRUE(options.mistake.isEmpty());
}

TEST(StartOptions, AHomeIsTakenAsTyped)
{
    const StartOptions options =
        parsed({QStringLiteral("--home"), QStringLiteral("../x y"), QStringLiteral("--new-home")});
    EXPECT_EQ(options.home, QStringLiteral("../x y"));
    EXPECT_TRUE(options.newHome);
}

TEST(StartOptions, VersionAndHelpAreAnswered)
{
    EXPECT_EQ(parsed({QStringLiteral("--version")}).answer,
              QStringLiteral("varnel " VARNEL_VERSION "\n"));
    EXPECT_TRUE(parsed({QStringLiteral("--help")}).answer.contains(QStringLiteral("--new-home")));
}

TEST(StartOptions, WhatIsNotUnderstoodIsAMistake)
{
    EXPECT_FALSE(parsed({QStringLiteral("--bogus")}).mistake.isEmpty());
    EXPECT_FALSE(parsed({QStringLiteral("--home")}).mistake.isEmpty());
    EXPECT_FALSE(parsed({QStringLiteral("stray")}).mistake.isEmpty());
}

TEST(VarnelAppDelegate, TheLastWindowsEndIsTheApplicationsEnd)
{
    const VarnelAppDelegate delegate;
    EXPECT_TRUE(delegate.applicationShouldTerminateAfterLastWindowClosed());
    EXPECT_TRUE(QGuiApplication::quitOnLastWindowClosed());
}

TEST(VarnelAppDelegate, ARequestToQuitAsksNoWindow)
{
    const VarnelAppDelegate delegate;
    StubbornWindow window;
    window.show();
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(window.isVisible());
}

TEST(VarnelAppDelegate, TheMenusQuitEndsTheApplicationAtOnce)
{
    const VarnelAppDelegate delegate;
    WindowFixture fixture;
    QObject::connect(&fixture.window, &MainWindow::quitRequested, &VarnelAppDelegate::terminate);
    fixture.window.show();
    auto *quit = fixture.window.findChild<QAction *>(QStringLiteral("quitAction"));
    ASSERT_NE(quit, nullptr);
    EXPECT_EQ(quit->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    QTimer::singleShot(0, quit, &QAction::trigger);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(fixture.window.isVisible());
}

TEST(VarnelAppDelegate, ItKnowsItsWindow)
{
    VarnelAppDelegate delegate;
    EXPECT_EQ(delegate.window(), nullptr);
    QWidget window;
    delegate.setWindow(&window);
    EXPECT_EQ(delegate.window(), &window);
}

TEST(ApplicationStart, RemovesWhatARunThatDiedLeftAmongThePreferences)
{
    const TemporaryHome home;
    const QString left = home.preference(u".a.plist.varnel-12-0123456789abcdef"_s);
    QFile file(left);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    const Application application(home.home(), LinuxSystemDisk(home.path()));
    EXPECT_FALSE(QFile::exists(left));
    SharedObject::getSharedObject().doTerminate(); // as at the end of a run
}

TEST(ApplicationStart, ARequestToCloseBeforeAllPagesAreThereIsHeededWhenTheyAre)
{
    const TemporaryHome home;
    bool asked = false;
    QTimer::singleShot(0, qApp, [&asked] {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->isVisible())
                asked = !window->close() || asked;
        }
    });
    Application application(home.home(), LinuxSystemDisk(home.path()));
    EXPECT_TRUE(asked);
    EXPECT_TRUE(application.window().isVisible());
    EXPECT_NE(SharedObject::getSharedObject().quillet(), nullptr);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(application.window().isVisible());
    SharedObject::getSharedObject().doTerminate();
}
