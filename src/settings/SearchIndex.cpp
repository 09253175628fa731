#include "settings/SearchIndex.h"

#include "settings/BarItems.h"
#include "settings/Catalogue.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace varnel {

namespace {

constexpr std::array buildOrder {
    1200, 1201, 1202, 1203, 1204, 1205, 1206, // Safari
    1101, 1100, 1107, 1106, 1105, 1104, 1103, 1102, // Finder
    1010, 1009, 1008, 1007, 1006, 1005, 1004, 1003, 1000, 1001, 1002, // Dock
    1302, 1301, 1300, 1303, 1304, // General
    1402, 1400, 1403, 1401, // Screen Capture
    1500, 1501, 1502, 1504, 1503, // Mail
    1603, 1602, 1601, 1600, // iTunes
    1700, // Time Machine
    1800, 1801, 1802, 1803, // QuickTime Player
};

/// Rows that the order does not name come last.
auto placeOf(const SearchEntry &entry)
{
    return std::find(buildOrder.begin(), buildOrder.end(), entry.id);
}

QList<SearchEntry> buildIndex()
{
    QList<SearchEntry> index;
    for (const SettingRow &row : catalogue()) {
        if (row.searchable)
            index.append({row.id, row.keywords.last()});
    }
    std::stable_sort(index.begin(), index.end(), [](const SearchEntry &a, const SearchEntry &b) {
        return placeOf(a) < placeOf(b);
    });
    return index;
}

QList<const SettingRow *> settingsInPageOrder()
{
    QList<const SettingRow *> all;
    for (const ModuleRow &module : modules())
        for (const QString &view : module.pageOrder)
            all += rowsOfView(view);
    return all;
}

enum class Words { Label, Help, Name, Group, Choices };

/// A caption that several settings share is found as that of the first.
QStringList wordsOf(const SettingRow &row, Words words)
{
    const RowCaption *several = captionOfSeveral(row.viewClass);
    const bool isFirst = several != nullptr && rowsOfView(row.viewClass).first() == &row;
    QStringList texts;
    switch (words) {
    case Words::Label:
        texts = {row.label};
        if (isFirst)
            texts.append(several->title);
        break;
    case Words::Help:
        texts = {row.help};
        if (isFirst)
            texts.append(several->help);
        break;
    case Words::Name:
        return {row.name};
    case Words::Group:
        return {moduleRow(row.module).outlineTitle, shortLocationString(row)};
    case Words::Choices:
        for (const Choice &choice : row.choices)
            texts.append(choice.label);
        if (row.mechanism == Mechanism::BarItems)
            texts += BarItems::allNames();
        break;
    }
    return texts;
}

bool isAmong(const QStringList &texts, const QString &wanted, bool atFront)
{
    return std::any_of(texts.begin(), texts.end(), [&](const QString &text) {
        const QString lower = text.toLower();
        return atFront ? lower.startsWith(wanted) : lower.contains(wanted);
    });
}

} // namespace

const QList<SearchEntry> &searchIndex()
{
    static const QList<SearchEntry> index = buildIndex();
    return index;
}

QList<SearchResult> findSettings(const QString &typed)
{
    const QString wanted = typed.toLower();
    QList<SearchResult> results;
    if (wanted.isEmpty())
        return results;
    for (const SearchEntry &entry : searchIndex()) {
        if (entry.text.toLower().contains(wanted))
            results.append({entry.id, entry.text, wanted.size()});
    }
    return results;
}

QList<const SettingRow *> settingsCalled(const QString &typed, qsizetype most)
{
    const QString wanted = typed.trimmed().toLower();
    QList<const SettingRow *> found;
    if (wanted.isEmpty())
        return found;
    const QList<const SettingRow *> all = settingsInPageOrder();
    const auto look = [&](Words words, bool atFront) {
        for (const SettingRow *row : all)
            if (found.size() < most && !found.contains(row)
                && isAmong(wordsOf(*row, words), wanted, atFront))
                found.append(row);
    };
    look(Words::Label, true);
    for (const Words words : {Words::Label, Words::Help, Words::Name, Words::Group, Words::Choices})
        look(words, false);
    return found;
}

QList<SearchResult> findViews(const QString &typed)
{
    QList<SearchResult> results = findSettings(typed);
    QSet<QString> shown;
    results.removeIf([&shown](const SearchResult &result) {
        const QString &view = findSetting(result.id)->viewClass;
        if (shown.contains(view))
            return true;
        shown.insert(view);
        return false;
    });
    return results;
}

} // namespace varnel
