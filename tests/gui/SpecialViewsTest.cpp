#include "settings/views/BookmarkBarView.h"
#include "settings/views/FolderView.h"
#include "settings/views/SliderView.h"
#include "settings/views/StepperView.h"

#include "support/gui/SettingViewFixture.h"
#include "support/LogCapture.h"

#include <QLabel>
#include <QPushButton>
#include <QSlider>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class SpecialViews : public SettingViewFixture {
protected:
    QCheckBox &box(const QString &name = u"checkBox"_s) const { return control<QCheckBox>(name); }
    QSlider &slider() const { return control<QSlider>(u"slider"_s); }
    QSpinBox &stepper() const { return control<QSpinBox>(u"stepper"_s); }
    QLineEdit &field() const { return control<QLineEdit>(u"textField"_s); }
    QString label() const { return control<QLabel>(u"label"_s).text(); }

    void putDock(const QString &key, int number)
    {
        putFile(u"com.apple.dock.plist"_s,
                u"<key>" + key + u"</key><integer>" + QString::number(number) + u"</integer>");
    }
    void putHistory(int number)
    {
        putFile(u"com.apple.Safari.plist"_s,
                u"<key>RecentHistoryMenuItemsLimit</key><integer>" + QString::number(number)
                    + u"</integer>");
    }
    void putCapture(const QString &key, const QString &text)
    {
        putFile(u"com.apple.screencapture.plist"_s,
                u"<key>" + key + u"</key><string>" + text + u"</string>");
    }
    void putBar(const QStringList &names)
    {
        QString array = u"<key>ProxiesInBookmarksBar</key><array>"_s;
        for (const QString &name : names)
            array += u"<string>" + name + u"</string>";
        putFile(u"com.apple.Safari.plist"_s, array + u"</array>");
    }
};

using Reports = QList<ReportRecorder::Report>;

} // namespace

TEST_F(SpecialViews, ASliderShowsItsNumberAndTheBoxIsOff)
{
    putDock(u"tilesize"_s, 48);
    open(u"DockSizeView"_s);
    EXPECT_EQ(slider().value(), 48);
    EXPECT_EQ(label(), u"48 pixels"_s);
    EXPECT_FALSE(box().isChecked());
    EXPECT_TRUE(slider().isEnabled());
    EXPECT_EQ(view->backupValueInt(), 48);
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(SpecialViews, AMissingNumberTicksTheBoxAndDisablesTheSlider)
{
    open(u"DockSizeView"_s);
    EXPECT_TRUE(box().isChecked());
    EXPECT_FALSE(slider().isEnabled());
    EXPECT_FALSE(control<QLabel>(u"label"_s).isEnabled());
    EXPECT_EQ(view->backupValueInt(), -1);
}

TEST_F(SpecialViews, AStoredNumberOutsideTheSliderIsClampedOnScreenAndKeptForTheBackup)
{
    putDock(u"tilesize"_s, 500);
    open(u"DockSizeView"_s);
    EXPECT_EQ(slider().value(), 128);
    EXPECT_EQ(label(), u"128 pixels"_s);
    EXPECT_EQ(view->backupValueInt(), 500);
    QTest::keyClick(&slider(), Qt::Key_Left);
    EXPECT_EQ(reports.take(), editReports(1004, 500, 127));
}

TEST_F(SpecialViews, SliderRangesAreThoseOfTheDock)
{
    open(u"DockMagnificationView"_s);
    EXPECT_EQ(slider().minimum(), 16);
    EXPECT_EQ(slider().maximum(), 256);
}

TEST_F(SpecialViews, TurningASlidersBoxOffReportsNoChangeUntilTheSliderMoves)
{
    auto &size = openAs<SliderView>(u"DockSizeView"_s);
    click(box());
    EXPECT_EQ(reports.take(), Reports({{ReportRecorder::Backup, 1004, -1}}));
    EXPECT_TRUE(slider().isEnabled());
    EXPECT_EQ(size.currentCheckBoxValue(), 0);
    QTest::keyClick(&slider(), Qt::Key_Right);
    EXPECT_EQ(reports.take(), editReports(1004, -1, 17));
    EXPECT_EQ(size.currentSliderValue(), 17);
}

TEST_F(SpecialViews, TurningASlidersBoxOnReportsTheDefault)
{
    putDock(u"largesize"_s, 64);
    open(u"DockMagnificationView"_s);
    click(box());
    EXPECT_EQ(reports.take(), editReports(1003, 64, -1));
    EXPECT_FALSE(slider().isEnabled());
}

TEST_F(SpecialViews, ABoxThatIsAsItWasReportsNothing)
{
    auto &size = openAs<SliderView>(u"DockSizeView"_s);
    size.checkBoxChangeValue();
    size.sliderChangeValue();
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(SpecialViews, ASliderReadWithoutItsControlsTakesTheNumberForTheBackupOnly)
{
    putDock(u"tilesize"_s, 48);
    auto &size = openAs<SliderView>(u"DockSizeView"_s);
    putDock(u"tilesize"_s, 64);
    size.readData(false);
    EXPECT_EQ(size.backupValueInt(), 64);
    EXPECT_EQ(slider().value(), 48);
    EXPECT_EQ(size.currentSliderValue(), 48);
}

TEST_F(SpecialViews, ASliderWritesItsNumberOrRemovesTheKey)
{
    putDock(u"tilesize"_s, 48);
    open(u"DockSizeView"_s);
    QTest::keyClick(&slider(), Qt::Key_Right);
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"tilesize"_s}).integer, 49);
    click(box());
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.dock.plist"_s, {u"tilesize"_s}).kind, plist::Kind::Missing);
    EXPECT_TRUE(shared.needToKillDock());
}

TEST_F(SpecialViews, TheDockSizeIsDescribedWithItsPlaceholder)
{
    open(u"DockSizeView"_s);
    EXPECT_EQ(view->getActionString(1004, {48}), u"Set icon size on the Dock to %s"_s);
    EXPECT_EQ(view->getActionString(1004, {-1}), u"Use default value on icon size on the Dock"_s);
}

TEST_F(SpecialViews, AMissingHistoryLimitShowsEighteenAndBacksUpTheDefault)
{
    auto &history = openAs<StepperView>(u"ItemsOnHistoryView"_s);
    EXPECT_EQ(stepper().value(), 18);
    EXPECT_TRUE(box().isChecked());
    EXPECT_FALSE(stepper().isEnabled());
    EXPECT_EQ(history.currentStepperValue(), -1);
    EXPECT_EQ(history.backupValueInt(), -1);
    EXPECT_EQ(history.getActionString(1203, {-1}),
              u"Set maximum number of items in main history menu to -1"_s);
    click(box());
    EXPECT_EQ(reports.take(), Reports({{ReportRecorder::Backup, 1203, -1}}));
    QTest::keyClick(&stepper(), Qt::Key_Up);
    EXPECT_EQ(reports.take(), editReports(1203, -1, 19));
}

TEST_F(SpecialViews, AFoundHistoryLimitLeavesTheBoxAsItIs)
{
    auto &history = openAs<StepperView>(u"ItemsOnHistoryView"_s);
    putHistory(30);
    history.readData(true);
    EXPECT_EQ(stepper().value(), 30);
    EXPECT_TRUE(box().isChecked());
    EXPECT_EQ(history.currentStepperValue(), 30);
    EXPECT_EQ(history.currentCheckBoxValue(), 1);
}

TEST_F(SpecialViews, TheStepperReportsWithoutComparing)
{
    putHistory(30);
    auto &history = openAs<StepperView>(u"ItemsOnHistoryView"_s);
    history.stepperChangeValue();
    EXPECT_EQ(reports.take(), editReports(1203, 30, 30));
}

TEST_F(SpecialViews, TypingANumberReportsIt)
{
    putHistory(30);
    open(u"ItemsOnHistoryView"_s);
    stepper().selectAll();
    QTest::keyClicks(&stepper(), u"7"_s);
    EXPECT_EQ(reports.take(), editReports(1203, 30, 7));
}

TEST_F(SpecialViews, TheHistoryBoxReportsTheDefaultOnlyWhenTurnedOn)
{
    putHistory(30);
    open(u"ItemsOnHistoryView"_s);
    EXPECT_FALSE(box().isChecked());
    click(box());
    EXPECT_EQ(reports.take(), editReports(1203, 30, -1));
    EXPECT_FALSE(stepper().isEnabled());
    click(box());
    EXPECT_EQ(reports.take(), Reports({{ReportRecorder::Backup, 1203, 30}}));
    EXPECT_TRUE(stepper().isEnabled());
}

TEST_F(SpecialViews, TheStepperWritesItsNumberWhateverTheBoxSays)
{
    open(u"ItemsOnHistoryView"_s);
    EXPECT_TRUE(box().isChecked());
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_s, {u"RecentHistoryMenuItemsLimit"_s}).integer, 18);
    view->writeData(1203, {-1});
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_s, {u"RecentHistoryMenuItemsLimit"_s}).kind,
              plist::Kind::Missing);
    EXPECT_TRUE(shared.needToKillSafari());
}

TEST_F(SpecialViews, AHistoryLimitBeyondTheStepperIsShownAsItStands)
{
    putHistory(5000);
    open(u"ItemsOnHistoryView"_s);
    EXPECT_EQ(stepper().value(), 5000);
    EXPECT_EQ(view->backupValueInt(), 5000);
}

TEST_F(SpecialViews, EveryKeystrokeReportsTheTextAndTheOldOneFirst)
{
    putCapture(u"name"_s, u"Shot"_s);
    open(u"ScreenCaptureFilePrefixView"_s);
    EXPECT_EQ(field().text(), u"Shot"_s);
    EXPECT_FALSE(box().isChecked());
    EXPECT_TRUE(reports.reports.isEmpty());
    QTest::keyClick(&field(), Qt::Key_End);
    QTest::keyClicks(&field(), u"12"_s);
    EXPECT_EQ(reports.take(),
              editReports(1400, u"Shot"_s, u"Shot1"_s) + editReports(1400, u"Shot"_s, u"Shot12"_s));
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_TRUE(reports.take().isEmpty());
}

TEST_F(SpecialViews, TextsAreShownAndReportedAsTheyStand)
{
    putCapture(u"name"_s, u" %1 &amp; 100% "_s);
    open(u"ScreenCaptureFilePrefixView"_s);
    EXPECT_EQ(field().text(), u" %1 & 100% "_s);
    EXPECT_EQ(view->getActionString(1400, {0, field().text()}),
              u"Add  %1 & 100%  prefix to a newly created screenshot file name"_s);
}

TEST_F(SpecialViews, WhatIsNoTextIsShownInItsTextFormAndBackedUpSo)
{
    putFile(u"com.apple.screencapture.plist"_s,
            u"<key>name</key><true/><key>location</key><data>SGVsbG8=</data>"_s);
    open(u"ScreenCaptureFilePrefixView"_s);
    EXPECT_EQ(field().text(), u"1"_s);
    EXPECT_FALSE(box().isChecked());
    EXPECT_EQ(control<QLabel>(u"noteLabel"_s).text(), u"not a text"_s);
    EXPECT_EQ(field().accessibleDescription(), u"not a text"_s);
    EXPECT_TRUE(reports.reports.isEmpty());
    QTest::keyClick(&field(), Qt::Key_End);
    QTest::keyClicks(&field(), u"2"_s);
    EXPECT_EQ(reports.take(), editReports(1400, u"1"_s, u"12"_s));
    open(u"ScreenCaptureLocationView"_s);
    EXPECT_EQ(field().text(), u"<48656c6c 6f>"_s);
    EXPECT_EQ(view->backupValueStr(), u"<48656c6c 6f>"_s);
}

TEST_F(SpecialViews, AMissingTextIsEmptyWithTheBoxOn)
{
    open(u"ScreenCaptureFilePrefixView"_s);
    EXPECT_EQ(field().text(), QString());
    EXPECT_TRUE(box().isChecked());
    EXPECT_EQ(view->backupValueStr(), u"-1"_s);
    click(box());
    EXPECT_EQ(reports.take(), Reports({{ReportRecorder::Backup, 1400, 0, u"-1"_s}}));
    click(box());
    EXPECT_EQ(reports.take(), editReports(1400, u"-1"_s, u"-1"_s));
    EXPECT_FALSE(field().isEnabled());
}

TEST_F(SpecialViews, ThePrefixLogsEveryTextChange)
{
    open(u"ScreenCaptureFilePrefixView"_s);
    const LogCapture log;
    QTest::keyClicks(&field(), u"a"_s);
    EXPECT_EQ(log.texts(u"varnel.settings"_s), QStringList(u"textFieldChangeValue"_s));
}

TEST_F(SpecialViews, ATextReadWithoutItsControlsTakesTheOldTextOnly)
{
    open(u"ScreenCaptureFilePrefixView"_s);
    putCapture(u"name"_s, u"New"_s);
    view->readData(false);
    EXPECT_EQ(view->backupValueStr(), u"New"_s);
    EXPECT_EQ(field().text(), QString());
    EXPECT_TRUE(box().isChecked());
}

TEST_F(SpecialViews, ATextIsWrittenAndTheDefaultRemovesItsKeyWithoutAnyFlag)
{
    open(u"ScreenCaptureFilePrefixView"_s);
    QTest::keyClicks(&field(), u"Pic"_s);
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.screencapture.plist"_s, {u"name"_s}).string, u"Pic"_s);
    view->writeData(1400, {0, u"-1"_s});
    EXPECT_EQ(stored(u"com.apple.screencapture.plist"_s, {u"name"_s}).kind, plist::Kind::Missing);
    EXPECT_FALSE(shared.restartFlags());
}

TEST_F(SpecialViews, TheChosenFolderGoesIntoTheFieldAndIsReported)
{
    open(u"ScreenCaptureLocationView"_s);
    dialogs.folder = u"/Users/ann/Pictures"_s;
    click(control<QPushButton>(u"chooseButton"_s));
    EXPECT_EQ(field().text(), u"/Users/ann/Pictures"_s);
    EXPECT_EQ(reports.take(), editReports(1403, u"-1"_s, u"/Users/ann/Pictures"_s));
    EXPECT_EQ(dialogs.folderStarts, QStringList(home.path()));
}

TEST_F(SpecialViews, ACancelledFolderChoiceChangesNothing)
{
    putCapture(u"location"_s, u"/tmp"_s);
    open(u"ScreenCaptureLocationView"_s);
    click(control<QPushButton>(u"chooseButton"_s));
    EXPECT_EQ(field().text(), u"/tmp"_s);
    EXPECT_TRUE(reports.reports.isEmpty());
    EXPECT_EQ(dialogs.folderStarts, QStringList(u"/tmp"_s));
}

TEST_F(SpecialViews, TheFoldersBoxDisablesFieldAndButton)
{
    putCapture(u"location"_s, u"/tmp"_s);
    open(u"ScreenCaptureLocationView"_s);
    click(box());
    EXPECT_EQ(reports.take(), editReports(1403, u"/tmp"_s, u"-1"_s));
    EXPECT_FALSE(field().isEnabled());
    EXPECT_FALSE(control<QPushButton>(u"chooseButton"_s).isEnabled());
}

TEST_F(SpecialViews, TheBookmarksBarShowsTheStoredNamesInAnyLetterCase)
{
    putBar({u"BONJOUR"_s, u"Something"_s, u"reading list"_s});
    auto &bar = openAs<BookmarkBarView>(u"BookmarkBarView"_s);
    EXPECT_TRUE(box(u"readingListCheckBox"_s).isChecked());
    EXPECT_FALSE(box(u"topSitesCheckBox"_s).isChecked());
    EXPECT_FALSE(box(u"addressBookCheckBox"_s).isChecked());
    EXPECT_TRUE(box(u"bonjourCheckBox"_s).isChecked());
    EXPECT_FALSE(box(u"defaultCheckBox"_s).isChecked());
    EXPECT_EQ(bar.backupValueStr(), u"1;0;0;1"_s);
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(SpecialViews, WithoutAnArrayTheBarShowsItsDefault)
{
    open(u"BookmarkBarView"_s);
    EXPECT_TRUE(box(u"defaultCheckBox"_s).isChecked());
    EXPECT_FALSE(box(u"topSitesCheckBox"_s).isEnabled());
    EXPECT_EQ(view->backupValueStr(), u"-1"_s);
}

TEST_F(SpecialViews, EachItemOfTheBarReportsAllFourStates)
{
    putBar({u"Reading List"_s});
    open(u"BookmarkBarView"_s);
    click(box(u"bonjourCheckBox"_s));
    EXPECT_EQ(reports.take(), editReports(1200, u"1;0;0;0"_s, u"1;0;0;1"_s));
    click(box(u"readingListCheckBox"_s));
    EXPECT_EQ(reports.take(), editReports(1200, u"1;0;0;0"_s, u"0;0;0;1"_s));
    click(box(u"topSitesCheckBox"_s));
    EXPECT_EQ(reports.take(), editReports(1200, u"1;0;0;0"_s, u"0;1;0;1"_s));
    click(box(u"addressBookCheckBox"_s));
    EXPECT_EQ(reports.take(), editReports(1200, u"1;0;0;0"_s, u"0;1;1;1"_s));
}

TEST_F(SpecialViews, TheBarsDefaultBoxReportsBothWays)
{
    putBar({u"Top Sites"_s});
    open(u"BookmarkBarView"_s);
    click(box(u"defaultCheckBox"_s));
    EXPECT_EQ(reports.take(), editReports(1200, u"0;1;0;0"_s, u"-1"_s));
    EXPECT_FALSE(box(u"topSitesCheckBox"_s).isEnabled());
    click(box(u"defaultCheckBox"_s));
    EXPECT_EQ(reports.take(), editReports(1200, u"0;1;0;0"_s, u"0;1;0;0"_s));
    EXPECT_TRUE(box(u"topSitesCheckBox"_s).isEnabled());
}

TEST_F(SpecialViews, ABarHandlerThatFindsItsBoxUnchangedDoesNothing)
{
    auto &bar = openAs<BookmarkBarView>(u"BookmarkBarView"_s);
    bar.readingListCheckBoxChangeValue();
    bar.topSitesCheckBoxChangeValue();
    bar.addressBookCheckBoxChangeValue();
    bar.bonjourCheckBoxChangeValue();
    bar.defaultCheckBoxChangeValue();
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(SpecialViews, TheBarWritesItsNamesOnlyIntoAFileThatIsThere)
{
    open(u"BookmarkBarView"_s);
    view->writeData(1200, {0, u"1;0;0;1"_s});
    EXPECT_FALSE(fileExists(u"com.apple.Safari.plist"_s));
    putBar({});
    view->writeData(1200, {0, u"1;0;0;1"_s});
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_s, {u"ProxiesInBookmarksBar"_s}).strings,
              QStringList({u"Reading List"_s, u"Bonjour"_s}));
    view->writeData(1200, {0, u"0;0;0;0"_s});
    EXPECT_TRUE(
        stored(u"com.apple.Safari.plist"_s, {u"ProxiesInBookmarksBar"_s}).strings.isEmpty());
    EXPECT_TRUE(shared.needToKillSafari());
}

TEST_F(SpecialViews, RemovingTheBarsKeyAsksForNoRestart)
{
    putBar({u"Bonjour"_s});
    open(u"BookmarkBarView"_s);
    click(box(u"defaultCheckBox"_s));
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_s, {u"ProxiesInBookmarksBar"_s}).kind,
              plist::Kind::Missing);
    EXPECT_FALSE(shared.needToKillSafari());
}

TEST_F(SpecialViews, TheBarDescribesItsNames)
{
    open(u"BookmarkBarView"_s);
    EXPECT_EQ(view->getActionString(1200, {0, u"1;0;0;1"_s}),
              u"Show Reading List, Bonjour on Safari's Bookmarks bar"_s);
    EXPECT_EQ(view->getActionString(1200, {0, u"0;0;0;0"_s}), u"Show  on Safari's Bookmarks bar"_s);
}

TEST_F(SpecialViews, TheBarLogsWhatItReadsAndEnables)
{
    putBar({u"Bonjour"_s});
    open(u"BookmarkBarView"_s);
    const LogCapture log;
    view->readData(true);
    EXPECT_EQ(log.texts(u"varnel.settings"_s),
              QStringList({u"checkDefaultCheckbox"_s, u"currentDefaultCheckBoxValue: 0"_s}));
}

TEST_F(SpecialViews, TheBarHasFourSearchTexts)
{
    auto &bar = openAs<BookmarkBarView>(u"BookmarkBarView"_s);
    EXPECT_EQ(bar.getReadingListViewDescription(),
              u"safari web reading list browser bookmarks bar"_s);
    EXPECT_EQ(bar.getTopSitesViewDescription(), u"safari web top sites browser bookmarks bar"_s);
    EXPECT_EQ(bar.getAddressBookViewDescription(),
              u"safari web address book browser bookmarks bar"_s);
    EXPECT_EQ(bar.getBonjourViewDescription(), u"Show Bonjour on Safari's Bookmarks bar"_s);
}
