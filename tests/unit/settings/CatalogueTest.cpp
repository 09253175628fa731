#include "settings/Catalogue.h"

#include <QMap>
#include <QSet>

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;
using namespace varnel;

namespace {

QList<int> numbers(int first, int last)
{
    QList<int> all(last - first + 1);
    std::iota(all.begin(), all.end(), first);
    return all;
}

QStringList classesOf(ModuleId module)
{
    QStringList classes;
    for (const SettingRow &row : catalogue()) {
        if (row.module == module && !classes.contains(row.viewClass))
            classes.append(row.viewClass);
    }
    classes.sort();
    return classes;
}

} // namespace

TEST(Catalogue, HoldsEachOfTheFiftyNumbersOnceInOrder)
{
    QList<int> ids;
    for (const SettingRow &row : catalogue())
        ids.append(row.id);
    EXPECT_EQ(ids,
              numbers(1000, 1010) + numbers(1100, 1107) + numbers(1200, 1206) + numbers(1300, 1304)
                  + numbers(1400, 1403) + numbers(1500, 1504) + numbers(1600, 1603)
                  + numbers(1700, 1700) + numbers(1800, 1804));
}

TEST(Catalogue, KeepsTheNumberOfLoginItemRowsFree)
{
    EXPECT_EQ(findSetting(250), nullptr);
}

TEST(Catalogue, FindsASettingByItsNumberOrItsShortName)
{
    EXPECT_EQ(findSetting(1009)->viewClass, u"HideDockView"_s);
    EXPECT_EQ(findSetting(u"1009"), findSetting(1009));
    EXPECT_EQ(findSetting(u"autohide"), findSetting(1009));
    EXPECT_EQ(findSetting(u"scroll-bars"), findSetting(1300));
}

TEST(Catalogue, FindsNothingForUnknownNumbersAndNames)
{
    for (const int id : {0, 999, 1011, 1099, 1207, 1805, -1})
        EXPECT_EQ(findSetting(id), nullptr) << id;
    for (const QString &name : {u""_s, u"Autohide "_s, u"1009x"_s, u"dock"_s})
        EXPECT_EQ(findSetting(name), nullptr) << name.toStdString();
}

TEST(Catalogue, ShortNamesAreUniqueLowerCaseWordsWithHyphens)
{
    QSet<QString> names;
    for (const SettingRow &row : catalogue()) {
        EXPECT_FALSE(names.contains(row.name)) << row.name.toStdString();
        names.insert(row.name);
        EXPECT_TRUE(std::all_of(row.name.begin(), row.name.end(), [](QChar c) {
            return (c >= u'a' && c <= u'z') || c == u'-';
        })) << row.name.toStdString();
    }
}

TEST(Catalogue, EveryRowHasALabelAndOneLineOfHelp)
{
    QSet<QString> labels;
    for (const SettingRow &row : catalogue()) {
        const QString label = shortLocationString(row) + u'/' + row.label;
        EXPECT_FALSE(labels.contains(label)) << label.toStdString();
        labels.insert(label);
        EXPECT_FALSE(row.label.isEmpty()) << row.id;
        EXPECT_LE(row.label.size(), 30) << row.id;
        EXPECT_FALSE(row.help.isEmpty()) << row.id;
        EXPECT_LE(row.help.size(), 90) << row.id;
    }
}

TEST(Catalogue, TheFirstSelectionIsTheLastChoiceExceptOfScrollBarsAndMinimizing)
{
    for (const SettingRow &row : catalogue()) {
        if (row.kind != ValueKind::Choice)
            continue;
        EXPECT_EQ(row.initialIndex, row.id == 1300 || row.id == 1007 ? 0 : row.defaultIndex())
            << row.id;
    }
}

TEST(Catalogue, ControlsHaveSensibleRangesAndHistoryShowsEighteenWhenMissing)
{
    const auto range = [](int id) {
        return QList<int> {findSetting(id)->minimum, findSetting(id)->maximum};
    };
    EXPECT_EQ(range(1004), (QList<int> {16, 128}));
    EXPECT_EQ(range(1003), (QList<int> {16, 256}));
    EXPECT_EQ(range(1203), (QList<int> {0, 999}));
    EXPECT_EQ(findSetting(1203)->shownWhenMissing, 18);
}

TEST(Catalogue, OnlyTheSettingsOfControlsOtherThanAListNameThem)
{
    for (const SettingRow &row : catalogue()) {
        ControlKind expected = ControlKind::ComboBox;
        switch (row.id) {
        case 1003:
        case 1004:
            expected = ControlKind::Slider;
            break;
        case 1200:
            expected = ControlKind::CheckBoxes;
            break;
        case 1203:
            expected = ControlKind::Stepper;
            break;
        case 1400:
            expected = ControlKind::TextField;
            break;
        case 1403:
            expected = ControlKind::FolderField;
            break;
        default:
            break;
        }
        EXPECT_EQ(row.control, expected) << row.id;
    }
}

TEST(Catalogue, ExactlyTheKeysOfHalfStarsAreShared)
{
    QMap<QString, QList<int>> places;
    for (const SettingRow &row : catalogue()) {
        for (const QString &key : row.keys)
            places[row.file + u' ' + key].append(row.id);
    }
    places.removeIf([](const auto &place) { return place.value().size() == 1; });
    EXPECT_EQ(places.values(), (QList<QList<int>> {{1600, 1603}}));
}

TEST(Catalogue, TheModulesStandInTheOrderOfTheOutline)
{
    QStringList titles;
    QStringList icons;
    for (const ModuleRow &module : modules()) {
        titles.append(module.outlineTitle);
        icons.append(module.icon);
    }
    EXPECT_EQ(titles,
              (QStringList {u"General"_s, u"Dock"_s, u"Finder"_s, u"iTunes"_s, u"Mail"_s,
                            u"QuickTime Player X"_s, u"Safari"_s, u"Screen Capture"_s,
                            u"Time Machine"_s}));
    EXPECT_EQ(icons,
              (QStringList {u"General"_s, u"Dock"_s, u"Finder"_s, u"iTunes"_s, u"mail"_s,
                            u"QuickTimePlayerX"_s, u"compass"_s, u"ScreenCapture"_s, u"backup"_s}));
}

TEST(Catalogue, EachModuleShowsAllItsViewsAndReadsSomeOfThem)
{
    for (const ModuleRow &module : modules()) {
        QStringList page = module.pageOrder;
        page.sort();
        EXPECT_EQ(page, classesOf(module.id)) << module.outlineTitle.toStdString();
        for (const QString &view : module.readOrder)
            EXPECT_TRUE(page.contains(view)) << view.toStdString();
    }
    EXPECT_EQ(moduleRow(ModuleId::General).readOrder,
              (QStringList {u"ZoomAnimationView"_s, u"ScrollbarView"_s, u"KeyAutorepeatView"_s,
                            u"UserLibraryFolderView"_s}));
    EXPECT_EQ(moduleRow(ModuleId::Safari).readOrder,
              (QStringList {u"BookmarkBarView"_s, u"DebugMenuView"_s, u"DevelopMenuView"_s}));
}

TEST(Catalogue, TheLockAndDisplayControlViewsCarryThreeRowsEach)
{
    const auto idsOf = [](QStringView view) {
        QList<int> ids;
        for (const SettingRow *row : rowsOfView(view))
            ids.append(row->id);
        return ids;
    };
    EXPECT_EQ(idsOf(u"LockDockView"), (QList<int> {1000, 1001, 1002}));
    EXPECT_EQ(idsOf(u"DisplayControlView"), (QList<int> {1801, 1802, 1803}));
    EXPECT_EQ(idsOf(u"HideDockView"), (QList<int> {1009}));
    EXPECT_TRUE(idsOf(u"NoView").isEmpty());
}

TEST(Catalogue, OnlyAutoPlayIsKeptOutOfTheSearch)
{
    for (const SettingRow &row : catalogue())
        EXPECT_EQ(row.searchable, row.id != 1804) << row.id;
}
