// Controls that are changed through their accessibility interfaces, past mouse and keyboard.

#include "settings/Catalogue.h"
#include "settings/views/QuilletView.h"
#include "support/gui/QuilletFixture.h"
#include "support/gui/ReportRecorder.h"

#include <QAccessible>
#include <QCheckBox>
#include <QSlider>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class ScreenReaderEdits : public QuilletFixture {
protected:
    static constexpr int dockRow = 1;
    static constexpr int safariRow = 6;
    static constexpr int captureRow = 7;

    void SetUp() override
    {
        putFile(u"com.apple.dock.plist"_s,
                u"<key>tilesize</key><integer>48</integer>"
                "<key>largesize</key><integer>64</integer>"_s);
        putFile(u"com.apple.Safari.plist"_s,
                u"<key>ProxiesInBookmarksBar</key><array><string>Bonjour</string></array>"
                "<key>RecentHistoryMenuItemsLimit</key><integer>30</integer>"_s);
        putFile(u"com.apple.screencapture.plist"_s,
                u"<key>name</key><string>Shot</string><key>location</key><string>/tmp</string>"_s);
        start();
    }

    template <typename Control>
    [[nodiscard]] Control &control(const QString &viewClass, const QString &name) const
    {
        return *row(viewClass).findChild<Control *>(name);
    }
    [[nodiscard]] QCheckBox &box(const QString &viewClass,
                                 const QString &name = u"checkBox"_s) const
    {
        return control<QCheckBox>(viewClass, name);
    }

    static QAccessibleInterface &face(QWidget &widget)
    {
        return *QAccessible::queryAccessibleInterface(&widget);
    }
    static void toggle(QCheckBox &box)
    {
        face(box).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    }
    static void setNumber(QWidget &control, int number)
    {
        face(control).valueInterface()->setCurrentValue(number);
    }

    void expectPending(const ChangeRecord &change, const ChangeRecord &old)
    {
        EXPECT_EQ(shared.quilletCommands(), QList<ChangeRecord> {change});
        EXPECT_EQ(shared.quilletBackupCommands(), QList<ChangeRecord> {old});
        EXPECT_TRUE(button(u"saveButton"_s).isEnabled());
    }
    [[nodiscard]] plist::Kind kindOf(const QString &file, const QString &key) const
    {
        return stored(file, {key}).kind;
    }
};

} // namespace

TEST_F(ScreenReaderEdits, ATickedDefaultBoxOfANumberIsReportedAndSaved)
{
    clickGroup(dockRow);
    toggle(box(u"DockSizeView"_s));
    expectPending({1004, -1, u""_s}, {1004, 48, u""_s});
    EXPECT_FALSE(control<QSlider>(u"DockSizeView"_s, u"slider"_s).isEnabled());
    click(button(u"saveButton"_s));
    EXPECT_EQ(kindOf(u"com.apple.dock.plist"_s, u"tilesize"_s), plist::Kind::Missing);
    EXPECT_EQ(kindOf(u"com.apple.dock.plist"_s, u"largesize"_s), plist::Kind::Integer);
}

TEST_F(ScreenReaderEdits, EveryDefaultBoxIsReported)
{
    clickGroup(dockRow);
    toggle(box(u"DockMagnificationView"_s));
    clickGroup(safariRow);
    toggle(box(u"ItemsOnHistoryView"_s));
    clickGroup(captureRow);
    toggle(box(u"ScreenCaptureFilePrefixView"_s));
    toggle(box(u"ScreenCaptureLocationView"_s));
    EXPECT_EQ(shared.quilletCommands(),
              (QList<ChangeRecord> {
                  {1003, -1, u""_s}, {1203, -1, u""_s}, {1400, 0, u"-1"_s}, {1403, 0, u"-1"_s}}));
}

TEST_F(ScreenReaderEdits, ABoxIsReportedOnceForEachToggle)
{
    clickGroup(dockRow);
    ReportRecorder reports;
    row(u"DockSizeView"_s).setParentView(&reports);
    toggle(box(u"DockSizeView"_s));
    EXPECT_EQ(reports.take(), editReports(1004, 48, -1));
    toggle(box(u"DockSizeView"_s));
    EXPECT_EQ(reports.take(), QList<ReportRecorder::Report>({{ReportRecorder::Backup, 1004, 48}}))
        << "turned off, it has nothing new to tell";
    click(box(u"DockSizeView"_s));
    EXPECT_EQ(reports.take(), editReports(1004, 48, -1)) << "a click is no toggle and a half";
}

TEST_F(ScreenReaderEdits, EveryBoxOfTheBookmarksBarIsReported)
{
    clickGroup(safariRow);
    const QString bar = u"BookmarkBarView"_s;
    const auto pendingText = [this] { return shared.quilletCommands().value(0).extraData; };
    toggle(box(bar, u"readingListCheckBox"_s));
    EXPECT_EQ(pendingText(), u"1;0;0;1"_s);
    toggle(box(bar, u"topSitesCheckBox"_s));
    EXPECT_EQ(pendingText(), u"1;1;0;1"_s);
    toggle(box(bar, u"addressBookCheckBox"_s));
    EXPECT_EQ(pendingText(), u"1;1;1;1"_s);
    toggle(box(bar, u"bonjourCheckBox"_s));
    EXPECT_EQ(pendingText(), u"1;1;1;0"_s);
    toggle(box(bar, u"defaultCheckBox"_s));
    expectPending({1200, 0, u"-1"_s}, {1200, 0, u"0;0;0;1"_s});
    EXPECT_FALSE(box(bar, u"bonjourCheckBox"_s).isEnabled());
    click(button(u"saveButton"_s));
    EXPECT_EQ(kindOf(u"com.apple.Safari.plist"_s, u"ProxiesInBookmarksBar"_s),
              plist::Kind::Missing);
}

TEST_F(ScreenReaderEdits, ASliderIsReported)
{
    clickGroup(dockRow);
    setNumber(control<QSlider>(u"DockSizeView"_s, u"slider"_s), 96);
    expectPending({1004, 96, u""_s}, {1004, 48, u""_s});
}

TEST_F(ScreenReaderEdits, AStepperIsReported)
{
    clickGroup(safariRow);
    setNumber(control<QSpinBox>(u"ItemsOnHistoryView"_s, u"stepper"_s), 12);
    expectPending({1203, 12, u""_s}, {1203, 30, u""_s});
}

TEST_F(ScreenReaderEdits, ATextFieldIsReported)
{
    clickGroup(captureRow);
    QLineEdit &field = control<QLineEdit>(u"ScreenCaptureFilePrefixView"_s, u"textField"_s);
    face(field).editableTextInterface()->insertText(4, u"s"_s);
    expectPending({1400, 0, u"Shots"_s}, {1400, 0, u"Shot"_s});
}

TEST_F(ScreenReaderEdits, AChoiceThatNobodyClickedIsReported)
{
    clickGroup(dockRow);
    // What a list's accessibility interface does where it can select.
    comboBoxOf(u"HideDockView"_s).setCurrentIndex(1);
    expectPending({1009, 1, u""_s}, {1009, 2, u""_s});
}

TEST_F(ScreenReaderEdits, WhatTheProgramShowsItselfIsNoEdit)
{
    for (int group = 0; group < modules().size(); ++group)
        clickGroup(group);
    controller->readData();
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_TRUE(shared.quilletBackupCommands().isEmpty());
}
