#include "support/gui/Messages.h"
#include "base/Literals.h"
#include "loginitems/views/LoginItems.h"
#include "loginitems/views/LoginItemsView.h"
#include "settings/views/GenericView.h"
#include "settings/views/Quillet.h"
#include "support/FileFacts.h"
#include "support/gui/Input.h"
#include "support/gui/ProgramFixture.h"
#include "ui/DetailsSheet.h"
#include "ui/ElidedLabel.h"
#include "ui/ImageAndTextCell.h"

#include <QDir>
#include <QPushButton>
#include <QTableView>

#include <tuple>

using namespace varnel;
using namespace varnel::test;

namespace {

const QString dockFile = u"com.apple.dock.plist"_s;

/// The real window over a real home: files that can't be written are folders in their places.
class MessagesTest : public ProgramFixture {
protected:
    MessagesTest() { QDir().mkpath(backups); }

    void block(const QString &file) const { ASSERT_TRUE(QDir().mkpath(home.preference(file))); }
    void unblock(const QString &file) const { ASSERT_TRUE(QDir().rmdir(home.preference(file))); }

    QWidget &settings(int group = 1)
    {
        QWidget &page = go(settingsTab);
        selectGroup(page, group);
        return page;
    }
    static void chooseIn(const QWidget &page, const QString &viewClass, int index)
    {
        choose(*page.findChild<QWidget *>(viewClass)->findChild<QComboBox *>(), index);
    }
    static void press(const QWidget &page, const QString &button)
    {
        click(*page.findChild<QPushButton *>(button));
    }
    static QString noteOf(const QWidget &page, const QString &viewClass)
    {
        return page.findChild<QWidget *>(viewClass)
            ->findChild<ElidedLabel *>(u"noteLabel"_s)
            ->text();
    }
    [[nodiscard]] QTableView &table(const QWidget &page) const
    {
        return *page.findChild<QTableView *>(u"tableView"_s);
    }

    QString backups = home.path() + u"/Library/Application Support/Varnel/Backup/";
};

} // namespace

TEST_F(MessagesTest, whatWasSavedIsSaidUntilTheNextEdit)
{
    start();
    QWidget &page = settings();
    EXPECT_EQ(messageOf(page), QString());
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    EXPECT_EQ(messageOf(page), u"Saved 1 change. Old values are in quillet1.sqlite."_s);
    EXPECT_EQ(toneOf(page), Notice::Tone::Quiet);
    EXPECT_EQ(linksOf(page), QStringList {u"Undo…"_s});
    chooseIn(page, u"HideDockView"_s, 1);
    EXPECT_FALSE(messageOf(page).contains(u"Saved"));
    EXPECT_EQ(linksOf(page), QStringList());
}

TEST_F(MessagesTest, undoLeadsToTheRestorePageWithTheFileSelected)
{
    writeRaw(backups + u"quillet0.sqlite", "words");
    start();
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    followLink(page, u"Undo…"_s);
    EXPECT_EQ(window->tabView()->currentIndex(), restoreTab);
    const QWidget &restore = go(restoreTab);
    const QModelIndexList chosen = table(restore).selectionModel()->selectedRows();
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0].data().toString(), u"quillet1.sqlite"_s);
    EXPECT_EQ(window->focusWidget(), &table(restore));
    EXPECT_EQ(linksOf(page), QStringList()) << "the page was left";

    press(restore, u"restoreButton"_s);
    EXPECT_EQ(messageOf(restore), u"Restored: 1 setting. Dock wants a restart."_s);
    EXPECT_FALSE(QFile::exists(home.preference(dockFile)));
}

TEST_F(MessagesTest, whatWasNotSavedIsToldAndTriedAgain)
{
    block(dockFile);
    start();
    QWidget &page = settings(0);
    chooseIn(page, u"ScrollbarView"_s, 2);
    selectGroup(page, 1);
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    EXPECT_EQ(toneOf(page), Notice::Tone::Failure);
    const QString text = messageOf(page);
    EXPECT_TRUE(
        text.startsWith(u"1 of 2 changes was not saved: com.apple.dock.plist can't be written ("))
        << text.toStdString();
    EXPECT_EQ(linksOf(page), (QStringList {u"Details"_s, u"Try Again"_s}));
    EXPECT_EQ(noteOf(page, u"HideDockView"_s), u"not saved; still: use default value"_s);
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_EQ(stored(u".GlobalPreferences.plist"_s, {u"AppleShowScrollBars"_s}).string,
              u"Always"_s);

    unblock(dockFile);
    followLink(page, u"Try Again"_s);
    EXPECT_EQ(messageOf(page), u"Saved 1 change. Old values are in quillet1.sqlite."_s);
    EXPECT_EQ(stored(dockFile, {u"autohide"_s}).boolean, true);
    EXPECT_EQ(noteOf(page, u"HideDockView"_s), QString());
}

TEST_F(MessagesTest, detailsNameTheSettingTheStepAndTheReason)
{
    block(dockFile);
    start();
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    followLink(page, u"Details"_s);
    auto *sheet = dynamic_cast<DetailsSheet *>(dialogs.sheets.last().data());
    ASSERT_NE(sheet, nullptr);
    ASSERT_EQ(sheet->rows().size(), 1);
    EXPECT_EQ(sheet->rows()[0].first(2), (QStringList {u"Hide the Dock"_s, u"not written"_s}));
    EXPECT_TRUE(sheet->rows()[0][2].startsWith(u"com.apple.dock.plist can't be written ("));
}

TEST_F(MessagesTest, aRowIsNotSavedUntilItIsChosenAgain)
{
    block(dockFile);
    start();
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    selectGroup(page, 0);
    EXPECT_FALSE(messageOf(page).contains(u"not saved"));
    selectGroup(page, 1);
    EXPECT_EQ(noteOf(page, u"HideDockView"_s), u"not saved; still: use default value"_s);
    chooseIn(page, u"HideDockView"_s, 1);
    EXPECT_TRUE(noteOf(page, u"HideDockView"_s).startsWith(u"was: "));
}

TEST_F(MessagesTest, withoutABackupFolderTheChangeIsSavedAndCantBeUndone)
{
    QDir(backups).removeRecursively();
    writeRaw(backups.chopped(1), "a file in its place");
    start();
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    EXPECT_EQ(toneOf(page), Notice::Tone::Caution);
    EXPECT_TRUE(messageOf(page).startsWith(u"Saved, but this change can't be undone: "))
        << messageOf(page).toStdString();
    EXPECT_EQ(linksOf(page), QStringList {u"Details"_s});
    EXPECT_EQ(stored(dockFile, {u"autohide"_s}).boolean, true);
}

TEST_F(MessagesTest, anOldTextThatNoRowCanHoldComesBackAllTheSame)
{
    putFile(u"com.apple.screencapture.plist"_s, u"<key>name</key><string>Ann's</string>"_s);
    start();
    QWidget &page = settings(7);
    auto *view = page.findChild<GenericView *>(u"ScreenCaptureFilePrefixView"_s);
    view->useDefaultValue(0);
    press(page, u"saveButton"_s);
    EXPECT_EQ(messageOf(page), u"Saved 1 change. Old values are in quillet1.sqlite."_s);
    followLink(page, u"Undo…"_s);
    const QWidget &restore = go(restoreTab);
    press(restore, u"restoreButton"_s);
    EXPECT_TRUE(messageOf(restore).startsWith(u"Restored: 1 setting."));
    EXPECT_EQ(stored(u"com.apple.screencapture.plist"_s, {u"name"_s}).string, u"Ann's"_s);
}

TEST_F(MessagesTest, aDamagedFileIsToldWhileItsPageIsShown)
{
    writeRaw(home.preference(dockFile), "no property list");
    start();
    QWidget &page = settings(0);
    EXPECT_EQ(messageOf(page), QString());
    selectGroup(page, 1);
    const QString damaged =
        u"com.apple.dock.plist is damaged: its settings are shown as defaults and won't be "
        u"changed."_s;
    EXPECT_EQ(messageOf(page), damaged);
    EXPECT_EQ(toneOf(page), Notice::Tone::Caution);
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    EXPECT_TRUE(
        messageOf(page).startsWith(u"The change was not saved: com.apple.dock.plist is damaged ("))
        << messageOf(page).toStdString();
    EXPECT_EQ(readRaw(home.preference(dockFile)), "no property list");
    selectGroup(page, 0);
    EXPECT_EQ(messageOf(page), QString());
    selectGroup(page, 1);
    EXPECT_EQ(messageOf(page), damaged);
    writeRaw(home.preference(dockFile),
             "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict/></plist>");
    selectGroup(page, 0);
    selectGroup(page, 1);
    EXPECT_EQ(messageOf(page), QString());
}

TEST_F(MessagesTest, aSearchTellsOfTheFilesOfWhatItFinds)
{
    writeRaw(home.preference(dockFile), "no property list");
    start();
    QWidget &page = settings(0);
    auto &field = *page.findChild<QLineEdit *>(u"searchField"_s);
    field.setText(u"scrolling"_s);
    EXPECT_EQ(messageOf(page), QString());
    field.setText(u"dock"_s);
    EXPECT_TRUE(messageOf(page).startsWith(u"com.apple.dock.plist is damaged: "));
}

TEST_F(MessagesTest, aFileThatIsNoBackupChangesNothingAndSaysSo)
{
    writeRaw(backups + u"quillet3.sqlite", "words");
    start();
    const QWidget &page = go(restoreTab);
    table(page).selectRow(0);
    press(page, u"restoreButton"_s);
    EXPECT_EQ(messageOf(page), u"quillet3.sqlite can't be read; nothing was changed."_s);
    EXPECT_EQ(toneOf(page), Notice::Tone::Failure);
    EXPECT_TRUE(QFile::exists(backups + u"quillet3.sqlite"));
}

TEST_F(MessagesTest, aRowThatStopsThePlaybackIsNamedAndTheFileIsStillThere)
{
    start();
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    writeRaw(home.preference(dockFile), "no property list");
    followLink(page, u"Undo…"_s);
    const QWidget &restore = go(restoreTab);
    press(restore, u"restoreButton"_s);
    EXPECT_EQ(toneOf(restore), Notice::Tone::Failure);
    const QString text = messageOf(restore);
    EXPECT_TRUE(
        text.startsWith(u"Restoring stopped at “Hide the Dock”: com.apple.dock.plist is damaged ("))
        << text.toStdString();
    EXPECT_TRUE(text.endsWith(u"It has restored nothing; quillet1.sqlite is still there."));
    EXPECT_TRUE(QFile::exists(backups + u"quillet1.sqlite"));
    EXPECT_EQ(readRaw(home.preference(dockFile)), "no property list");
}

TEST_F(MessagesTest, deletedFilesAreTold)
{
    writeRaw(backups + u"quillet3.sqlite", "words");
    start();
    const QWidget &page = go(restoreTab);
    table(page).selectRow(0);
    press(page, u"deleteButton"_s);
    dialogs.answer(FirstButton);
    EXPECT_EQ(messageOf(page), u"Deleted quillet3.sqlite."_s);
}

TEST_F(MessagesTest, aLoginItemThatCantBeStoredIsNamedAndTriedAgain)
{
    const QString storePath =
        home.path() + u"/Library/Application Support/Varnel/disableLoginItems.sqlite";
    loginItems.items = {{u"Clock"_s, u"/Applications/Clock.app"_s, {}}};
    start();
    writeRaw(storePath, "no database");
    const QWidget &page = go(loginTab);
    LoginItemsView &view = *shared.loginItems()->loginItemsView();
    view.addDataToChangeDataList(LoginItemChange::Add, u"/Applications/Painter.app"_s, false);
    view.enableSaveButton();
    press(page, u"saveButton"_s);
    EXPECT_EQ(toneOf(page), Notice::Tone::Failure);
    EXPECT_TRUE(
        messageOf(page).startsWith(u"The change was not saved: Painter.app can't be added ("))
        << messageOf(page).toStdString();
    EXPECT_EQ(linksOf(page), (QStringList {u"Details"_s, u"Try Again"_s}));
    EXPECT_TRUE(QFile::remove(storePath));
    followLink(page, u"Try Again"_s);
    EXPECT_EQ(messageOf(page), u"Saved 1 change. Old values are in quillet1.sqlite."_s);
    view.readData();
    EXPECT_EQ(messageOf(page), QString());
    EXPECT_EQ(table(page).model()->rowCount(), 2);
}

TEST_F(MessagesTest, theLinksComeAfterTheButtonsAndNothingMoves)
{
    start();
    QWidget &page = settings();
    auto &footer = *page.findChild<QWidget *>(u"footer"_s);
    auto &view = *page.findChild<QPushButton *>(u"viewButton"_s);
    const QRect before = footer.geometry();
    const QPoint button = view.pos();
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    EXPECT_EQ(footer.geometry(), before);
    EXPECT_EQ(view.pos(), button);
    const MessageLine &line = messageLineOf(page);
    EXPECT_GT(line.x(), view.geometry().right());
    EXPECT_LE(line.geometry().right(), footer.width());
    QWidget *next = view.nextInFocusChain();
    while (next != line.links().first() && next != &view
           && !(next->isVisible() && next->isEnabled() && (next->focusPolicy() & Qt::TabFocus)))
        next = next->nextInFocusChain();
    EXPECT_EQ(next, line.links().first());
}

TEST_F(MessagesTest, theMessageIsANotificationToAScreenReader)
{
    start();
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 0);
    press(page, u"saveButton"_s);
    QAccessibleInterface *message =
        QAccessible::queryAccessibleInterface(page.findChild<MessageText *>());
    EXPECT_EQ(message->role(), QAccessible::Notification);
    EXPECT_EQ(message->text(QAccessible::Name),
              u"Saved 1 change. Old values are in quillet1.sqlite."_s);
}

TEST_F(MessagesTest, aLongSentenceTakesTwoLinesAndIsWholeInItsTip)
{
    MessageLine line;
    line.resize(200, 80);
    MessageText &text = *line.findChild<MessageText *>();
    line.tell({Notice::Tone::Failure, u"Short."_s}, {{u"Details"_s, [] {}}});
    EXPECT_LE(text.height(), 2 * text.fontMetrics().lineSpacing());
    EXPECT_EQ(text.toolTip(), QString());
    const QString whole =
        u"A sentence that has many words, and more than find room in two lines of "
        u"so narrow a place as this one is."_s;
    line.tell({Notice::Tone::Failure, whole}, {{u"Details"_s, [] {}}});
    EXPECT_EQ(text.height(), 2 * text.fontMetrics().lineSpacing());
    line.show();
    EXPECT_EQ(text.toolTip(), whole);
    EXPECT_GE(line.links().first()->y(), text.geometry().bottom());
}

TEST_F(MessagesTest, theRestorePageSaysWhatTheSelectedFileHolds)
{
    start();
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 0);
    selectGroup(page, 0);
    chooseIn(page, u"ScrollbarView"_s, 2);
    press(page, u"saveButton"_s);
    writeRaw(backups + u"quillet0.sqlite", "words");
    const QWidget &restore = go(restoreTab);
    EXPECT_EQ(restore.findChild<QLabel *>(u"hintLabel"_s)->text(),
              u"Restore puts the old values back at once, then deletes the file."_s);
    EXPECT_EQ(messageOf(restore), QString());
    table(restore).selectRow(1);
    EXPECT_TRUE(messageOf(restore).endsWith(u"2 settings of General, Dock; comes back exactly"))
        << messageOf(restore).toStdString();
    EXPECT_EQ(toneOf(restore), Notice::Tone::Quiet);
    table(restore).selectRow(0);
    EXPECT_TRUE(
        messageOf(restore).endsWith(u"quillet0.sqlite can't be read (file is not a database)"));
    table(restore).selectAll();
    EXPECT_EQ(toneOf(restore), Notice::Tone::Caution);
    EXPECT_TRUE(messageOf(restore).startsWith(u"Restore plays back quillet"));
    EXPECT_TRUE(messageOf(restore).endsWith(u" only and deletes all 2 selected files."));
    table(restore).clearSelection();
    EXPECT_EQ(messageOf(restore), QString());
}

TEST_F(MessagesTest, theNewestFileIsCalledSo)
{
    writeRaw(backups + u"quillet1.sqlite", "words");
    writeRaw(backups + u"quillet2.sqlite", "words");
    QFile first(backups + u"quillet1.sqlite");
    ASSERT_TRUE(first.open(QIODevice::ReadWrite));
    ASSERT_TRUE(first.setFileTime(QDateTime::currentDateTime().addDays(1),
                                  QFileDevice::FileModificationTime));
    first.close();
    start();
    const QWidget &restore = go(restoreTab);
    QStringList texts;
    for (int row = 0; row < 2; ++row) {
        table(restore).selectRow(row);
        texts.append(messageOf(restore));
    }
    EXPECT_EQ(texts.filter(u"newest; "_s).size(), 1);
}

TEST_F(MessagesTest, theContentsOfAFileThatIsNoBackupSaySoAndWhy)
{
    writeRaw(backups + u"quillet3.sqlite", "words");
    start();
    const QWidget &restore = go(restoreTab);
    table(restore).selectRow(0);
    press(restore, u"infoButton"_s);
    QStringList texts;
    for (const QLabel *label : dialogs.sheets.last()->findChildren<QLabel *>())
        texts.append(label->text());
    EXPECT_TRUE(texts.contains(u"quillet3.sqlite can't be read (file is not a database)."_s));
    EXPECT_FALSE(texts.contains(u"This file holds no changes that can be undone."_s));
}

TEST_F(MessagesTest, whatWaitsIsMarkedAtItsGroupItsTabTheTitleAndTheQuitEntry)
{
    start();
    const auto &quit = *window->findChild<QAction *>(u"quitAction"_s);
    const QTabBar &tabs = *window->tabView()->tabBar();
    QWidget &page = settings();
    const QAbstractItemModel &groups = *page.findChild<QTreeView *>(u"menuOutlineVew"_s)->model();
    const auto marked = [&groups] {
        QStringList names;
        for (int row = 0; row < groups.rowCount(); ++row)
            if (groups.index(row, 0).data(ImageAndTextCell::PendingRole).toBool())
                names.append(groups.index(row, 0).data().toString());
        return names;
    };
    EXPECT_EQ(marked(), QStringList());
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(quit.text(), u"Quit Varnel"_s);

    chooseIn(page, u"HideDockView"_s, 0);
    EXPECT_EQ(marked(), QStringList {u"Dock"_s});
    EXPECT_TRUE(tabs.tabData(settingsTab).toBool());
    EXPECT_FALSE(tabs.tabData(loginTab).toBool());
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_TRUE(window->windowTitle().contains(u"[*]"));
    EXPECT_EQ(quit.text(), u"Quit Without Saving 1 Change"_s);
    selectGroup(page, 0);
    chooseIn(page, u"ScrollbarView"_s, 2);
    EXPECT_EQ(marked(), (QStringList {u"General"_s, u"Dock"_s}));
    EXPECT_EQ(quit.text(), u"Quit Without Saving 2 Changes"_s);

    press(page, u"saveButton"_s);
    EXPECT_EQ(marked(), QStringList());
    EXPECT_FALSE(tabs.tabData(settingsTab).toBool());
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(quit.text(), u"Quit Varnel"_s);
}

TEST_F(MessagesTest, aLoginItemThatWaitsSaysWhatItWas)
{
    loginItems.items = {{u"Clock"_s, u"/Applications/Clock.app"_s, {}}};
    start();
    const QWidget &page = go(loginTab);
    QAbstractItemModel &items = *table(page).model();
    const QModelIndex box = items.index(0, 0);
    const auto note = [&items] {
        return items.index(0, 1).data(ImageAndTextCell::NoteRole).toString();
    };
    EXPECT_EQ(note(), QString());
    items.setData(box, Qt::Unchecked, Qt::CheckStateRole);
    EXPECT_EQ(note(), u"was: on"_s);
    EXPECT_TRUE(items.index(0, 1).data(ImageAndTextCell::PendingRole).toBool());
    EXPECT_TRUE(window->tabView()->tabBar()->tabData(loginTab).toBool());
    items.setData(box, Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(note(), u"as it is on disk"_s);
    items.setData(box, Qt::Unchecked, Qt::CheckStateRole);
    press(page, u"saveButton"_s);
    EXPECT_EQ(note(), QString());
    items.setData(box, Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(note(), u"was: off"_s);
}

TEST_F(MessagesTest, aValueThatWasChosenBackSaysThatItIsOnDisk)
{
    putFile(dockFile, u"<key>autohide</key><true/><key>no-glass</key><integer>7</integer>"_s);
    start();
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 1);
    EXPECT_EQ(noteOf(page, u"HideDockView"_s), u"was: yes"_s);
    chooseIn(page, u"HideDockView"_s, 0);
    EXPECT_EQ(noteOf(page, u"HideDockView"_s), u"as it is on disk"_s);
    chooseIn(page, u"MinModeView"_s, 0);
    chooseIn(page, u"MinModeView"_s, 2);
    EXPECT_EQ(noteOf(page, u"MinModeView"_s), u"as it is on disk"_s) << "nothing stands there";
    chooseIn(page, u"DockStyleView"_s, 0);
    chooseIn(page, u"DockStyleView"_s, 2);
    EXPECT_TRUE(noteOf(page, u"DockStyleView"_s).startsWith(u"was: "))
        << "what stands there is no choice, and would go";
}

TEST_F(MessagesTest, whileNoMessageShowsTheFooterCountsWhatWaits)
{
    start();
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 0);
    EXPECT_EQ(messageOf(page), u"1 change is not saved"_s);
    chooseIn(page, u"MinModeView"_s, 0);
    EXPECT_EQ(messageOf(page), u"2 changes are not saved"_s);
    press(page, u"saveButton"_s);
    EXPECT_TRUE(messageOf(page).startsWith(u"Saved 2 changes."));
}

TEST_F(MessagesTest, footersAreAlikeAndTheirCaptionsAreDimmedWithTheButtons)
{
    start();
    for (const auto &[tab, button, list] : {std::tuple(loginTab, u"save"_s, u"shadow"_s),
                                            {settingsTab, u"save"_s, u"mainScrollView"_s},
                                            {restoreTab, u"restore"_s, u"tableView"_s}}) {
        const QWidget &page = go(tab);
        const auto &shown = *page.findChild<QPushButton *>(button + u"Button");
        EXPECT_EQ(shown.size(), QSize(44, 36));
        EXPECT_EQ(shown.iconSize(), QSize(20, 20));
        EXPECT_FALSE(page.findChild<QLabel *>(button + u"Label")->isEnabled());
        const QWidget &above = *page.findChild<QWidget *>(list);
        const QRect seen = tab == loginTab ? above.contentsRect() : above.rect(); // not its shadow
        const int bottom = above.mapTo(&page, seen.bottomLeft()).y() + 1;
        EXPECT_EQ(shown.mapTo(&page, QPoint()).y() - bottom, 16) << list.toStdString();
    }
    QWidget &page = settings();
    chooseIn(page, u"HideDockView"_s, 0);
    EXPECT_TRUE(page.findChild<QLabel *>(u"saveLabel"_s)->isEnabled());
}

TEST_F(MessagesTest, aHairlinePartsRowsThatHaveNoShading)
{
    start();
    QWidget &page = settings();
    auto &column = *page.findChild<QWidget *>(u"mainView"_s);
    const auto *first = page.findChild<GenericView *>(u"DockStyleView"_s);
    auto *second = page.findChild<GenericView *>(u"HideDockView"_s);
    shared.quillet()->askForView(first->getViewID());
    QApplication::processEvents();
    const QImage seen = column.grab().toImage();
    const QColor ground = column.palette().color(QPalette::Base);
    EXPECT_NE(seen.pixelColor(5, second->y() - 1), ground);
    EXPECT_EQ(seen.pixelColor(5, second->y() + 4), ground);
}

TEST_F(MessagesTest, aListLosesItsHoverGroundWhenThePointerIsElsewhere)
{
    start();
    QWidget &page = settings();
    auto *list = page.findChild<QWidget *>(u"HideDockView"_s)->findChild<QComboBox *>();
    QCursor::setPos(window->mapToGlobal(QPoint(2, 2)));
    list->setAttribute(Qt::WA_UnderMouse, true);
    list->showPopup();
    list->hidePopup();
    EXPECT_FALSE(list->underMouse());
}

TEST_F(MessagesTest, aLongNoteTakesTheWidthThatTheHelpLeavesFree)
{
    start();
    window->resize(1200, 800);
    QWidget &page = settings(7);
    auto *plain = page.findChild<GenericView *>(u"ScreenCaptureFileFormatView"_s);
    const auto *note = plain->findChild<ElidedLabel *>(u"noteLabel"_s);
    const auto *help = plain->findChild<QLabel *>(u"helpLabel"_s);
    EXPECT_GT(note->width(), plain->controlPlace(0).width());
    EXPECT_EQ(note->geometry().right(), plain->controlPlace(0).right());
    EXPECT_GE(note->x(), help->x() + help->fontMetrics().horizontalAdvance(help->text()));
}
