#include "settings/views/BookmarkBarView.h"
#include "settings/views/FolderView.h"
#include "settings/views/SliderView.h"
#include "settings/views/StepperView.h"

#include "support/gui/SettingViewFixture.h"
#include "support/LogCapture.h"

#include <QLabel>
#include <QPushButton>
#include <QSlider>

using namespace varnel;
using namespace varnel::test;

namespace {

class SpecialViews : public SettingViewFixture {
protected:
    QCheckBox &box(const QString &name = u"checkBox"_qs) const { return control<QCheckBox>(name); }
    QSlider &slider() const { return control<QSlider>(u"slider"_qs); }
    QSpinBox &stepper() const { return control<QSpinBox>(u"stepper"_qs); }
    QLineEdit &field() const { return control<QLineEdit>(u"textField"_qs); }
    QString label() const { return control<QLabel>(u"label"_qs).text(); }

    void putDock(const QString &key, int number)
    {
        putFile(u"com.apple.dock.plist"_qs,
                u"<key>" + key + u"</key><integer>" + QString::number(number) + u"</integer>");
    }
    void putHistory(int number)
    {
        putFile(u"com.apple.Safari.plist"_qs,
                u"<key>RecentHistoryMenuItemsLimit</key><integer>" + QString::number(number)
                    + u"</integer>");
    }
    void putCapture(const QString &key, const QString &text)
    {
        putFile(u"com.apple.screencapture.plist"_qs,
                u"<key>" + key + u"</key><string>" + text + u"</string>");
    }
    void putBar(const QStringList &names)
    {
        QString array = u"<key>ProxiesInBookmarksBar</key><array>"_qs;
        for (const QString &name : names)
            array += u"<string>" + name + u"</string>";
        putFile(u"com.apple.Safari.plist"_qs, array + u"</array>");
    }
};

using Reports = QList<ReportRecorder::Report>;

} // namespace

TEST_F(SpecialViews, ASliderShowsItsNumberAndTheBoxIsOff)
{
    putDock(u"tilesize"_qs, 48);
    open(u"DockSizeView"_qs);
    EXPECT_EQ(slider().value(), 48);
    EXPECT_EQ(label(), u"48 pixels"_qs);
    EXPECT_FALSE(box().isChecked());
    EXPECT_TRUE(slider().isEnabled());
    EXPECT_EQ(view->backupValueInt(), 48);
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(SpecialViews, AMissingNumberTicksTheBoxAndDisablesTheSlider)
{
    open(u"DockSizeView"_qs);
    EXPECT_TRUE(box().isChecked());
    EXPECT_FALSE(slider().isEnabled());
    EXPECT_FALSE(control<QLabel>(u"label"_qs).isEnabled());
    EXPECT_EQ(view->backupValueInt(), -1);
}

TEST_F(SpecialViews, AStoredNumberOutsideTheSliderIsClampedOnScreenAndKeptForTheBackup)
{
    putDock(u"tilesize"_qs, 500);
    open(u"DockSizeView"_qs);
    EXPECT_EQ(slider().value(), 128);
    EXPECT_EQ(label(), u"128 pixels"_qs);
    EXPECT_EQ(view->backupValueInt(), 500);
    QTest::keyClick(&slider(), Qt::Key_Left);
    EXPECT_EQ(reports.take(), editReports(1004, 500, 127));
}

TEST_F(SpecialViews, SliderRangesAreThoseOfTheDock)
{
    open(u"DockMagnificationView"_qs);
    EXPECT_EQ(slider().minimum(), 16);
    EXPECT_EQ(slider().maximum(), 256);
}

TEST_F(SpecialViews, TurningASlidersBoxOffReportsNoChangeUntilTheSliderMoves)
{
    auto &size = openAs<SliderView>(u"DockSizeView"_qs);
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
    putDock(u"largesize"_qs, 64);
    open(u"DockMagnificationView"_qs);
    click(box());
    EXPECT_EQ(reports.take(), editReports(1003, 64, -1));
    EXPECT_FALSE(slider().isEnabled());
}

TEST_F(SpecialViews, ABoxThatIsAsItWasReportsNothing)
{
    auto &size = openAs<SliderView>(u"DockSizeView"_qs);
    size.checkBoxChangeValue();
    size.sliderChangeValue();
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(SpecialViews, ASliderReadWithoutItsControlsTakesTheNumberForTheBackupOnly)
{
    putDock(u"tilesize"_qs, 48);
    auto &size = openAs<SliderView>(u"DockSizeView"_qs);
    putDock(u"tilesize"_qs, 64);
    size.readData(false);
    EXPECT_EQ(size.backupValueInt(), 64);
    EXPECT_EQ(slider().value(), 48);
    EXPECT_EQ(size.currentSliderValue(), 48);
}

TEST_F(SpecialViews, ASliderWritesItsNumberOrRemovesTheKey)
{
    putDock(u"tilesize"_qs, 48);
    open(u"DockSizeView"_qs);
    QTest::keyClick(&slider(), Qt::Key_Right);
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.dock.plist"_qs, {u"tilesize"_qs}).integer, 49);
    click(box());
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.dock.plist"_qs, {u"tilesize"_qs}).kind, plist::Kind::Missing);
    EXPECT_TRUE(shared.needToKillDock());
}

TEST_F(SpecialViews, TheDockSizeIsDescribedWithItsPlaceholder)
{
    open(u"DockSizeView"_qs);
    EXPECT_EQ(view->getActionString(1004, {48}), u"Set icon size on the Dock to %s"_qs);
    EXPECT_EQ(view->getActionString(1004, {-1}), u"Use default value on icon size on the Dock"_qs);
}

TEST_F(SpecialViews, AMissingHistoryLimitShowsEighteenAndBacksUpTheDefault)
{
    auto &history = openAs<StepperView>(u"ItemsOnHistoryView"_qs);
    EXPECT_EQ(stepper().value(), 18);
    EXPECT_TRUE(box().isChecked());
    EXPECT_FALSE(stepper().isEnabled());
    EXPECT_EQ(history.currentStepperValue(), -1);
    EXPECT_EQ(history.backupValueInt(), -1);
    EXPECT_EQ(history.getActionString(1203, {-1}),
              u"Set maximum number of items in main history menu to -1"_qs);
    click(box());
    EXPECT_EQ(reports.take(), Reports({{ReportRecorder::Backup, 1203, -1}}));
    QTest::keyClick(&stepper(), Qt::Key_Up);
    EXPECT_EQ(reports.take(), editReports(1203, -1, 19));
}

TEST_F(SpecialViews, AFoundHistoryLimitLeavesTheBoxAsItIs)
{
    auto &history = openAs<StepperView>(u"ItemsOnHistoryView"_qs);
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
    auto &history = openAs<StepperView>(u"ItemsOnHistoryView"_qs);
    history.stepperChangeValue();
    EXPECT_EQ(reports.take(), editReports(1203, 30, 30));
}

TEST_F(SpecialViews, TypingANumberReportsIt)
{
    putHistory(30);
    open(u"ItemsOnHistoryView"_qs);
    stepper().selectAll();
    QTest::keyClicks(&stepper(), u"7"_qs);
    EXPECT_EQ(reports.take(), editReports(1203, 30, 7));
}

TEST_F(SpecialViews, TheHistoryBoxReportsTheDefaultOnlyWhenTurnedOn)
{
    putHistory(30);
    open(u"ItemsOnHistoryView"_qs);
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
    open(u"ItemsOnHistoryView"_qs);
    EXPECT_TRUE(box().isChecked());
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_qs, {u"RecentHistoryMenuItemsLimit"_qs}).integer,
              18);
    view->writeData(1203, {-1});
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_qs, {u"RecentHistoryMenuItemsLimit"_qs}).kind,
              plist::Kind::Missing);
    EXPECT_TRUE(shared.needToKillSafari());
}

TEST_F(SpecialViews, AHistoryLimitBeyondTheStepperIsShownAsItStands)
{
    putHistory(5000);
    open(u"ItemsOnHistoryView"_qs);
    EXPECT_EQ(stepper().value(), 5000);
    EXPECT_EQ(view->backupValueInt(), 5000);
}

TEST_F(SpecialViews, EveryKeystrokeReportsTheTextAndTheOldOneFirst)
{
    putCapture(u"name"_qs, u"Shot"_qs);
    open(u"ScreenCaptureFilePrefixView"_qs);
    EXPECT_EQ(field().text(), u"Shot"_qs);
    EXPECT_FALSE(box().isChecked());
    EXPECT_TRUE(reports.reports.isEmpty());
    QTest::keyClick(&field(), Qt::Key_End);
    QTest::keyClicks(&field(), u"12"_qs);
    EXPECT_EQ(reports.take(),
              editReports(1400, u"Shot"_qs, u"Shot1"_qs)
                  + editReports(1400, u"Shot"_qs, u"Shot12"_qs));
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_TRUE(reports.take().isEmpty());
}

TEST_F(SpecialViews, TextsAreShownAndReportedAsTheyStand)
{
    putCapture(u"name"_qs, u" %1 &amp; 100% "_qs);
    open(u"ScreenCaptureFilePrefixView"_qs);
    EXPECT_EQ(field().text(), u" %1 & 100% "_qs);
    EXPECT_EQ(view->getActionString(1400, {0, field().text()}),
              u"Add  %1 & 100%  prefix to a newly created screenshot file name"_qs);
}

TEST_F(SpecialViews, AMissingTextIsEmptyWithTheBoxOn)
{
    open(u"ScreenCaptureFilePrefixView"_qs);
    EXPECT_EQ(field().text(), QString());
    EXPECT_TRUE(box().isChecked());
    EXPECT_EQ(view->backupValueStr(), u"-1"_qs);
    click(box());
    EXPECT_EQ(reports.take(), Reports({{ReportRecorder::Backup, 1400, 0, u"-1"_qs}}));
    click(box());
    EXPECT_EQ(reports.take(), editReports(1400, u"-1"_qs, u"-1"_qs));
    EXPECT_FALSE(field().isEnabled());
}

TEST_F(SpecialViews, ThePrefixLogsEveryTextChange)
{
    open(u"ScreenCaptureFilePrefixView"_qs);
    const LogCapture log;
    QTest::keyClicks(&field(), u"a"_qs);
    EXPECT_EQ(log.texts(u"varnel.settings"_qs), QStringList(u"textFieldChangeValue"_qs));
}

TEST_F(SpecialViews, ATextReadWithoutItsControlsTakesTheOldTextOnly)
{
    open(u"ScreenCaptureFilePrefixView"_qs);
    putCapture(u"name"_qs, u"New"_qs);
    view->readData(false);
    EXPECT_EQ(view->backupValueStr(), u"New"_qs);
    EXPECT_EQ(field().text(), QString());
    EXPECT_TRUE(box().isChecked());
}

TEST_F(SpecialViews, ATextIsWrittenAndTheDefaultRemovesItsKeyWithoutAnyFlag)
{
    open(u"ScreenCaptureFilePrefixView"_qs);
    QTest::keyClicks(&field(), u"Pic"_qs);
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.screencapture.plist"_qs, {u"name"_qs}).string, u"Pic"_qs);
    view->writeData(1400, {0, u"-1"_qs});
    EXPECT_EQ(stored(u"com.apple.screencapture.plist"_qs, {u"name"_qs}).kind, plist::Kind::Missing);
    EXPECT_FALSE(shared.restartFlags());
}

TEST_F(SpecialViews, TheChosenFolderGoesIntoTheFieldAndIsReported)
{
    open(u"ScreenCaptureLocationView"_qs);
    dialogs.folder = u"/Users/ann/Pictures"_qs;
    click(control<QPushButton>(u"chooseButton"_qs));
    EXPECT_EQ(field().text(), u"/Users/ann/Pictures"_qs);
    EXPECT_EQ(reports.take(), editReports(1403, u"-1"_qs, u"/Users/ann/Pictures"_qs));
    EXPECT_EQ(dialogs.folderStarts, QStringList(home.path()));
}

TEST_F(SpecialViews, ACancelledFolderChoiceChangesNothing)
{
    putCapture(u"location"_qs, u"/tmp"_qs);
    open(u"ScreenCaptureLocationView"_qs);
    click(control<QPushButton>(u"chooseButton"_qs));
    EXPECT_EQ(field().text(), u"/tmp"_qs);
    EXPECT_TRUE(reports.reports.isEmpty());
    EXPECT_EQ(dialogs.folderStarts, QStringList(u"/tmp"_qs));
}

TEST_F(SpecialViews, TheFoldersBoxDisablesFieldAndButton)
{
    putCapture(u"location"_qs, u"/tmp"_qs);
    open(u"ScreenCaptureLocationView"_qs);
    click(box());
    EXPECT_EQ(reports.take(), editReports(1403, u"/tmp"_qs, u"-1"_qs));
    EXPECT_FALSE(field().isEnabled());
    EXPECT_FALSE(control<QPushButton>(u"chooseButton"_qs).isEnabled());
}

TEST_F(SpecialViews, TheBookmarksBarShowsTheStoredNamesInAnyLetterCase)
{
    putBar({u"BONJOUR"_qs, u"Something"_qs, u"reading list"_qs});
    auto &bar = openAs<BookmarkBarView>(u"BookmarkBarView"_qs);
    EXPECT_TRUE(box(u"readingListCheckBox"_qs).isChecked());
    EXPECT_FALSE(box(u"topSitesCheckBox"_qs).isChecked());
    EXPECT_FALSE(box(u"addressBookCheckBox"_qs).isChecked());
    EXPECT_TRUE(box(u"bonjourCheckBox"_qs).isChecked());
    EXPECT_FALSE(box(u"defaultCheckBox"_qs).isChecked());
    EXPECT_EQ(bar.backupValueStr(), u"1;0;0;1"_qs);
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(SpecialViews, WithoutAnArrayTheBarShowsItsDefault)
{
    open(u"BookmarkBarView"_qs);
    EXPECT_TRUE(box(u"defaultCheckBox"_qs).isChecked());
    EXPECT_FALSE(box(u"topSitesCheckBox"_qs).isEnabled());
    EXPECT_EQ(view->backupValueStr(), u"-1"_qs);
}

TEST_F(SpecialViews, EachItemOfTheBarReportsAllFourStates)
{
    putBar({u"Reading List"_qs});
    open(u"BookmarkBarView"_qs);
    click(box(u"bonjourCheckBox"_qs));
    EXPECT_EQ(reports.take(), editReports(1200, u"1;0;0;0"_qs, u"1;0;0;1"_qs));
    click(box(u"readingListCheckBox"_qs));
    EXPECT_EQ(reports.take(), editReports(1200, u"1;0;0;0"_qs, u"0;0;0;1"_qs));
    click(box(u"topSitesCheckBox"_qs));
    EXPECT_EQ(reports.take(), editReports(1200, u"1;0;0;0"_qs, u"0;1;0;1"_qs));
    click(box(u"addressBookCheckBox"_qs));
    EXPECT_EQ(reports.take(), editReports(1200, u"1;0;0;0"_qs, u"0;1;1;1"_qs));
}

TEST_F(SpecialViews, TheBarsDefaultBoxReportsBothWays)
{
    putBar({u"Top Sites"_qs});
    open(u"BookmarkBarView"_qs);
    click(box(u"defaultCheckBox"_qs));
    EXPECT_EQ(reports.take(), editReports(1200, u"0;1;0;0"_qs, u"-1"_qs));
    EXPECT_FALSE(box(u"topSitesCheckBox"_qs).isEnabled());
    click(box(u"defaultCheckBox"_qs));
    EXPECT_EQ(reports.take(), editReports(1200, u"0;1;0;0"_qs, u"0;1;0;0"_qs));
    EXPECT_TRUE(box(u"topSitesCheckBox"_qs).isEnabled());
}

TEST_F(SpecialViews, ABarHandlerThatFindsItsBoxUnchangedDoesNothing)
{
    auto &bar = openAs<BookmarkBarView>(u"BookmarkBarView"_qs);
    bar.readingListCheckBoxChangeValue();
    bar.topSitesCheckBoxChangeValue();
    bar.addressBookCheckBoxChangeValue();
    bar.bonjourCheckBoxChangeValue();
    bar.defaultCheckBoxChangeValue();
    EXPECT_TRUE(reports.reports.isEmpty());
}

TEST_F(SpecialViews, TheBarWritesItsNamesOnlyIntoAFileThatIsThere)
{
    open(u"BookmarkBarView"_qs);
    view->writeData(1200, {0, u"1;0;0;1"_qs});
    EXPECT_FALSE(fileExists(u"com.apple.Safari.plist"_qs));
    putBar({});
    view->writeData(1200, {0, u"1;0;0;1"_qs});
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_qs, {u"ProxiesInBookmarksBar"_qs}).strings,
              QStringList({u"Reading List"_qs, u"Bonjour"_qs}));
    view->writeData(1200, {0, u"0;0;0;0"_qs});
    EXPECT_TRUE(
        stored(u"com.apple.Safari.plist"_qs, {u"ProxiesInBookmarksBar"_qs}).strings.isEmpty());
    EXPECT_TRUE(shared.needToKillSafari());
}

TEST_F(SpecialViews, RemovingTheBarsKeyAsksForNoRestart)
{
    putBar({u"Bonjour"_qs});
    open(u"BookmarkBarView"_qs);
    click(box(u"defaultCheckBox"_qs));
    view->writeData();
    EXPECT_EQ(stored(u"com.apple.Safari.plist"_qs, {u"ProxiesInBookmarksBar"_qs}).kind,
              plist::Kind::Missing);
    EXPECT_FALSE(shared.needToKillSafari());
}

TEST_F(SpecialViews, TheBarDescribesItsNames)
{
    open(u"BookmarkBarView"_qs);
    EXPECT_EQ(view->getActionString(1200, {0, u"1;0;0;1"_qs}),
              u"Show Reading List, Bonjour on Safari's Bookmarks bar"_qs);
    EXPECT_EQ(view->getActionString(1200, {0, u"0;0;0;0"_qs}),
              u"Show  on Safari's Bookmarks bar"_qs);
}

TEST_F(SpecialViews, TheBarLogsWhatItReadsAndEnables)
{
    putBar({u"Bonjour"_qs});
    open(u"BookmarkBarView"_qs);
    const LogCapture log;
    view->readData(true);
    EXPECT_EQ(log.texts(u"varnel.settings"_qs),
              QStringList({u"checkDefaultCheckbox"_qs, u"currentDefaultCheckBoxValue: 0"_qs}));
}

TEST_F(SpecialViews, TheBarHasFourSearchTexts)
{
    auto &bar = openAs<BookmarkBarView>(u"BookmarkBarView"_qs);
    EXPECT_EQ(bar.getReadingListViewDescription(),
              u"safari web reading list browser bookmarks bar"_qs);
    EXPECT_EQ(bar.getTopSitesViewDescription(), u"safari web top sites browser bookmarks bar"_qs);
    EXPECT_EQ(bar.getAddressBookViewDescription(),
              u"safari web address book browser bookmarks bar"_qs);
    EXPECT_EQ(bar.getBonjourViewDescription(), u"Show Bonjour on Safari's Bookmarks bar"_qs);
}
