#include "settings/PendingChanges.h"

#include "support/FailingFileStore.h"
#include "support/LogCapture.h"
#include "support/SettingsHome.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString none = QStringLiteral("");

/// Writes down what it is to keep.
class RecordingKeeper : public OldValueKeeper {
public:
    Result<void> addDataToBackupFile(const ChangeRecord &record) override
    {
        kept.append(record);
        return failing.contains(record.locationId)
            ? Result<void>(Error {ErrorCode::Failed, u"no room"_s})
            : Result<void>();
    }

    QList<ChangeRecord> kept;
    QList<int> failing;
};

class PendingChangesTest : public testing::Test {
protected:
    SettingsHome home;
    QList<ChangeRecord> changes;
    QList<ChangeRecord> backups;
    RecordingKeeper keeper;
    PendingChanges pending {changes, backups, home.flags, home.access, keeper};
};

} // namespace

TEST_F(PendingChangesTest,
       ChangingASettingTwiceLeavesTheSecondValuePendingAndTheFirstOldValueToBackUp)
{
    for (const int value : {0, 1}) {
        pending.addDataToBackupDataList(1009, value == 0 ? 2 : 0, none);
        pending.addDataToChangeDataList(1009, value, none);
    }
    EXPECT_EQ(changes, (QList<ChangeRecord> {{1009, 1, none}}));
    EXPECT_EQ(backups, (QList<ChangeRecord> {{1009, 2, none}}));
}

TEST_F(PendingChangesTest, PendingRecordsStandInTheOrderOfTheLastReportBackupsInThatOfTheFirst)
{
    for (const int id : {1009, 1300, 1100, 1009}) {
        pending.addDataToBackupDataList(id, 3, none);
        pending.addDataToChangeDataList(id, 0, none);
    }
    EXPECT_EQ(changes, (QList<ChangeRecord> {{1300, 0, none}, {1100, 0, none}, {1009, 0, none}}));
    EXPECT_EQ(backups, (QList<ChangeRecord> {{1009, 3, none}, {1300, 3, none}, {1100, 3, none}}));
}

TEST_F(PendingChangesTest, ARecordKeepsTheExtraTextOfStringSettings)
{
    pending.addDataToChangeDataList(1400, 0, u"it's %1 %@"_s);
    EXPECT_EQ(changes, (QList<ChangeRecord> {{1400, 0, u"it's %1 %@"_s}}));
}

TEST_F(PendingChangesTest, EachReportIsLogged)
{
    const LogCapture log;
    pending.addDataToBackupDataList(1009, 2, none);
    pending.addDataToChangeDataList(1009, 0, none);
    pending.addDataToBackupDataList(1009, 1, none);
    EXPECT_EQ(log.texts(u"varnel.settings"_s),
              (QStringList {u"addDataToBackupDataList"_s, u"addDataToChangeDataList"_s,
                            u"addDataToBackupDataList"_s}));
}

TEST_F(PendingChangesTest, SavingKeepsTheOldValuesFirstThenWritesThenEmptiesThePendingList)
{
    pending.addDataToBackupDataList(1009, 2, none);
    pending.addDataToBackupDataList(1400, 0, u"-1"_s);
    pending.addDataToChangeDataList(1400, 0, u"Shot"_s);
    pending.addDataToChangeDataList(1009, 0, none);
    EXPECT_TRUE(pending.saveChanges().isEmpty());
    EXPECT_EQ(keeper.kept, (QList<ChangeRecord> {{1009, 2, none}, {1400, 0, u"-1"_s}}));
    EXPECT_EQ(home.read(1009).value, SettingValue {0});
    EXPECT_EQ(home.read(1400).value, (SettingValue {0, u"Shot"_s}));
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(backups.size(), 2);
}

TEST_F(PendingChangesTest, TheLastOfTwoSettingsOfOneKeyToBeReportedWins)
{
    pending.addDataToChangeDataList(1600, 0, none);
    pending.addDataToChangeDataList(1603, 1, none);
    pending.addDataToChangeDataList(1600, 0, none);
    EXPECT_TRUE(pending.saveChanges().isEmpty());
    EXPECT_EQ(home.read(1603).value, SettingValue {0});
}

TEST_F(PendingChangesTest, CancellingEmptiesOnlyThePendingListAndWritesNothing)
{
    pending.addDataToBackupDataList(1009, 2, none);
    pending.addDataToChangeDataList(1009, 0, none);
    pending.dropChanges();
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(backups, (QList<ChangeRecord> {{1009, 2, none}}));
    EXPECT_FALSE(home.has(u"com.apple.dock.plist"_s));
}

TEST_F(PendingChangesTest, ASettingChangedAndCancelledStillGetsItsBackupRowAtTheNextSave)
{
    pending.addDataToBackupDataList(1009, 2, none);
    pending.addDataToChangeDataList(1009, 0, none);
    pending.dropChanges();
    pending.addDataToBackupDataList(1300, 3, none);
    pending.addDataToChangeDataList(1300, 2, none);
    EXPECT_TRUE(pending.saveChanges().isEmpty());
    EXPECT_EQ(keeper.kept, (QList<ChangeRecord> {{1009, 2, none}, {1300, 3, none}}));
    EXPECT_FALSE(home.has(u"com.apple.dock.plist"_s));
}

TEST_F(PendingChangesTest, RestartFlagsAreRaisedByWritingAndNotByAPendingChange)
{
    pending.addDataToChangeDataList(1009, 0, none);
    EXPECT_EQ(home.flags, RestartFlags());
    pending.addDataToChangeDataList(1500, 0, none);
    EXPECT_TRUE(pending.saveChanges().isEmpty());
    EXPECT_EQ(home.flags, RestartFlags(RestartFlag::Dock | RestartFlag::Mail));
}

TEST_F(PendingChangesTest, ASaveOfOneLockSettingWritesOnlyItsOwnKey)
{
    pending.addDataToChangeDataList(1001, 1, none);
    EXPECT_TRUE(pending.saveChanges().isEmpty());
    EXPECT_EQ(home.read(1001).value, SettingValue {1});
    EXPECT_FALSE(home.read(1000).found);
    EXPECT_FALSE(home.read(1002).found);
}

TEST_F(PendingChangesTest, AnUnknownNumberWritesNothingAndHasNoSentence)
{
    EXPECT_TRUE(pending.writeData(250, 0, none).ok());
    EXPECT_TRUE(pending.writeData(1011, 0, none).ok());
    EXPECT_TRUE(pending.actionString(1011, 0, none).isEmpty());
    EXPECT_EQ(home.flags, RestartFlags());
    EXPECT_FALSE(home.has(u"com.apple.dock.plist"_s));
}

TEST_F(PendingChangesTest, TheSentenceComesWithTheTwoPlaces)
{
    EXPECT_EQ(pending.actionString(1804, 1, none),
              (QStringList {u"Quillet -> QuickTime Player"_s, u"QuickTime Player"_s,
                            u"Do not automatically play selected movie files on launch:"_s}));
    EXPECT_EQ(pending.actionString(1403, 5, u"/tmp"_s),
              (QStringList {u"Quillet -> Screen Capture"_s, u"Screen Capture"_s,
                            u"Save newly created screenshot files to /tmp"_s}));
}

TEST_F(PendingChangesTest, AFailedBackupNeverBlocksTheWrite)
{
    keeper.failing = {1009};
    pending.addDataToBackupDataList(1009, 2, none);
    pending.addDataToChangeDataList(1009, 0, none);
    const QList<SaveFailure> failures = pending.saveChanges();
    ASSERT_EQ(failures.size(), 1);
    EXPECT_EQ(failures[0].step, SaveFailure::Step::Backup);
    EXPECT_EQ(oldValueOf(failures[0].change), (ChangeRecord {1009, 2, none}));
    EXPECT_EQ(home.read(1009).value, SettingValue {0});
}

TEST_F(PendingChangesTest, AFailedWriteIsToldRaisesItsFlagAndStopsNothing)
{
    home.putBytes(u"com.apple.dock.plist"_s, "broken");
    const LogCapture log;
    pending.addDataToChangeDataList(1009, 0, none);
    pending.addDataToChangeDataList(1500, 1, none);
    const QList<SaveFailure> failures = pending.saveChanges();
    ASSERT_EQ(failures.size(), 1);
    EXPECT_EQ(failures[0].step, SaveFailure::Step::Write);
    EXPECT_EQ(failures[0].change.row->id, 1009);
    EXPECT_EQ(failures[0].change.newValue, SettingValue {0});
    EXPECT_EQ(failures[0].error.code, ErrorCode::Unloadable);
    EXPECT_EQ(home.read(1500).value, SettingValue {1});
    EXPECT_EQ(home.flags, RestartFlags(RestartFlag::Dock | RestartFlag::Mail));
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(home.bytes(u"com.apple.dock.plist"_s), "broken");
}

TEST(PendingChangesFaults, WhicheverFileFailsItIsAsItWasAndTheOthersAreWritten)
{
    const QList<ChangeRecord> wanted {{1009, 0, none}, {1100, 1, none}, {1500, 0, none}};
    int failedReplacements = 0;
    for (int failing = 1, last = 1; failing <= last + 1; ++failing) {
        SettingsHome home;
        for (const char *name : {"dock", "finder", "Mail"})
            home.put(u"com.apple."_s + QString::fromLatin1(name) + u".plist",
                     u"<key>other</key><true/>"_s);
        FailingFileStore store(home.store);
        store.failOperation(failing, {ErrorCode::Failed, u"disk"_s});
        PreferenceFiles files(store);
        SettingAccess access(home.home.home(), files, home.finderInfo);
        QList<ChangeRecord> changes = wanted;
        QList<ChangeRecord> backups;
        RecordingKeeper keeper;
        PendingChanges pending(changes, backups, home.flags, access, keeper);
        const QList<SaveFailure> failures = pending.saveChanges();
        last = store.operations;
        // What could not be read for a moment is read again.
        const QString failed = store.calls.value(failing - 1);
        EXPECT_EQ(failures.size(), failed.startsWith(u"update "_s) ? 1 : 0) << failing;
        failedReplacements += int(failures.size());
        for (const ChangeRecord &record : wanted) {
            const bool left =
                !failures.isEmpty() && failures.front().change.row->id == record.locationId;
            EXPECT_EQ(home.read(record.locationId).found, !left) << failing;
        }
    }
    EXPECT_EQ(failedReplacements, wanted.size());
}
