#include "backup/BackupReader.h"
#include "support/gui/QuitFixture.h"
#include "support/LogCapture.h"

#include <QFileInfo>
#include <QStyle>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class QuitFlowTest : public testing::Test, protected QuitFixture {
protected:
    [[nodiscard]] const Alert &prompt() const { return dialogs.alerts.last().alert; }

    /// The names that killall was run with, in order.
    [[nodiscard]] QStringList ended() const
    {
        QStringList names;
        for (const FakeCommandRunner::Call &call : runner.calls) {
            EXPECT_EQ(call.launchPath, u"/usr/bin/killall"_s);
            names << call.arguments;
        }
        return names;
    }

    [[nodiscard]] bool settingIsWritten() const
    {
        return files
                   .readValue(home.preference(u"com.apple.dock.plist"_s),
                              QStringList(u"autohide"_s))
                   .kind
            != plist::Kind::Missing;
    }

    /// The window is open, nothing is asked, ended or written.
    void expectRunning()
    {
        EXPECT_TRUE(window.isVisible());
        EXPECT_TRUE(dialogs.alerts.isEmpty());
        EXPECT_FALSE(sheetIsUp());
        EXPECT_TRUE(runner.calls.isEmpty());
        EXPECT_EQ(terminations, 0);
        EXPECT_FALSE(settingIsWritten());
    }
};

} // namespace

TEST_F(QuitFlowTest, WithNothingPendingAndNoFlagTheWindowClosesWithoutAQuestion)
{
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(dialogs.alerts.isEmpty());
    EXPECT_TRUE(dialogs.sheets.isEmpty());
    EXPECT_TRUE(runner.calls.isEmpty());
    EXPECT_EQ(terminations, 0) << "the last window's end is the program's";
}

TEST_F(QuitFlowTest, APendingSettingIsAskedForByTheNameOfItsModule)
{
    changeASetting();
    EXPECT_FALSE(window.close());
    ASSERT_EQ(dialogs.alerts.size(), 1);
    EXPECT_EQ(prompt().message, u"Save Changes"_s);
    EXPECT_EQ(prompt().informative,
              u"Do you want to save the changes you made in the Quillet module"_s);
    EXPECT_EQ(prompt().buttons, QStringList({u"Save"_s, u"Cancel"_s, u"Don't Save"_s}));
    EXPECT_EQ(dialogs.alerts.last().parent, &window);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(flow.killAppWindow(), nullptr) << "not before the answer";
}

TEST_F(QuitFlowTest, APendingLoginItemIsNamedInTheSingular)
{
    changeALoginItem();
    EXPECT_FALSE(window.close());
    EXPECT_EQ(prompt().informative,
              u"Do you want to save the changes you made in the Login Item module"_s);
}

TEST_F(QuitFlowTest, BothKindsAreNamedTogether)
{
    changeASetting();
    changeALoginItem();
    EXPECT_FALSE(window.close());
    EXPECT_EQ(prompt().informative,
              u"Do you want to save the changes you made in the Quillet and Login Items module"_s);
}

TEST_F(QuitFlowTest, CancelChangesNothingAndClosingAgainAsksAgain)
{
    changeASetting();
    changeALoginItem();
    for (const int code : {int(SecondButton), 0}) {
        EXPECT_FALSE(window.close());
        ASSERT_EQ(dialogs.alerts.size(), 1);
        dialogs.answer(code);
        expectRunning();
        EXPECT_EQ(shared.quilletCommands().size(), 1);
        EXPECT_EQ(shared.loginItemCommands().size(), 1);
    }
    EXPECT_FALSE(window.close());
    EXPECT_EQ(dialogs.alerts.size(), 1);
}

TEST_F(QuitFlowTest, SaveWritesTheSettingThenOffersToEndItsApplication)
{
    changeASetting();
    window.close();
    dialogs.answer(FirstButton);
    EXPECT_TRUE(settingIsWritten());
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_TRUE(sheetIsUp());
    EXPECT_EQ(rowNames(), QStringList(u"Dock"_s));
    EXPECT_TRUE(runner.calls.isEmpty()) << "nothing ends before the sheet is answered";
    EXPECT_EQ(terminations, 0);
}

TEST_F(QuitFlowTest, SavingALoginItemEndsTheProgramWithoutASheet)
{
    changeALoginItem();
    window.close();
    dialogs.answer(FirstButton);
    EXPECT_TRUE(shared.loginItemCommands().isEmpty());
    EXPECT_EQ(flow.killAppWindow(), nullptr);
    EXPECT_TRUE(runner.calls.isEmpty()) << "the system's interface goes with the sheet only";
    EXPECT_EQ(terminations, 1);
}

TEST_F(QuitFlowTest, LoginItemsAreSavedBeforeTheSettings)
{
    changeASetting();
    changeALoginItem();
    window.close();
    LogCapture log;
    dialogs.answer(FirstButton);
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_TRUE(shared.loginItemCommands().isEmpty());
    const Result<QList<BackupRow>> rows = readBackupRows(shared.backupFileName());
    ASSERT_TRUE(rows.ok());
    QStringList ids;
    for (const BackupRow &row : rows.value())
        ids << QString::number(row.id);
    EXPECT_EQ(ids, QStringList({u"250"_s, u"1009"_s}));
}

TEST_F(QuitFlowTest, DontSaveWritesNothingLeavesTheListsAndEndsTheProgram)
{
    changeASetting();
    changeALoginItem();
    window.close();
    dialogs.answer(ThirdButton);
    EXPECT_FALSE(settingIsWritten());
    EXPECT_FALSE(QFileInfo::exists(shared.backupFileName()));
    EXPECT_EQ(shared.quilletCommands().size(), 1);
    EXPECT_EQ(shared.loginItemCommands().size(), 1);
    EXPECT_EQ(flow.killAppWindow(), nullptr);
    EXPECT_EQ(terminations, 1);
}

TEST_F(QuitFlowTest, DontSaveStillOffersToEndWhatWasChangedEarlier)
{
    shared.setNeedToKillSafari(true);
    changeASetting();
    window.close();
    ASSERT_EQ(dialogs.alerts.size(), 1) << "the prompt comes first";
    EXPECT_EQ(flow.killAppWindow(), nullptr);
    dialogs.answer(ThirdButton);
    EXPECT_TRUE(sheetIsUp());
    EXPECT_EQ(rowNames(), QStringList(u"Safari"_s));
    EXPECT_EQ(terminations, 0);
}

TEST_F(QuitFlowTest, AFlagSetEarlierBringsTheSheetWithoutAPrompt)
{
    shared.setNeedToKillFinder(true);
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(dialogs.alerts.isEmpty());
    EXPECT_TRUE(sheetIsUp());
    EXPECT_EQ(sheet().parentWidget(), &window);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(QuitFlowTest, ConfirmingEndsTheTickedApplicationsInRowOrderAndTheSystemsInterfaceLast)
{
    shared.restartFlags() = RestartFlag::Dock | RestartFlag::Finder | RestartFlag::Mail
        | RestartFlag::Safari | RestartFlag::ITunes | RestartFlag::QuickTimePlayer
        | RestartFlag::TimeMachine;
    window.close();
    press(u"appCloseNowButton"_s);
    EXPECT_EQ(ended(),
              QStringList({u"Dock"_s, u"Finder"_s, u"Mail"_s, u"Safari"_s, u"iTunes"_s,
                           u"QuickTime Player"_s, u"Time Machine"_s, u"SystemUIServer"_s}));
    EXPECT_FALSE(sheetIsUp());
    EXPECT_EQ(terminations, 1);
}

TEST_F(QuitFlowTest, RowsStandTickedWithTheirIconsAndNames)
{
    shared.restartFlags() = RestartFlag::Dock | RestartFlag::QuickTimePlayer;
    window.close();
    EXPECT_EQ(rowNames(), QStringList({u"Dock"_s, u"QuickTime Player X"_s}));
    const QAbstractItemModel &model = *table().model();
    for (int row = 0; row < 2; ++row) {
        const QModelIndex box = model.index(row, CloseRowsModel::Close);
        const QModelIndex name = model.index(row, CloseRowsModel::Name);
        EXPECT_EQ(box.data(Qt::CheckStateRole), Qt::Checked);
        EXPECT_FALSE(box.data(Qt::DisplayRole).isValid());
        EXPECT_EQ(name.data().toString(), rowNames().at(row));
        EXPECT_FALSE(name.data(Qt::DecorationRole).value<QIcon>().isNull());
        EXPECT_FALSE(name.flags() & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable));
    }
}

TEST_F(QuitFlowTest, AMissingIconLeavesARowThatIsActedOnAllTheSame)
{
    CloseRowsModel model;
    model.appendRows({{u"Mail"_s, u"no such drawing"_s, true}});
    EXPECT_TRUE(
        model.index(0, CloseRowsModel::Name).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_EQ(processesToEnd(model.rows()), QStringList(u"Mail"_s));
}

TEST_F(QuitFlowTest, AClickUnticksARowAndTicksItAgain)
{
    shared.restartFlags() = RestartFlag::Dock | RestartFlag::Finder;
    window.close();
    clickBox(0);
    EXPECT_FALSE(sheet().rows()->rows()[0].close);
    EXPECT_TRUE(sheet().rows()->rows()[1].close);
    clickBox(0);
    EXPECT_TRUE(sheet().rows()->rows()[0].close);
    clickBox(0);
    press(u"appCloseNowButton"_s);
    EXPECT_EQ(ended(), QStringList({u"Finder"_s, u"SystemUIServer"_s}));
}

TEST_F(QuitFlowTest, TheSpaceBarTicksTheCurrentRow)
{
    shared.restartFlags() = RestartFlag::Dock | RestartFlag::Finder;
    window.close();
    sheet().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet()));
    EXPECT_EQ(QApplication::focusWidget(), &table()) << "the keyboard starts at the rows";
    QTest::keyClick(&table(), Qt::Key_Space);
    EXPECT_FALSE(sheet().rows()->rows()[0].close);
    QTest::keyClick(&table(), Qt::Key_Down);
    QTest::keyClick(&table(), Qt::Key_Space);
    QTest::keyClick(&table(), Qt::Key_Space);
    EXPECT_TRUE(sheet().rows()->rows()[1].close);
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_EQ(ended(), QStringList({u"Finder"_s, u"SystemUIServer"_s}));
}

TEST_F(QuitFlowTest, WithEveryRowUntickedOnlyTheSystemsInterfaceEnds)
{
    shared.restartFlags() = RestartFlag::Dock | RestartFlag::Safari;
    window.close();
    clickBox(0);
    clickBox(1);
    press(u"appCloseNowButton"_s);
    EXPECT_EQ(ended(), QStringList(u"SystemUIServer"_s));
    EXPECT_EQ(terminations, 1);
}

TEST_F(QuitFlowTest, SkipEndsNoneOfTheTickedApplications)
{
    shared.setNeedToKillDock(true);
    window.close();
    press(u"skipButton"_s);
    EXPECT_EQ(ended(), QStringList(u"SystemUIServer"_s));
    EXPECT_FALSE(sheetIsUp());
    EXPECT_EQ(terminations, 1);
}

TEST_F(QuitFlowTest, EscapeInTheSheetIsSkip)
{
    shared.setNeedToKillDock(true);
    window.close();
    QTest::keyClick(&sheet(), Qt::Key_Escape);
    EXPECT_EQ(ended(), QStringList(u"SystemUIServer"_s));
    EXPECT_FALSE(sheetIsUp());
    EXPECT_EQ(terminations, 1);
}

TEST_F(QuitFlowTest, TheSheetsOwnCloseButtonIsSkip)
{
    shared.setNeedToKillDock(true);
    window.close();
    sheet().close();
    EXPECT_EQ(ended(), QStringList(u"SystemUIServer"_s));
    EXPECT_EQ(terminations, 1);
}

TEST_F(QuitFlowTest, ClosingAgainWhileThePromptIsUpAsksNothingMore)
{
    changeASetting();
    EXPECT_FALSE(window.close());
    EXPECT_FALSE(window.close());
    EXPECT_EQ(dialogs.alerts.size(), 1);
}

TEST_F(QuitFlowTest, ClosingAgainWhileTheSheetIsUpAddsNoRows)
{
    shared.setNeedToKillDock(true);
    EXPECT_FALSE(window.close());
    EXPECT_FALSE(window.close());
    EXPECT_EQ(rowNames(), QStringList(u"Dock"_s));
    EXPECT_EQ(dialogs.sheets.size(), 1);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(QuitFlowTest, ClosingWhileAPagesListIsUpDoesNothing)
{
    changeASetting();
    shared.quillet()->viewChanges();
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(dialogs.alerts.isEmpty());
    dialogs.sheets.last()->close();
    EXPECT_FALSE(window.close());
    EXPECT_EQ(dialogs.alerts.size(), 1);
}

TEST_F(QuitFlowTest, RowsAreAppendedToThoseThatStandInTheSheetAlready)
{
    shared.setNeedToKillDock(true);
    EXPECT_TRUE(flow.checkKillAppStatus());
    shared.setNeedToKillMail(true);
    EXPECT_TRUE(flow.checkKillAppStatus());
    EXPECT_EQ(rowNames(), QStringList({u"Dock"_s, u"Dock"_s, u"Mail"_s}));
}

TEST_F(QuitFlowTest, TheFlowsOwnEndAsksNothingWhereWindowsAreClosedOnTheWay)
{
    changeASetting();
    onTerminate = [this] { window.close(); };
    window.close();
    dialogs.answer(ThirdButton);
    EXPECT_EQ(terminations, 1);
    EXPECT_TRUE(dialogs.alerts.isEmpty());
    EXPECT_TRUE(window.close()) << "afterwards the window may go";
}

TEST_F(QuitFlowTest, TheSystemsInterfaceEndsBeforeTheSheetGoesAndTheProgramLast)
{
    shared.setNeedToKillDock(true);
    window.close();
    QList<bool> upWhileEnding;
    runner.answer = [&](const FakeCommandRunner::Call &) {
        upWhileEnding << sheetIsUp();
        EXPECT_EQ(terminations, 0);
        return Result<QString>(QString());
    };
    onTerminate = [&] { EXPECT_FALSE(sheetIsUp()); };
    press(u"appCloseNowButton"_s);
    EXPECT_EQ(upWhileEnding, QList<bool>({true, true}));
    EXPECT_EQ(terminations, 1);
}

TEST_F(QuitFlowTest, AProgramThatCannotBeStartedIsLoggedOnceForEachNameAndTheFlowGoesOn)
{
    shared.setNeedToKillDock(true);
    window.close();
    runner.answer = [](const FakeCommandRunner::Call &call) -> Result<QString> {
        return Error {ErrorCode::Failed, call.launchPath + u": not there"};
    };
    LogCapture log;
    press(u"appCloseNowButton"_s);
    EXPECT_EQ(log.texts(),
              QStringList({u"/usr/bin/killall: not there"_s, u"/usr/bin/killall: not there"_s}));
    EXPECT_EQ(log.texts(u"varnel.io"_s).size(), 2);
    EXPECT_EQ(terminations, 1);
}

TEST_F(QuitFlowTest, AMinimisedWindowIsBroughtBackWithItsQuestion)
{
    changeASetting();
    window.showMinimized();
    EXPECT_FALSE(window.close());
    EXPECT_FALSE(window.isMinimized());
    EXPECT_EQ(dialogs.alerts.size(), 1);
}

TEST_F(QuitFlowTest, WhatCouldNotBeSavedIsToldBeforeTheWindowGoes)
{
    QDir().mkpath(home.preference(u"com.apple.dock.plist"_s));
    changeASetting();
    window.close();
    dialogs.answer(FirstButton);
    ASSERT_EQ(dialogs.alerts.size(), 1);
    const Alert alert = dialogs.alerts.last().alert;
    EXPECT_EQ(alert.message, u"Changes Were Not Saved"_s);
    EXPECT_TRUE(alert.informative.startsWith(
        u"The change was not saved: com.apple.dock.plist can't be written ("));
    EXPECT_EQ(alert.buttons, (QStringList {u"Close Anyway"_s, u"Stay"_s}));
    EXPECT_FALSE(sheetIsUp());
    EXPECT_EQ(terminations, 0);
    EXPECT_FALSE(window.close());
    EXPECT_EQ(dialogs.alerts.size(), 1) << "asks nothing more while it is up";

    dialogs.answer(FirstButton);
    EXPECT_EQ(rowNames(), QStringList(u"Dock"_s)) << "the flow goes on";
}

TEST_F(QuitFlowTest, StayingMakesWhatCouldNotBeSavedPendingAgain)
{
    const QString file = home.preference(u"com.apple.dock.plist"_s);
    QDir().mkpath(file);
    changeALoginItem();
    changeASetting();
    const QList<ChangeRecord> waiting = shared.quilletCommands();
    window.close();
    dialogs.answer(FirstButton);
    dialogs.answer(SecondButton); // Escape, too
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(terminations, 0);
    EXPECT_FALSE(sheetIsUp());
    EXPECT_EQ(shared.quilletCommands(), waiting);
    EXPECT_TRUE(shared.loginItemCommands().isEmpty()) << "that one was saved";
    auto *row = window.findChild<GenericView *>(u"HideDockView"_s);
    EXPECT_TRUE(row->isPending());

    QDir().rmdir(file);
    window.close();
    dialogs.answer(FirstButton);
    EXPECT_TRUE(sheetIsUp());
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(QuitFlowTest, BothPagesTellWhatTheyCouldNotSave)
{
    QDir().mkpath(home.preference(u"com.apple.dock.plist"_s));
    QDir().mkpath(shared.loginItems()->loginItemsView()->disableLoginItemsDBFilePath());
    changeALoginItem();
    changeASetting();
    window.close();
    dialogs.answer(FirstButton);
    const QString text = dialogs.alerts.last().alert.informative;
    EXPECT_TRUE(text.contains(u"Clock.app can't be added")) << text.toStdString();
    EXPECT_TRUE(text.contains(u"com.apple.dock.plist can't be written"));
    dialogs.answer(SecondButton);
    EXPECT_EQ(shared.loginItemCommands().size(), 1);
    EXPECT_EQ(shared.quilletCommands().size(), 1);
}
