#include "cli/Lookup.h"

#include "base/Literals.h"

#include <algorithm>

namespace varnel::cli {

namespace {

QStringList namesOf(const ModuleRow &module)
{
    QString key = module.moduleClass;
    if (key.endsWith(u"Module"))
        key.chop(6);
    return {module.outlineTitle, module.shortLocation, module.moduleClass, key};
}

QString allTitles()
{
    QStringList titles;
    for (const ModuleRow &module : modules())
        titles.append(module.outlineTitle);
    return titles.join(u", ");
}

/// Short names that contain what was typed.
QStringList similarNames(const QString &typed)
{
    QStringList names;
    for (const SettingRow &row : catalogue())
        if (!typed.isEmpty() && row.name.contains(typed, Qt::CaseInsensitive))
            names.append(row.name);
    return names;
}

} // namespace

Result<const SettingRow *> lookUpSetting(const QString &typed)
{
    if (const SettingRow *row = findSetting(QStringView(typed.toLower())))
        return row;
    const QStringList similar = similarNames(typed);
    const QString hint = similar.isEmpty()
        ? u"'varnelctl list' shows the names"_s
        : QString(u"did you mean " + similar.join(u" or ") + u'?');
    return Error {ErrorCode::Invalid, u"unknown setting '" + typed + u"'; " + hint};
}

Result<const ModuleRow *> lookUpGroup(const QString &typed)
{
    for (const ModuleRow &module : modules())
        if (namesOf(module).contains(typed, Qt::CaseInsensitive))
            return &module;
    return Error {ErrorCode::Invalid,
                  u"unknown group '" + typed + u"'; the groups are " + allTitles()};
}

QList<const SettingRow *> settingsInOutlineOrder(const ModuleRow *only)
{
    QList<const SettingRow *> rows;
    for (const ModuleRow &module : modules())
        for (const SettingRow &row : catalogue())
            if (row.module == module.id && (!only || only == &module))
                rows.append(&row);
    return rows;
}

} // namespace varnel::cli
