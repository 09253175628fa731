#include "shell/SharedObject.h"
#include "shell/views/Application.h"
#include "support/gui/Input.h"
#include "support/gui/RunningProgram.h"

#include <QAction>
#include <QDialog>
#include <QFile>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// The whole program in this process, with a change that waits to be saved.
class ProgramEnd : public testing::Test {
protected:
    void SetUp() override
    {
        SharedObject::getSharedObject().setQuilletCommands({{1009, 0, u""_s}});
        SharedObject::getSharedObject().restartFlags() = {};
        window().show();
    }
    /// The record outlives this run of the program, its pages must not.
    void TearDown() override { SharedObject::getSharedObject().doTerminate(); }

    [[nodiscard]] MainWindow &window() { return application.window(); }
    [[nodiscard]] QDialog *prompt() { return window().findChild<QDialog *>(u"alert"_s); }

    /// The exit status of a run in which this is all that happens.
    int run(const std::function<void()> &event)
    {
        QTimer::singleShot(0, &window(), event);
        return QApplication::exec();
    }

    TemporaryHome home;
    Application application {home.home(), LinuxSystemDisk(home.path())};
};

} // namespace

TEST_F(ProgramEnd, ATerminationSignalEndsItAtOnceWhateverIsPending)
{
    EXPECT_EQ(run([] { ::raise(SIGTERM); }), 0);
    EXPECT_EQ(prompt(), nullptr);
    EXPECT_TRUE(window().isVisible()) << "no window was asked";
}

TEST_F(ProgramEnd, ATerminationSignalEndsItWhileThePromptIsUp)
{
    window().close();
    ASSERT_NE(prompt(), nullptr);
    EXPECT_EQ(prompt()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(run([] { ::raise(SIGTERM); }), 0);
}

TEST_F(ProgramEnd, TheMenusQuitEndsItAtOnceWhateverIsPending)
{
    SharedObject::getSharedObject().setNeedToKillDock(true);
    auto *quit = window().findChild<QAction *>(u"quitAction"_s);
    EXPECT_EQ(run([quit] { quit->trigger(); }), 0);
    EXPECT_EQ(window().findChild<QDialog *>(), nullptr) << "neither prompt nor sheet";
}

TEST_F(ProgramEnd, TheSessionsEndEndsItAtOnceWhateverIsPending)
{
    SharedObject::getSharedObject().setNeedToKillDock(true);
    EXPECT_EQ(run([] { QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit)); }), 0);
    EXPECT_EQ(window().findChild<QDialog *>(), nullptr);
}

TEST_F(ProgramEnd, DontSaveEndsItAndAsksNothingMore)
{
    window().close();
    ASSERT_NE(prompt(), nullptr);
    auto *dontSave = prompt()->findChild<QPushButton *>(u"alertButton1002"_s);
    EXPECT_EQ(run([dontSave] { click(*dontSave); }), 0);
    EXPECT_FALSE(QFile::exists(home.preference(u"com.apple.dock.plist"_s)));
}

TEST_F(ProgramEnd, EscapeInThePromptKeepsItRunning)
{
    window().close();
    ASSERT_NE(prompt(), nullptr);
    QTest::keyClick(prompt(), Qt::Key_Escape);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(SharedObject::getSharedObject().quilletCommands().size(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(prompt(), nullptr);
    window().close();
    EXPECT_NE(prompt(), nullptr) << "closing again asks again";
}

TEST_F(ProgramEnd, ClosingTheWindowWithNothingPendingEndsIt)
{
    SharedObject::getSharedObject().setQuilletCommands({});
    EXPECT_EQ(run([this] { window().close(); }), 0);
}

TEST(Program, ATerminationSignalEndsTheRunningProgramWithSuccess)
{
    RunningProgram program;
    program.start();
    ASSERT_TRUE(program.isUp());
    program.send(SIGTERM);
    EXPECT_EQ(program.end(), 0);
}

TEST(Program, ASignalThatItsStarterIgnoresStaysIgnored)
{
    RunningProgram program;
    program.start([] {}, u"trap '' HUP INT; exec \"$@\""_s);
    ASSERT_TRUE(program.isUp());
    EXPECT_TRUE(program.holds("SigIgn:", SIGHUP));
    EXPECT_TRUE(program.holds("SigIgn:", SIGINT));
    for (const int signal : {SIGHUP, SIGINT})
        program.send(signal);
    EXPECT_TRUE(program.isUp());
    program.send(SIGTERM);
    EXPECT_EQ(program.end(), 0);
}
