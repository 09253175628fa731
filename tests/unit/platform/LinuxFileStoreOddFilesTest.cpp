#include "StoreFixture.h"

#include <QDir>

#include <csignal>

#include <sys/resource.h>
#include <sys/sysmacros.h>

using namespace varnel;
using namespace varnel::test;

namespace {

/// What stands where a file is expected. That none of these tests hangs is half of what they say.
struct LinuxFileStoreOddFiles : StoreFixture {
    void expectNoFile()
    {
        EXPECT_TRUE(store.exists(path));
        EXPECT_EQ(readError(path), ErrorCode::NotAFile);
        EXPECT_TRUE(loggedOnce(path));
        EXPECT_EQ(updateError(path), ErrorCode::NotAFile);
        EXPECT_EQ(entriesOf(folder), QStringList {QStringLiteral("a.plist")});
    }
};

TEST_F(LinuxFileStoreOddFiles, AFifoIsNeverWaitedFor)
{
    ASSERT_EQ(::mkfifo(qPrintable(path), 0600), 0);
    expectNoFile();
    EXPECT_TRUE(S_ISFIFO(statusOf(path).st_mode));
}

TEST_F(LinuxFileStoreOddFiles, AFolderIsNoFile)
{
    ASSERT_TRUE(QDir().mkpath(path + u"/inside"));
    expectNoFile();
    EXPECT_TRUE(QFileInfo(path + u"/inside").isDir());
}

TEST_F(LinuxFileStoreOddFiles, ADeviceIsNoFile)
{
    if (::mknod(qPrintable(path), S_IFCHR | 0600, makedev(1, 5)) != 0)
        GTEST_SKIP() << "needs the right to make device files";
    expectNoFile();
    EXPECT_TRUE(S_ISCHR(statusOf(path).st_mode));
}

TEST_F(LinuxFileStoreOddFiles, ALinkToADeviceIsNoFile)
{
    linkTo(QStringLiteral("/dev/zero"), path);
    expectNoFile();
}

TEST_F(LinuxFileStoreOddFiles, ASocketIsNoFile)
{
    ASSERT_EQ(::mknod(qPrintable(path), S_IFSOCK | 0600, 0), 0);
    expectNoFile();
}

TEST_F(LinuxFileStoreOddFiles, AFileOnTheWayIsNoFolder)
{
    writeRaw(path, "old");
    const QString inside = path + u"/b.plist";
    EXPECT_FALSE(store.exists(inside));
    EXPECT_EQ(readError(inside), ErrorCode::Failed);
    EXPECT_TRUE(loggedOnce(inside));
    EXPECT_EQ(updateError(inside), ErrorCode::Failed);
    EXPECT_EQ(readRaw(path), "old");
}

TEST_F(LinuxFileStoreOddFiles, AFileWhoseSizeIsNeverTrueIsGivenUp)
{
    // The kernel says that it is empty, and then gives bytes: a file that grows under the reader.
    linkTo(QStringLiteral("/proc/self/status"), path);
    EXPECT_EQ(readError(path), ErrorCode::Failed);
    EXPECT_TRUE(loggedOnce(path));
}

TEST_F(LinuxFileStoreOddFiles, AFailureToReadIsLoggedOnceHoweverManyReadIt)
{
    linkTo(QStringLiteral("a.plist"), path);
    EXPECT_EQ(readError(path), ErrorCode::Failed);
    EXPECT_EQ(readError(path), ErrorCode::Failed);
    EXPECT_TRUE(loggedOnce(path));
    EXPECT_EQ(updateError(path), ErrorCode::Failed);
    EXPECT_EQ(logged().size(), 2);
}

TEST_F(LinuxFileStoreOddFiles, AHomeThatIsGoneIsNotFound)
{
    LinuxFileStore gone({home.path() + u"/gone", true});
    EXPECT_EQ(gone.read(home.path() + u"/gone/a.plist").error().code, ErrorCode::NotFound);
    EXPECT_EQ(gone.update(home.path() + u"/gone/a.plist", become("x")).error().code,
              ErrorCode::NotFound);
    EXPECT_FALSE(QFileInfo::exists(home.path() + u"/gone"));
}

TEST_F(LinuxFileStoreOddFiles, AFullDiskLeavesTheOldFileAndNoOther)
{
    writeRaw(path, "old");
    // The size that this process may give a file stands in for the disk's.
    struct rlimit limit { };
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small {4096, limit.rlim_max};
    const auto handler = ::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const ErrorCode error = [&] {
        const Result<void> result = store.update(path, become(QByteArray(10000, 'x')));
        return result ? ErrorCode::Invalid : result.error().code;
    }();
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    ::signal(SIGXFSZ, handler);
    EXPECT_EQ(error, ErrorCode::Failed);
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(entriesOf(folder), QStringList {QStringLiteral("a.plist")});
    EXPECT_TRUE(loggedOnce(path));
}

} // namespace
