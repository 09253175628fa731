#include "settings/views/Quillet.h"
#include "support/gui/QuilletFixture.h"
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
};

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
