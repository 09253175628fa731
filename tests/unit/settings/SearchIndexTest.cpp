#include "settings/SearchIndex.h"
#include "settings/Catalogue.h"

#include <QLocale>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;

namespace {

QList<int> ids(const QList<SearchResult> &results)
{
    QList<int> all;
    for (const SearchResult &result : results)
        all.append(result.id);
    return all;
}

QList<int> found(QStringView typed)
{
    return ids(findSettings(typed.toString()));
}

} // namespace

TEST(SearchIndex, HoldsTheTextsInTheOrderInWhichTheModulesGiveThem)
{
    const QList<SearchEntry> expected {
        {1200, u"Show Bonjour on Safari's Bookmarks bar"_s},
        {1201, u"safari web browser debug menu main"_s},
        {1202, u"safari web browser develop menu main"_s},
        {1203, u"safari main history menu."_s},
        {1204, u"safari text bottom toolbar"_s},
        {1205, u"safari thumbnail image top sites history cache"_s},
        {1206, u"safari warning close window unsubmitted text"_s},
        {1101, u"finder hidden files folders"_s},
        {1100, u"finder quit menu"_s},
        {1107, u"finder sound effect copying move moving file folder emptying trash"_s},
        {1106, u"finder desktop icon context menu"_s},
        {1105, u"finder full path window title bar posix"_s},
        {1104, u"finder zoom animation effect opening window"_s},
        {1103, u"finder animation info panes"_s},
        {1102, u"finder .ds_store file remote network folder"_s},
        {1010, u"dock classic 2d 2-d 3d 3-d style tiger"_s},
        {1009, u"dock autohide auto-hide"_s},
        {1008, u"dock minimize minimizing animation effect windows"_s},
        {1007, u"dock minimize minimizing windows application icon"_s},
        {1006, u"dock animation effect bouncing icon opening application"_s},
        {1005, u"dock position desktop screen"_s},
        {1004, u"dock size icon"_s},
        {1003, u"dock size icon animation magnification effect"_s},
        {1000, u"dock icon lock contents"_s},
        {1001, u"dock lock position"_s},
        {1002, u"dock icon lock size"_s},
        {1302, u"general user library folder directory"_s},
        {1301, u"general key auto-repeat autorepeat holding down key continuously continue"_s},
        {1300, u"general scrollbars scroll-bars applications input device scrolling"_s},
        {1303, u"general zoom animation effect opening windows"_s},
        {1304, u"general spell-check spellcheck autocorrect auto-correct"_s},
        {1402, u"screen capture save file format screenshot image"_s},
        {1400, u"screen capture prefix screenshot file names image"_s},
        {1403, u"screen capture save file location folder directory screenshot image"_s},
        {1401, u"screen capture drop shadow screenshot image"_s},
        {1500, u"mail animation reply replying email"_s},
        {1501, u"mail animation send sending email"_s},
        {1502, u"mail email message plain text"_s},
        {1504, u"mail email attachment"_s},
        {1503, u"mail email addresses brackets"_s},
        {1603, u"itunes half star rating"_s},
        {1602, u"itunes play list library"_s},
        {1601, u"itunes ping button song"_s},
        {1600, u"itunes pre-load song previews streaming"_s},
        {1700, u"new disk backup"_s},
        {1800, u"quicktime player close captioning sub titles"_s},
        {1801, u"quicktime player display control mouse cursor window"_s},
        {1802, u"quicktime player display control"_s},
        {1803, u"quicktime player display title bar"_s},
    };
    EXPECT_EQ(searchIndex(), expected);
}

TEST(SearchIndex, AnEmptyTextFindsNothing)
{
    EXPECT_TRUE(findSettings(QString()).isEmpty());
    EXPECT_TRUE(findViews(u""_s).isEmpty());
}

TEST(SearchIndex, CapitalsFindWhatSmallLettersFind)
{
    EXPECT_EQ(found(u"DOCK SIZE"), (QList<int> {1004, 1003}));
    EXPECT_EQ(found(u"dock size"), found(u"DoCk SiZe"));
}

TEST(SearchIndex, LockSizeFindsTheLockViewOnce)
{
    EXPECT_EQ(ids(findViews(u"lock size"_s)), (QList<int> {1002}));
    EXPECT_EQ(found(u"lock"), (QList<int> {1000, 1001, 1002}));
    EXPECT_EQ(ids(findViews(u"lock"_s)), (QList<int> {1000}));
}

TEST(SearchIndex, DisplayFindsTheDisplayControlViewOnce)
{
    EXPECT_EQ(found(u"display"), (QList<int> {1801, 1802, 1803}));
    EXPECT_EQ(ids(findViews(u"display"_s)), (QList<int> {1801}));
    EXPECT_EQ(ids(findViews(u"title bar"_s)), (QList<int> {1105, 1803}));
}

TEST(SearchIndex, BookmarksFindsTheBookmarksBarAndReadingListFindsNothing)
{
    EXPECT_EQ(found(u"bookmarks"), (QList<int> {1200}));
    EXPECT_TRUE(found(u"reading list").isEmpty());
}

TEST(SearchIndex, AutomaticallyFindsNothing)
{
    EXPECT_TRUE(found(u"automatically").isEmpty());
    EXPECT_TRUE(found(u"play  files").isEmpty());
}

TEST(SearchIndex, TheTextIsOnePieceNeitherSplitNorTrimmed)
{
    EXPECT_TRUE(found(u"size lock").isEmpty());
    EXPECT_TRUE(found(u" dock").isEmpty());
    EXPECT_TRUE(found(u"dock*").isEmpty());
    EXPECT_EQ(found(u"menu."), (QList<int> {1203}));
    EXPECT_EQ(found(u"ock "), found(u"dock "));
}

TEST(SearchIndex, TheLocaleOfTheUserChangesNothing)
{
    QLocale::setDefault(QLocale(QLocale::Turkish));
    EXPECT_EQ(found(u"FINDER QUIT"), (QList<int> {1100}));
}

TEST(SearchIndex, AResultTellsItsTextAndTheLengthOfTheMatch)
{
    EXPECT_EQ(findViews(u"BONJOUR"_s),
              (QList<SearchResult> {{1200, u"Show Bonjour on Safari's Bookmarks bar"_s, 7}}));
}

TEST(SearchIndex, SettingsAreCalledAsTheWindowCallsThem)
{
    const auto called = [](const QString &typed) {
        QStringList names;
        for (const SettingRow *row : settingsCalled(typed))
            names.append(row->label);
        return names;
    };
    EXPECT_EQ(called(u" hide the dock "_s).value(0), u"Hide the Dock"_s);
    EXPECT_EQ(called(u"lock the dock"_s), QStringList {u"Lock the contents"_s});
    EXPECT_EQ(called(u"dock"_s).value(0), u"Dock style"_s) << "what begins so comes first";
    EXPECT_EQ(called(u"dock"_s).size(), 5);
    EXPECT_EQ(called(u"reading list"_s).size(), 1);
    EXPECT_TRUE(called(u""_s).isEmpty());
    EXPECT_TRUE(called(u"nothing of the kind"_s).isEmpty());
    for (const SettingRow &row : catalogue()) {
        const QList<const SettingRow *> found = settingsCalled(row.label);
        EXPECT_TRUE(found.contains(&row)) << row.label.toStdString();
    }
}
