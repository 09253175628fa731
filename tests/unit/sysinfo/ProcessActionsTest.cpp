#include "sysinfo/ProcessActions.h"
#include "support/FakeDesktop.h"
#include "support/FakeProcesses.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

const ProcessRow aClock {QStringLiteral("Clock"), QStringLiteral("20"), 4711,
                         QStringLiteral("/Applications/It's a Clock.app"), QString()};

} // namespace

TEST(ProcessActions, RevealingAsksForTheBundleFromWithinIt)
{
    FakeDesktop desktop;
    showInFinder(aClock, desktop);
    EXPECT_EQ(desktop.launches,
              (QList<FakeDesktop::Launch> {{QStringLiteral("/usr/bin/open"),
                                            aClock.bundleLocation,
                                            {QStringLiteral("-R"), aClock.bundleLocation}}}));
}

TEST(ProcessActions, TerminatingSendsSignal15AndLogsTheResult)
{
    FakeProcessManager manager;
    LogCapture log;
    EXPECT_TRUE(killProcess(aClock, manager).ok());
    EXPECT_EQ(manager.sent, QStringList {QStringLiteral("15 to 4711")});
    EXPECT_EQ(log.texts(), QStringList {QStringLiteral("0")});
}

TEST(ProcessActions, AFailedSignalLogsNothingAndTellsTheCallerWhy)
{
    FakeProcessManager manager;
    manager.killError = EPERM;
    LogCapture log;
    const Result<void> result = killProcess(aClock, manager);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().text, QStringLiteral("Clock: Operation not permitted"));
    EXPECT_EQ(manager.sent.size(), 1);
    EXPECT_TRUE(log.texts().isEmpty());
}
