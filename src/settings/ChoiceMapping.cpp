#include "settings/ChoiceMapping.h"

#include "settings/PreferenceFiles.h"

#include <algorithm>

namespace varnel {

namespace {

/// Compares what stands in a file with what a choice writes, by the type of the latter.
struct Selects {
    const SettingRow &row;
    const plist::Value &stored;

    bool operator()(std::monostate) const { return false; }
    bool operator()(bool value) const { return intValue(stored) == int(value); }
    bool operator()(int value) const { return intValue(stored) == value; }
    bool operator()(const QString &value) const
    {
        return stored.kind == plist::Kind::String
            && stored.string.compare(value,
                                     row.caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive)
            == 0;
    }
};

} // namespace

std::optional<int> choiceOfStored(const SettingRow &row, const plist::Value &stored)
{
    const auto at = std::find_if(row.choices.begin(), row.choices.end(), [&](const Choice &choice) {
        return std::visit(Selects {row, stored}, choice.writes);
    });
    return at != row.choices.end() ? std::optional(int(at - row.choices.begin())) : std::nullopt;
}

int indexOfStored(const SettingRow &row, const plist::Value &stored)
{
    return choiceOfStored(row, stored).value_or(row.defaultIndex());
}

StoredValue storedOfIndex(const SettingRow &row, int index)
{
    return index >= 0 && index < row.choices.size() ? row.choices[index].writes : StoredValue();
}

std::optional<plist::NewValue> newValue(const StoredValue &value)
{
    struct Convert {
        std::optional<plist::NewValue> operator()(std::monostate) const { return std::nullopt; }
        std::optional<plist::NewValue> operator()(bool flag) const { return flag; }
        std::optional<plist::NewValue> operator()(int number) const { return qint64(number); }
        std::optional<plist::NewValue> operator()(const QString &text) const { return text; }
    };
    return std::visit(Convert {}, value);
}

} // namespace varnel
