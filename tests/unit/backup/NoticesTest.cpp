#include "backup/Notices.h"
#include "backup/KeptRun.h"
#include "base/Literals.h"
#include "home/Workspace.h"
#include "platform/linux/LinuxHomePorts.h"
#include "settings/Catalogue.h"
#include "shell/Tools.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

using Step = SaveFailure::Step;
using Tone = Notice::Tone;

constexpr int hideDock = 1009;
constexpr int dockSize = 1004;
constexpr int screenPrefix = 1400;

const QString backupFile = u"/home/ann/Library/quillet7.sqlite"_s;

class NoticesTest : public testing::Test {
protected:
    static Error refused(const QString &file)
    {
        return {ErrorCode::NotPermitted,
                u"/home/ann: the first/Library/Preferences/" + file + u": Permission denied"};
    }
    static SaveFailure failure(Step step, int setting, const Error &error,
                               const QString &oldText = {})
    {
        return {step, {findSetting(setting), {0, oldText}, {}}, error};
    }
    [[nodiscard]] Notice told(const QList<int> &settings, const QList<SaveFailure> &failures) const
    {
        QList<ChangeRecord> changes;
        for (const int setting : settings)
            changes.append({setting, 0, {}});
        return noticeOf(pageSave(changes, failures, keeper, backupFile));
    }

    TemporaryHome home;
    LinuxHomePorts ports {home.home(), Tools::supportFolderOf(home.home())};
    Workspace workspace {home.home(), ports.ports()};
    KeptRun keeper {workspace, [] { return backupFile; }};
};

} // namespace

TEST_F(NoticesTest, whatWasSavedNamesTheFileOfTheOldValues)
{
    EXPECT_EQ(told({hideDock, dockSize}, {}),
              (Notice {Tone::Quiet, u"Saved 2 changes. Old values are in quillet7.sqlite."_s}));
    EXPECT_EQ(told({hideDock}, {}).text, u"Saved 1 change. Old values are in quillet7.sqlite."_s);
}

TEST_F(NoticesTest, whatWasNotSavedIsCountedAndTheReasonNamesTheFile)
{
    const SaveFailure write = failure(Step::Write, hideDock, refused(u"com.apple.dock.plist"_s));
    EXPECT_EQ(told({hideDock, 1300}, {write}),
              (Notice {Tone::Failure,
                       u"1 of 2 changes was not saved: com.apple.dock.plist can't be written "
                       u"(Permission denied)."_s}));
    EXPECT_EQ(told({hideDock}, {write}).text,
              u"The change was not saved: com.apple.dock.plist can't be written (Permission "
              u"denied)."_s);
}

TEST_F(NoticesTest, oneReasonOfSeveralSettingsIsSaidOnce)
{
    const Error error = refused(u"com.apple.dock.plist"_s);
    const Error broken {ErrorCode::Unloadable,
                        u"/home/ann/Library/Preferences/.GlobalPreferences.plist: no dictionary"_s};
    EXPECT_EQ(told({hideDock, dockSize, 1300, 1400},
                   {failure(Step::Write, hideDock, error), failure(Step::Write, dockSize, error),
                    failure(Step::Write, 1300, broken)})
                  .text,
              u"3 of 4 changes were not saved: com.apple.dock.plist can't be written (Permission "
              u"denied); .GlobalPreferences.plist is damaged (no dictionary)."_s);
}

TEST_F(NoticesTest, whatIsSavedWithoutAWayBackSaysSo)
{
    const Error error {ErrorCode::Failed, backupFile + u": database is locked"};
    EXPECT_EQ(told({hideDock}, {failure(Step::Backup, hideDock, error)}),
              (Notice {Tone::Caution,
                       u"Saved, but this change can't be undone: quillet7.sqlite can't be written "
                       u"(database is locked)."_s}));
    EXPECT_EQ(told({hideDock, dockSize},
                   {failure(Step::Backup, hideDock, error), failure(Step::Backup, dockSize, error)})
                  .text,
              u"Saved, but these 2 changes can't be undone: quillet7.sqlite can't be written "
              u"(database is locked)."_s);
    EXPECT_EQ(
        told({hideDock, screenPrefix}, {failure(Step::Backup, screenPrefix, error, u"Ann's"_s)})
            .text,
        u"Saved 2 changes, but 1 of them can't be undone: no backup file can hold a text with "
        u"an apostrophe."_s);
}

TEST_F(NoticesTest, whatFailedTwiceIsNotSavedAndWhatWasSavedIsToldBeside)
{
    const Error error {ErrorCode::Failed, backupFile + u": database is locked"};
    const Error write = refused(u"com.apple.dock.plist"_s);
    const Notice notice =
        told({hideDock, 1300},
             {failure(Step::Backup, hideDock, error), failure(Step::Backup, 1300, error),
              failure(Step::Write, hideDock, write)});
    EXPECT_EQ(notice.tone, Tone::Failure);
    EXPECT_EQ(notice.text,
              u"1 of 2 changes was not saved: com.apple.dock.plist can't be written (Permission "
              u"denied). Saved, but this change can't be undone: quillet7.sqlite can't be written "
              u"(database is locked)."_s);
}

TEST_F(NoticesTest, anEarlierSavesLostRowIsNoFailureOfThisOne)
{
    const Error error {ErrorCode::Failed, backupFile + u": database is locked"};
    EXPECT_EQ(told({hideDock}, {failure(Step::Backup, dockSize, error)}).tone, Tone::Quiet);
}

TEST_F(NoticesTest, detailsNameSettingStepAndReason)
{
    const PageSave save =
        pageSave({{hideDock, 0, {}}, {1300, 0, {}}},
                 {failure(Step::Backup, 1300, {ErrorCode::Failed, backupFile + u": locked"}),
                  failure(Step::Write, hideDock, refused(u"com.apple.dock.plist"_s))},
                 keeper, backupFile);
    EXPECT_EQ(
        detailsOf(save),
        (QList<QStringList> {{u"Scroll bars"_s, u"the old value is not in the backup file"_s,
                              u"quillet7.sqlite can't be written (locked)"_s},
                             {u"Hide the Dock"_s, u"not written"_s,
                              u"com.apple.dock.plist can't be written (Permission denied)"_s}}));
    EXPECT_EQ(save.notSaved(), 1);
}

TEST_F(NoticesTest, loginItemsAreToldByNameAndAction)
{
    const auto told = [this](LoginItemChange::Action action, bool wayBack, const QString &error) {
        const LoginItemChange change {action, u"/Applications/Clock.app"_s, false};
        return noticeOf(pageSave({change}, {{change, wayBack, {ErrorCode::Failed, error}}}, keeper,
                                 backupFile))
            .text;
    };
    EXPECT_EQ(told(LoginItemChange::Add, false, u"/s/disableLoginItems.sqlite: locked"_s),
              u"The change was not saved: Clock.app can't be added (disableLoginItems.sqlite: "
              u"locked)."_s);
    EXPECT_EQ(told(LoginItemChange::Enable, false, u"/Applications/Clock.app: not there"_s),
              u"The change was not saved: Clock.app can't be enabled (not there)."_s);
    EXPECT_EQ(told(LoginItemChange::Remove, true, backupFile + u": locked"),
              u"Saved, but this change can't be undone: quillet7.sqlite can't be written "
              u"(locked)."_s);
}

TEST_F(NoticesTest, filesThatCantBeLoadedAreNamed)
{
    EXPECT_EQ(noticeOfFiles({}), std::nullopt);
    const Error dock {ErrorCode::Unloadable, u"/p/com.apple.dock.plist: no dictionary"_s};
    const Error finder {ErrorCode::Unloadable, u"/p/com.apple.finder.plist: no dictionary"_s};
    EXPECT_EQ(noticeOfFiles({dock})->text,
              u"com.apple.dock.plist is damaged: its settings are shown as defaults and won't be "
              u"changed."_s);
    EXPECT_EQ(noticeOfFiles({dock, finder})->text,
              u"com.apple.dock.plist and com.apple.finder.plist are damaged: their settings are "
              u"shown as defaults and won't be changed."_s);
    EXPECT_EQ(noticeOfFiles({{ErrorCode::NotPermitted, u"/p/a.plist: Permission denied"_s}})->text,
              u"a.plist can't be read (Permission denied): its settings are shown as defaults and "
              u"won't be changed."_s);
}

TEST_F(NoticesTest, aRestoreSaysHowMuchAndWhoWantsARestart)
{
    PageRestore restore {u"quillet3.sqlite"_s,
                         {{hideDock, u"1"_s, {}, {}},
                          {dockSize, u"48"_s, {}, {}},
                          {1300, u"3"_s, {}, {}},
                          {9999, u"3"_s, {}, {}}},
                         {},
                         {}};
    restore.report.restart = RestartFlag::Dock;
    EXPECT_EQ(noticeOf(restore),
              (Notice {Tone::Quiet, u"Restored: 3 settings. Dock wants a restart."_s}));
    restore.report.restart |= RestartFlag::Finder;
    restore.report.loginItems = {{BackupRow::loginItemId, u"/A.app"_s, u"1"_s, u"0"_s}};
    EXPECT_EQ(noticeOf(restore).text,
              u"Restored: 3 settings and 1 login item. Dock and Finder want a restart."_s);
    restore.notDeleted =
        Error {ErrorCode::NotPermitted, u"/b/quillet3.sqlite: Permission denied"_s};
    EXPECT_EQ(
        noticeOf(restore),
        (Notice {Tone::Caution,
                 u"Restored: 3 settings and 1 login item, but quillet3.sqlite can't be deleted "
                 u"(Permission denied). Dock and Finder want a restart."_s}));
}

TEST_F(NoticesTest, aRestoreThatStoppedNamesTheRowAndTheFileThatIsStillThere)
{
    PageRestore restore {u"quillet3.sqlite"_s, {{hideDock, u"1"_s, {}, {}}}, {}, {}};
    restore.report.settingFailures = {
        failure(Step::Write, hideDock, refused(u"com.apple.dock.plist"_s))};
    EXPECT_EQ(
        noticeOf(restore),
        (Notice {Tone::Failure,
                 u"Restoring stopped at “Hide the Dock”: com.apple.dock.plist can't be written "
                 u"(Permission denied). It has restored nothing; quillet3.sqlite is still "
                 u"there."_s}));
    restore.report.changes = {{findSetting(1300), {}, {}}};
    EXPECT_TRUE(noticeOf(restore).text.contains(u"It has restored 1 setting before it; "));
    restore.report.settingFailures.clear();
    restore.report.loginItems = {{BackupRow::loginItemId, u"/A/Clock.app"_s, u"1"_s, u"0"_s}};
    restore.report.itemFailures = {u"/s/disableLoginItems.sqlite: locked"_s};
    EXPECT_TRUE(noticeOf(restore).text.startsWith(
        u"Restoring stopped at “Clock.app”: disableLoginItems.sqlite: locked. "));
}

TEST_F(NoticesTest, contentsAreCountedByGroup)
{
    EXPECT_EQ(contentsInWords({}), u"holds nothing that can be undone"_s);
    EXPECT_EQ(contentsInWords(
                  {{hideDock, u"1"_s, {}, {}}, {dockSize, u"1"_s, {}, {}}, {1101, u"1"_s, {}, {}}}),
              u"3 settings of Dock, Finder"_s);
    EXPECT_EQ(contentsInWords(
                  {{1300, u"1"_s, {}, {}}, {BackupRow::loginItemId, u"/A.app"_s, u"1"_s, u"0"_s}}),
              u"1 setting of General; 1 login item"_s);
}
