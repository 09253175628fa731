#include "platform/linux/CallersFolders.h"

#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

struct CallersFoldersTest : testing::Test {
    TemporaryHome home;
    QString folder = QDir(home.path()).canonicalPath() + u"/folder";

    void SetUp() override
    {
        VARNEL_NEEDS_ROOT();
        ASSERT_TRUE(QDir().mkpath(folder + u"/below"));
        qputenv("HOME", folder.toUtf8());
    }

    void give(const QString &path) const
    {
        ASSERT_EQ(::lchown(path.toUtf8().constData(), stranger, stranger), 0);
    }
};

TEST_F(CallersFoldersTest, OnesOwnFoldersStay)
{
    qputenv("XDG_CACHE_HOME", (folder + u"/below").toUtf8());
    qputenv("XDG_DATA_HOME", (folder + u"/not/there").toUtf8());
    leaveFoldersOfOthers();
    EXPECT_EQ(qgetenv("HOME"), folder.toUtf8());
    EXPECT_EQ(qgetenv("XDG_CACHE_HOME"), (folder + u"/below").toUtf8());
    EXPECT_EQ(qgetenv("XDG_DATA_HOME"), (folder + u"/not/there").toUtf8());
}

TEST_F(CallersFoldersTest, SomebodyElsesHomeGivesWayToTheCallers)
{
    give(folder);
    leaveFoldersOfOthers();
    EXPECT_EQ(qgetenv("HOME"), QByteArray(::getpwuid(::geteuid())->pw_dir));
}

TEST_F(CallersFoldersTest, AWayThroughSomebodyElsesFolderIsLeftWhateverIsAtItsEnd)
{
    const QString own = folder + u"/below/own";
    ASSERT_TRUE(QDir().mkpath(own));
    give(folder + u"/below");
    qputenv("XDG_CONFIG_HOME", own.toUtf8());
    qputenv("XDG_CACHE_HOME", (folder + u"/below/not/there").toUtf8());
    leaveFoldersOfOthers();
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_CONFIG_HOME"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_CACHE_HOME"));
    EXPECT_EQ(qgetenv("HOME"), folder.toUtf8());
}

TEST_F(CallersFoldersTest, ALinkAndARelativePathAreLeft)
{
    linkTo(folder + u"/below", folder + u"/link");
    qputenv("FONTCONFIG_FILE", (folder + u"/link/fonts.conf").toUtf8());
    qputenv("FONTCONFIG_PATH", "fonts");
    leaveFoldersOfOthers();
    EXPECT_FALSE(qEnvironmentVariableIsSet("FONTCONFIG_FILE"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("FONTCONFIG_PATH"));
}

} // namespace
