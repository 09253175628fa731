#include "settings/ValueText.h"

#include "settings/BarItems.h"

namespace varnel {

namespace {

QString choiceText(const SettingRow &row, int index)
{
    const bool listed = index >= 0 && index < row.choices.size();
    return row.choices[listed ? index : row.defaultIndex()].label;
}

QString textOf(const SettingRow &row, const SettingValue &value)
{
    if (row.mechanism == Mechanism::BarItems) {
        const QStringList names = BarItems::fromText(value.text).names();
        return names.isEmpty() ? u"none"_qs : names.join(u", ");
    }
    return value.text.isEmpty() ? u"empty"_qs : value.text;
}

} // namespace

SettingValue defaultValue(const SettingRow &row)
{
    switch (row.kind) {
    case ValueKind::Choice:
        return {row.defaultIndex()};
    case ValueKind::Number:
        return {-1};
    case ValueKind::String:
        break;
    }
    return {0, defaultText()};
}

QString valueText(const SettingRow &row, const SettingReading &reading)
{
    if (row.kind == ValueKind::Choice)
        return choiceText(row, reading.value.number);
    if (!reading.found)
        return u"use default value"_qs;
    return row.kind == ValueKind::Number ? QString::number(reading.value.number)
                                         : textOf(row, reading.value);
}

} // namespace varnel
