#include "doctor/OddValues.h"

#include "settings/BarItems.h"
#include "settings/ChoiceMapping.h"
#include "settings/PreferenceFiles.h"

#include <algorithm>
#include <optional>
#include <variant>

namespace varnel {

namespace {

QString oneLine(const plist::Value &value)
{
    constexpr qsizetype most = 60;
    const QString text = textValue(value).simplified();
    return text.size() > most ? text.left(most) + u"..." : text;
}

/// Reading takes a text for the number that it begins with, which for "YES" is 0.
std::optional<int> numberOf(const plist::Value &stored)
{
    return stored.kind == plist::Kind::String ? std::nullopt : intValue(stored);
}

bool isNumberOf(const SettingRow &row, const plist::Value &stored)
{
    const std::optional<int> number = numberOf(stored);
    return number && *number >= row.minimum && *number <= row.maximum;
}

bool namesBarItemsOnly(const plist::Value &stored)
{
    const auto isItem = [](const QString &name) {
        return BarItems::allNames().contains(name, Qt::CaseInsensitive);
    };
    return stored.kind == plist::Kind::StringArray
        && std::all_of(stored.strings.begin(), stored.strings.end(), isItem);
}

bool isChoiceOf(const SettingRow &row, const plist::Value &stored)
{
    const std::optional<int> choice = choiceOfStored(row, stored);
    const bool writesText = choice && std::holds_alternative<QString>(storedOfIndex(row, *choice));
    return choice && writesText == (stored.kind == plist::Kind::String);
}

bool couldBeWritten(const SettingRow &row, const plist::Value &stored)
{
    switch (row.mechanism) {
    case Mechanism::Choice:
    case Mechanism::DebugMenu:
    case Mechanism::NestedChoice:
        return isChoiceOf(row, stored);
    case Mechanism::LibraryPlaylist:
        return numberOf(stored).has_value();
    case Mechanism::Number:
        return isNumberOf(row, stored);
    case Mechanism::Text:
        return stored.kind == plist::Kind::String;
    case Mechanism::BarItems:
        return namesBarItemsOnly(stored);
    case Mechanism::LibraryFolder:
        break;
    }
    return true;
}

} // namespace

QList<QStringList> keyPathsOf(const SettingRow &row)
{
    if (row.mechanism == Mechanism::NestedChoice)
        return {row.keys};
    QList<QStringList> paths;
    for (const QString &key : row.keys)
        paths.append(QStringList(key));
    return paths;
}

QList<OddValue> oddValues(const SettingRow &row, const StoredAt &stored)
{
    QList<OddValue> odd;
    for (const QStringList &keyPath : keyPathsOf(row)) {
        const plist::Value value = stored(keyPath);
        if (value.kind != plist::Kind::Missing && !couldBeWritten(row, value))
            odd.append({keyPath.join(u" > "), oneLine(value)});
    }
    return odd;
}

} // namespace varnel
