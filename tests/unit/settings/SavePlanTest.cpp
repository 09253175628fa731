#include "settings/SavePlan.h"

#include "base/Containers.h"
#include "support/FailingFileStore.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"
#include "support/SettingsHome.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString dock = QStringLiteral("com.apple.dock.plist");
const QString mail = QStringLiteral("com.apple.Mail.plist");

SettingChange wanted(int id, const SettingValue &value)
{
    return {findSetting(id), {}, value};
}

/// Keeps the rows in memory, and does something before the first.
struct Keeper : OldValueKeeper {
    Result<void> addDataToBackupFile(const ChangeRecord &record) override
    {
        if (rows.isEmpty() && atFirst)
            atFirst();
        rows.append(record);
        return {};
    }
    QList<ChangeRecord> rows;
    std::function<void()> atFirst;
};

class SavePlanTest : public testing::Test {
protected:
    [[nodiscard]] SavePlan plan(const QList<SettingChange> &values)
    {
        return {home.access, values};
    }
    bool wouldChange(int id, const SettingValue &value)
    {
        const SavePlan one = plan({wanted(id, value)});
        EXPECT_FALSE(one.settings().front().error);
        return one.settings().front().differs;
    }

    SettingsHome home;
    Keeper keeper;
};

} // namespace

TEST_F(SavePlanTest, AValueThatIsThereAlreadyChangesNothing)
{
    home.put(dock, u"<key>autohide</key><true/>"_s);
    EXPECT_FALSE(wouldChange(1009, {0}));
}

TEST_F(SavePlanTest, TheSameChoiceInAnotherTypeChangesTheFile)
{
    home.put(dock, u"<key>autohide</key><integer>1</integer>"_s);
    EXPECT_TRUE(wouldChange(1009, {0}));
}

TEST_F(SavePlanTest, RemovingAMissingKeyOrFromAMissingFileChangesNothing)
{
    EXPECT_FALSE(wouldChange(1009, {2}));
    home.put(dock, u"<key>other</key><true/>"_s);
    EXPECT_FALSE(wouldChange(1009, {2}));
    EXPECT_FALSE(wouldChange(1004, {-1}));
}

TEST_F(SavePlanTest, APlanTouchesNothing)
{
    home.put(dock, u"<key>autohide</key><true/>"_s);
    const QByteArray before = home.bytes(dock);
    EXPECT_TRUE(wouldChange(1009, {1}));
    EXPECT_TRUE(wouldChange(1300, {2}));
    EXPECT_EQ(home.bytes(dock), before);
    EXPECT_FALSE(home.has(u".GlobalPreferences.plist"_s));
}

TEST_F(SavePlanTest, EachSettingIsPlannedOnTheResultOfThoseBeforeIt)
{
    const SavePlan both = plan({wanted(1600, {0}), wanted(1603, {0})});
    EXPECT_TRUE(both.settings()[0].differs);
    EXPECT_FALSE(both.settings()[1].differs) << "the same key";
}

TEST_F(SavePlanTest, TheOldValueIsThatBeforeTheSave)
{
    home.put(dock, u"<key>tilesize</key><integer>48</integer>"_s);
    const SavePlan two = plan({wanted(1004, {64}), wanted(1009, {0})});
    EXPECT_EQ(two.settings()[0].change.oldValue, SettingValue {48});
    EXPECT_EQ(two.settings()[1].change.oldValue, SettingValue {2});
}

TEST_F(SavePlanTest, OfSeveralValuesForOneSettingTheLastCounts)
{
    const SavePlan last = plan({wanted(1004, {64}), wanted(1009, {0}), wanted(1004, {32})});
    ASSERT_EQ(last.settings().size(), 2);
    EXPECT_EQ(last.settings()[1].change.newValue, SettingValue {32});
}

TEST_F(SavePlanTest, TheFolderFlagIsPlannedToo)
{
    EXPECT_FALSE(wouldChange(1302, {1}));
    EXPECT_TRUE(wouldChange(1302, {2}));
    EXPECT_EQ(home.read(1302).value, SettingValue {1});
}

TEST_F(SavePlanTest, WhatASaveNeverMakesIsTold)
{
    const SavePlan nested = plan({wanted(1204, {0}), wanted(1009, {0})});
    EXPECT_TRUE(nested.settings()[0].notMade);
    EXPECT_FALSE(nested.settings()[1].notMade);
}

TEST_F(SavePlanTest, AFileThatIsNoPropertyListIsTheErrorOfItsSettings)
{
    home.putBytes(dock, "broken");
    const LogCapture log;
    SavePlan broken = plan({wanted(1009, {0}), wanted(1500, {0})});
    EXPECT_EQ(broken.settings()[0].error->code, ErrorCode::Unloadable);
    EXPECT_TRUE(log.texts().isEmpty());
    const QList<SaveFailure> failures = broken.commit(keeper, home.flags);
    ASSERT_EQ(failures.size(), 1);
    EXPECT_EQ(failures.front().change.row->id, 1009);
    EXPECT_EQ(home.bytes(dock), "broken");
    EXPECT_EQ(home.read(1500).value, SettingValue {0});
}

TEST_F(SavePlanTest, SeveralSettingsOfAFileReachItInOneReplacement)
{
    FailingFileStore counting(home.store);
    PreferenceFiles files(counting);
    SettingAccess access(home.home.home(), files, home.finderInfo);
    SavePlan fifty(access,
                   {wanted(1004, {64}), wanted(1500, {0}), wanted(1009, {0}), wanted(1010, {0}),
                    wanted(1501, {0})});
    EXPECT_TRUE(fifty.commit(keeper, home.flags).isEmpty());
    EXPECT_EQ(counting.calls.filter(u"update "_s),
              (QStringList {u"update " + home.path(dock), u"update " + home.path(mail)}));
    for (const int id : {1500, 1009, 1010, 1501})
        EXPECT_EQ(home.read(id).value, SettingValue {0});
    EXPECT_EQ(home.read(1004).value, SettingValue {64});
}

TEST_F(SavePlanTest, AllSettingsOfTenFilesReachThemInTenReplacements)
{
    home.put(u"com.apple.Safari.plist"_s,
             u"<key>NSToolbar Configuration BrowserWindowToolbarIdentifier</key><dict/>"_s);
    QList<SettingChange> all;
    QSet<QString> names;
    for (const SettingRow &row : catalogue()) {
        if (row.file.isNull())
            continue;
        const bool isText = row.kind == ValueKind::String;
        all.append({&row, {}, {isText ? 0 : 1, isText ? u"1;0;0;0"_s : u""_s}});
        names.insert(row.file);
    }
    FailingFileStore counting(home.store);
    PreferenceFiles files(counting);
    SettingAccess access(home.home.home(), files, home.finderInfo);
    EXPECT_TRUE(SavePlan(access, all).commit(keeper, home.flags).isEmpty());
    EXPECT_EQ(all.size(), 49);
    EXPECT_EQ(keeper.rows.size(), 49);
    EXPECT_EQ(names.size(), 10);
    EXPECT_EQ(counting.calls.filter(u"update "_s).size(), 10);
    // The home's folder, and three for containers that are not there.
    EXPECT_EQ(counting.listings.size(), 4) << qPrintable(counting.listings.join(u'\n'));
}

TEST_F(SavePlanTest, aSettingIsPlannedInTheFileThatItsApplicationReads)
{
    home.put(mail, u"<key>DisableReplyAnimations</key><integer>1</integer>"_s);
    const QByteArray dead = home.bytes(mail);
    const QString folder = containerPreferences(home.home.home(), u"com.apple.mail"_s);
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString file = folder + u"/com.apple.mail.plist";
    writeRaw(file, xmlPlist(u"<key>DisableReplyAnimations</key><integer>0</integer>"_s));
    SavePlan two = plan({wanted(1500, {1}), wanted(1501, {1})});
    EXPECT_EQ(two.settings()[0].change.oldValue, SettingValue {0});
    EXPECT_EQ(two.settings()[0].path, file);
    EXPECT_TRUE(two.commit(keeper, home.flags).isEmpty());
    EXPECT_EQ(home.read(1500).value, SettingValue {1});
    EXPECT_EQ(home.read(1501).value, SettingValue {1});
    EXPECT_EQ(home.bytes(mail), dead);
}

TEST_F(SavePlanTest, WhatDoesNotDifferIsLeftOut)
{
    home.put(dock, u"<key>autohide</key><true/>"_s);
    SavePlan some = plan({wanted(1009, {0}), wanted(1004, {64})});
    some.keepWhatDiffers();
    ASSERT_EQ(some.settings().size(), 1);
    EXPECT_TRUE(some.commit(keeper, home.flags).isEmpty());
    EXPECT_EQ(keeper.rows, (QList<ChangeRecord> {{1004, -1, u""_s}}));
    EXPECT_EQ(some.firstNamed(), (QList<SettingChange> {some.settings()[0].change}));
    EXPECT_EQ(home.read(1004).value, SettingValue {64});
}

TEST_F(SavePlanTest, AFileThatChangedSinceItWasReadIsPlannedAgainBeforeTheRows)
{
    home.put(dock, u"<key>tilesize</key><integer>48</integer>"_s);
    SavePlan late = plan({wanted(1004, {64})});
    late.keepWhatDiffers();
    home.put(dock, u"<key>tilesize</key><integer>20</integer><key>theirs</key><true/>"_s);
    EXPECT_TRUE(late.commit(keeper, home.flags).isEmpty());
    EXPECT_EQ(keeper.rows, (QList<ChangeRecord> {{1004, 20, u""_s}}));
    EXPECT_EQ(home.read(1004).value, SettingValue {64});
    EXPECT_TRUE(home.bytes(dock).contains("theirs"));
}

TEST_F(SavePlanTest, AFileThatChangesAfterTheRowsIsEditedAfresh)
{
    home.put(dock, u"<key>tilesize</key><integer>48</integer>"_s);
    SavePlan raced = plan({wanted(1004, {64}), wanted(1009, {0})});
    keeper.atFirst = [this] { home.put(dock, u"<key>theirs</key><true/>"_s); };
    EXPECT_TRUE(raced.commit(keeper, home.flags).isEmpty());
    EXPECT_EQ(home.read(1004).value, SettingValue {64});
    EXPECT_EQ(home.read(1009).value, SettingValue {0});
    EXPECT_TRUE(home.bytes(dock).contains("theirs"));
}

TEST_F(SavePlanTest, WhatWasLeftOutIsNotMadeWhenAFileIsEditedAfresh)
{
    home.put(dock, u"<key>tilesize</key><integer>48</integer><key>autohide</key><true/>"_s);
    SavePlan raced = plan({wanted(1004, {64}), wanted(1009, {0})});
    raced.keepWhatDiffers();
    keeper.atFirst = [this] { home.put(dock, u"<key>autohide</key><false/>"_s); };
    EXPECT_TRUE(raced.commit(keeper, home.flags).isEmpty());
    EXPECT_EQ(home.read(1004).value, SettingValue {64});
    EXPECT_EQ(home.read(1009).value, SettingValue {1}) << "it has no row";
}

TEST_F(SavePlanTest, AFileThatCannotBeReplacedFailsAllItsSettingsAndRaisesTheirFlags)
{
    const LogCapture log;
    FailingFileStore failing(home.store);
    PreferenceFiles files(failing);
    SettingAccess access(home.home.home(), files, home.finderInfo);
    SavePlan two(access, {wanted(1004, {64}), wanted(1500, {0}), wanted(1009, {0})});
    // Two readings of two files, then the first replacement.
    failing.failOperation(5, {ErrorCode::Failed, u"full"_s});
    const QList<SaveFailure> failures = two.commit(keeper, home.flags);
    ASSERT_EQ(failures.size(), 2);
    EXPECT_EQ(failures[0].change, two.settings()[0].change);
    EXPECT_EQ(failures[1].change, two.settings()[2].change);
    EXPECT_FALSE(home.has(dock));
    EXPECT_EQ(home.read(1500).value, SettingValue {0});
    EXPECT_EQ(home.flags, RestartFlags(RestartFlag::Dock | RestartFlag::Mail));
}

TEST_F(SavePlanTest, AFileThatCannotBeReadIsNeverTakenForAMissingOne)
{
    home.put(dock, u"<key>tilesize</key><integer>48</integer>"_s);
    FailingFileStore failing(home.store);
    failing.failOperation(1, {ErrorCode::Failed, u"for the moment"_s});
    PreferenceFiles files(failing);
    SettingAccess access(home.home.home(), files, home.finderInfo);
    const SavePlan plan(access, {wanted(1004, {64})});
    EXPECT_EQ(plan.settings().front().error->text, u"for the moment");
    EXPECT_EQ(failing.operations, 1) << "one look for all answers";
}
