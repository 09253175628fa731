#include "backup/SettingsPlayback.h"

#include "settings/Catalogue.h"
#include "support/FailingFileStore.h"
#include "support/LogCapture.h"
#include "support/SettingsHome.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString dock = QStringLiteral("com.apple.dock.plist");
const QString mail = QStringLiteral("com.apple.Mail.plist");

class SettingsPlaybackTest : public testing::Test {
protected:
    [[nodiscard]] qsizetype replacements() const { return store.calls.filter(u"update "_s).size(); }

    SettingsHome home;
    FailingFileStore store {home.store};
    PreferenceFiles files {store};
    SettingAccess access {home.home.home(), files, home.finderInfo};
    RestartFlags flags;
};

} // namespace

TEST_F(SettingsPlaybackTest, EachFileIsReadOnceAndReplacedOnceHoweverManyOfItsSettingsArePlayed)
{
    home.put(dock, u"<key>autohide</key><false/><key>tilesize</key><integer>20</integer>"_s);
    SettingsPlayback playback(access, flags);
    for (int round = 0; round < 50; ++round) {
        EXPECT_TRUE(playback.write(*findSetting(1004), {30 + round, u""_s}));
        EXPECT_EQ(access.read(*findSetting(1004)).value.number, 30 + round);
    }
    EXPECT_TRUE(playback.write(*findSetting(1500), {0}));
    EXPECT_EQ(replacements(), 0);
    EXPECT_EQ(home.read(1004).value.number, 20) << "nothing is carried out yet";
    EXPECT_TRUE(playback.carryOut());
    EXPECT_EQ(replacements(), 2);
    EXPECT_EQ(store.calls.filter(u"read "_s).size(), 2) << qPrintable(store.calls.join(u'\n'));
    EXPECT_EQ(home.read(1004).value.number, 79);
    EXPECT_EQ(home.read(1500).value, SettingValue {0});
    EXPECT_EQ(flags, RestartFlags(RestartFlag::Dock | RestartFlag::Mail));
    EXPECT_EQ(playback.changes().size(), 51);
}

TEST_F(SettingsPlaybackTest, AFileThatCannotBeReplacedKeepsTheFilesAfterItAsTheyAre)
{
    const LogCapture log;
    home.put(dock, u"<key>tilesize</key><integer>20</integer>"_s);
    SettingsPlayback playback(access, flags);
    EXPECT_TRUE(playback.write(*findSetting(1100), {1}));
    EXPECT_TRUE(playback.write(*findSetting(1004), {64}));
    EXPECT_TRUE(playback.write(*findSetting(1500), {0}));
    // Three readings, and the first replacement.
    store.failOperation(5, {ErrorCode::Failed, u"full"_s});
    EXPECT_FALSE(playback.carryOut());
    ASSERT_TRUE(playback.failure());
    EXPECT_EQ(playback.failure()->change.row->id, 1004);
    EXPECT_EQ(playback.failure()->error.text, u"full"_s);
    EXPECT_EQ(home.read(1100).value, SettingValue {1});
    EXPECT_EQ(home.read(1004).value.number, 20);
    EXPECT_FALSE(home.has(mail));
    ASSERT_EQ(playback.changes().size(), 1);
    EXPECT_EQ(playback.changes()[0].row->id, 1100);
}

TEST_F(SettingsPlaybackTest, WhatCannotBeWrittenIsTheErrorOfItsRowAndWhatCameBeforeIsCarriedOut)
{
    const LogCapture log;
    home.putBytes(mail, "broken");
    SettingsPlayback playback(access, flags);
    EXPECT_TRUE(playback.write(*findSetting(1009), {0}));
    const Result<void> second = playback.write(*findSetting(1500), {0});
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().code, ErrorCode::Unloadable);
    EXPECT_FALSE(playback.carryOut());
    EXPECT_EQ(home.read(1009).value, SettingValue {0});
    EXPECT_EQ(home.bytes(mail), "broken");
    EXPECT_EQ(playback.changes().size(), 1);
}

TEST_F(SettingsPlaybackTest, WhatIsOnlyTriedOutIsToldAndTouchesNothing)
{
    home.put(dock, u"<key>tilesize</key><integer>20</integer>"_s);
    const QByteArray before = home.bytes(dock);
    {
        SettingsPlayback playback(access, flags, nullptr, SettingsPlayback::Manner::TryOut);
        EXPECT_TRUE(playback.write(*findSetting(1004), {64}));
        EXPECT_TRUE(playback.write(*findSetting(1009), {1}));
        EXPECT_TRUE(playback.carryOut());
        EXPECT_EQ(playback.changes().size(), 2);
        EXPECT_EQ(playback.changes()[0].oldValue.number, 20);
    }
    EXPECT_EQ(replacements(), 0);
    EXPECT_EQ(home.bytes(dock), before);
    EXPECT_EQ(access.read(*findSetting(1004)).value.number, 20);
}

TEST_F(SettingsPlaybackTest, WhatIsDroppedIsNotSeenAnyMore)
{
    home.put(dock, u"<key>tilesize</key><integer>20</integer>"_s);
    {
        SettingsPlayback playback(access, flags);
        EXPECT_TRUE(playback.write(*findSetting(1004), {64}));
    }
    EXPECT_EQ(access.read(*findSetting(1004)).value.number, 20);
}
