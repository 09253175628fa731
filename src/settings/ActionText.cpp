#include "base/Literals.h"
#include "base/Logging.h"
#include "base/Text.h"
#include "settings/BarItems.h"
#include "settings/SettingAccess.h"
#include "settings/ValueText.h"

namespace varnel {

namespace {

QString choiceText(const SettingRow &row, int index)
{
    const bool known = index >= 0 && index < row.choices.size();
    if (known && !row.choices[index].action.isNull())
        return row.choices[index].action;
    return row.otherAction;
}

QString numberText(const SettingRow &row, int number)
{
    if (number == -1 && !row.defaultAction.isNull())
        return row.defaultAction;
    // The "%s" of two rows is never filled in: the sentence is shown with it.
    return row.otherAction.contains(u"%d") ? fillIn(row.otherAction, {QString::number(number)})
                                           : row.otherAction;
}

QString barItemsText(const SettingRow &row, const QString &text)
{
    const QStringList names = BarItems::fromText(text).names();
    // Joining no names gives null, which would be printed by name.
    const QString list = names.isEmpty() ? u""_s : names.join(u", ");
    return fillIn(row.otherAction, {list});
}

QString stringText(const SettingRow &row, const QString &text)
{
    if (text == defaultText() && !row.defaultAction.isNull())
        return row.defaultAction;
    return row.mechanism == Mechanism::BarItems ? barItemsText(row, text)
                                                : fillIn(row.otherAction, {text});
}

} // namespace

QString actionString(const SettingRow &row, const SettingValue &value)
{
    QString sentence = actionSentence(row, value);
    if (row.mechanism == Mechanism::BarItems && value.text != defaultText())
        varnelLog(lcSettings, fillIn(u"barStr= %@", {sentence}));
    return sentence;
}

QString actionSentence(const SettingRow &row, const SettingValue &value)
{
    switch (row.kind) {
    case ValueKind::Choice:
        return choiceText(row, value.number);
    case ValueKind::Number:
        return numberText(row, value.number);
    case ValueKind::String:
        return stringText(row, value.text);
    }
    return row.otherAction;
}

} // namespace varnel
