#include "platform/linux/LinuxCommandRunner.h"
#include "support/gui/QuitFixture.h"
#include "support/LogCapture.h"
#include "support/NamedProcess.h"
#include "support/ProcessNames.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// The flow with the real killall, upon processes that the test has started. Since that goes by
/// name alone, no two of these run at a time, and none where a stranger has one of the names.
class EndingApplications : public testing::Test, protected QuitFixture {
protected:
    void SetUp() override
    {
        if (!QFileInfo(killall).isExecutable())
            GTEST_SKIP() << "no killall on this machine";
        const QStringList names {u"Dock"_s, u"Finder"_s, u"SystemUIServer"_s};
        if (const QString running = runningOneOf(names); !running.isNull())
            GTEST_SKIP() << "somebody's " << qPrintable(running) << " runs here";
        runner.answer = [this](const FakeCommandRunner::Call &call) {
            return real.run(program, call.arguments);
        };
        shared.restartFlags() = RestartFlag::Dock | RestartFlag::Finder;
    }

    const QString killall = u"/usr/bin/killall"_s;
    QString program = killall;
    LinuxCommandRunner real {HomeFolder {}};
    QTemporaryDir folder;
};

} // namespace

TEST_F(EndingApplications, TheTickedOnesAndTheSystemsInterfaceEndAndNothingElse)
{
    NamedProcess dock(folder.path(), u"Dock"_s);
    NamedProcess finder(folder.path(), u"Finder"_s);
    NamedProcess systemInterface(folder.path(), u"SystemUIServer"_s);
    NamedProcess alike(folder.path(), u"Docks"_s);
    NamedProcess unnamed(folder.path(), u"UnnamedByTheSheet"_s);
    window.close();
    clickBox(1);
    press(u"appCloseNowButton"_s);
    EXPECT_EQ(dock.endSignal(), SIGTERM);
    EXPECT_EQ(systemInterface.endSignal(), SIGTERM);
    EXPECT_TRUE(finder.killed()) << "it was unticked, so the test had to end it";
    EXPECT_TRUE(alike.killed());
    EXPECT_TRUE(unnamed.killed());
    EXPECT_EQ(terminations, 1);
}

TEST_F(EndingApplications, SkippedTheSystemsInterfaceEndsAlone)
{
    NamedProcess dock(folder.path(), u"Dock"_s);
    NamedProcess systemInterface(folder.path(), u"SystemUIServer"_s);
    window.close();
    press(u"skipButton"_s);
    EXPECT_EQ(systemInterface.endSignal(), SIGTERM);
    EXPECT_TRUE(dock.killed());
}

TEST_F(EndingApplications, NamesThatNoProcessHasAreNoMatterAndSaidToNobody)
{
    LogCapture log;
    window.close();
    press(u"appCloseNowButton"_s);
    EXPECT_EQ(log.texts(), QStringList());
    EXPECT_EQ(terminations, 1);
}

TEST_F(EndingApplications, AKillallThatCannotBeStartedEndsNothingAndIsLogged)
{
    NamedProcess dock(folder.path(), u"Dock"_s);
    NamedProcess systemInterface(folder.path(), u"SystemUIServer"_s);
    program = folder.path() + u"/killall";
    window.close();
    LogCapture log;
    press(u"appCloseNowButton"_s);
    ASSERT_EQ(log.texts(u"varnel.io"_s).size(), 3) << "one for each name";
    EXPECT_EQ(log.texts().size(), 3);
    EXPECT_TRUE(log.texts().first().startsWith(program + u": "));
    EXPECT_TRUE(dock.killed());
    EXPECT_TRUE(systemInterface.killed());
    EXPECT_EQ(terminations, 1);
}
