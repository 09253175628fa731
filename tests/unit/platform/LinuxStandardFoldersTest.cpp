#include "platform/linux/LinuxStandardFolders.h"

#include "platform/linux/LinuxFolderMaker.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <unistd.h>

using namespace varnel;
using namespace varnel::test;
using Missing = StandardFolders::Missing;

namespace {

struct LinuxStandardFoldersTest : testing::Test {
    TemporaryHome temporary;
    QString path = temporary.path() + u"/alice";
    HomeFolder home {path, false};
    QString library = path + u"/Library";
    QString preferences = library + u"/Preferences";
    QString support = library + u"/Application Support";
    LinuxStandardFolders folders;
    LogCapture log;

    LinuxStandardFoldersTest() { EXPECT_TRUE(QDir().mkdir(path)); }

    [[nodiscard]] ErrorCode errorOf(Missing missing)
    {
        const Result<void> result = folders.ensure(home, missing);
        return result ? ErrorCode::Invalid : result.error().code;
    }
};

TEST_F(LinuxStandardFoldersTest, AllThreeAreMadePrivate)
{
    const mode_t mask = ::umask(0);
    const bool made = folders.ensure(home, Missing::Make).ok();
    ::umask(mask);
    ASSERT_TRUE(made);
    for (const QString &folder : {library, preferences, support}) {
        EXPECT_TRUE(QFileInfo(folder).isDir());
        EXPECT_EQ(modeOf(folder), 0700U);
    }
    EXPECT_EQ(entriesOf(path).size(), 1);
    EXPECT_EQ(entriesOf(library).size(), 2);
}

TEST_F(LinuxStandardFoldersTest, WhatIsThereStaysAsItIs)
{
    ASSERT_TRUE(QDir().mkpath(preferences));
    ASSERT_EQ(::chmod(qPrintable(preferences), 0755), 0);
    writeRaw(preferences + u"/a.plist", "old");
    ASSERT_TRUE(folders.ensure(home, Missing::Make).ok());
    ASSERT_TRUE(folders.ensure(home, Missing::Make).ok());
    EXPECT_EQ(modeOf(preferences), 0755U);
    EXPECT_EQ(readRaw(preferences + u"/a.plist"), "old");
    EXPECT_TRUE(QFileInfo(support).isDir());
}

TEST_F(LinuxStandardFoldersTest, AFolderWithoutLibraryIsTakenForASlipOfTheHand)
{
    const Result<void> result = folders.ensure(home, Missing::NeedLibrary);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, ErrorCode::NotFound);
    EXPECT_TRUE(result.error().text.startsWith(path + u": "));
    EXPECT_TRUE(result.error().text.contains(QStringLiteral("Library")));
    EXPECT_EQ(entriesOf(path), QStringList());
}

TEST_F(LinuxStandardFoldersTest, AFileCalledLibraryIsNoLibrary)
{
    writeRaw(library, "file");
    EXPECT_EQ(errorOf(Missing::NeedLibrary), ErrorCode::NotFound);
    EXPECT_EQ(errorOf(Missing::Make), ErrorCode::Failed);
    EXPECT_EQ(readRaw(library), "file");
}

TEST_F(LinuxStandardFoldersTest, InsideALibraryTheOthersAreMade)
{
    ASSERT_TRUE(QDir().mkdir(library));
    ASSERT_TRUE(folders.ensure(home, Missing::NeedLibrary).ok());
    EXPECT_TRUE(QFileInfo(preferences).isDir());
    EXPECT_TRUE(QFileInfo(support).isDir());
}

TEST_F(LinuxStandardFoldersTest, WhatIsMissingIsToldBeforeAnythingIsMade)
{
    EXPECT_EQ(folders.toMake(home, Missing::Make).value(),
              QStringList({library, preferences, support}));
    EXPECT_EQ(entriesOf(path), QStringList());
    ASSERT_TRUE(QDir().mkpath(support));
    EXPECT_EQ(folders.toMake(home, Missing::NeedLibrary).value(), QStringList(preferences));
    EXPECT_EQ(entriesOf(library).size(), 1);
    // Where its end can't be made, the link can't be made a folder.
    ASSERT_TRUE(QDir().rmdir(support));
    linkTo(path + u"/none/none", support);
    EXPECT_EQ(folders.toMake(home, Missing::Make).error().code, ErrorCode::NotFound);
    EXPECT_EQ(errorOf(Missing::Make), ErrorCode::NotFound);
    ASSERT_TRUE(QFile::remove(support));
    ASSERT_TRUE(folders.ensure(home, Missing::Make).ok());
    EXPECT_EQ(folders.toMake(home, Missing::Make).value(), QStringList());
}

TEST_F(LinuxStandardFoldersTest, AHomeThatIsMissingIsNotMade)
{
    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_EQ(errorOf(Missing::Make), ErrorCode::NotFound);
    EXPECT_EQ(errorOf(Missing::NeedLibrary), ErrorCode::NotFound);
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(LinuxStandardFoldersTest, ALinkOutOfSomebodyElsesHomeIsRefused)
{
    VARNEL_NEEDS_ROOT();
    const QString outside = temporary.path() + u"/outside";
    ASSERT_TRUE(QDir().mkdir(outside));
    linkTo(outside, library);
    giveAll(path, stranger, stranger);
    EXPECT_EQ(errorOf(Missing::Make), ErrorCode::NotPermitted);
    EXPECT_EQ(errorOf(Missing::NeedLibrary), ErrorCode::NotPermitted);
    const Result<void> single = LinuxFolderMaker().makeFolder(home, library + u"/Own");
    ASSERT_FALSE(single.ok());
    EXPECT_EQ(single.error().code, ErrorCode::NotPermitted);
    EXPECT_EQ(entriesOf(outside), QStringList());
    EXPECT_EQ(log.texts(QStringLiteral("varnel.io")).size(), 2);
}

TEST_F(LinuxStandardFoldersTest, ASingleFolderIsNeverMadeWithTheOnesAboveIt)
{
    const Result<void> result = LinuxFolderMaker().makeFolder(home, library + u"/Own/");
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, ErrorCode::NotFound);
    EXPECT_EQ(entriesOf(path), QStringList());
}

} // namespace
