#include "KeptFixture.h"
#include "support/ChildProcess.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/sysmacros.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

struct LinuxKeptFilesTest : KeptFixture {
    QString run = make();

    void expectNotAFile()
    {
        EXPECT_EQ(codeOf(kept.keep(path, run, u"1"_s)), ErrorCode::NotAFile);
        EXPECT_TRUE(loggedOnce(path));
        EXPECT_EQ(codeOf(kept.takeAway(path, any)), ErrorCode::NotAFile);
        EXPECT_EQ(entriesOf(run), QStringList());
        EXPECT_EQ(entriesOf(folder), QStringList {u"a.plist"_s});
    }
};
using LinuxKeptFilesPlainUser = PlainUser;

TEST_F(LinuxKeptFilesTest, aKeptFileIsTheVeryFileWithAllItsTimes)
{
    writeRaw(path, "old", 0640);
    makeOld(path);
    const struct stat before = statusOf(path);
    const Result<KeptFolders::Kept> done = kept.keep(path, run, u"1"_s);
    ASSERT_TRUE(done.ok());
    EXPECT_EQ(done.value().bytes, "old");
    EXPECT_TRUE(done.value().linked);
    EXPECT_EQ(statusOf(run + u"1").st_ino, before.st_ino);
    EXPECT_EQ(statusOf(run + u"1").st_nlink, 2U);
    EXPECT_EQ(kept.read(run, u"1"_s, 3).value(), "old");
    EXPECT_TRUE(isOld(path)) << "reading it was not seen";
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxKeptFilesTest, anUpdateAfterwardsLeavesTheKeptFileAsItWas)
{
    writeRaw(path, "old", 06755);
    const bool attributes = setAttribute(path, "user.kept", "yes");
    makeOld(path);
    const struct stat before = statusOf(path);
    ASSERT_TRUE(keep(run));
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_TRUE(isOld(run + u"1"));
    EXPECT_EQ(readRaw(run + u"1"), "old");
    EXPECT_EQ(modeOf(run + u"1"), 06755U);
    EXPECT_EQ(statusOf(run + u"1").st_ino, before.st_ino);
    EXPECT_EQ(statusOf(run + u"1").st_nlink, 1U);
    if (attributes) {
        EXPECT_EQ(attributeOf(run + u"1", "user.kept"), "yes");
    }
}

TEST_F(LinuxKeptFilesTest, aFileWithSeveralNamesIsKeptUnderOneMore)
{
    writeRaw(path, "old");
    ASSERT_EQ(::link(qPrintable(path), qPrintable(QString(home.path() + u"/other"))), 0);
    ASSERT_TRUE(keep(run));
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(statusOf(run + u"1").st_ino, statusOf(home.path() + u"/other").st_ino);
    EXPECT_EQ(readRaw(home.path() + u"/other"), "old");
}

TEST_F(LinuxKeptFilesTest, ofALinkTheFileThatItLeadsToIsKept)
{
    const QString target = home.path() + u"/real.plist";
    writeRaw(target, "old");
    linkTo(u"../../real.plist"_s, path);
    ASSERT_TRUE(keep(run));
    EXPECT_EQ(statusOf(run + u"1").st_ino, statusOf(target).st_ino);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
}

TEST_F(LinuxKeptFilesTest, whereNothingStandsThereIsNothingToKeep)
{
    EXPECT_EQ(codeOf(kept.keep(path, run, u"1"_s)), ErrorCode::NotFound);
    EXPECT_EQ(codeOf(kept.keep(folder + u"/No/a.plist", run, u"1"_s)), ErrorCode::NotFound);
    linkTo(home.path() + u"/none", path);
    EXPECT_EQ(codeOf(kept.keep(path, run, u"1"_s)), ErrorCode::NotFound);
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxKeptFilesTest, aMissingFolderOfTheRunIsNotTakenForAMissingFile)
{
    writeRaw(path, "old");
    EXPECT_EQ(codeOf(kept.keep(path, parent + u"quillet9-0/", u"1"_s)), ErrorCode::Failed);
    EXPECT_EQ(logged().size(), 1);
}

TEST_F(LinuxKeptFilesTest, aNameIsUsedOnce)
{
    writeRaw(path, "old");
    ASSERT_TRUE(kept.write(run, u"1"_s, "notes").ok());
    EXPECT_EQ(codeOf(kept.keep(path, run, u"1"_s)), ErrorCode::Failed);
    EXPECT_TRUE(loggedOnce(run + u'1'));
    EXPECT_EQ(readRaw(run + u"1"), "notes");
}

TEST_F(LinuxKeptFilesTest, aNameThatLeadsOutOfTheFolderIsRefused)
{
    writeRaw(path, "old");
    writeRaw(parent + u"outside", "theirs");
    for (const QString &name :
         QStringList {u"../outside"_s, u".."_s, u"."_s, u""_s, u"a/b"_s, run + u"1"}) {
        EXPECT_EQ(codeOf(kept.keep(path, run, name)), ErrorCode::Failed) << qPrintable(name);
        EXPECT_EQ(codeOf(kept.read(run, name, 100)), ErrorCode::Failed) << qPrintable(name);
        EXPECT_EQ(codeOf(kept.write(run, name, "x")), ErrorCode::Failed) << qPrintable(name);
        EXPECT_EQ(codeOf(kept.putBack(run, name, path, yes, any)), ErrorCode::Failed)
            << qPrintable(name);
    }
    EXPECT_EQ(readRaw(parent + u"outside"), "theirs");
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(entriesOf(run), QStringList());
}

TEST_F(LinuxKeptFilesTest, aFifoIsNeverWaitedFor)
{
    ASSERT_EQ(::mkfifo(qPrintable(path), 0600), 0);
    expectNotAFile();
}

TEST_F(LinuxKeptFilesTest, aFolderIsNoFile)
{
    ASSERT_TRUE(QDir().mkdir(path));
    expectNotAFile();
}

TEST_F(LinuxKeptFilesTest, aSocketAndADeviceAreNoFiles)
{
    ASSERT_EQ(::mknod(qPrintable(path), S_IFSOCK | 0600, 0), 0);
    expectNotAFile();
    ASSERT_TRUE(QFile::remove(path));
    if (::mknod(qPrintable(path), S_IFCHR | 0600, makedev(1, 5)) != 0)
        GTEST_SKIP() << "needs the right to make device files";
    EXPECT_EQ(codeOf(kept.keep(path, run, u"1"_s)), ErrorCode::NotAFile);
}

TEST_F(LinuxKeptFilesTest, aFileOfAnotherFileSystemIsCopiedWithAllThatItHas)
{
    VARNEL_NEEDS_OTHER_FILE_SYSTEM(elsewhere);
    const QString target = elsewhere->path() + u"/real.plist";
    writeRaw(target, "old");
    const bool attributes = setAttribute(target, "user.kept", "yes")
        && setAttribute(target, accessList, accessControlList(6, 6));
    ASSERT_EQ(::chmod(qPrintable(target), 06760), 0);
    makeOld(target);
    linkTo(target, path);
    const Result<KeptFolders::Kept> done = kept.keep(path, run, u"1"_s);
    ASSERT_TRUE(done.ok());
    EXPECT_FALSE(done.value().linked);
    EXPECT_EQ(done.value().bytes, "old");
    EXPECT_TRUE(isOld(run + u"1"));
    EXPECT_TRUE(isOld(target));
    EXPECT_EQ(readRaw(run + u"1"), "old");
    EXPECT_EQ(modeOf(run + u"1"), 06760U);
    EXPECT_EQ(statusOf(target).st_nlink, 1U);
    EXPECT_EQ(entriesOf(run), QStringList {u"1"_s});
    if (attributes) {
        EXPECT_EQ(attributeOf(run + u"1", "user.kept"), "yes");
        EXPECT_EQ(attributeOf(run + u"1", accessList), attributeOf(target, accessList));
    }
}

TEST_F(LinuxKeptFilesTest, aCopyOfMoreThanItsBoundIsRefusedAndALinkIsNot)
{
    VARNEL_NEEDS_OTHER_FILE_SYSTEM(elsewhere);
    const QString target = elsewhere->path() + u"/real.plist";
    for (const QString &file : QStringList {target, home.path() + u"/big.plist"}) {
        writeRaw(file, "old");
        ASSERT_EQ(::truncate(qPrintable(file), KeptFolders::biggestCopy + 1), 0);
    }
    linkTo(target, path);
    EXPECT_EQ(codeOf(kept.keep(path, run, u"1"_s)), ErrorCode::TooBig);
    EXPECT_TRUE(loggedOnce(path));
    EXPECT_EQ(entriesOf(run), QStringList());
    EXPECT_TRUE(kept.keep(home.path() + u"/big.plist", run, u"1"_s).value().linked);
    ASSERT_EQ(::truncate(qPrintable(target), KeptFolders::biggestCopy), 0);
    EXPECT_TRUE(kept.keep(path, run, u"2"_s).ok());
}

TEST_F(LinuxKeptFilesTest, withoutProcTheFileIsKeptByItsName)
{
    VARNEL_NEEDS_ROOT();
    writeRaw(path, "old");
    constexpr int noNamespace = 3;
    const pid_t child = inChild([&] {
        if (::unshare(CLONE_NEWNS) != 0
            || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
            || ::mount("none", "/proc", "tmpfs", 0, nullptr) != 0)
            ::_exit(noNamespace);
        // What is held was reached through the mounts of before: nothing can be linked across.
        kept.release(run);
        const Result<KeptFolders::Kept> done = kept.keep(path, run, u"1"_s);
        return done.ok() && done.value().linked && done.value().bytes == "old";
    });
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WEXITSTATUS(status) == noNamespace)
        GTEST_SKIP() << "needs the right to hide /proc";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(statusOf(run + u"1").st_ino, statusOf(path).st_ino);
}

TEST_F(LinuxKeptFilesTest, readingIsBoundedAndFollowsNoLink)
{
    writeRaw(home.path() + u"/other", "theirs");
    linkTo(home.path() + u"/other", run + u"link");
    ASSERT_EQ(::mkfifo(qPrintable(QString(run + u"fifo")), 0600), 0);
    ASSERT_TRUE(kept.write(run, u"index"_s, "12345").ok());
    EXPECT_EQ(kept.read(run, u"index"_s, 5).value(), "12345");
    EXPECT_EQ(codeOf(kept.read(run, u"index"_s, 4)), ErrorCode::TooBig);
    EXPECT_EQ(codeOf(kept.read(run, u"link"_s, 100)), ErrorCode::NotAFile);
    EXPECT_EQ(codeOf(kept.read(run, u"fifo"_s, 100)), ErrorCode::NotAFile);
    EXPECT_EQ(logged().size(), 3);
    EXPECT_EQ(codeOf(kept.read(run, u"none"_s, 100)), ErrorCode::NotFound);
    EXPECT_EQ(logged().size(), 3);
}

TEST_F(LinuxKeptFilesTest, writingPutsAWholePrivateFileInThePlaceOfWhateverStoodThere)
{
    writeRaw(home.path() + u"/other", "theirs");
    linkTo(home.path() + u"/other", run + u"index");
    ASSERT_TRUE(kept.write(run, u"index"_s, "one").ok());
    EXPECT_FALSE(QFileInfo(run + u"index").isSymLink());
    EXPECT_EQ(readRaw(home.path() + u"/other"), "theirs");
    EXPECT_EQ(modeOf(run + u"index"), 0600U);
    ASSERT_TRUE(kept.write(run, u"index"_s, "two").ok());
    EXPECT_EQ(readRaw(run + u"index"), "two");
    EXPECT_EQ(entriesOf(run), QStringList {u"index"_s});
}

TEST_F(LinuxKeptFilesPlainUser, aFileThatTheUserMayNotLinkToIsCopiedWithoutItsRightsOfAnother)
{
    VARNEL_NEEDS_ROOT();
    QFile setting(u"/proc/sys/fs/protected_hardlinks"_s);
    if (!setting.open(QIODevice::ReadOnly) || setting.readAll().trimmed() != "1")
        GTEST_SKIP() << "needs fs.protected_hardlinks";
    writeRaw(path, "old");
    VARNEL_NEEDS_REACH();
    ASSERT_EQ(::chown(qPrintable(path), 0, 0), 0);
    ASSERT_EQ(::chmod(qPrintable(path), 04755), 0);
    makeOld(path);
    const ActingAs user(stranger);
    LinuxKeptFolders kept(home.home(), store.turns());
    const QString run = kept.make(home.path() + u"/Library", u"quillet7"_s).value();
    const Result<KeptFolders::Kept> done = kept.keep(path, run, u"1"_s);
    ASSERT_TRUE(done.ok());
    EXPECT_FALSE(done.value().linked);
    EXPECT_EQ(statusOf(run + u"1").st_uid, stranger);
    EXPECT_EQ(modeOf(run + u"1"), 0755U);
    EXPECT_TRUE(sameMoment(statusOf(run + u"1").st_mtim, {1'100'000'000, 987'654'321}));
}

TEST_F(LinuxKeptFilesPlainUser, aFileThatMayNotBeReadIsNotPermitted)
{
    writeRaw(path, "old", 0200);
    VARNEL_NEEDS_REACH();
    {
        const ActingAs user(stranger);
        LinuxKeptFolders kept(home.home(), store.turns());
        const QString run = kept.make(home.path() + u"/Library", u"quillet7"_s).value();
        EXPECT_EQ(kept.keep(path, run, u"1"_s).error().code, ErrorCode::NotPermitted);
        EXPECT_TRUE(kept.discard(run).value());
    }
    ASSERT_EQ(::chmod(qPrintable(path), 0600), 0);
    EXPECT_EQ(readRaw(path), "old");
}

} // namespace
