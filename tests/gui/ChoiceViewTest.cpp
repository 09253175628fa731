#include "settings/views/ChoiceView.h"

#include "support/gui/SettingViewFixture.h"
#include "support/LogCapture.h"

#include <QLabel>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class ChoiceViews : public SettingViewFixture {
protected:
    QComboBox &comboBox() const { return control<QComboBox>(QStringLiteral("comboBox")); }
};

QString stringEntry(const QString &key, const QString &value)
{
    return u"<key>" + key + u"</key><string>" + value + u"</string>";
}

QString numberEntry(const QString &key, int value)
{
    return u"<key>" + key + u"</key><integer>" + QString::number(value) + u"</integer>";
}

QString boolEntry(const QString &key, bool value)
{
    return u"<key>" + key + (value ? u"</key><true/>" : u"</key><false/>");
}

} // namespace

TEST_F(ChoiceViews, ATextIsFoundInAnyLetterCase)
{
    putFile(u".GlobalPreferences.plist"_s, stringEntry(u"AppleShowScrollBars"_s, u"aLWAYS"_s));
    open(u"ScrollbarView"_s);
    EXPECT_EQ(comboBox().currentText(), u"always"_s);
}

TEST_F(ChoiceViews, TheFileFormatIsFoundInItsOwnLetterCaseOnly)
{
    putFile(u"com.apple.screencapture.plist"_s, stringEntry(u"type"_s, u"png"_s));
    open(u"ScreenCaptureFileFormatView"_s);
    EXPECT_EQ(comboBox().currentText(), u"PNG"_s);
    putFile(u"com.apple.screencapture.plist"_s, stringEntry(u"type"_s, u"PNG"_s));
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_s);
}

TEST_F(ChoiceViews, AMissingFileFormatLeavesTheListAsItWas)
{
    putFile(u"com.apple.screencapture.plist"_s, stringEntry(u"type"_s, u"gif"_s));
    auto &format = openAs<ChoiceView>(u"ScreenCaptureFileFormatView"_s);
    putFile(u"com.apple.screencapture.plist"_s, QString());
    format.readData(true);
    EXPECT_EQ(comboBox().currentText(), u"GIF"_s);
    EXPECT_EQ(format.currentComboBoxValue(), 1);
    EXPECT_EQ(format.backupValueInt(), 1);
}

TEST_F(ChoiceViews, AMissingFileFormatShowsTheDefaultAtFirst)
{
    open(u"ScreenCaptureFileFormatView"_s);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_s);
}

TEST_F(ChoiceViews, AStoredValueOutsideTheListShowsTheDefaultAndSavingItRemovesTheKey)
{
    putFile(u".GlobalPreferences.plist"_s,
            stringEntry(u"AppleShowScrollBars"_s, u"Sometimes"_s) + numberEntry(u"Other"_s, 3));
    open(u"ScrollbarView"_s);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_s);
    view->writeData();
    EXPECT_EQ(stored(u".GlobalPreferences.plist"_s, {u"AppleShowScrollBars"_s}).kind,
              plist::Kind::Missing);
    EXPECT_EQ(stored(u".GlobalPreferences.plist"_s, {u"Other"_s}).integer, 3);
}

TEST_F(ChoiceViews, ANumberThatIsNeitherYesNorNoShowsTheDefault)
{
    putFile(u"com.apple.dock.plist"_s, numberEntry(u"autohide"_s, 5));
    open(u"HideDockView"_s);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_s);
    EXPECT_EQ(view->getActionString(1009, {7}), u"Use default value on the Dock visibility"_s);
}

TEST_F(ChoiceViews, ReadingReportsNothing)
{
    open(u"HideDockView"_s);
    putFile(u"com.apple.dock.plist"_s, boolEntry(u"autohide"_s, true));
    view->readData(true);
    EXPECT_EQ(comboBox().currentIndex(), 0);
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(ChoiceViews, TheOldValueIsReportedBeforeTheNewOneAndNeverItself)
{
    putFile(u"com.apple.dock.plist"_s, boolEntry(u"autohide"_s, true));
    open(u"HideDockView"_s);
    choose(comboBox(), 1);
    EXPECT_EQ(reports.take(), editReports(1009, 0, 1));
    choose(comboBox(), 1);
    EXPECT_TRUE(reports.take().isEmpty());
    choose(comboBox(), 2);
    EXPECT_EQ(reports.take(), editReports(1009, 0, 2)) << "still the value on disk";
}

TEST_F(ChoiceViews, GoingBackToTheValueOnDiskIsReportedToo)
{
    open(u"HideDockView"_s);
    choose(comboBox(), 0);
    reports.take();
    choose(comboBox(), 2);
    EXPECT_EQ(reports.take(), editReports(1009, 2, 2));
}

TEST_F(ChoiceViews, ReadingWithoutTheControlTakesWhatTheListShows)
{
    putFile(u"com.apple.dock.plist"_s, boolEntry(u"autohide"_s, true));
    auto &choice = openAs<ChoiceView>(u"HideDockView"_s);
    choose(comboBox(), 1);
    choice.readData(false);
    EXPECT_EQ(comboBox().currentIndex(), 1);
    EXPECT_EQ(choice.backupValueInt(), 1) << "not 0, which is on disk";
    EXPECT_EQ(choice.currentComboBoxValue(), 1);
}

TEST_F(ChoiceViews, WithoutAParentReportsAreDropped)
{
    open(u"HideDockView"_s);
    view->setParentView(nullptr);
    choose(comboBox(), 0);
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(ChoiceViews, TheStateIsThereBeforeTheWidgets)
{
    putFile(u"com.apple.dock.plist"_s, boolEntry(u"autohide"_s, false));
    const auto light = makeSettingView(u"HideDockView"_s, {access, shared.restartFlags(), dialogs});
    light->awakeFromNib();
    EXPECT_TRUE(light->children().isEmpty());
    EXPECT_EQ(light->backupValueInt(), 1);
    light->makeControls();
    EXPECT_EQ(light->findChild<QComboBox *>(u"comboBox"_s)->currentIndex(), 1);
}

TEST_F(ChoiceViews, WritingRaisesTheFlagAndReadingDoesNot)
{
    open(u"HideDockView"_s);
    choose(comboBox(), 0);
    EXPECT_FALSE(shared.needToKillDock());
    view->writeData(1009, {0});
    EXPECT_TRUE(shared.needToKillDock());
}

TEST_F(ChoiceViews, BothDebugMenuKeysAreWrittenButOnlyTheInternalOneIsRead)
{
    putFile(u"com.apple.Safari.plist"_s, numberEntry(u"IncludeDebugMenu"_s, 1));
    open(u"DebugMenuView"_s);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_s);
    view->writeData(1201, {0});
    for (const QString &key : {u"IncludeDebugMenu"_s, u"IncludeInternalDebugMenu"_s}) {
        EXPECT_EQ(stored(u"com.apple.Safari.plist"_s, {key}).kind, plist::Kind::Integer);
        EXPECT_EQ(stored(u"com.apple.Safari.plist"_s, {key}).integer, 1);
    }
}

TEST_F(ChoiceViews, TheLibraryPlaylistNeedsBothKeys)
{
    const QString hide = u"hide-library-playlist"_s;
    const QString show = u"show-library-playlist"_s;
    putFile(u"com.apple.iTunes.plist"_s, numberEntry(hide, 1) + numberEntry(show, 1));
    open(u"LibraryPlaylistView"_s);
    EXPECT_EQ(comboBox().currentText(), u"yes"_s);
    putFile(u"com.apple.iTunes.plist"_s, numberEntry(hide, 1) + numberEntry(show, 0));
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"no"_s);
    putFile(u"com.apple.iTunes.plist"_s, numberEntry(hide, 1));
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_s);
}

TEST_F(ChoiceViews, AnUnknownToolbarModeShowsTheDefaultAndNoStoresTwo)
{
    const QString outer = u"NSToolbar Configuration BrowserWindowToolbarIdentifier"_s;
    const QString inner = u"TB Display Mode"_s;
    putFile(u"com.apple.Safari.plist"_s,
            u"<key>" + outer + u"</key><dict>" + numberEntry(inner, 1) + u"</dict>");
    open(u"TextOnIconView"_s);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_s);
    view->writeData(1204, {1});
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_s, {outer, inner}).integer, 2);
}

TEST_F(ChoiceViews, TheThumbnailCacheKnowsTwoItemsAndItsDefaultRemovesTheKey)
{
    putFile(u"com.apple.Safari.plist"_s, numberEntry(u"DebugSnapshotsUpdatePolicy"_s, 1));
    open(u"SaveThumbnailImageView"_s);
    EXPECT_EQ(comboBox().count(), 2);
    EXPECT_EQ(comboBox().currentText(), u"no (default)"_s);
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_s, {u"DebugSnapshotsUpdatePolicy"_s}).kind,
              plist::Kind::Missing);
}

TEST_F(ChoiceViews, TheLibraryFolderIsReadEvenWhenItsControlIsToStayAlone)
{
    auto &folder = openAs<ChoiceView>(u"UserLibraryFolderView"_s);
    EXPECT_EQ(comboBox().currentText(), u"shown"_s);
    choose(comboBox(), 2);
    EXPECT_EQ(reports.take(), editReports(1302, 1, 2));
    folder.readData(false);
    EXPECT_EQ(comboBox().currentText(), u"shown"_s) << "never the default item";
    EXPECT_EQ(folder.backupValueInt(), 1);
}

TEST_F(ChoiceViews, TheLibraryFolderIsHiddenByItsDefault)
{
    open(u"UserLibraryFolderView"_s);
    view->writeData(1302, {2});
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"hidden"_s);
    view->writeData(1302, {1});
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"shown"_s);
}

TEST_F(ChoiceViews, EachLockListReportsUnderItsOwnNumber)
{
    putFile(u"com.apple.dock.plist"_s,
            boolEntry(u"contents-immutable"_s, true) + boolEntry(u"size-immutable"_s, false));
    open(u"LockDockView"_s);
    choose(control<QComboBox>(u"contentsComboBox"_s), 1);
    EXPECT_EQ(reports.take(), editReports(1000, 0, 1));
    choose(control<QComboBox>(u"posComboBox"_s), 0);
    EXPECT_EQ(reports.take(), editReports(1001, 2, 0));
    choose(control<QComboBox>(u"sizeComboBox"_s), 2);
    EXPECT_EQ(reports.take(), editReports(1002, 1, 2));
}

TEST_F(ChoiceViews, WritingTheLockViewWritesAllThreeKeys)
{
    open(u"LockDockView"_s);
    choose(control<QComboBox>(u"posComboBox"_s), 0);
    putFile(u"com.apple.dock.plist"_s, boolEntry(u"contents-immutable"_s, true));
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"contents-immutable"_s}).kind,
              plist::Kind::Missing);
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_s, {u"position-immutable"_s}).boolean);
    EXPECT_TRUE(shared.needToKillDock());
    shared.setNeedToKillDock(false);
    view->writeData();
    EXPECT_TRUE(shared.needToKillDock()) << "each time, whatever has changed";
}

TEST_F(ChoiceViews, OneSettingOfTheLockViewIsWrittenAlone)
{
    open(u"LockDockView"_s);
    choose(control<QComboBox>(u"contentsComboBox"_s), 0);
    view->writeData(1002, {0});
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"contents-immutable"_s}).kind,
              plist::Kind::Missing);
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_s, {u"size-immutable"_s}).boolean);
}

TEST_F(ChoiceViews, EachDisplayControlListReportsUnderItsOwnNumber)
{
    open(u"DisplayControlView"_s);
    choose(control<QComboBox>(u"displayControlHiddenComboBox"_s), 0);
    EXPECT_EQ(reports.take(), editReports(1801, 2, 0));
    choose(control<QComboBox>(u"displayControlVisibleComboBox"_s), 1);
    EXPECT_EQ(reports.take(), editReports(1802, 2, 1));
    choose(control<QComboBox>(u"titleBarComboBox"_s), 0);
    EXPECT_EQ(reports.take(), editReports(1803, 2, 0));
}

TEST_F(ChoiceViews, TheWheelScrollsThePageAndNotTheList)
{
    open(u"HideDockView"_s);
    comboBox().setFocus();
    QWheelEvent wheel(QPointF(5, 5), comboBox().mapToGlobal(QPointF(5, 5)), {}, QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&comboBox(), &wheel);
    EXPECT_FALSE(wheel.isAccepted()) << "it goes on to the page";
    EXPECT_EQ(comboBox().currentIndex(), 2);
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(ChoiceViews, ListsAreNotEditableAndWideEnoughForTheirItems)
{
    open(u"MinModeView"_s);
    EXPECT_FALSE(comboBox().isEditable());
    const int longest = comboBox().fontMetrics().horizontalAdvance(comboBox().itemText(1));
    EXPECT_GT(comboBox().minimumSizeHint().width(), longest);
    EXPECT_GE(comboBox().width(), 260);
}

TEST_F(ChoiceViews, TheTitleIsTheListsBuddyAndTheTipNamesFileAndKey)
{
    open(u"HideDockView"_s);
    EXPECT_EQ(control<QLabel>(u"titleLabel"_s).buddy(), &comboBox());
    EXPECT_FALSE(comboBox().accessibleName().isEmpty());
    EXPECT_EQ(view->toolTip(), u"Library/Preferences/com.apple.dock.plist\nautohide"_s);
}
