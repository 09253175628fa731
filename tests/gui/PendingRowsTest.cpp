#include "settings/views/Quillet.h"
#include "support/FailingFileStore.h"
#include "support/gui/QuilletFixture.h"
#include "support/LogCapture.h"
#include "ui/Theme.h"

#include <QCheckBox>
#include <QLabel>
#include <QSlider>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class PendingRows : public QuilletFixture {
protected:
    static constexpr int generalRow = 0;
    static constexpr int dockRow = 1;
    static constexpr int safariRow = 6;
    static constexpr int captureRow = 7;

    /// The notes of a row, top to bottom.
    [[nodiscard]] QStringList notes(const QString &viewClass) const
    {
        QStringList texts;
        for (const QLabel *note : row(viewClass).findChildren<QLabel *>(u"noteLabel"_s))
            texts += note->text();
        return texts;
    }
    [[nodiscard]] QString note(const QString &viewClass) const { return notes(viewClass).value(0); }

    /// Whether the accent's dot stands at the row's left edge.
    [[nodiscard]] bool hasDot(const QString &viewClass) const
    {
        const QImage picture = row(viewClass).grab().toImage();
        const QColor accent = Theme::accent(page().palette());
        for (int y = 0; y < picture.height(); ++y) {
            if (picture.pixelColor(Theme::gapLarge / 2, y) == accent)
                return true;
        }
        return false;
    }
    [[nodiscard]] QCheckBox &boxOf(const QString &viewClass) const
    {
        return *row(viewClass).findChild<QCheckBox *>(u"checkBox"_s);
    }
    [[nodiscard]] QCheckBox &bonjourBox() const
    {
        return *row(u"BookmarkBarView"_s).findChild<QCheckBox *>(u"bonjourCheckBox"_s);
    }

    void putToolbar()
    {
        putFile(u"com.apple.Safari.plist"_s,
                u"<key>NSToolbar Configuration BrowserWindowToolbarIdentifier</key>"
                "<dict><key>TB Display Mode</key><integer>0</integer></dict>"
                "<key>ProxiesInBookmarksBar</key><array/>"_s);
    }
    void cancelChanges()
    {
        click(button(u"cancelButton"_s));
        dialogs.answer(FirstButton);
    }
};

/// The lines of the log that an edit is worth.
const QStringList editLog {QStringLiteral("addDataToBackupDataList"),
                           QStringLiteral("addDataToChangeDataList")};

} // namespace

TEST_F(PendingRows, NothingIsSaidOfARowThatIsNotPending)
{
    start();
    clickGroup(dockRow);
    for (GenericView *row : rows()) {
        EXPECT_FALSE(row->isPending());
        EXPECT_EQ(note(row->objectName()), QString());
        EXPECT_FALSE(hasDot(row->objectName())) << row->objectName().toStdString();
    }
}

TEST_F(PendingRows, AChangedRowTellsWhatWasThereBefore)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><false/>"_s);
    start();
    clickGroup(dockRow);
    const int height = row(u"HideDockView"_s).height();
    QComboBox &list = comboBoxOf(u"HideDockView"_s);
    const QString before = list.currentText();
    choose(list, 0);
    EXPECT_EQ(note(u"HideDockView"_s), u"was: " + before);
    EXPECT_EQ(list.accessibleDescription(), u"was: " + before) << "a screen reader says it, too";
    EXPECT_TRUE(hasDot(u"HideDockView"_s));
    EXPECT_FALSE(hasDot(u"MinModeView"_s));
    EXPECT_EQ(row(u"HideDockView"_s).height(), height) << "nothing jumps";
}

TEST_F(PendingRows, AfterItsPageIsBuiltAnewARowTellsWhatWaits)
{
    start();
    clickGroup(dockRow);
    choose(comboBoxOf(u"HideDockView"_s), 0);
    clickGroup(generalRow);
    clickGroup(dockRow);
    EXPECT_EQ(comboBoxOf(u"HideDockView"_s).currentIndex(), 2) << "what is on disk";
    EXPECT_EQ(note(u"HideDockView"_s),
              u"pending: " + controller->actionString(1009, 0, {}).value(2));
    EXPECT_TRUE(hasDot(u"HideDockView"_s));
}

TEST_F(PendingRows, AnotherEditThenTellsAgainWhatWasThereBefore)
{
    start();
    clickGroup(dockRow);
    choose(comboBoxOf(u"HideDockView"_s), 0);
    clickGroup(dockRow);
    choose(comboBoxOf(u"HideDockView"_s), 1);
    EXPECT_EQ(note(u"HideDockView"_s), u"was: use default value"_s);
}

TEST_F(PendingRows, SavingAndCancellingClearTheMarks)
{
    start();
    clickGroup(dockRow);
    choose(comboBoxOf(u"HideDockView"_s), 0);
    click(button(u"saveButton"_s));
    EXPECT_EQ(note(u"HideDockView"_s), QString());
    EXPECT_FALSE(hasDot(u"HideDockView"_s));
    choose(comboBoxOf(u"HideDockView"_s), 1);
    EXPECT_EQ(note(u"HideDockView"_s), u"was: yes"_s) << "what was saved last is on disk";
    click(button(u"cancelButton"_s));
    dialogs.answer(FirstButton);
    EXPECT_EQ(note(u"HideDockView"_s), QString());
    EXPECT_FALSE(row(u"HideDockView"_s).isPending());
}

TEST_F(PendingRows, WhatIsSavedPastTheControlIsToldUntilTheRowIsReadAgain)
{
    start();
    choose(comboBoxOf(u"ScrollbarView"_s), 0);
    const QString always = controller->actionString(1300, 0, {}).value(2);
    searchField().setText(u"dock"_s);
    QTest::keyClick(&searchField(), Qt::Key_Escape);
    const int shown = comboBoxOf(u"ScrollbarView"_s).currentIndex();
    ASSERT_NE(shown, 0) << "the page was built anew, with what is on disk";
    EXPECT_EQ(note(u"ScrollbarView"_s), u"pending: " + always);
    click(button(u"saveButton"_s));
    EXPECT_EQ(comboBoxOf(u"ScrollbarView"_s).currentIndex(), shown) << "saving reads nothing";
    EXPECT_EQ(note(u"ScrollbarView"_s), u"saved: " + always);
    EXPECT_EQ(comboBoxOf(u"ScrollbarView"_s).accessibleDescription(), u"saved: " + always);
    EXPECT_FALSE(hasDot(u"ScrollbarView"_s)) << "nothing waits";
    clickGroup(generalRow);
    EXPECT_EQ(comboBoxOf(u"ScrollbarView"_s).currentIndex(), 0);
    EXPECT_EQ(note(u"ScrollbarView"_s), QString());
}

TEST_F(PendingRows, ADefaultSavedPastItsBoxIsToldAndACancelledOneIsNot)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>tilesize</key><integer>48</integer>"_s);
    start();
    clickGroup(dockRow);
    const auto defaultWaitsWhileTheBoxIsOff = [this] {
        click(boxOf(u"DockSizeView"_s));
        click(boxOf(u"DockSizeView"_s));
    };
    defaultWaitsWhileTheBoxIsOff();
    click(button(u"cancelButton"_s));
    dialogs.answer(FirstButton);
    EXPECT_EQ(note(u"DockSizeView"_s), QString());
    defaultWaitsWhileTheBoxIsOff();
    click(button(u"saveButton"_s));
    EXPECT_EQ(note(u"DockSizeView"_s),
              u"saved: " + controller->actionString(1004, -1, {}).value(2));
    EXPECT_FALSE(row(u"DockSizeView"_s).isPending());
}

TEST_F(PendingRows, AnEditAfterTheSaveTellsAgainWhatWasThereBefore)
{
    start();
    clickGroup(dockRow);
    choose(comboBoxOf(u"HideDockView"_s), 0);
    clickGroup(dockRow);
    click(button(u"saveButton"_s));
    choose(comboBoxOf(u"HideDockView"_s), 1);
    EXPECT_EQ(note(u"HideDockView"_s), u"was: yes"_s);
    click(button(u"saveButton"_s));
    EXPECT_EQ(note(u"HideDockView"_s), QString());
}

TEST_F(PendingRows, EachSettingOfAGroupHasItsOwnNoteAndTheRowOneMark)
{
    start();
    clickGroup(dockRow);
    choose(comboBoxOf(u"LockDockView"_s, u"posComboBox"_s), 0);
    EXPECT_EQ(notes(u"LockDockView"_s),
              (QStringList {QString(), u"was: use default value"_s, QString()}));
    EXPECT_TRUE(hasDot(u"LockDockView"_s));
}

TEST_F(PendingRows, ANumberTellsTheNumberAndTheDefaultItsWords)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>tilesize</key><integer>48</integer>"_s);
    start();
    clickGroup(dockRow);
    row(u"DockSizeView"_s).findChild<QSlider *>()->setValue(64);
    EXPECT_EQ(note(u"DockSizeView"_s), u"was: 48 pixels"_s);
    click(boxOf(u"DockSizeView"_s));
    EXPECT_EQ(note(u"DockSizeView"_s), u"was: 48 pixels"_s) << "and the default waits";
    // Turned off, the box reports nothing: the default still waits, though the slider shows 64.
    click(boxOf(u"DockSizeView"_s));
    EXPECT_EQ(note(u"DockSizeView"_s),
              u"pending: " + controller->actionString(1004, -1, {}).value(2));
}

TEST_F(PendingRows, ATextTellsTheTextAndItemsTheirNames)
{
    putFile(u"com.apple.screencapture.plist"_s, u"<key>name</key><string>Shot</string>"_s);
    putFile(u"com.apple.Safari.plist"_s,
            u"<key>ProxiesInBookmarksBar</key><array><string>Top Sites</string>"
            "<string>Bonjour</string></array>"_s);
    start();
    clickGroup(captureRow);
    QTest::keyClicks(row(u"ScreenCaptureFilePrefixView"_s).findChild<QLineEdit *>(), u"s"_s);
    EXPECT_EQ(note(u"ScreenCaptureFilePrefixView"_s), u"was: Shot"_s);
    clickGroup(safariRow);
    click(*row(u"BookmarkBarView"_s).findChild<QCheckBox *>(u"bonjourCheckBox"_s));
    EXPECT_EQ(note(u"BookmarkBarView"_s), u"was: Top Sites, Bonjour"_s);
}

TEST_F(PendingRows, ALongNoteIsCutAndWholeInItsTip)
{
    const QString prefix(200, u'x');
    putFile(u"com.apple.screencapture.plist"_s, u"<key>name</key><string>" + prefix + u"</string>");
    start();
    clickGroup(captureRow);
    GenericView &view = row(u"ScreenCaptureFilePrefixView"_s);
    const int width = view.findChild<QLineEdit *>()->x();
    QTest::keyClicks(view.findChild<QLineEdit *>(), u"s"_s);
    QApplication::processEvents();
    EXPECT_EQ(view.findChild<QLineEdit *>()->x(), width);
    EXPECT_EQ(view.findChild<QLabel *>(u"noteLabel"_s)->toolTip(), u"was: " + prefix);
}

TEST_F(PendingRows, TheSaveButtonCounts)
{
    start();
    clickGroup(dockRow);
    QPushButton &save = button(u"saveButton"_s);
    EXPECT_FALSE(save.toolTip().contains(u"Save 1"_s));
    choose(comboBoxOf(u"HideDockView"_s), 0);
    EXPECT_TRUE(save.toolTip().startsWith(u"Save 1 change;"_s)) << save.toolTip().toStdString();
    choose(comboBoxOf(u"HideDockView"_s), 1);
    EXPECT_TRUE(save.toolTip().startsWith(u"Save 1 change;"_s)) << "one for each setting";
    choose(comboBoxOf(u"MinModeView"_s), 1);
    EXPECT_TRUE(save.toolTip().startsWith(u"Save 2 changes;"_s));
    EXPECT_EQ(save.accessibleDescription(), u"Save 2 changes"_s);
    click(save);
    EXPECT_EQ(save.accessibleDescription(), u"Save the pending changes"_s);
}

TEST_F(PendingRows, ANoteLogsNothing)
{
    putToolbar();
    start();
    clickGroup(safariRow);
    const LogCapture log;
    choose(comboBoxOf(u"TextOnIconView"_s), 1);
    EXPECT_EQ(note(u"TextOnIconView"_s), u"was: yes"_s);
    EXPECT_EQ(log.texts(u"varnel.settings"_s), editLog) << "and no value that was found";
    click(bonjourBox());
    EXPECT_EQ(log.texts(u"varnel.settings"_s), editLog + editLog);
}

TEST_F(PendingRows, TheNotesOfAPageThatIsBuiltAnewAndOfACancelLogNothing)
{
    putToolbar();
    start();
    clickGroup(safariRow);
    click(bonjourBox());
    const LogCapture log;
    clickGroup(safariRow);
    EXPECT_EQ(note(u"BookmarkBarView"_s), u"pending: Show Bonjour on Safari's Bookmarks bar"_s);
    cancelChanges();
    EXPECT_EQ(note(u"BookmarkBarView"_s), QString());
    EXPECT_TRUE(log.texts().filter(u"barStr"_s).isEmpty());
    EXPECT_EQ(log.texts().filter(u"Value Found"_s).size(), 1) << "the page's own reading";
}

TEST_F(PendingRows, AnEditReadsNoFile)
{
    putToolbar();
    FailingFileStore counted(store);
    PreferenceFiles countedFiles(counted);
    start({workspace, shared, countedFiles, dialogs, backup});
    clickGroup(safariRow);
    const auto readsOf = [&counted](const auto &edit) {
        counted.calls.clear();
        edit();
        return counted.calls.filter(u"read "_s).size();
    };
    EXPECT_EQ(readsOf([this] { choose(comboBoxOf(u"TextOnIconView"_s), 1); }), 0);
    EXPECT_EQ(readsOf([this] { click(bonjourBox()); }), 0);
    click(button(u"saveButton"_s));
    EXPECT_EQ(readsOf([this] { choose(comboBoxOf(u"TextOnIconView"_s), 2); }), 0);
    EXPECT_EQ(note(u"TextOnIconView"_s), u"was: no"_s) << "known from the save";
}

TEST_F(PendingRows, WhatASaveCouldNotMakeIsNotToldAsOld)
{
    start(); // without the file that the setting is written into
    clickGroup(safariRow);
    choose(comboBoxOf(u"TextOnIconView"_s), 0);
    click(button(u"saveButton"_s));
    EXPECT_EQ(note(u"TextOnIconView"_s),
              u"saved: " + controller->actionString(1204, 2, {}).value(2));
    choose(comboBoxOf(u"TextOnIconView"_s), 1);
    EXPECT_EQ(note(u"TextOnIconView"_s), u"was: use default value"_s);
}

TEST_F(PendingRows, ASettingThatSharesItsKeyTellsWhatTheOtherSaved)
{
    start();
    clickGroup(3);
    choose(comboBoxOf(u"PreloadSongPreviewView"_s), 0);
    click(button(u"saveButton"_s));
    EXPECT_EQ(note(u"PreloadSongPreviewView"_s), QString());
    EXPECT_EQ(note(u"HalfStarsView"_s),
              u"saved: " + controller->actionString(1603, 0, {}).value(2));
}

TEST_F(PendingRows, ANumberBeyondItsSliderNeedsNoNote)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>tilesize</key><integer>500</integer>"_s);
    start();
    clickGroup(dockRow);
    EXPECT_EQ(note(u"DockSizeView"_s), QString());
    row(u"DockSizeView"_s).findChild<QSlider *>()->setValue(127);
    EXPECT_EQ(note(u"DockSizeView"_s), u"was: 500 pixels"_s);
}

TEST_F(PendingRows, ADefaultBoxTurnedOffWithNothingPendingTellsThatTheDefaultIsOnDisk)
{
    start();
    clickGroup(dockRow);
    click(boxOf(u"DockSizeView"_s));
    EXPECT_EQ(note(u"DockSizeView"_s),
              u"saved: " + controller->actionString(1004, -1, {}).value(2));
    clickGroup(captureRow);
    click(boxOf(u"ScreenCaptureLocationView"_s));
    EXPECT_EQ(note(u"ScreenCaptureLocationView"_s), u"saved: use default value"_s)
        << "not the sentence for a folder called -1";
    click(boxOf(u"ScreenCaptureLocationView"_s));
    EXPECT_EQ(note(u"ScreenCaptureLocationView"_s), u"as it is on disk"_s);
}

TEST_F(PendingRows, AListThatKeepsItsChoiceAfterACancelTellsWhatIsOnDisk)
{
    start();
    clickGroup(captureRow);
    choose(comboBoxOf(u"ScreenCaptureFileFormatView"_s), 4);
    cancelChanges();
    EXPECT_EQ(comboBoxOf(u"ScreenCaptureFileFormatView"_s).currentIndex(), 4)
        << "a missing key leaves the list alone";
    EXPECT_EQ(note(u"ScreenCaptureFileFormatView"_s),
              u"saved: " + controller->actionString(1402, 7, {}).value(2));
}

TEST_F(PendingRows, WhatIsNoTextSaysSoAndIsWrittenOnlyWhenItIsEdited)
{
    putFile(u"com.apple.screencapture.plist"_s, u"<key>name</key><integer>5</integer>"_s);
    start();
    clickGroup(captureRow);
    EXPECT_EQ(note(u"ScreenCaptureFilePrefixView"_s), u"not a text"_s);
    choose(comboBoxOf(u"ScreenCaptureFileFormatView"_s), 4);
    click(button(u"saveButton"_s));
    EXPECT_EQ(stored(u"com.apple.screencapture.plist"_s, {u"name"_s}).kind, plist::Kind::Integer);
    QLineEdit &field = *row(u"ScreenCaptureFilePrefixView"_s).findChild<QLineEdit *>();
    QTest::keyClicks(&field, u"0"_s);
    EXPECT_EQ(note(u"ScreenCaptureFilePrefixView"_s), u"was: 5 (not a text)"_s);
    click(button(u"saveButton"_s));
    EXPECT_EQ(stored(u"com.apple.screencapture.plist"_s, {u"name"_s}).string, u"50"_s);
    EXPECT_EQ(note(u"ScreenCaptureFilePrefixView"_s), QString());
}
