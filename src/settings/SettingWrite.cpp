#include "settings/SettingWrite.h"

#include "settings/BarItems.h"
#include "settings/ChoiceMapping.h"
#include "settings/ValueText.h"

namespace varnel {

namespace {

using NewValue = std::optional<plist::NewValue>;

/// What every key of the setting gets; none removes.
NewValue valueToWrite(const SettingRow &row, const SettingValue &value)
{
    const bool isDefault = value.text == defaultValue(row).text;
    switch (row.mechanism) {
    case Mechanism::Number:
        return value.number < 0 ? NewValue() : NewValue(qint64(value.number));
    case Mechanism::Text:
        return isDefault ? NewValue() : NewValue(value.text);
    case Mechanism::BarItems:
        return isDefault ? NewValue() : NewValue(BarItems::fromText(value.text).names());
    case Mechanism::Choice:
    case Mechanism::DebugMenu:
    case Mechanism::LibraryPlaylist:
    case Mechanism::NestedChoice:
    case Mechanism::LibraryFolder:
        break;
    }
    return newValue(storedOfIndex(row, value.number));
}

QList<KeyChange> keyChanges(const SettingRow &row, const NewValue &value)
{
    if (row.mechanism == Mechanism::NestedChoice)
        return {{row.keys, value}};
    QList<KeyChange> changes;
    for (const QString &key : row.keys)
        changes.append({{key}, value});
    if (row.mechanism == Mechanism::LibraryPlaylist && value)
        changes[1].value = !std::get<bool>(*value);
    return changes;
}

} // namespace

SettingWrite SettingWrite::of(const SettingRow &row, const SettingValue &value)
{
    SettingWrite write;
    write.restarts = row.restarts;
    const NewValue written = valueToWrite(row, value);
    if (row.mechanism == Mechanism::LibraryFolder) {
        // Only the choice that shows the folder shows it; every other index hides it.
        write.hidesLibrary = !written || std::get<bool>(*written);
        return write;
    }
    write.changes = keyChanges(row, written);
    const bool neverCreates =
        row.mechanism == Mechanism::NestedChoice || row.mechanism == Mechanism::BarItems;
    if (written && !neverCreates)
        write.ifMissing = PreferenceFiles::IfMissing::Create;
    if (row.mechanism == Mechanism::BarItems && !written)
        write.restarts.reset();
    return write;
}

} // namespace varnel
