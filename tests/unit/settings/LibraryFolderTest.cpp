#include "settings/LibraryFolder.h"

#include "settings/Catalogue.h"
#include "settings/SettingAccess.h"
#include "support/FakeFinderInfo.h"
#include "support/LogCapture.h"
#include "support/SettingsHome.h"

#include <gtest/gtest.h>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString folder = QStringLiteral("/home/Library");

FinderInfoBytes flagged(std::uint8_t high, std::uint8_t low)
{
    FinderInfoBytes bytes {};
    bytes.fill(0xA5);
    bytes[8] = high;
    bytes[9] = low;
    return bytes;
}

} // namespace

TEST(LibraryFolder, TheInvisibleFlagIsTheBit0x4000OfTheBigEndianWordAtByteEight)
{
    FakeFinderInfo info;
    info.stored.insert(folder, flagged(0x40, 0x00));
    EXPECT_TRUE(isInvisible(info, folder));
    info.stored.insert(folder, flagged(0xBF, 0xFF));
    EXPECT_FALSE(isInvisible(info, folder));
    EXPECT_FALSE(isInvisible(info, u"/home/other"_s)) << "never set";
}

TEST(LibraryFolder, SettingAndClearingTheFlagLeavesEveryOtherBitAlone)
{
    FakeFinderInfo info;
    info.stored.insert(folder, flagged(0x9A, 0x5B));
    EXPECT_EQ(setFileInvisibility(info, folder, true), 0);
    EXPECT_EQ(info.stored.value(folder), flagged(0xDA, 0x5B));
    EXPECT_EQ(setFileInvisibility(info, folder, false), 0);
    EXPECT_EQ(info.stored.value(folder), flagged(0x9A, 0x5B));
}

TEST(LibraryFolder, AFlagThatIsSoAlreadyIsNotWritten)
{
    FakeFinderInfo info;
    EXPECT_EQ(setFileInvisibility(info, folder, false), 0);
    EXPECT_EQ(info.calls, QStringList {u"read /home/Library"_s});
}

TEST(LibraryFolder, WhatCannotBeReadCountsAsInvisibleAndIsNotWritten)
{
    FakeFinderInfo info;
    info.readError = EACCES;
    EXPECT_TRUE(isInvisible(info, folder));
    EXPECT_EQ(setFileInvisibility(info, folder, false), EACCES);
    EXPECT_FALSE(info.calls.contains(u"write /home/Library"_s));
}

TEST(LibraryFolder, TheErrorNumberOfAFailedWriteIsTheOutcome)
{
    FakeFinderInfo info;
    info.writeError = EROFS;
    EXPECT_EQ(setFileInvisibility(info, folder, true), EROFS);
}

TEST(LibraryFolder, TheSettingReadsHiddenOrShownAndNeverTheDefault)
{
    SettingsHome home;
    EXPECT_EQ(home.read(1302).value, SettingValue {1});
    ASSERT_TRUE(home.write(1302, {0}).ok());
    EXPECT_EQ(home.read(1302).value, SettingValue {0});
    EXPECT_TRUE(home.read(1302).found);
}

TEST(LibraryFolder, SavingTheDefaultOrAnyUnknownIndexHidesTheFolder)
{
    SettingsHome home;
    for (const int index : {2, -1, 7}) {
        ASSERT_TRUE(home.write(1302, {1}).ok());
        EXPECT_EQ(home.read(1302).value, SettingValue {1});
        ASSERT_TRUE(home.write(1302, {index}).ok());
        EXPECT_EQ(home.read(1302).value, SettingValue {0}) << index;
    }
    EXPECT_EQ(home.flags, RestartFlags());
}

TEST(LibraryFolder, AFailureOfTheSettingIsToldAndNamesTheFolderInTheLog)
{
    SettingsHome home;
    FakeFinderInfo info;
    info.readError = EPERM;
    SettingAccess access(home.home.home(), home.files, info);
    const LogCapture log;
    const Result<void> written = access.write(*findSetting(1302), {1}, home.flags);
    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().code, ErrorCode::NotPermitted);
    EXPECT_TRUE(log.texts(u"varnel.io"_s).value(0).startsWith(home.home.path() + u"/Library: "));
    EXPECT_EQ(access.read(*findSetting(1302)).value, SettingValue {0});
    EXPECT_FALSE(access.read(*findSetting(1302)).found);
}
