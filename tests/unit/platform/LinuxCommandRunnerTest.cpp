#include "platform/linux/LinuxCommandRunner.h"

#include "platform/linux/LinuxTerminal.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include <linux/capability.h>
#include <pwd.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace Qt::Literals::StringLiterals;
using namespace varnel::test;

namespace {

struct LinuxCommandRunnerTest : testing::Test {
    Result<QString> shell(const QString &script)
    {
        return runner.run(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    }
    LinuxCommandRunner runner {HomeFolder {}};
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

TEST_F(LinuxCommandRunnerTest, AChildIsEndedBySignalsThatThisProcessTakesNoNoticeOf)
{
    LinuxTerminal::prepareStreams();
    EXPECT_EQ(shell(u"kill -PIPE $$; echo alive"_s).value(), QString());
    EXPECT_EQ(shell(u"kill -XFSZ $$; echo alive"_s).value(), QString());
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

/// Root, running a program on behalf of a home that another user owns.
struct ForeignHomeChild : testing::Test {
    void SetUp() override
    {
        VARNEL_NEEDS_ROOT();
        own(stranger, stranger);
    }
    void own(uid_t user, gid_t group) const
    {
        ASSERT_EQ(::chown(qPrintable(folder.path()), user, group), 0);
    }
    [[nodiscard]] Result<QString> shell(const QString &script) const
    {
        return LinuxCommandRunner(home).run(QStringLiteral("/bin/sh"),
                                            {QStringLiteral("-c"), script});
    }
    [[nodiscard]] Result<QString> status(const QString &lines) const
    {
        return shell(u"grep -E '^("_s + lines + u"):' /proc/self/status");
    }

    QTemporaryDir folder;
    HomeFolder home {folder.path(), false};
};

TEST_F(ForeignHomeChild, HasTheOwnersRightsAndNothingOfRoots)
{
    EXPECT_EQ(status(u"Uid|Gid|Groups|CapPrm|CapEff|CapBnd|NoNewPrivs"_s).value().simplified(),
              u"Uid: 54321 54321 54321 54321 Gid: 54321 54321 54321 54321 Groups: 54321 "
              "CapPrm: 0000000000000000 CapEff: 0000000000000000 CapBnd: 0000000000000000 "
              "NoNewPrivs: 1"_s);
}

TEST_F(ForeignHomeChild, FindsNothingOfTheCallersEnvironmentSessionAndFolder)
{
    qputenv("VARNEL_TEST_SECRET", "marked secret");
    const QStringList variables = LinuxCommandRunner(home)
                                      .run(u"/usr/bin/env"_s, {})
                                      .value()
                                      .split(u'\n', Qt::SkipEmptyParts);
    qunsetenv("VARNEL_TEST_SECRET");
    EXPECT_THAT(variables,
                testing::UnorderedElementsAre(u"PATH=/usr/local/bin:/usr/bin:/bin"_s,
                                              u"LANG=C.UTF-8"_s, QString(u"HOME=" + home.path),
                                              u"USER=54321"_s, u"LOGNAME=54321"_s));
    EXPECT_EQ(shell(u"pwd -P; read -r line </proc/$$/stat; set -- ${line##*)};"
                    " [ $4 = $$ ] && echo leads its session"_s)
                  .value(),
              u"/\nleads its session\n"_s);
}

TEST_F(ForeignHomeChild, OfAnAccountHasItsGroups)
{
    const passwd *account = ::getpwnam("daemon");
    if (account == nullptr)
        GTEST_SKIP() << "needs an account beside root's";
    const QString name = QString::fromLocal8Bit(account->pw_name);
    own(account->pw_uid, 0);
    EXPECT_EQ(shell(u"id -u; id -G; echo $USER"_s).value(),
              LinuxCommandRunner({})
                  .run(u"/bin/sh"_s,
                       {u"-c"_s, u"id -u "_s + name + u"; id -G " + name + u"; echo " + name})
                  .value());
}

TEST_F(ForeignHomeChild, IsNotInRootsGroupThoughTheHomeIs)
{
    own(stranger, 0);
    EXPECT_EQ(status(u"Gid|Groups"_s).value().simplified(),
              u"Gid: 65534 65534 65534 65534 Groups: 65534"_s);
}

TEST_F(ForeignHomeChild, OfRootsOwnHomeStaysRoots)
{
    own(0, 0);
    EXPECT_EQ(status(u"Uid|NoNewPrivs"_s).value().simplified(), u"Uid: 0 0 0 0 NoNewPrivs: 0"_s);
}

TEST_F(ForeignHomeChild, IsNotRunWhereItCannotBeToldWhoseTheHomeIs)
{
    home.path += u"/gone";
    const Result<QString> result = shell(u"echo run"_s);
    ASSERT_FALSE(result.ok());
    EXPECT_TRUE(result.error().text.contains(home.path)) << qPrintable(result.error().text);
}

TEST_F(ForeignHomeChild, IsNotRunWhereTheRightsCannotBeGivenUp)
{
    __user_cap_header_struct header {_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, 2> all {};
    ASSERT_EQ(::syscall(SYS_capget, &header, all.data()), 0);
    auto fewer = all;
    fewer[0].effective &= ~(1U << CAP_SETUID);
    ASSERT_EQ(::syscall(SYS_capset, &header, fewer.data()), 0);
    const Result<QString> result = shell(u"echo run"_s);
    ASSERT_EQ(::syscall(SYS_capset, &header, all.data()), 0);
    ASSERT_FALSE(result.ok()) << qPrintable(result.value());
    EXPECT_EQ(result.error().text, u"/bin/sh: Cannot be run as the owner of the home"_s);
}

} // namespace
