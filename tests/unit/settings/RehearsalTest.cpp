#include "settings/Rehearsal.h"

#include "support/FailingFileStore.h"
#include "support/LogCapture.h"
#include "support/SettingsHome.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString dock = QStringLiteral("com.apple.dock.plist");

class RehearsalTest : public testing::Test {
protected:
    bool wouldChange(int id, const SettingValue &value)
    {
        const Result<bool> answer = rehearsal.wouldChange(*findSetting(id), value);
        EXPECT_TRUE(answer.ok());
        return answer.ok() && answer.value();
    }

    SettingsHome home;
    Rehearsal rehearsal {home.home.home(), home.store, home.finderInfo};
};

} // namespace

TEST_F(RehearsalTest, AValueThatIsThereAlreadyWouldChangeNothing)
{
    home.put(dock, u"<key>autohide</key><true/>"_s);
    EXPECT_FALSE(wouldChange(1009, {0}));
    EXPECT_TRUE(rehearsal.changedPaths().isEmpty());
}

TEST_F(RehearsalTest, TheSameChoiceInAnotherTypeWouldChangeTheFile)
{
    home.put(dock, u"<key>autohide</key><integer>1</integer>"_s);
    EXPECT_TRUE(wouldChange(1009, {0}));
}

TEST_F(RehearsalTest, RemovingAMissingKeyOrFromAMissingFileWouldChangeNothing)
{
    EXPECT_FALSE(wouldChange(1009, {2}));
    home.put(dock, u"<key>other</key><true/>"_s);
    EXPECT_FALSE(wouldChange(1009, {2}));
    EXPECT_FALSE(wouldChange(1004, {-1}));
}

TEST_F(RehearsalTest, ANewValueWouldChangeItsFileAndTouchesNothing)
{
    home.put(dock, u"<key>autohide</key><true/>"_s);
    const QByteArray before = home.bytes(dock);
    EXPECT_TRUE(wouldChange(1009, {1}));
    EXPECT_TRUE(wouldChange(1300, {2}));
    EXPECT_EQ(rehearsal.changedPaths(),
              (QStringList {home.path(dock), home.path(u".GlobalPreferences.plist"_s)}));
    EXPECT_EQ(home.bytes(dock), before);
    EXPECT_FALSE(home.has(u".GlobalPreferences.plist"_s));
}

TEST_F(RehearsalTest, LaterTriesSeeWhatTheEarlierOnesWouldHaveLeft)
{
    EXPECT_TRUE(wouldChange(1600, {0}));
    EXPECT_FALSE(wouldChange(1603, {0})) << "the same key";
    EXPECT_TRUE(wouldChange(1603, {1}));
}

TEST_F(RehearsalTest, AFileThatCannotBeReadAtFirstIsNeverTakenForAMissingOneLater)
{
    home.put(dock, u"<key>tilesize</key><integer>48</integer>"_s);
    FailingFileStore failing(home.store);
    failing.failOperation(1, {ErrorCode::Failed, u"for the moment"_s});
    Rehearsal one(home.home.home(), failing, home.finderInfo);
    const SettingRow &size = *findSetting(1004);
    EXPECT_FALSE(one.read({&size}).first().found);
    EXPECT_EQ(one.wouldChange(size, {64}).error().text, u"for the moment");
    EXPECT_EQ(failing.operations, 1) << "one look for all answers";
}

TEST_F(RehearsalTest, WhatIsReadIsWhatStandsThereBeforeTheTries)
{
    home.put(dock, u"<key>tilesize</key><integer>48</integer><key>autohide</key><true/>"_s);
    const QList<SettingReading> readings =
        rehearsal.read({findSetting(1004), findSetting(1009), findSetting(1300)});
    ASSERT_EQ(readings.size(), 3);
    EXPECT_EQ(readings[0].value.number, 48);
    EXPECT_TRUE(readings[1].found);
    EXPECT_FALSE(readings[2].found);
}

TEST_F(RehearsalTest, TheFolderFlagIsTriedOutToo)
{
    EXPECT_FALSE(wouldChange(1302, {1}));
    EXPECT_TRUE(wouldChange(1302, {2}));
    EXPECT_FALSE(wouldChange(1302, {0})) << "hidden by the default already";
    EXPECT_EQ(rehearsal.changedPaths(), QStringList {home.home.path() + u"/Library"});
    EXPECT_EQ(home.read(1302).value, SettingValue {1});
    EXPECT_TRUE(wouldChange(1302, {1}));
    EXPECT_TRUE(rehearsal.changedPaths().isEmpty()) << "back to what it is";
}

TEST_F(RehearsalTest, AFileThatCannotBeLoadedIsTheErrorOfTheTry)
{
    home.putBytes(dock, "broken");
    const LogCapture log;
    const Result<bool> answer = rehearsal.wouldChange(*findSetting(1009), {0});
    ASSERT_FALSE(answer.ok());
    EXPECT_EQ(answer.error().code, ErrorCode::Unloadable);
    EXPECT_EQ(home.bytes(dock), "broken");
}

TEST(DryRunFileStore, ReadsBackWhatATryLeftAndTheRestFromTheInnerStore)
{
    SettingsHome home;
    home.putBytes(u"a"_s, "old");
    home.putBytes(u"b"_s, "other");
    DryRunFileStore store(home.store);
    const auto replaceBy = [](const char *bytes) {
        return [bytes](const std::optional<QByteArray> &) -> Result<std::optional<QByteArray>> {
            return std::optional(QByteArray(bytes));
        };
    };
    ASSERT_TRUE(store.update(home.path(u"a"_s), replaceBy("new")).ok());
    ASSERT_TRUE(store.update(home.path(u"c"_s), replaceBy("made")).ok());
    EXPECT_EQ(store.read(home.path(u"a"_s)).value(), "new");
    EXPECT_EQ(store.read(home.path(u"b"_s)).value(), "other");
    EXPECT_TRUE(store.exists(home.path(u"c"_s)));
    EXPECT_FALSE(store.exists(home.path(u"d"_s)));
    EXPECT_EQ(store.read(home.path(u"d"_s)).error().code, ErrorCode::NotFound);
    EXPECT_EQ(store.changedPaths(), (QStringList {home.path(u"a"_s), home.path(u"c"_s)}));
    ASSERT_TRUE(store.update(home.path(u"a"_s), replaceBy("old")).ok());
    EXPECT_EQ(store.changedPaths(), QStringList {home.path(u"c"_s)}) << "as it was again";
    EXPECT_EQ(home.bytes(u"a"_s), "old");
}
