#include "platform/linux/LinuxCommandRunner.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <unistd.h>

using namespace varnel;
using namespace varnel::test;

namespace {

struct LinuxCommandRunnerTest : testing::Test {
    Result<QString> shell(const QString &script)
    {
        return runner.run(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    }
    LinuxCommandRunner runner;
    LogCapture log;
};

TEST_F(LinuxCommandRunnerTest, OutputAndErrorsComeMergedInTheirOrder)
{
    EXPECT_EQ(shell(QStringLiteral("echo one; echo two >&2; echo three")).value(),
              QStringLiteral("one\ntwo\nthree\n"));
}

TEST_F(LinuxCommandRunnerTest, ArgumentsArriveAsTheyAre)
{
    const QStringList arguments {QStringLiteral("[%s]\n"), QStringLiteral("QuickTime Player"),
                                 QString(), QStringLiteral("$HOME \"*' \\"),
                                 QStringLiteral("\u00fc\u65e5")};
    EXPECT_EQ(runner.run(QStringLiteral("/usr/bin/printf"), arguments).value(),
              QStringLiteral("[QuickTime Player]\n[]\n[$HOME \"*' \\]\n[\u00fc\u65e5]\n"));
}

TEST_F(LinuxCommandRunnerTest, TheExitStatusIsNotLookedAt)
{
    EXPECT_EQ(shell(QStringLiteral("echo said; exit 7")).value(), QStringLiteral("said\n"));
    EXPECT_EQ(shell(QStringLiteral("echo said; kill -KILL $$")).value(), QStringLiteral("said\n"));
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(LinuxCommandRunnerTest, MuchOutputIsDrainedToItsEnd)
{
    constexpr qsizetype size = 3'000'000;
    EXPECT_EQ(
        shell(QStringLiteral("head -c 1500000 /dev/zero; head -c 1500000 /dev/zero >&2")).value(),
        QString(size, QChar(QChar::Null)));
}

TEST_F(LinuxCommandRunnerTest, AChildThatReadsFindsAnEndAtOnce)
{
    EXPECT_EQ(shell(QStringLiteral("cat; echo done")).value(), QStringLiteral("done\n"));
}

TEST_F(LinuxCommandRunnerTest, AProgramThatCannotBeStartedIsAnErrorForTheCallerToTell)
{
    for (const QString &program :
         {QStringLiteral("/no/such/program"), QStringLiteral("/etc/passwd"), QStringLiteral("/"),
          QStringLiteral("sh"), QString()}) {
        const Result<QString> result = runner.run(program, {});
        ASSERT_FALSE(result.ok()) << qPrintable(program);
        EXPECT_EQ(result.error().code, ErrorCode::Failed);
        EXPECT_TRUE(result.error().text.startsWith(program + u": "));
    }
    EXPECT_EQ(log.texts(), QStringList()) << "the caller's line would be the second";
}

TEST_F(LinuxCommandRunnerTest, EndingANameThatNoProcessHasCompletesQuietly)
{
    const QString killall = QStringLiteral("/usr/bin/killall");
    if (::access(qPrintable(killall), X_OK) != 0)
        GTEST_SKIP() << "needs " << qPrintable(killall);
    const Result<QString> result =
        runner.run(killall, {QStringLiteral("No Such Process Here 6502")});
    ASSERT_TRUE(result.ok());
    EXPECT_TRUE(result.value().contains(QStringLiteral("no process found")));
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(LinuxCommandRunnerTest, AStartWithSomebodyElsesRightsDoesNotPassThemOn)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs root, to have a user to change from";
    constexpr uid_t other = 54321;
    ASSERT_EQ(::setresuid(other, 0, 0), 0);
    const Result<QString> result = shell(QStringLiteral("grep ^Uid: /proc/self/status"));
    ASSERT_EQ(::setresuid(0, 0, 0), 0);
    EXPECT_EQ(result.value(), QStringLiteral("Uid:\t54321\t54321\t54321\t54321\n"));
}

} // namespace
