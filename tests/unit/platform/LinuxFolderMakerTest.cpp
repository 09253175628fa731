#include "platform/linux/LinuxFolderMaker.h"

#include "support/TemporaryHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

using namespace varnel;
using namespace varnel::test;

namespace {

constexpr uid_t somebody = 65534;

struct LinuxFolderMakerTest : testing::Test {
    TemporaryHome home;
    LinuxFolderMaker maker;

    [[nodiscard]] QString in(const QString &relative) const
    {
        return home.path() + u'/' + relative;
    }
    [[nodiscard]] static bool give(const QString &path)
    {
        return ::lchown(QFile::encodeName(path).constData(), somebody, somebody) == 0;
    }
    /// The home and what is in it become somebody else's; only root can do that.
    [[nodiscard]] bool giveHomeAway() const
    {
        return give(home.path()) && give(in(QStringLiteral("Library")));
    }
};

} // namespace

TEST_F(LinuxFolderMakerTest, OneFolderIsMade)
{
    EXPECT_TRUE(maker.makeFolder(home.home(), in(QStringLiteral("Library/One/"))).ok());
    EXPECT_TRUE(QFileInfo(in(QStringLiteral("Library/One"))).isDir());
}

TEST_F(LinuxFolderMakerTest, NothingIsMadeAboveIt)
{
    const auto made = maker.makeFolder(home.home(), in(QStringLiteral("Library/No/One")));
    ASSERT_FALSE(made.ok());
    EXPECT_EQ(made.error().code, ErrorCode::NotFound);
    EXPECT_FALSE(QFileInfo::exists(in(QStringLiteral("Library/No"))));
}

TEST_F(LinuxFolderMakerTest, WhatStandsThereIsLeftAlone)
{
    QFile file(in(QStringLiteral("Library/One")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(maker.makeFolder(home.home(), file.fileName()).ok());
    EXPECT_TRUE(QFileInfo(file).isFile());
}

TEST_F(LinuxFolderMakerTest, InSomebodyElsesHomeAPathThatClimbsOutIsRefused)
{
    const QTemporaryDir around(QDir::currentPath() + u"/around-XXXXXX");
    const HomeFolder inner {around.path() + u"/home", false};
    ASSERT_TRUE(QDir().mkdir(inner.path));
    if (!give(inner.path))
        GTEST_SKIP() << "needs the right to give files away";
    EXPECT_FALSE(maker.makeFolder(inner, inner.path + u"/../elsewhere").ok());
    EXPECT_FALSE(QFileInfo::exists(around.path() + u"/elsewhere"));
}

TEST_F(LinuxFolderMakerTest, InSomebodyElsesHomeALinkThatLeadsOutIsRefused)
{
    const TemporaryHome elsewhere;
    ASSERT_TRUE(QFile::link(elsewhere.path(), in(QStringLiteral("Library/Out"))));
    if (!giveHomeAway())
        GTEST_SKIP() << "needs the right to give files away";
    const auto made = maker.makeFolder(home.home(), in(QStringLiteral("Library/Out/One")));
    ASSERT_FALSE(made.ok());
    EXPECT_EQ(made.error().code, ErrorCode::NotPermitted);
    EXPECT_FALSE(QFileInfo::exists(elsewhere.path() + u"/One"));
}

TEST_F(LinuxFolderMakerTest, InOnesOwnHomeALinkIsFollowed)
{
    const TemporaryHome elsewhere;
    ASSERT_TRUE(QFile::link(elsewhere.path(), in(QStringLiteral("Library/Out"))));
    EXPECT_TRUE(maker.makeFolder(home.home(), in(QStringLiteral("Library/Out/One"))).ok());
    EXPECT_TRUE(QFileInfo(elsewhere.path() + u"/One").isDir());
}
