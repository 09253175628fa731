#include "StoreFixture.h"

using namespace varnel;
using namespace varnel::test;

namespace {

struct LinuxFileStoreAttributes : StoreFixture { };
using LinuxFileStoreForeignHome = ForeignHome;
using LinuxFileStorePlainUser = PlainUser;

TEST_F(LinuxFileStoreAttributes, TheModeIsKeptWhateverTheUsersMask)
{
    for (const mode_t mode : {0600U, 0644U, 0664U, 0666U, 0640U, 0755U, 01644U}) {
        writeRaw(path, "old", mode);
        const mode_t mask = ::umask(0077);
        const bool done = update("new");
        ::umask(mask);
        EXPECT_TRUE(done);
        EXPECT_EQ(modeOf(path), mode);
    }
}

TEST_F(LinuxFileStoreAttributes, TheRightToRunAsTheOwnerIsNotKept)
{
    writeRaw(path, "old", 06755);
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(modeOf(path), 0755U);
}

TEST_F(LinuxFileStoreAttributes, ExtendedAttributesAreKept)
{
    writeRaw(path, "old");
    const QByteArray info(32, '\x40');
    const QByteArray big(2000, 'x');
    if (!setAttribute(path, "user.com.apple.FinderInfo", info))
        GTEST_SKIP() << "needs a file system with extended attributes";
    ASSERT_TRUE(setAttribute(path, "user.big", big));
    ASSERT_TRUE(setAttribute(path, "user.empty", ""));
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_EQ(attributeOf(path, "user.com.apple.FinderInfo"), info);
    EXPECT_EQ(attributeOf(path, "user.big"), big);
    EXPECT_EQ(attributeOf(path, "user.empty"), QByteArray());
}

TEST_F(LinuxFileStoreAttributes, RightsThatAFileGivesToAProgramAreNotKept)
{
    writeRaw(path, "old", 0755);
    // The kernel's form, version 2: CAP_NET_RAW, in effect.
    const QByteArray capabilities = QByteArray::fromHex("0100000200200000000000000000000000000000");
    if (!setAttribute(path, "security.capability", capabilities))
        GTEST_SKIP() << "needs root, and a file system with extended attributes";
    ASSERT_EQ(attributeOf(path, "security.capability"), capabilities);
    ASSERT_TRUE(setAttribute(path, "user.kept", "yes"));
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_EQ(attributeOf(path, "security.capability"), std::nullopt);
    EXPECT_EQ(attributeOf(path, "user.kept"), "yes");
}

TEST_F(LinuxFileStoreAttributes, AnAccessControlListIsKeptWithItsMode)
{
    writeRaw(path, "old");
    const QByteArray list = accessControlList(6, 6);
    if (!setAttribute(path, accessList, list))
        GTEST_SKIP() << "needs a file system with access control lists";
    const mode_t mode = modeOf(path);
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(attributeOf(path, accessList), list);
    EXPECT_EQ(modeOf(path), mode);
    EXPECT_EQ(mode, 0660U);
}

TEST_F(LinuxFileStoreAttributes, TheFoldersDefaultListIsNotPutOnAFileThatHadNone)
{
    writeRaw(path, "old", 0640);
    if (!setAttribute(folder, defaultList, accessControlList(7, 7)))
        GTEST_SKIP() << "needs a file system with access control lists";
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(attributeOf(path, accessList), std::nullopt);
    EXPECT_EQ(modeOf(path), 0640U);
}

TEST_F(LinuxFileStoreAttributes, ANewFileIsPrivateWithoutAMaskAndBeneathADefaultList)
{
    const mode_t mask = ::umask(0);
    EXPECT_TRUE(update("new"));
    ::umask(mask);
    EXPECT_EQ(modeOf(path), 0600U);
    if (!setAttribute(folder, defaultList, accessControlList(7, 7)))
        GTEST_SKIP() << "needs a file system with access control lists";
    const QString other = home.preference(QStringLiteral("b.plist"));
    ASSERT_TRUE(store.update(other, become("new")).ok());
    EXPECT_EQ(modeOf(other), 0600U);
}

TEST_F(LinuxFileStoreForeignHome, OwnerAndGroupAreKept)
{
    writeRaw(path, "old", 0640);
    handOver();
    ASSERT_EQ(::chown(qPrintable(path), stranger, 777), 0);
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_EQ(statusOf(path).st_uid, stranger);
    EXPECT_EQ(statusOf(path).st_gid, 777U);
    EXPECT_EQ(modeOf(path), 0640U);
}

TEST_F(LinuxFileStorePlainUser, AFileOfTheUsersOwnIsReplacedWithoutPrivileges)
{
    writeRaw(path, "old", 0600);
    VARNEL_NEEDS_REACH();
    const ActingAs user(stranger);
    EXPECT_TRUE(update("new"));
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_EQ(statusOf(path).st_uid, ::geteuid());
}

TEST_F(LinuxFileStorePlainUser, AReadOnlyFileIsLeftAlone)
{
    writeRaw(path, "old", 0444);
    VARNEL_NEEDS_REACH();
    const ActingAs user(stranger);
    EXPECT_EQ(updateError(path), ErrorCode::NotPermitted);
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(modeOf(path), 0444U);
    EXPECT_EQ(entriesOf(folder).size(), 1);
    EXPECT_TRUE(loggedOnce(path));
}

TEST_F(LinuxFileStorePlainUser, SomebodyElsesFileIsLeftAloneThoughEverybodyMayWriteToIt)
{
    VARNEL_NEEDS_ROOT();
    writeRaw(path, "old", 0666);
    VARNEL_NEEDS_REACH();
    ASSERT_EQ(::chown(qPrintable(path), 0, 0), 0);
    const ActingAs user(stranger);
    EXPECT_EQ(updateError(path), ErrorCode::NotPermitted);
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(statusOf(path).st_uid, 0U);
    EXPECT_EQ(entriesOf(folder).size(), 1);
    EXPECT_TRUE(loggedOnce(path));
}

TEST_F(LinuxFileStorePlainUser, AReadOnlyFolderIsLeftAlone)
{
    writeRaw(path, "old", 0600);
    VARNEL_NEEDS_REACH();
    ASSERT_EQ(::chmod(qPrintable(folder), 0555), 0);
    const ActingAs user(stranger);
    EXPECT_EQ(updateError(path), ErrorCode::NotPermitted);
    EXPECT_EQ(updateError(home.preference(QStringLiteral("new.plist"))), ErrorCode::NotPermitted);
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(entriesOf(folder).size(), 1);
    ASSERT_EQ(::chmod(qPrintable(folder), 0700), 0);
}

TEST_F(LinuxFileStorePlainUser, AFolderThatMayNotBeSearchedIsNotPermitted)
{
    writeRaw(path, "old", 0600);
    VARNEL_NEEDS_REACH();
    ASSERT_EQ(::chmod(qPrintable(folder), 0600), 0);
    {
        const ActingAs user(stranger);
        EXPECT_FALSE(store.exists(path));
        EXPECT_EQ(readError(path), ErrorCode::NotPermitted);
        EXPECT_TRUE(loggedOnce(path));
        EXPECT_EQ(updateError(path), ErrorCode::NotPermitted);
    }
    ASSERT_EQ(::chmod(qPrintable(folder), 0700), 0);
    EXPECT_EQ(readRaw(path), "old");
}

TEST_F(LinuxFileStorePlainUser, AFileThatMayNotBeReadIsNotPermitted)
{
    writeRaw(path, "old", 0200);
    VARNEL_NEEDS_REACH();
    {
        const ActingAs user(stranger);
        EXPECT_TRUE(store.exists(path));
        EXPECT_EQ(readError(path), ErrorCode::NotPermitted);
        EXPECT_EQ(updateError(path), ErrorCode::NotPermitted);
    }
    ASSERT_EQ(::chmod(qPrintable(path), 0600), 0);
    EXPECT_EQ(readRaw(path), "old");
}

} // namespace
