#include "shell/Tools.h"

#include "platform/linux/LinuxCommandRunner.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "support/FakeCommandRunner.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace varnel;
using namespace varnel::test;

namespace {

struct ToolsTest : testing::Test {
    TemporaryHome home;
    LinuxFolderMaker folders;
    FakeCommandRunner runner;
    Tools tools {home.home(), folders, runner};
    QString support = home.path() + u"/Library/Application Support/Varnel/";
    QString backup = support + u"Backup/";

    void haveBackups(const QStringList &names)
    {
        ASSERT_TRUE(QDir().mkpath(backup));
        for (const QString &name : names) {
            QFile file(backup + name);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }
    /// The name that the run's backup would get.
    QString next() { return tools.createBackupFile().mid(backup.size()); }
};

} // namespace

TEST_F(ToolsTest, TheSupportFolderIsMadeAndKeepsItsSlash)
{
    EXPECT_EQ(tools.pathForSupportFolder(), support);
    EXPECT_TRUE(QFileInfo(support).isDir());
}

TEST_F(ToolsTest, OnAFirstRunTheBackupFolderAloneCannotBeMade)
{
    EXPECT_EQ(tools.pathForBackupFolder(), backup);
    EXPECT_FALSE(QFileInfo::exists(backup));
    EXPECT_FALSE(QFileInfo::exists(support));
}

TEST_F(ToolsTest, OnceTheSupportFolderIsThereTheBackupFolderIsMade)
{
    EXPECT_EQ(tools.pathForBackupFolder(), backup);
    EXPECT_EQ(tools.pathForSupportFolder(), support);
    EXPECT_EQ(tools.pathForBackupFolder(), backup);
    EXPECT_TRUE(QFileInfo(backup).isDir());
}

TEST_F(ToolsTest, AMissingParentIsNotWorthALogLine)
{
    LogCapture log;
    EXPECT_EQ(tools.pathForBackupFolder(), backup);
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(ToolsTest, AFileInTheWayOfTheSupportFolderLeavesThePathAsItIs)
{
    QFile file(home.path() + u"/Library/Application Support/Varnel");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(tools.pathForSupportFolder(), support);
    EXPECT_TRUE(QFileInfo(file).isFile());
}

TEST_F(ToolsTest, TheUserDataFileStandsInTheSupportFolderWhichIsMade)
{
    EXPECT_EQ(tools.pathForDataFile(), QString(support + u"Pellora.userdata"));
    EXPECT_TRUE(QFileInfo(support).isDir());
    EXPECT_FALSE(QFileInfo::exists(support + u"Pellora.userdata"));
}

TEST_F(ToolsTest, AnEmptyBackupFolderGivesTheFirstName)
{
    haveBackups({});
    EXPECT_EQ(next(), QStringLiteral("quillet1.sqlite"));
}

TEST_F(ToolsTest, ANameComesAfterThoseThatAreTaken)
{
    haveBackups({QStringLiteral("quillet1.sqlite"), QStringLiteral("quillet2.sqlite")});
    EXPECT_EQ(next(), QStringLiteral("quillet3.sqlite"));
}

TEST_F(ToolsTest, AGapBeforeTheOnlyBackupIsUsed)
{
    haveBackups({QStringLiteral("quillet2.sqlite")});
    EXPECT_EQ(next(), QStringLiteral("quillet1.sqlite"));
}

TEST_F(ToolsTest, AGapLeftByADeletedBackupIsUsedAgain)
{
    haveBackups({QStringLiteral("quillet1.sqlite"), QStringLiteral("quillet3.sqlite")});
    EXPECT_EQ(next(), QStringLiteral("quillet2.sqlite"));
}

TEST_F(ToolsTest, TheTwelfthNameIsChosenOnlyWhenAllElevenBeforeItAreTaken)
{
    QStringList taken;
    for (int number = 1; number <= 11; ++number)
        taken.append(QStringLiteral("quillet%1.sqlite").arg(number));
    haveBackups(taken);
    EXPECT_EQ(next(), QStringLiteral("quillet12.sqlite"));
    ASSERT_TRUE(QFile::remove(backup + taken.at(6)));
    EXPECT_EQ(next(), taken.at(6));
}

TEST_F(ToolsTest, ChoosingTheBackupNameMakesNoFileSoThatTheNextRunChoosesItAgain)
{
    haveBackups({});
    EXPECT_EQ(next(), next());
    EXPECT_TRUE(QDir(backup).isEmpty());
}

TEST_F(ToolsTest, TheBackupNameIsLogged)
{
    LogCapture log;
    const QString path = tools.createBackupFile();
    EXPECT_EQ(log.texts(QStringLiteral("varnel.shell")),
              QStringList(QStringLiteral("Backup File Name: ") + backup + u"quillet1.sqlite"));
    EXPECT_EQ(path, QString(backup + u"quillet1.sqlite"));
}

TEST_F(ToolsTest, EndingAnApplicationRunsKillallWithTheNameAsItIs)
{
    EXPECT_TRUE(tools.killApp(QStringLiteral("QuickTime Player")));
    const QList<FakeCommandRunner::Call> expected {
        {QStringLiteral("/usr/bin/killall"), {QStringLiteral("QuickTime Player")}}};
    EXPECT_EQ(runner.calls, expected);
}

TEST_F(ToolsTest, EndingWhatDoesNotRunSaysNothing)
{
    if (!QFileInfo::exists(QStringLiteral("/usr/bin/killall")))
        GTEST_SKIP() << "no killall on this machine";
    LinuxCommandRunner real {HomeFolder {}};
    LogCapture log;
    EXPECT_TRUE(
        Tools(home.home(), folders, real).killApp(QStringLiteral("no process has this name")));
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(ToolsTest, AKillallThatCannotBeStartedIsLoggedAndNothingElse)
{
    runner.answer = [](const FakeCommandRunner::Call &call) -> Result<QString> {
        return Error {ErrorCode::Failed, call.launchPath + u": not there"};
    };
    LogCapture log;
    EXPECT_FALSE(tools.killApp(QStringLiteral("Dock")));
    EXPECT_EQ(log.texts(QStringLiteral("varnel.io")),
              QStringList(QStringLiteral("/usr/bin/killall: not there")));
    EXPECT_EQ(log.texts().size(), 1);
}

TEST_F(ToolsTest, FoldersOfTheProgramAreTheOwnersAlone)
{
    struct stat info { };
    ASSERT_EQ(::stat(QFile::encodeName(tools.pathForSupportFolder()).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777U, 0700U);
}
