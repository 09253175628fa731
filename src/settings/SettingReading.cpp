#include "settings/SettingReading.h"

#include "settings/BarItems.h"
#include "settings/ChoiceMapping.h"
#include "settings/PreferenceFiles.h"
#include "settings/ValueText.h"

namespace varnel {

namespace {

SettingReading choiceReading(const SettingRow &row, const plist::Value &stored)
{
    return {{indexOfStored(row, stored)}, stored.kind != plist::Kind::Missing};
}

SettingReading libraryPlaylistReading(const SettingRow &row, const StoredAt &stored)
{
    const std::optional<int> hide = intValue(stored({row.keys[0]}));
    const std::optional<int> show = intValue(stored({row.keys[1]}));
    if (!hide || !show)
        return {{row.defaultIndex()}, false};
    return {{*hide != 0 && *show != 1 ? 1 : 0}, true};
}

SettingReading numberReading(const plist::Value &stored)
{
    const std::optional<int> number = intValue(stored);
    return {{number.value_or(-1)}, number.has_value()};
}

SettingReading textReading(const plist::Value &stored)
{
    if (stored.kind == plist::Kind::Missing)
        return {{0, defaultText()}, false};
    return {{0, textValue(stored)}, true, stored.kind != plist::Kind::String};
}

SettingReading barItemsReading(const plist::Value &stored)
{
    if (stored.kind != plist::Kind::StringArray && stored.kind != plist::Kind::Array)
        return {{0, defaultText()}, false};
    return {{0, BarItems::fromNames(stored.strings).text()}, true};
}

} // namespace

SettingReading readingOf(const SettingRow &row, const QList<OldKey> &keys)
{
    return readingOf(row, [&](const QStringList &keyPath) {
        for (const OldKey &key : keys)
            if (key.keyPath == keyPath && key.object)
                return key.object->value({});
        return plist::Value();
    });
}

SettingReading readingOf(const SettingRow &row, const StoredAt &stored)
{
    switch (row.mechanism) {
    case Mechanism::Choice:
    case Mechanism::DebugMenu: // only the last of its two keys is read
        return choiceReading(row, stored({row.keys.last()}));
    case Mechanism::LibraryPlaylist:
        return libraryPlaylistReading(row, stored);
    case Mechanism::NestedChoice:
        return choiceReading(row, stored(row.keys));
    case Mechanism::Number:
        return numberReading(stored({row.keys.first()}));
    case Mechanism::Text:
        return textReading(stored({row.keys.first()}));
    case Mechanism::BarItems:
        return barItemsReading(stored({row.keys.first()}));
    case Mechanism::LibraryFolder:
        break;
    }
    return {};
}

} // namespace varnel
