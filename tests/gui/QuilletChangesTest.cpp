#include "settings/views/Quillet.h"

#include "backup/BackupReader.h"
#include "base/Containers.h"
#include "settings/views/Modules.h"
#include "settings/views/QuilletChangesInfoWindow.h"
#include "support/FailingFileStore.h"
#include "support/FileFacts.h"
#include "support/gui/QuilletFixture.h"
#include "support/LogCapture.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QSlider>
#include <QTableView>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class QuilletChanges : public QuilletFixture {
protected:
    static constexpr int generalRow = 0;
    static constexpr int dockRow = 1;
    static constexpr int mailRow = 4;
    static constexpr int safariRow = 6;

    /// The hidden settings over a store that writes down what is read.
    struct CountedReads {
        explicit CountedReads(QuilletChanges &test)
            : store(test.store), home(test.home),
              hiddenSettings(std::make_unique<Quillet>(PageContext {
                  test.workspace, test.shared, preferences, test.dialogs, test.backup}))
        {
        }
        [[nodiscard]] QString readOf(const QString &name) const
        {
            return u"read " + home.preference(name);
        }
        /// The files that were read, each once, by the last word of their names.
        [[nodiscard]] QStringList files() const
        {
            QStringList names;
            for (const QString &call : store.calls)
                names.append(QFileInfo(call).completeBaseName().section(u'.', -1));
            names.removeDuplicates();
            return names;
        }

        FailingFileStore store;
        const TemporaryHome &home;
        PreferenceFiles preferences {store};
        std::unique_ptr<Quillet> hiddenSettings;
    };

    void choosePending(int index = 0)
    {
        clickGroup(dockRow);
        choose(comboBoxOf(u"HideDockView"_s), index);
    }

    QuilletChangesInfoWindow &openSheet()
    {
        click(button(u"viewButton"_s));
        return dynamic_cast<QuilletChangesInfoWindow &>(*dialogs.sheets.last());
    }

    QList<BackupRow> backupRows() const
    {
        const Result<QList<BackupRow>> rows = readBackupRows(shared.backupFileName());
        return rows ? rows.value() : QList<BackupRow>();
    }

    void expectButtons(bool enabled) const
    {
        for (const QString &name : {u"saveButton"_s, u"cancelButton"_s, u"viewButton"_s})
            EXPECT_EQ(button(name).isEnabled(), enabled) << name.toStdString();
    }
};

} // namespace

TEST_F(QuilletChanges, NothingIsPendingAtFirst)
{
    start();
    expectButtons(false);
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
}

TEST_F(QuilletChanges, AnEditIsPendingAndEnablesTheButtons)
{
    start();
    choosePending();
    expectButtons(true);
    EXPECT_EQ(shared.quilletCommands(), QList<ChangeRecord>({{1009, 0, u""_s}}));
    EXPECT_EQ(shared.quilletBackupCommands(), QList<ChangeRecord>({{1009, 2, u""_s}}));
    EXPECT_FALSE(fileExists(u"com.apple.dock.plist"_s));
}

TEST_F(QuilletChanges, ChangingTwiceLeavesOneRecordWithTheSecondValueAndTheValueOnDisk)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><true/>"_s);
    start();
    choosePending(1);
    choose(comboBoxOf(u"HideDockView"_s), 2);
    EXPECT_EQ(shared.quilletCommands(), QList<ChangeRecord>({{1009, 2, u""_s}}));
    EXPECT_EQ(shared.quilletBackupCommands(), QList<ChangeRecord>({{1009, 0, u""_s}}));
}

TEST_F(QuilletChanges, SavingKeepsTheOldValueAndWritesTheNewOne)
{
    putFile(u"com.apple.dock.plist"_s,
            u"<key>autohide</key><true/><key>other</key><real>1.5</real>"_s);
    start();
    choosePending(1);
    click(button(u"saveButton"_s));
    EXPECT_FALSE(stored(u"com.apple.dock.plist"_s, {u"autohide"_s}).boolean);
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"other"_s}).real, 1.5);
    EXPECT_EQ(shared.restartFlags(), RestartFlags(RestartFlag::Dock));
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_EQ(shared.quilletBackupCommands().size(), 1) << "kept for the whole run";
    expectButtons(false);
    EXPECT_EQ(backupRows(), QList<BackupRow>({{1009, u"0"_s, u""_s, u""_s}}));
}

TEST_F(QuilletChanges, savingReachesTheFileInTheContainerAndLeavesTheOneBesideIt)
{
    const QString name = u"com.apple.mail.plist"_s;
    putFile(name, u"<key>DisableReplyAnimations</key><integer>0</integer>"_s);
    const QByteArray dead = readRaw(home.preference(name));
    const QString folder = containerPreferences(home.home(), u"com.apple.mail"_s);
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(QFile::copy(home.preference(name), folder + u'/' + name));
    start();
    clickGroup(mailRow);
    choose(comboBoxOf(u"ReplyAnimationView"_s), 1);
    click(button(u"saveButton"_s));
    EXPECT_EQ(files.readValue(folder + u'/' + name, {u"DisableReplyAnimations"_s}).integer, 1);
    EXPECT_EQ(readRaw(home.preference(name)), dead);
    EXPECT_EQ(backupRows(), QList<BackupRow>({{1500, u"0"_s, u""_s, u""_s}}));
}

TEST_F(QuilletChanges, SavingTwiceLeavesOneBackupRowWithTheOldestValue)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><true/>"_s);
    start();
    choosePending(1);
    click(button(u"saveButton"_s));
    clickGroup(dockRow);
    choose(comboBoxOf(u"HideDockView"_s), 2);
    click(button(u"saveButton"_s));
    EXPECT_EQ(backupRows(), QList<BackupRow>({{1009, u"0"_s, u""_s, u""_s}}));
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"autohide"_s}).kind, plist::Kind::Missing);
}

TEST_F(QuilletChanges, SavingDoesNotReadAgain)
{
    start();
    choosePending(0);
    click(button(u"saveButton"_s));
    choose(comboBoxOf(u"HideDockView"_s), 1);
    EXPECT_EQ(shared.quilletBackupCommands(), QList<ChangeRecord>({{1009, 2, u""_s}}));
}

TEST_F(QuilletChanges, SavingKeepsTheFocusAndTheRows)
{
    start();
    choosePending(0);
    const QStringList before = rowNames();
    page().activateWindow();
    QApplication::processEvents();
    comboBoxOf(u"HideDockView"_s).setFocus();
    click(button(u"saveButton"_s));
    EXPECT_EQ(rowNames(), before);
    EXPECT_EQ(comboBoxOf(u"HideDockView"_s).currentIndex(), 0);
    EXPECT_EQ(page().focusWidget(), &comboBoxOf(u"HideDockView"_s));
}

TEST_F(QuilletChanges, SavingByTheKeyboardGivesTheFocusBackToTheRow)
{
    start();
    choosePending(0);
    page().activateWindow();
    QApplication::processEvents();
    comboBoxOf(u"HideDockView"_s).setFocus();
    button(u"saveButton"_s).setFocus();
    QTest::keyClick(&button(u"saveButton"_s), Qt::Key_Space);
    expectButtons(false);
    EXPECT_EQ(page().focusWidget(), &comboBoxOf(u"HideDockView"_s));
}

TEST_F(QuilletChanges, APendingChoiceIsNotShownAgainOnItsRebuiltPageButStaysPending)
{
    start();
    choosePending(0);
    clickGroup(safariRow);
    clickGroup(dockRow);
    EXPECT_EQ(comboBoxOf(u"HideDockView"_s).currentIndex(), 2);
    EXPECT_EQ(shared.quilletCommands().size(), 1);
    expectButtons(true);
}

TEST_F(QuilletChanges, CancellingAsksFirst)
{
    start();
    choosePending(0);
    click(button(u"cancelButton"_s));
    ASSERT_EQ(dialogs.alerts.size(), 1);
    const FakeDialogs::ShownAlert &shown = dialogs.alerts.first();
    EXPECT_EQ(shown.alert.message, u"Cancel All Latest Changes"_s);
    EXPECT_EQ(
        shown.alert.informative,
        u"Are you sure you want to cancel all latest changes you've made with this program"_s);
    EXPECT_EQ(shown.alert.buttons, QStringList({u"Cancel Changes"_s, u"Continue"_s}));
    EXPECT_EQ(shown.parent, &page());
    EXPECT_EQ(shared.quilletCommands().size(), 1);
}

TEST_F(QuilletChanges, CancellingShowsWhatIsOnDiskAndDropsThePendingListOnly)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><true/>"_s);
    start();
    choosePending(1);
    click(button(u"cancelButton"_s));
    dialogs.answer(FirstButton);
    EXPECT_EQ(comboBoxOf(u"HideDockView"_s).currentIndex(), 0);
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_EQ(shared.quilletBackupCommands().size(), 1);
    expectButtons(false);
}

TEST_F(QuilletChanges, EveryOtherAnswerLeavesAllAsItIs)
{
    start();
    choosePending(0);
    for (const int code : {int(SecondButton), int(ThirdButton), 0}) {
        click(button(u"cancelButton"_s));
        dialogs.answer(code);
        EXPECT_EQ(shared.quilletCommands().size(), 1);
        EXPECT_EQ(comboBoxOf(u"HideDockView"_s).currentIndex(), 0);
        expectButtons(true);
    }
}

TEST_F(QuilletChanges, ASettingChangedAndCancelledStillGetsItsBackupRowAtTheNextSave)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><true/>"_s);
    start();
    choosePending(1);
    controller->cancelAlertDidEnd(FirstButton);
    choose(comboBoxOf(u"DockStyleView"_s), 0);
    click(button(u"saveButton"_s));
    EXPECT_EQ(shared.quilletBackupCommands(),
              QList<ChangeRecord>({{1009, 0, u""_s}, {1010, 2, u""_s}}));
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_s, {u"autohide"_s}).boolean);
}

TEST_F(QuilletChanges, CancellingReadsTheListedViewsOnly)
{
    start();
    clickGroup(generalRow);
    choose(comboBoxOf(u"SpellCheckView"_s), 0);
    choose(comboBoxOf(u"ZoomAnimationView"_s), 0);
    controller->cancelAlertDidEnd(FirstButton);
    EXPECT_EQ(comboBoxOf(u"ZoomAnimationView"_s).currentIndex(), 2);
    EXPECT_EQ(comboBoxOf(u"SpellCheckView"_s).currentIndex(), 0) << "read with its page only";
    clickGroup(generalRow);
    EXPECT_EQ(comboBoxOf(u"SpellCheckView"_s).currentIndex(), 2);
}

TEST_F(QuilletChanges, OnlyTheFirstReadSharesFilesEveryLaterOneOpensThemAgain)
{
    const CountedReads counted(*this);
    EXPECT_EQ(counted.store.calls.count(counted.readOf(u"com.apple.dock.plist"_s)), 1);

    counted.store.calls.clear();
    counted.hiddenSettings->readData();
    EXPECT_EQ(counted.store.calls.count(counted.readOf(u"com.apple.dock.plist"_s)), 11)
        << "once for each of the group's settings";
}

TEST_F(QuilletChanges, eachReadingLooksForTheFilesOnce)
{
    const CountedReads counted(*this);
    // The home's folder, and three for containers that are not there.
    EXPECT_EQ(counted.store.listings.size(), 4) << qPrintable(counted.store.listings.join(u'\n'));
    counted.store.listings.clear();
    counted.hiddenSettings->readData();
    EXPECT_EQ(counted.store.listings.size(), 4) << qPrintable(counted.store.listings.join(u'\n'));
}

TEST_F(QuilletChanges, TheModulesReadAtFirstAndAgainInTheirTwoOrders)
{
    const CountedReads counted(*this);
    EXPECT_EQ(counted.files(),
              QStringList({u"QuickTimePlayerX"_s, u"TimeMachine"_s, u"iTunes"_s, u"Mail"_s,
                           u"screencapture"_s, u"finder"_s, u"desktopservices"_s, u"Safari"_s,
                           u"dock"_s, u"GlobalPreferences"_s}));
    counted.store.calls.clear();
    counted.hiddenSettings->readData();
    EXPECT_EQ(counted.files(),
              QStringList({u"GlobalPreferences"_s, u"Safari"_s, u"finder"_s, u"desktopservices"_s,
                           u"dock"_s, u"screencapture"_s, u"Mail"_s, u"iTunes"_s, u"TimeMachine"_s,
                           u"QuickTimePlayerX"_s}));
}

TEST_F(QuilletChanges, ARowThatIsSavedDescribedOrWrittenLosesItsShadingUntilItsPageIsBuiltAgain)
{
    start();
    clickGroup(dockRow);
    EXPECT_TRUE(row(u"DockStyleView"_s).needToDrawBackground());
    EXPECT_TRUE(row(u"MinWindowEffectView"_s).needToDrawBackground());
    EXPECT_TRUE(row(u"AnimOpenAppView"_s).needToDrawBackground());

    choose(comboBoxOf(u"DockStyleView"_s), 0);
    EXPECT_TRUE(row(u"DockStyleView"_s).needToDrawBackground());
    click(button(u"saveButton"_s));
    EXPECT_FALSE(row(u"DockStyleView"_s).needToDrawBackground());

    EXPECT_FALSE(controller->actionString(1008, 0, u""_s).isEmpty());
    EXPECT_FALSE(row(u"MinWindowEffectView"_s).needToDrawBackground());

    EXPECT_TRUE(controller->writeData(1006, 2, u""_s).ok());
    EXPECT_FALSE(row(u"AnimOpenAppView"_s).needToDrawBackground());

    clickGroup(dockRow);
    EXPECT_TRUE(row(u"DockStyleView"_s).needToDrawBackground());
}

TEST_F(QuilletChanges, TwoSettingsOfOneKeyAreWrittenInTheOrderOfTheirLastChange)
{
    start();
    clickGroup(3);
    choose(comboBoxOf(u"PreloadSongPreviewView"_s), 0);
    choose(comboBoxOf(u"HalfStarsView"_s), 1);
    choose(comboBoxOf(u"PreloadSongPreviewView"_s), 2);
    choose(comboBoxOf(u"PreloadSongPreviewView"_s), 0);
    click(button(u"saveButton"_s));
    EXPECT_TRUE(stored(u"com.apple.iTunes.plist"_s, {u"allow-half-stars"_s}).boolean);
}

TEST_F(QuilletChanges, OneLockSettingIsSavedWithoutTheOthers)
{
    start();
    clickGroup(dockRow);
    choose(comboBoxOf(u"LockDockView"_s, u"posComboBox"_s), 0);
    putFile(u"com.apple.dock.plist"_s, u"<key>contents-immutable</key><true/>"_s);
    click(button(u"saveButton"_s));
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_s, {u"contents-immutable"_s}).boolean);
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_s, {u"position-immutable"_s}).boolean);
}

TEST_F(QuilletChanges, TurningASlidersBoxOffAndSavingWritesNothing)
{
    start();
    clickGroup(dockRow);
    click(*row(u"DockSizeView"_s).findChild<QCheckBox *>(u"checkBox"_s));
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    controller->saveChanges();
    EXPECT_FALSE(fileExists(u"com.apple.dock.plist"_s));
}

TEST_F(QuilletChanges, AnUnknownNumberWritesAndDescribesNothing)
{
    start();
    EXPECT_TRUE(controller->writeData(4711, 0, u""_s).ok());
    EXPECT_TRUE(controller->actionString(4711, 0, u""_s).isEmpty());
    EXPECT_FALSE(shared.restartFlags());
}

TEST_F(QuilletChanges, AChangeIsDescribedByItsPlaceAndItsSentence)
{
    start();
    EXPECT_EQ(controller->actionString(1009, 1, u""_s),
              QStringList({u"Quillet -> Dock"_s, u"Dock"_s, u"Allways show the Dock"_s}));
}

TEST_F(QuilletChanges, TheSheetListsWhatIsPendingInItsOrder)
{
    start();
    choosePending(0);
    choose(comboBoxOf(u"DockStyleView"_s), 1);
    const LogCapture log;
    QuilletChangesInfoWindow &sheet = openSheet();
    EXPECT_EQ(sheet.rows(),
              QList<QStringList>({{u"Dock"_s, u"Automatically hide and show the Dock"_s},
                                  {u"Dock"_s, u"Display Dock in modern 3D style"_s}}));
    EXPECT_EQ(log.texts(u"varnel.settings"_s), QStringList(u"readChangesData 2"_s));
    EXPECT_TRUE(sheet.isVisible());
}

TEST_F(QuilletChanges, TheSheetSortsDescendingFirstAndForgetsItWhenOpenedAgain)
{
    start();
    choosePending(0);
    clickGroup(safariRow);
    choose(comboBoxOf(u"DebugMenuView"_s), 0);
    QuilletChangesInfoWindow &sheet = openSheet();
    const QList<QStringList> pending = sheet.rows();
    sheet.didClickTableColumn(0);
    EXPECT_EQ(sheet.rows().first().first(), u"Safari"_s);
    sheet.didClickTableColumn(0);
    EXPECT_EQ(sheet.rows().first().first(), u"Dock"_s);
    sheet.didClickTableColumn(1);
    EXPECT_EQ(sheet.rows().first().first(), u"Safari"_s) << "a new column starts descending";
    sheet.closeWindow();
    EXPECT_EQ(&openSheet(), &sheet);
    EXPECT_EQ(sheet.rows(), pending);
}

TEST_F(QuilletChanges, AnEmptySheetCountsZero)
{
    start();
    const LogCapture log;
    controller->viewChanges();
    EXPECT_EQ(log.texts(u"varnel.settings"_s), QStringList(u"readChangesData 0"_s));
}

TEST_F(QuilletChanges, AFileThatCannotBeLoadedIsLeftAloneAndTheSaveGoesOn)
{
    QFile file(home.preference(u"com.apple.dock.plist"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a property list");
    file.close();
    start();
    choosePending(0);
    clickGroup(safariRow);
    choose(comboBoxOf(u"DevelopMenuView"_s), 0);
    click(button(u"saveButton"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("not a property list"));
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_s, {u"IncludeDevelopMenu"_s}).integer, 1);
    EXPECT_TRUE(shared.needToKillDock());
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
}
