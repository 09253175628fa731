#include "platform/linux/LinuxFinderInfo.h"

#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>

#include <gtest/gtest.h>

#include <cerrno>

#include <unistd.h>

using namespace varnel;
using namespace varnel::test;

namespace {

constexpr char attribute[] = "user.com.apple.FinderInfo";

FinderInfoBytes invisible()
{
    FinderInfoBytes bytes {};
    bytes[8] = 0x40;
    bytes[31] = 0xff;
    return bytes;
}

QByteArray asArray(const FinderInfoBytes &bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

struct LinuxFinderInfoTest : testing::Test {
    void SetUp() override
    {
        if (!setAttribute(home.path(), "user.varnel.test", "x"))
            GTEST_SKIP() << "needs a file system with extended attributes";
    }
    TemporaryHome home;
    QString library = home.path() + u"/Library";
    LinuxFinderInfo info {home.home()};
};

TEST_F(LinuxFinderInfoTest, WhereNoneWasEverSetAllIsZero)
{
    const FinderInfo::Reading reading = info.read(library);
    EXPECT_EQ(reading.error, 0);
    EXPECT_EQ(reading.bytes, FinderInfoBytes {});
}

TEST_F(LinuxFinderInfoTest, WhatIsWrittenIsReadAndStandsInTheAttribute)
{
    EXPECT_EQ(info.write(library, invisible()), 0);
    EXPECT_EQ(info.read(library).error, 0);
    EXPECT_EQ(info.read(library).bytes, invisible());
    EXPECT_EQ(attributeOf(library, attribute), asArray(invisible()));
}

TEST_F(LinuxFinderInfoTest, NothingElseOfTheFolderChanges)
{
    ASSERT_TRUE(setAttribute(library, "user.other", "kept"));
    const struct stat before = statusOf(library);
    ASSERT_EQ(info.write(library, invisible()), 0);
    const struct stat after = statusOf(library);
    EXPECT_EQ(attributeOf(library, "user.other"), QByteArray("kept"));
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_mtim.tv_sec, before.st_mtim.tv_sec);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(entriesOf(library).size(), 2);
}

TEST_F(LinuxFinderInfoTest, AFileHasItToo)
{
    const QString file = home.preference(QStringLiteral("a.plist"));
    writeRaw(file, "bytes");
    EXPECT_EQ(info.write(file, invisible()), 0);
    EXPECT_EQ(info.read(file).bytes, invisible());
    EXPECT_EQ(readRaw(file), "bytes");
}

TEST_F(LinuxFinderInfoTest, BytesThatAreThereAlreadyAreNotWrittenAgain)
{
    ASSERT_TRUE(setAttribute(library, attribute, QByteArray(3, '\x7f')));
    FinderInfoBytes same {};
    std::fill_n(same.begin(), 3, std::uint8_t {0x7f});
    EXPECT_EQ(info.write(library, same), 0);
    EXPECT_EQ(attributeOf(library, attribute), QByteArray(3, '\x7f'));
    EXPECT_EQ(info.write(home.path(), FinderInfoBytes {}), 0);
    EXPECT_EQ(attributeOf(home.path(), attribute), std::nullopt);
}

TEST_F(LinuxFinderInfoTest, AShortValueGoesOnInZeros)
{
    ASSERT_TRUE(setAttribute(library, attribute, QByteArray("\1\2", 2)));
    FinderInfoBytes expected {};
    expected[0] = 1;
    expected[1] = 2;
    EXPECT_EQ(info.read(library).error, 0);
    EXPECT_EQ(info.read(library).bytes, expected);
}

TEST_F(LinuxFinderInfoTest, OfALongValueTheFirstBytesCount)
{
    ASSERT_TRUE(setAttribute(library, attribute, asArray(invisible()) + QByteArray(100, 'x')));
    EXPECT_EQ(info.read(library).error, 0);
    EXPECT_EQ(info.read(library).bytes, invisible());
}

TEST_F(LinuxFinderInfoTest, WhereNothingStandsItCannotBeRead)
{
    EXPECT_EQ(info.read(home.path() + u"/No").error, ENOENT);
    EXPECT_EQ(info.write(home.path() + u"/No", invisible()), ENOENT);
    EXPECT_EQ(info.read(home.path() + u"/No/Library").error, ENOENT);
}

TEST_F(LinuxFinderInfoTest, AFileSystemWithoutAttributesCountsAsUnreadable)
{
    const LinuxFinderInfo elsewhere({QStringLiteral("/proc"), true});
    EXPECT_EQ(elsewhere.read(QStringLiteral("/proc/self")).error, ENOTSUP);
}

TEST_F(LinuxFinderInfoTest, AFifoHasNoneAndIsNeverWaitedFor)
{
    const QString fifo = home.path() + u"/fifo";
    ASSERT_EQ(::mkfifo(qPrintable(fifo), 0600), 0);
    EXPECT_EQ(info.read(fifo).error, ENOTSUP);
    EXPECT_EQ(info.write(fifo, invisible()), ENOTSUP);
}

TEST_F(LinuxFinderInfoTest, ALinkIsFollowedInOnesOwnHome)
{
    linkTo(QStringLiteral("Library"), home.path() + u"/Alias");
    ASSERT_EQ(info.write(home.path() + u"/Alias", invisible()), 0);
    EXPECT_EQ(info.read(library).bytes, invisible());
}

TEST_F(LinuxFinderInfoTest, ALinkOutOfSomebodyElsesHomeIsRefused)
{
    VARNEL_NEEDS_ROOT();
    const TemporaryHome other;
    ASSERT_TRUE(QDir(library).removeRecursively());
    linkTo(other.path() + u"/Library", library);
    giveAll(home.path(), stranger, stranger);
    EXPECT_EQ(info.read(library).error, EXDEV);
    EXPECT_EQ(info.write(library, invisible()), EXDEV);
    EXPECT_EQ(attributeOf(other.path() + u"/Library", attribute), std::nullopt);
}

TEST_F(LinuxFinderInfoTest, WithoutTheRightToWriteNothingIsWritten)
{
    VARNEL_NEEDS_ROOT();
    giveAll(home.path(), stranger, stranger);
    ASSERT_EQ(::chown(qPrintable(library), 0, 0), 0);
    ASSERT_EQ(::chmod(qPrintable(library), 0755), 0);
    int error = 0;
    {
        const ActingAs user(stranger);
        error = info.write(library, invisible());
    }
    EXPECT_EQ(error, EACCES);
    EXPECT_EQ(attributeOf(library, attribute), std::nullopt);
}

} // namespace
