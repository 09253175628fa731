#include "settings/Catalogue.h"

#include "base/Literals.h"
#include "settings/catalogue/Rows.h"

#include <QHash>

#include <algorithm>

namespace varnel {

namespace {

QList<SettingRow> joinRows()
{
    QList<SettingRow> all;
    for (const auto &group :
         {rows::dockRows(), rows::finderRows(), rows::safariRows(), rows::generalRows(),
          rows::screenCaptureRows(), rows::mailRows(), rows::iTunesRows(), rows::timeMachineRows(),
          rows::quickTimePlayerRows()})
        all += group;
    std::sort(all.begin(), all.end(),
              [](const SettingRow &a, const SettingRow &b) { return a.id < b.id; });
    return all;
}

} // namespace

const QList<SettingRow> &catalogue()
{
    static const QList<SettingRow> all = joinRows();
    return all;
}

const SettingRow *findSetting(int id)
{
    const QList<SettingRow> &all = catalogue();
    const auto at =
        std::lower_bound(all.begin(), all.end(), id,
                         [](const SettingRow &row, int wanted) { return row.id < wanted; });
    return at != all.end() && at->id == id ? &*at : nullptr;
}

const SettingRow *findSetting(QStringView idOrName)
{
    bool isNumber = false;
    const int id = idOrName.toInt(&isNumber);
    if (isNumber)
        return findSetting(id);
    const QList<SettingRow> &all = catalogue();
    const auto at = std::find_if(all.begin(), all.end(),
                                 [&](const SettingRow &row) { return row.name == idOrName; });
    return at != all.end() ? &*at : nullptr;
}

const ModuleRow &moduleRow(ModuleId id)
{
    const QList<ModuleRow> &all = modules();
    return *std::find_if(all.begin(), all.end(),
                         [id](const ModuleRow &module) { return module.id == id; });
}

QList<const SettingRow *> rowsOfView(QStringView viewClass)
{
    QList<const SettingRow *> rows;
    for (const SettingRow &row : catalogue()) {
        if (row.viewClass == viewClass)
            rows.append(&row);
    }
    return rows;
}

const RowCaption *captionOfSeveral(QStringView viewClass)
{
    static const QHash<QString, RowCaption> captions {
        {u"LockDockView"_s, {u"Lock the Dock"_s, u"What can no longer be changed by dragging"_s}},
        {u"DisplayControlView"_s,
         {u"Controls over the film"_s, u"When the display control and the title bar are seen"_s}},
    };
    const auto caption = captions.constFind(viewClass.toString());
    return caption == captions.constEnd() ? nullptr : &*caption;
}

QString locationString(const SettingRow &row)
{
    return u"Quillet -> "_s + shortLocationString(row);
}

QString shortLocationString(const SettingRow &row)
{
    return moduleRow(row.module).shortLocation;
}

} // namespace varnel
