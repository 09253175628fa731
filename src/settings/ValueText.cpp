#include "settings/ValueText.h"

#include "base/Literals.h"
#include "settings/BarItems.h"
#include "settings/ChoiceMapping.h"

#include <algorithm>

namespace varnel {

namespace {

const QString defaultLabel = QStringLiteral("use default value");
const QString noItems = QStringLiteral("none");

Error outOfKind(const SettingRow &row, const QString &typed, const QString &wanted)
{
    constexpr qsizetype most = 200;
    const QString shown = typed.size() > most ? QString(typed.left(most) + u"...") : typed;
    return {ErrorCode::Invalid, u'\'' + shown + u"' is no value of " + row.name + u"; " + wanted};
}

QStringView withoutBlanksAtEnd(QStringView text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

std::optional<int> indexOfLabel(const SettingRow &row, const QString &typed)
{
    for (int index = 0; index < row.choices.size(); ++index) {
        const QString &label = row.choices[index].label;
        if (typed.compare(label, Qt::CaseInsensitive) == 0
            || withoutBlanksAtEnd(label).compare(typed, Qt::CaseInsensitive) == 0)
            return index;
    }
    return std::nullopt;
}

QString choicesInWords(const SettingRow &row)
{
    QStringList words;
    for (int index = 0; index < row.choices.size(); ++index)
        words.append(QString::number(index) + u" (" + withoutBlanksAtEnd(row.choices[index].label)
                     + u')');
    return u"choose " + words.join(u", ");
}

Result<SettingValue> parseChoice(const SettingRow &row, const QString &typed)
{
    std::optional<int> index = indexOfLabel(row, typed);
    if (!index)
        index = wholeNumber(typed);
    if (!index || *index < 0 || *index >= row.choices.size())
        return outOfKind(row, typed, choicesInWords(row));
    return SettingValue {*index};
}

Result<SettingValue> parseNumber(const SettingRow &row, const QString &typed)
{
    const std::optional<int> number = wholeNumber(typed);
    if (!number || *number < row.minimum || *number > row.maximum)
        return outOfKind(
            row, typed,
            u"give a number from %1 to %2, or 'default'"_s.arg(row.minimum).arg(row.maximum));
    return SettingValue {*number};
}

/// "1;0;0;1"
bool isFourDigits(const QString &typed)
{
    const QStringList digits = typed.split(u';');
    return digits.size() == 4
        && std::all_of(digits.begin(), digits.end(),
                       [](const QString &digit) { return digit == u"0" || digit == u"1"; });
}

/// "Reading List, Bonjour"; nothing when a name is none of the four.
std::optional<QString> itemsByName(const QString &typed)
{
    QStringList names;
    for (const QString &part : typed.split(u',')) {
        const QString name = part.trimmed();
        if (!BarItems::allNames().contains(name, Qt::CaseInsensitive))
            return std::nullopt;
        names.append(name);
    }
    return BarItems::fromNames(names).text();
}

Result<SettingValue> parseItems(const SettingRow &row, const QString &typed)
{
    if (isFourDigits(typed))
        return SettingValue {0, typed};
    if (typed.compare(noItems, Qt::CaseInsensitive) == 0)
        return SettingValue {0, BarItems().text()};
    if (const auto items = itemsByName(typed))
        return SettingValue {0, *items};
    return outOfKind(row, typed,
                     u"give four digits 0 or 1 with ';' between, names out of "
                         + BarItems::allNames().join(u", ") + u" with ',' between, '" + noItems
                         + u"' or 'default'");
}

} // namespace

std::optional<int> wholeNumber(const QString &typed)
{
    const QStringView digits = QStringView(typed).mid(typed.startsWith(u'-') ? 1 : 0);
    for (const QChar character : digits)
        if (character < u'0' || character > u'9')
            return std::nullopt;
    bool ok = false;
    const int number = typed.toInt(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

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

bool meanTheSame(const SettingRow &row, const SettingValue &one, const SettingValue &other)
{
    if (row.kind != ValueKind::Choice)
        return one == other;
    return storedOfIndex(row, one.number) == storedOfIndex(row, other.number);
}

Result<SettingValue> parseValue(const SettingRow &row, const QString &typed)
{
    if (row.mechanism == Mechanism::Text)
        return SettingValue {0, typed};
    if (typed == u"-1" || typed.compare(u"default", Qt::CaseInsensitive) == 0)
        return defaultValue(row);
    switch (row.kind) {
    case ValueKind::Choice:
        return parseChoice(row, typed);
    case ValueKind::Number:
        return parseNumber(row, typed);
    case ValueKind::String:
        break;
    }
    return parseItems(row, typed);
}

QString exchangedText(const SettingRow &row, const SettingValue &value)
{
    return row.kind == ValueKind::String ? value.text : QString::number(value.number);
}

QString labelText(const SettingRow &row, const SettingValue &value)
{
    if (row.kind == ValueKind::Choice)
        return value.number >= 0 && value.number < row.choices.size()
            ? row.choices[value.number].label
            : defaultLabel;
    if (value == defaultValue(row))
        return defaultLabel;
    if (row.kind == ValueKind::Number)
        return QString::number(value.number)
            + (row.control == ControlKind::Slider ? u" pixels" : u" items");
    if (row.mechanism != Mechanism::BarItems)
        return value.text;
    const QStringList names = BarItems::fromText(value.text).names();
    return names.isEmpty() ? noItems : names.join(u", ");
}

QString readInWords(const SettingRow &row, const SettingReading &reading)
{
    const QString label = labelText(row, reading.value);
    return reading.notText ? QString(label + u" (" + notTextNote() + u')') : label;
}

} // namespace varnel
