#include "platform/linux/LinuxSystemDisk.h"

#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// A folder that stands for a disk, beside one that stands for the host.
struct LinuxSystemDiskTest : testing::Test {
    LinuxSystemDiskTest()
    {
        QDir().mkpath(root + u"/Users/ann");
        QDir().mkpath(root + u"/System");
        QDir().mkpath(host);
        writeRaw(host + u"/version", "the host's");
    }

    [[nodiscard]] QByteArray read(const QString &below) const
    {
        const Result<QByteArray> bytes = LinuxSystemDisk(root).read(root + below);
        return bytes ? bytes.value() : bytes.error().text.toUtf8();
    }

    TemporaryHome folder;
    const QString root = folder.path() + u"/disk";
    const QString host = folder.path() + u"/host";
};

} // namespace

TEST_F(LinuxSystemDiskTest, readsAFileOfTheDisk)
{
    writeRaw(root + u"/System/version", "the disk's");
    EXPECT_EQ(read(u"/System/version"_s), "the disk's");
    EXPECT_TRUE(LinuxSystemDisk(root).exists(root + u"/System/version"));
    EXPECT_FALSE(LinuxSystemDisk(root).exists(root + u"/System/other"));
}

TEST_F(LinuxSystemDiskTest, anAbsoluteLinkLeadsToAPlaceOnTheDisk)
{
    QDir().mkpath(root + host);
    linkTo(host + u"/version", root + u"/System/version");
    EXPECT_TRUE(read(u"/System/version"_s).endsWith("/System/version: No such file or directory"));
    EXPECT_FALSE(LinuxSystemDisk(root).exists(root + u"/System/version"));
    writeRaw(root + host + u"/version", "the disk's");
    EXPECT_EQ(read(u"/System/version"_s), "the disk's");
}

TEST_F(LinuxSystemDiskTest, aLinkThatClimbsOutEndsAtTheDisksFolder)
{
    linkTo(u"../../../../../../../../../.."_s + host + u"/version", root + u"/System/version");
    EXPECT_TRUE(read(u"/System/version"_s).endsWith("/System/version: No such file or directory"));
    linkTo(u"/proc/self/root"_s + host, root + u"/System/folder");
    EXPECT_TRUE(
        read(u"/System/folder/version"_s).endsWith("folder/version: No such file or directory"));
}

TEST_F(LinuxSystemDiskTest, whatIsNoFileIsRefusedAndNeverWaitedFor)
{
    ASSERT_EQ(::mkfifo(qPrintable(root + u"/System/version"), 0600), 0);
    EXPECT_TRUE(read(u"/System/version"_s).endsWith("/System/version: Not a regular file"));
}

TEST_F(LinuxSystemDiskTest, thatOfAHomeIsReachedThroughTheHome)
{
    writeRaw(root + u"/System/version", "the disk's");
    HomeFolder home {root + u"/Users/ann", false};
    EXPECT_EQ(LinuxSystemDisk(home).root(), root);
    const QString moved = folder.path() + u"/moved";
    ASSERT_TRUE(QDir().rename(root, moved));
    home.reachedAt = moved + u"/Users/ann";
    const Result<QByteArray> bytes = LinuxSystemDisk(home).read(root + u"/System/version");
    ASSERT_TRUE(bytes) << bytes.error().text.toStdString();
    EXPECT_EQ(bytes.value(), "the disk's");
}

TEST_F(LinuxSystemDiskTest, homesElsewhereHaveNone)
{
    const QString below = root + u"/Users/ann/more";
    for (const QString &path : {folder.path(), root, below, u""_s}) {
        const LinuxSystemDisk disk(HomeFolder {path, false});
        EXPECT_TRUE(disk.root().isNull()) << path.toStdString();
        EXPECT_FALSE(disk.read(u"/System/version"_s));
    }
    EXPECT_EQ(LinuxSystemDisk(HomeFolder {u"/Users/ann"_s, false}).root(), u"/");
    EXPECT_EQ(LinuxSystemDisk(HomeFolder {folder.path(), true}).root(), u"/");
}

TEST_F(LinuxSystemDiskTest, aDiskThatCannotBeOpenedSaysWhy)
{
    const LinuxSystemDisk disk(folder.path() + u"/none");
    const Result<QByteArray> bytes = disk.read(folder.path() + u"/none/System/version");
    ASSERT_FALSE(bytes);
    EXPECT_TRUE(bytes.error().text.endsWith(u"/none/System/version: No such file or directory"));
}
