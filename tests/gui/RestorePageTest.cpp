#include "support/FileFacts.h"
#include "support/gui/RestoreFixture.h"
#include "support/LogCapture.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class RestorePage : public RestoreFixture {
protected:
    void putThree() const
    {
        for (const QString &name : {u"quillet2.sqlite"_s, u"quillet10.sqlite"_s, u"a.sqlite"_s})
            putBackup(name, {});
    }
    /// Dates that no run of the test could give them; the page goes by the birth time, where there
    /// is one, so the entries are told apart by what it shows.
    void expectButtons(bool enabled) const
    {
        for (const QString &name : {u"restoreButton"_s, u"deleteButton"_s, u"infoButton"_s})
            EXPECT_EQ(button(name).isEnabled(), enabled) << name.toStdString();
    }
    [[nodiscard]] Qt::SortOrder indicator() const
    {
        return table().horizontalHeader()->sortIndicatorOrder();
    }
    [[nodiscard]] int indicatedColumn() const
    {
        return table().horizontalHeader()->sortIndicatorSection();
    }
};

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST_F(RestorePage, AnEmptyFolderIsAnEmptyTableWithAllButtonsDisabled)
{
    start();
    EXPECT_EQ(table().model()->rowCount(), 0);
    expectButtons(false);
    EXPECT_TRUE(page().findChild<QLabel *>(u"emptyLabel"_s)->isVisible());
}

TEST_F(RestorePage, AMissingFolderIsAnEmptyTable)
{
    start();
    ASSERT_TRUE(QDir(backups).removeRecursively());
    ASSERT_TRUE(QDir(Tools::supportFolderOf(home.home())).removeRecursively());
    restore->reloadData();
    EXPECT_EQ(table().model()->rowCount(), 0);
    expectButtons(false);
}

TEST_F(RestorePage, TheExtensionCountsByLetterCaseAndTheNameDoesNot)
{
    putWords(u"quillet1.SQLITE"_s);
    putWords(u"notes.txt"_s);
    putWords(u"holiday.sqlite"_s);
    putWords(u".hidden.sqlite"_s);
    start();
    EXPECT_EQ(column(0), (QStringList {u".hidden.sqlite"_s, u"holiday.sqlite"_s}));
}

TEST_F(RestorePage, NamesSortPlainlyUnderAnIndicatorFromTheStart)
{
    putThree();
    start();
    EXPECT_EQ(column(0),
              (QStringList {u"a.sqlite"_s, u"quillet10.sqlite"_s, u"quillet2.sqlite"_s}));
    EXPECT_EQ(indicatedColumn(), 0);
    EXPECT_EQ(indicator(), Qt::DescendingOrder) << "the reverse image";
}

TEST_F(RestorePage, TheFirstClickOnTheNameSortsDescendingTheSecondAscending)
{
    putThree();
    start();
    const LogCapture log;
    clickHeader(0);
    EXPECT_EQ(column(0),
              (QStringList {u"quillet2.sqlite"_s, u"quillet10.sqlite"_s, u"a.sqlite"_s}));
    EXPECT_EQ(indicator(), Qt::AscendingOrder);
    EXPECT_EQ(log.texts(u"varnel.backup"_s), QStringList {u"didClickTableColumn"_s});
    clickHeader(0);
    EXPECT_EQ(column(0).first(), u"a.sqlite");
    EXPECT_EQ(indicator(), Qt::DescendingOrder);
}

TEST_F(RestorePage, TheDateSortsFromNewestThenFromOldest)
{
    putThree();
    start();
    clickHeader(1);
    EXPECT_EQ(indicatedColumn(), 1);
    EXPECT_EQ(indicator(), Qt::AscendingOrder);
    QStringList dates = column(1);
    EXPECT_TRUE(std::is_sorted(dates.rbegin(), dates.rend()));
    clickHeader(1);
    EXPECT_EQ(indicator(), Qt::DescendingOrder);
    dates = column(1);
    EXPECT_TRUE(std::is_sorted(dates.begin(), dates.end()));
}

TEST_F(RestorePage, RereadingRaisesTheFlagAndKeepsTheColumnThatWasClicked)
{
    putThree();
    start();
    clickHeader(1);
    restore->reloadData();
    EXPECT_EQ(column(0).first(), u"a.sqlite");
    EXPECT_EQ(indicatedColumn(), 0);
    EXPECT_EQ(indicator(), Qt::DescendingOrder);
    clickHeader(1);
    EXPECT_EQ(indicator(), Qt::AscendingOrder) << "the flag, which was up, is inverted";
    clickHeader(0);
    EXPECT_EQ(indicator(), Qt::AscendingOrder) << "a new column starts with the flag down";
}

TEST_F(RestorePage, SelectionFollowsTheFileWhenTheListIsSortedOrReread)
{
    putThree();
    start();
    clickRow(0);
    expectButtons(true);
    EXPECT_EQ(selectedNames(), QStringList {u"a.sqlite"_s});
    clickHeader(0);
    EXPECT_EQ(selectedNames(), QStringList {u"a.sqlite"_s});
    EXPECT_EQ(table().currentIndex().row(), 2);
    putBackup(u"0.sqlite"_s, {});
    const LogCapture log;
    restore->reloadData();
    EXPECT_EQ(log.texts(u"varnel.backup"_s), QStringList {u"Path = "_s + backups});
    EXPECT_EQ(selectedNames(), QStringList {u"a.sqlite"_s});
    EXPECT_EQ(table().currentIndex().row(), 1);
    ASSERT_TRUE(QFile::remove(backups + u"a.sqlite"));
    restore->reloadData();
    EXPECT_TRUE(selectedNames().isEmpty());
    expectButtons(false);
}

TEST_F(RestorePage, RestoringWritesTheValuesRaisesTheFlagsAndDeletesTheFile)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>mineffect</key><string>scale</string>"_s);
    putBackup(u"quillet1.sqlite"_s, {u"1008,'0','',''"_s, u"77,'1','',''"_s, u"1009,'0','',''"_s});
    start();
    clickRow(0);
    const LogCapture log;
    click(button(u"restoreButton"_s));
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"mineffect"_s}).string, u"genie");
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_s, {u"autohide"_s}).boolean);
    EXPECT_EQ(shared.restartFlags(), RestartFlags(RestartFlag::Dock));
    EXPECT_TRUE(filesInFolder().isEmpty()) << "and no backup of the restore is made";
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_EQ(table().model()->rowCount(), 0);
    expectButtons(false);
    EXPECT_TRUE(dialogs.alerts.isEmpty());
    EXPECT_EQ(log.texts(u"varnel.backup"_s),
              (QStringList {u"filePath: "_s + backups + u"quillet1.sqlite", u"0"_s,
                            backups + u"quillet1.sqlite"}));
}

TEST_F(RestorePage, WhatTheRunsOwnSavesChangedComesBackToTheVeryBytesAgainAndAgain)
{
    const QString dock = u"com.apple.dock.plist"_s;
    putFile(dock,
            u"<key>tilesize</key><real>44.0</real> <key>autohide</key><integer>1</integer>"_s);
    const QString path = home.preference(dock);
    const QByteArray before = bytesOf(path);
    const QDateTime time = QFileInfo(path).lastModified();
    const QDir kept(Tools::keptFolderOf(home.home()));
    start();
    for (int round = 0; round < 2; ++round) {
        quillet->addDataToBackupDataList(1004, 44, u""_s);
        quillet->addDataToChangeDataList(1004, 64 + round, u""_s);
        quillet->saveChanges();
        quillet->addDataToBackupDataList(1009, 0, u""_s);
        quillet->addDataToChangeDataList(1009, 1, u""_s);
        quillet->saveChanges();
        EXPECT_NE(bytesOf(path), before);
        EXPECT_EQ(kept.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1);
        restore->reloadData();
        clickRow(0);
        click(button(u"restoreButton"_s));
        EXPECT_EQ(bytesOf(path), before);
        EXPECT_EQ(QFileInfo(path).lastModified(), time);
        EXPECT_TRUE(kept.entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty());
        EXPECT_TRUE(filesInFolder().isEmpty());
    }
}

TEST_F(RestorePage, TheSettingsReadAgainAfterEachRowAndTellIt)
{
    putBackup(u"quillet1.sqlite"_s, {u"1008,'0','',''"_s, u"77,'1','',''"_s, u"1009,'0','',''"_s});
    start();
    clickRow(0);
    QStringList once;
    {
        const LogCapture log;
        quillet->readData();
        once = log.texts(u"varnel.settings"_s);
    }
    ASSERT_FALSE(once.isEmpty());
    const LogCapture log;
    click(button(u"restoreButton"_s));
    EXPECT_EQ(log.texts(u"varnel.settings"_s), once + once + once);
}

TEST_F(RestorePage, AfterARestoreTheKeyboardIsInTheList)
{
    putBackup(u"quillet1.sqlite"_s, {u"1008,'0','',''"_s});
    putThree();
    start();
    QPushButton next(page().window()); // as in the window, where more can have the focus
    next.show();
    clickRow(1);
    button(u"restoreButton"_s).setFocus();
    QTest::keyClick(&button(u"restoreButton"_s), Qt::Key_Space);
    EXPECT_EQ(table().model()->rowCount(), 3);
    EXPECT_FALSE(next.hasFocus());
    EXPECT_EQ(page().focusWidget(), &table());
}

TEST_F(RestorePage, OfSeveralOnlyTheCurrentOneIsPlayedAndAllAreDeleted)
{
    putBackup(u"quillet1.sqlite"_s, {u"1009,'0','',''"_s});
    putBackup(u"quillet2.sqlite"_s, {u"1100,'0','',''"_s});
    putBackup(u"quillet3.sqlite"_s, {u"1008,'0','',''"_s});
    start();
    clickRow(0);
    clickRow(2, Qt::ControlModifier);
    const LogCapture log;
    click(button(u"restoreButton"_s));
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"mineffect"_s}).string, u"genie");
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"autohide"_s}).kind, plist::Kind::Missing);
    EXPECT_EQ(filesInFolder(), QStringList {u"quillet2.sqlite"_s});
    EXPECT_EQ(column(0), QStringList {u"quillet2.sqlite"_s});
    EXPECT_EQ(log.texts(u"varnel.backup"_s),
              (QStringList {u"filePath: "_s + backups + u"quillet3.sqlite", u"2"_s,
                            backups + u"quillet3.sqlite", u"0"_s, backups + u"quillet1.sqlite"}));
}

TEST_F(RestorePage, WhenTheCurrentRowIsNotSelectedTheLowestIsPlayed)
{
    putBackup(u"quillet1.sqlite"_s, {u"1009,'0','',''"_s});
    putBackup(u"quillet2.sqlite"_s, {u"1008,'0','',''"_s});
    putBackup(u"quillet3.sqlite"_s, {});
    start();
    clickRow(0);
    clickRow(1, Qt::ControlModifier);
    clickRow(2, Qt::ControlModifier);
    clickRow(2, Qt::ControlModifier); // current, but no longer selected
    click(button(u"restoreButton"_s));
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_s, {u"autohide"_s}).boolean);
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"mineffect"_s}).kind, plist::Kind::Missing);
    EXPECT_EQ(filesInFolder(), QStringList {u"quillet3.sqlite"_s});
}

TEST_F(RestorePage, AFileThatIsNoBackupStaysAndNothingIsPlayed)
{
    putWords(u"quillet1.sqlite"_s);
    start();
    clickRow(0);
    click(button(u"restoreButton"_s));
    EXPECT_EQ(readRaw(backups + u"quillet1.sqlite"), "words");
    EXPECT_EQ(column(0), QStringList {u"quillet1.sqlite"_s});
    EXPECT_FALSE(shared.restartFlags());
}

TEST_F(RestorePage, ARowThatCannotBeWrittenStopsThePlaybackAndTheFileStays)
{
    writeRaw(home.preference(u"com.apple.finder.plist"_s), "no property list");
    putBackup(u"quillet1.sqlite"_s,
              {u"1009,'0','',''"_s, u"1100,'0','',''"_s, u"1008,'0','',''"_s});
    start();
    clickRow(0);
    click(button(u"restoreButton"_s));
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_s, {u"autohide"_s}).boolean);
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"mineffect"_s}).kind, plist::Kind::Missing);
    EXPECT_EQ(readRaw(home.preference(u"com.apple.finder.plist"_s)), "no property list");
    EXPECT_EQ(filesInFolder(), QStringList {u"quillet1.sqlite"_s});
    expectButtons(true);
}

TEST_F(RestorePage, ALoginItemThatCannotBePutBackStopsThePlaybackAndTheFileStays)
{
    const QString tooLong = u"/Apps/" + QString(300, u'x') + u".app";
    putBackup(u"list.sqlite"_s, {u"250,'/Apps/One.app','0','1'"_s, u"1008,'0','',''"_s});
    putBackup(u"name.sqlite"_s, {u"250,'" + tooLong + u"','0','1'", u"1008,'0','',''"_s});
    putBackup(u"store.sqlite"_s, {u"250,'/Apps/One.app','0','0'"_s, u"1008,'0','',''"_s});
    const QStringList all = filesInFolder();
    sqlite3Tool(Tools::supportFolderOf(home.home()) + u"disableLoginItems.sqlite",
                u"CREATE TABLE users (value1 TEXT, value2 TEXT)"_s);
    const QString autostart = home.path() + u"/.config/autostart";
    start();
    ASSERT_TRUE(QDir().rmdir(autostart));
    for (int row = 0; row < all.size(); ++row) {
        if (all[row] == u"list.sqlite")
            writeRaw(autostart, "no folder");
        else
            (void)QFile::remove(autostart);
        clickRow(row);
        click(button(u"restoreButton"_s));
        EXPECT_EQ(filesInFolder(), all) << qPrintable(all[row]);
        EXPECT_EQ(column(0), all) << qPrintable(all[row]);
        EXPECT_FALSE(fileExists(u"com.apple.dock.plist"_s)) << qPrintable(all[row]);
    }
}

TEST_F(RestorePage, AFailureToReadAFileIsLoggedOnce)
{
    putWords(u"quillet1.sqlite"_s);
    putWords(u"quillet2.sqlite"_s);
    start();
    ASSERT_TRUE(QFile::remove(backups + u"quillet2.sqlite"));
    for (const int row : {0, 1}) {
        clickRow(row);
        for (const QString &name : {u"restoreButton"_s, u"infoButton"_s}) {
            const LogCapture log;
            click(button(name));
            EXPECT_EQ(log.texts(u"varnel.io"_s).size(), 1) << row << qPrintable(name);
        }
        dialogs.sheets.last()->close();
    }
}

TEST_F(RestorePage, LoginItemRowsGoThroughTheLoginItemsPage)
{
    putBackup(u"quillet1.sqlite"_s,
              {u"250,'/Apps/One.app','0','0'"_s, u"250,'/Apps/Two.app','0','1'"_s,
               u"250,'/Apps/Two.app','3','0'"_s});
    start();
    clickRow(0);
    const LogCapture log;
    click(button(u"restoreButton"_s));
    QStringList lines = log.texts(u"varnel.backup"_s);
    EXPECT_EQ(lines.mid(1, 3),
              (QStringList {u"0, /Apps/One.app, 0"_s, u"0, /Apps/Two.app, 1"_s,
                            u"3, /Apps/Two.app, 0"_s}));
    auto *list = loginItems->getLoginItemsView()->findChild<QTableView *>(u"tableView"_s);
    EXPECT_EQ(list->model()->rowCount(), 2) << "both stand in the store, and are shown at once";
    EXPECT_TRUE(filesInFolder().isEmpty());
}

TEST_F(RestorePage, DeletingOneNamesItInTheQuestion)
{
    putThree();
    start();
    clickRow(1);
    click(button(u"deleteButton"_s));
    ASSERT_EQ(dialogs.alerts.size(), 1);
    const Alert &alert = dialogs.alerts.first().alert;
    EXPECT_EQ(alert.message, u"Delete Backup File");
    EXPECT_EQ(alert.informative, u"Are you sure you want to delete quillet10.sqlite?");
    EXPECT_EQ(alert.buttons, (QStringList {u"Delete"_s, u"Cancel"_s}));
    dialogs.answer(SecondButton);
    EXPECT_EQ(filesInFolder().size(), 3);
    click(button(u"deleteButton"_s));
    const LogCapture log;
    dialogs.answer(FirstButton);
    EXPECT_EQ(filesInFolder(), (QStringList {u"a.sqlite"_s, u"quillet2.sqlite"_s}));
    EXPECT_EQ(column(0), filesInFolder());
    EXPECT_EQ(log.texts(u"varnel.backup"_s), (QStringList {u"1"_s, backups + u"quillet10.sqlite"}));
}

TEST_F(RestorePage, WhatAKilledSaveLeftBesideAFileGoesWithIt)
{
    putThree();
    const QString journal = backups + u"quillet10.sqlite-journal";
    writeRaw(journal, "left");
    start();
    clickRow(1);
    click(button(u"deleteButton"_s));
    dialogs.answer(FirstButton);
    EXPECT_FALSE(QFile::exists(journal));
    EXPECT_EQ(filesInFolder(), (QStringList {u"a.sqlite"_s, u"quillet2.sqlite"_s}));
}

TEST_F(RestorePage, DeletingSeveralAsksInGeneralAndDeletesFromTheHighestRow)
{
    putThree();
    start();
    clickRow(0);
    clickRow(2, Qt::ControlModifier);
    QTest::keyClick(&table(), Qt::Key_Delete);
    ASSERT_EQ(dialogs.alerts.size(), 1);
    EXPECT_EQ(dialogs.alerts.first().alert.informative,
              u"Are you sure you want to delete selected backup files");
    const LogCapture log;
    dialogs.answer(FirstButton);
    EXPECT_EQ(log.texts(u"varnel.backup"_s),
              (QStringList {u"2"_s, backups + u"quillet2.sqlite", u"0"_s, backups + u"a.sqlite"}));
    EXPECT_EQ(column(0), QStringList {u"quillet10.sqlite"_s});
    expectButtons(false);
}

TEST_F(RestorePage, WithNothingSelectedNothingHappens)
{
    putThree();
    start();
    page().restoreBackupFiles();
    page().deleteSelectedFilesAfterAsking();
    page().showRestoreInfoWindow();
    EXPECT_EQ(filesInFolder().size(), 3);
    EXPECT_TRUE(dialogs.alerts.isEmpty());
    EXPECT_TRUE(dialogs.sheets.isEmpty());
}

TEST_F(RestorePage, CaptionsStandInARowAtTheListsEdgeUnderTheirButtons)
{
    start();
    const auto at = [this](const QString &name) {
        return page().findChild<QWidget *>(name)->geometry();
    };
    EXPECT_EQ(page().findChild<QLabel *>(u"restoreLabel"_s)->mapTo(&page(), QPoint()).x(),
              table().x());
    EXPECT_EQ(at(u"deleteLabel"_s).x(),
              at(u"restoreLabel"_s).x() + at(u"restoreLabel"_s).width() + 15);
    EXPECT_EQ(at(u"infoLabel"_s).x(), at(u"deleteLabel"_s).x() + at(u"deleteLabel"_s).width() + 15);
    for (const QString &name : {u"restore"_s, u"delete"_s, u"info"_s}) {
        const QRect label = at(name + u"Label");
        const QRect knob = at(name + u"Button");
        EXPECT_EQ(knob.x(), label.x() + (label.width() - knob.width()) / 2) << qPrintable(name);
    }
}

TEST_F(RestorePage, TenThousandFilesAreRowsOfAModelAndNoWidgets)
{
    for (int number = 0; number < 10000; ++number)
        putWords(u"quillet" + QString::number(number) + u".sqlite");
    start();
    EXPECT_EQ(table().model()->rowCount(), 10000);
    EXPECT_LT(table().findChildren<QWidget *>().size(), 30);
    table().selectAll();
    restore->reloadData();
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 10000);
    clickHeader(0);
    EXPECT_EQ(column(0).first(), u"quillet9999.sqlite");
    page().deleteSelectedFiles();
    EXPECT_EQ(table().model()->rowCount(), 0);
    EXPECT_TRUE(filesInFolder().isEmpty());
}

TEST_F(RestorePage, APageThatDoesNotLoadIsLoggedAndLeavesTheFolderBehind)
{
    context.interfaceLoads = [](const QString &name) { return name != u"RestoreBackupView"; };
    RestoreBackup without(context);
    EXPECT_EQ(without.getRestoreBackupView(), nullptr);
    without.reloadData();
    EXPECT_TRUE(QDir(backups).exists());
}
