#include "settings/views/ChoiceView.h"

#include "support/gui/SettingViewFixture.h"
#include "support/LogCapture.h"

#include <QLabel>
#include <QWheelEvent>

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
    putFile(u".GlobalPreferences.plist"_qs, stringEntry(u"AppleShowScrollBars"_qs, u"aLWAYS"_qs));
    open(u"ScrollbarView"_qs);
    EXPECT_EQ(comboBox().currentText(), u"always"_qs);
}

TEST_F(ChoiceViews, TheFileFormatIsFoundInItsOwnLetterCaseOnly)
{
    putFile(u"com.apple.screencapture.plist"_qs, stringEntry(u"type"_qs, u"png"_qs));
    open(u"ScreenCaptureFileFormatView"_qs);
    EXPECT_EQ(comboBox().currentText(), u"PNG"_qs);
    putFile(u"com.apple.screencapture.plist"_qs, stringEntry(u"type"_qs, u"PNG"_qs));
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_qs);
}

TEST_F(ChoiceViews, AMissingFileFormatLeavesTheListAsItWas)
{
    putFile(u"com.apple.screencapture.plist"_qs, stringEntry(u"type"_qs, u"gif"_qs));
    auto &format = openAs<ChoiceView>(u"ScreenCaptureFileFormatView"_qs);
    putFile(u"com.apple.screencapture.plist"_qs, QString());
    format.readData(true);
    EXPECT_EQ(comboBox().currentText(), u"GIF"_qs);
    EXPECT_EQ(format.currentComboBoxValue(), 1);
    EXPECT_EQ(format.backupValueInt(), 1);
}

TEST_F(ChoiceViews, AMissingFileFormatShowsTheDefaultAtFirst)
{
    open(u"ScreenCaptureFileFormatView"_qs);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_qs);
}

TEST_F(ChoiceViews, AStoredValueOutsideTheListShowsTheDefaultAndSavingItRemovesTheKey)
{
    putFile(u".GlobalPreferences.plist"_qs,
            stringEntry(u"AppleShowScrollBars"_qs, u"Sometimes"_qs) + numberEntry(u"Other"_qs, 3));
    open(u"ScrollbarView"_qs);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_qs);
    view->writeData();
    EXPECT_EQ(stored(u".GlobalPreferences.plist"_qs, {u"AppleShowScrollBars"_qs}).kind,
              plist::Kind::Missing);
    EXPECT_EQ(stored(u".GlobalPreferences.plist"_qs, {u"Other"_qs}).integer, 3);
}

TEST_F(ChoiceViews, ANumberThatIsNeitherYesNorNoShowsTheDefault)
{
    putFile(u"com.apple.dock.plist"_qs, numberEntry(u"autohide"_qs, 5));
    open(u"HideDockView"_qs);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_qs);
    EXPECT_EQ(view->getActionString(1009, {7}), u"Use default value on the Dock visibility"_qs);
}

TEST_F(ChoiceViews, ReadingReportsNothing)
{
    open(u"HideDockView"_qs);
    putFile(u"com.apple.dock.plist"_qs, boolEntry(u"autohide"_qs, true));
    view->readData(true);
    EXPECT_EQ(comboBox().currentIndex(), 0);
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(ChoiceViews, TheOldValueIsReportedBeforeTheNewOneAndNeverItself)
{
    putFile(u"com.apple.dock.plist"_qs, boolEntry(u"autohide"_qs, true));
    open(u"HideDockView"_qs);
    choose(comboBox(), 1);
    EXPECT_EQ(reports.take(), editReports(1009, 0, 1));
    choose(comboBox(), 1);
    EXPECT_TRUE(reports.take().isEmpty());
    choose(comboBox(), 2);
    EXPECT_EQ(reports.take(), editReports(1009, 0, 2)) << "still the value on disk";
}

TEST_F(ChoiceViews, GoingBackToTheValueOnDiskIsReportedToo)
{
    open(u"HideDockView"_qs);
    choose(comboBox(), 0);
    reports.take();
    choose(comboBox(), 2);
    EXPECT_EQ(reports.take(), editReports(1009, 2, 2));
}

TEST_F(ChoiceViews, ReadingWithoutTheControlTakesWhatTheListShows)
{
    putFile(u"com.apple.dock.plist"_qs, boolEntry(u"autohide"_qs, true));
    auto &choice = openAs<ChoiceView>(u"HideDockView"_qs);
    choose(comboBox(), 1);
    choice.readData(false);
    EXPECT_EQ(comboBox().currentIndex(), 1);
    EXPECT_EQ(choice.backupValueInt(), 1) << "not 0, which is on disk";
    EXPECT_EQ(choice.currentComboBoxValue(), 1);
}

TEST_F(ChoiceViews, WithoutAParentReportsAreDropped)
{
    open(u"HideDockView"_qs);
    view->setParentView(nullptr);
    choose(comboBox(), 0);
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(ChoiceViews, TheStateIsThereBeforeTheWidgets)
{
    putFile(u"com.apple.dock.plist"_qs, boolEntry(u"autohide"_qs, false));
    const auto light =
        makeSettingView(u"HideDockView"_qs, {access, shared.restartFlags(), dialogs});
    light->awakeFromNib();
    EXPECT_TRUE(light->children().isEmpty());
    EXPECT_EQ(light->backupValueInt(), 1);
    light->makeControls();
    EXPECT_EQ(light->findChild<QComboBox *>(u"comboBox"_qs)->currentIndex(), 1);
}

TEST_F(ChoiceViews, WritingRaisesTheFlagAndReadingDoesNot)
{
    open(u"HideDockView"_qs);
    choose(comboBox(), 0);
    EXPECT_FALSE(shared.needToKillDock());
    view->writeData(1009, {0});
    EXPECT_TRUE(shared.needToKillDock());
}

TEST_F(ChoiceViews, BothDebugMenuKeysAreWrittenButOnlyTheInternalOneIsRead)
{
    putFile(u"com.apple.Safari.plist"_qs, numberEntry(u"IncludeDebugMenu"_qs, 1));
    open(u"DebugMenuView"_qs);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_qs);
    view->writeData(1201, {0});
    for (const QString &key : {u"IncludeDebugMenu"_qs, u"IncludeInternalDebugMenu"_qs}) {
        EXPECT_EQ(stored(u"com.apple.Safari.plist"_qs, {key}).kind, plist::Kind::Integer);
        EXPECT_EQ(stored(u"com.apple.Safari.plist"_qs, {key}).integer, 1);
    }
}

TEST_F(ChoiceViews, TheLibraryPlaylistNeedsBothKeys)
{
    const QString hide = u"hide-library-playlist"_qs;
    const QString show = u"show-library-playlist"_qs;
    putFile(u"com.apple.iTunes.plist"_qs, numberEntry(hide, 1) + numberEntry(show, 1));
    open(u"LibraryPlaylistView"_qs);
    EXPECT_EQ(comboBox().currentText(), u"yes"_qs);
    putFile(u"com.apple.iTunes.plist"_qs, numberEntry(hide, 1) + numberEntry(show, 0));
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"no"_qs);
    putFile(u"com.apple.iTunes.plist"_qs, numberEntry(hide, 1));
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_qs);
}

TEST_F(ChoiceViews, AnUnknownToolbarModeShowsTheDefaultAndNoStoresTwo)
{
    const QString outer = u"NSToolbar Configuration BrowserWindowToolbarIdentifier"_qs;
    const QString inner = u"TB Display Mode"_qs;
    putFile(u"com.apple.Safari.plist"_qs,
            u"<key>" + outer + u"</key><dict>" + numberEntry(inner, 1) + u"</dict>");
    open(u"TextOnIconView"_qs);
    EXPECT_EQ(comboBox().currentText(), u"use default value"_qs);
    view->writeData(1204, {1});
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_qs, {outer, inner}).integer, 2);
}

TEST_F(ChoiceViews, TheThumbnailCacheKnowsTwoItemsAndItsDefaultRemovesTheKey)
{
    putFile(u"com.apple.Safari.plist"_qs, numberEntry(u"DebugSnapshotsUpdatePolicy"_qs, 1));
    open(u"SaveThumbnailImageView"_qs);
    EXPECT_EQ(comboBox().count(), 2);
    EXPECT_EQ(comboBox().currentText(), u"no (default)"_qs);
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_qs, {u"DebugSnapshotsUpdatePolicy"_qs}).kind,
              plist::Kind::Missing);
}

TEST_F(ChoiceViews, TheLibraryFolderIsReadEvenWhenItsControlIsToStayAlone)
{
    auto &folder = openAs<ChoiceView>(u"UserLibraryFolderView"_qs);
    EXPECT_EQ(comboBox().currentText(), u"shown"_qs);
    choose(comboBox(), 2);
    EXPECT_EQ(reports.take(), editReports(1302, 1, 2));
    folder.readData(false);
    EXPECT_EQ(comboBox().currentText(), u"shown"_qs) << "never the default item";
    EXPECT_EQ(folder.backupValueInt(), 1);
}

TEST_F(ChoiceViews, TheLibraryFolderIsHiddenByItsDefault)
{
    open(u"UserLibraryFolderView"_qs);
    view->writeData(1302, {2});
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"hidden"_qs);
    view->writeData(1302, {1});
    view->readData(true);
    EXPECT_EQ(comboBox().currentText(), u"shown"_qs);
}

TEST_F(ChoiceViews, EachLockListReportsUnderItsOwnNumber)
{
    putFile(u"com.apple.dock.plist"_qs,
            boolEntry(u"contents-immutable"_qs, true) + boolEntry(u"size-immutable"_qs, false));
    open(u"LockDockView"_qs);
    choose(control<QComboBox>(u"contentsComboBox"_qs), 1);
    EXPECT_EQ(reports.take(), editReports(1000, 0, 1));
    choose(control<QComboBox>(u"posComboBox"_qs), 0);
    EXPECT_EQ(reports.take(), editReports(1001, 2, 0));
    choose(control<QComboBox>(u"sizeComboBox"_qs), 2);
    EXPECT_EQ(reports.take(), editReports(1002, 1, 2));
}

TEST_F(ChoiceViews, WritingTheLockViewWritesAllThreeKeys)
{
    open(u"LockDockView"_qs);
    choose(control<QComboBox>(u"posComboBox"_qs), 0);
    putFile(u"com.apple.dock.plist"_qs, boolEntry(u"contents-immutable"_qs, true));
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.dock.plist"_qs, {u"contents-immutable"_qs}).kind,
              plist::Kind::Missing);
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_qs, {u"position-immutable"_qs}).boolean);
    EXPECT_TRUE(shared.needToKillDock());
    shared.setNeedToKillDock(false);
    view->writeData();
    EXPECT_TRUE(shared.needToKillDock()) << "each time, whatever has changed";
}

TEST_F(ChoiceViews, OneSettingOfTheLockViewIsWrittenAlone)
{
    open(u"LockDockView"_qs);
    choose(control<QComboBox>(u"contentsComboBox"_qs), 0);
    view->writeData(1002, {0});
    EXPECT_EQ(stored(u"com.apple.dock.plist"_qs, {u"contents-immutable"_qs}).kind,
              plist::Kind::Missing);
    EXPECT_TRUE(stored(u"com.apple.dock.plist"_qs, {u"size-immutable"_qs}).boolean);
}

TEST_F(ChoiceViews, EachDisplayControlListReportsUnderItsOwnNumber)
{
    open(u"DisplayControlView"_qs);
    choose(control<QComboBox>(u"displayControlHiddenComboBox"_qs), 0);
    EXPECT_EQ(reports.take(), editReports(1801, 2, 0));
    choose(control<QComboBox>(u"displayControlVisibleComboBox"_qs), 1);
    EXPECT_EQ(reports.take(), editReports(1802, 2, 1));
    choose(control<QComboBox>(u"titleBarComboBox"_qs), 0);
    EXPECT_EQ(reports.take(), editReports(1803, 2, 0));
}

TEST_F(ChoiceViews, TheWheelScrollsThePageAndNotTheList)
{
    open(u"HideDockView"_qs);
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
    open(u"MinModeView"_qs);
    EXPECT_FALSE(comboBox().isEditable());
    const int longest = comboBox().fontMetrics().horizontalAdvance(comboBox().itemText(1));
    EXPECT_GT(comboBox().minimumSizeHint().width(), longest);
    EXPECT_GE(comboBox().width(), 260);
}

TEST_F(ChoiceViews, TheTitleIsTheListsBuddyAndTheTipNamesFileAndKey)
{
    open(u"HideDockView"_qs);
    EXPECT_EQ(control<QLabel>(u"titleLabel"_qs).buddy(), &comboBox());
    EXPECT_FALSE(comboBox().accessibleName().isEmpty());
    EXPECT_TRUE(view->toolTip().contains(u"com.apple.dock.plist"));
    EXPECT_TRUE(view->toolTip().contains(u"autohide"));
}
