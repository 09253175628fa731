#include "cli/SettingWords.h"

#include "base/Literals.h"
#include "settings/BarItems.h"
#include "shell/QuitDecision.h"

namespace varnel::cli {

namespace {

/// The default is offered under the word that every setting knows.
QStringList otherLabels(const SettingRow &row)
{
    QStringList labels;
    for (int index = 0; index < row.choices.size(); ++index)
        if (index != row.defaultIndex())
            labels.append(row.choices[index].label.trimmed());
    return labels;
}

} // namespace

QStringList valueWords(const SettingRow &row)
{
    if (row.mechanism == Mechanism::Text)
        return {};
    QStringList words = otherLabels(row);
    if (row.mechanism == Mechanism::BarItems)
        words << BarItems::allNames() << u"none"_s;
    return words << u"default"_s;
}

QStringList applicationNames()
{
    QStringList names;
    for (const CloseRow &row : closeRows(~RestartFlags()))
        names.append(row.name);
    return names;
}

} // namespace varnel::cli
