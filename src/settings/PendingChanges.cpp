#include "settings/PendingChanges.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "settings/Catalogue.h"

#include <algorithm>

namespace varnel {

namespace {

auto findRecord(QList<ChangeRecord> &records, int settingId)
{
    return std::find_if(records.begin(), records.end(), [settingId](const ChangeRecord &record) {
        return record.locationId == settingId;
    });
}

} // namespace

PendingChanges::PendingChanges(QList<ChangeRecord> &changes, QList<ChangeRecord> &backups,
                               RestartFlags &flags, SettingAccess &access, OldValueKeeper &keeper)
    : changes(changes), backups(backups), flags(flags), access(access), keeper(keeper)
{
}

void PendingChanges::addDataToChangeDataList(int settingId, int value, const QString &extra)
{
    varnelLog(lcSettings, u"addDataToChangeDataList"_s);
    if (const auto earlier = findRecord(changes, settingId); earlier != changes.end())
        changes.erase(earlier);
    changes.append({settingId, value, extra});
}

void PendingChanges::addDataToBackupDataList(int settingId, int value, const QString &extra)
{
    varnelLog(lcSettings, u"addDataToBackupDataList"_s);
    if (findRecord(backups, settingId) == backups.end())
        backups.append({settingId, value, extra});
}

std::optional<SettingValue> PendingChanges::pendingValue(int settingId) const
{
    const auto record = findRecord(changes, settingId);
    if (record == changes.end())
        return std::nullopt;
    return SettingValue {record->actionId, record->extraData};
}

Result<void> PendingChanges::writeData(int settingId, int value, const QString &extra)
{
    const SettingRow *row = findSetting(settingId);
    return row != nullptr ? access.write(*row, {value, extra}, flags) : Result<void>();
}

QStringList PendingChanges::actionString(int settingId, int value, const QString &extra) const
{
    const SettingRow *row = findSetting(settingId);
    if (row == nullptr)
        return {};
    return {locationString(*row), shortLocationString(*row),
            varnel::actionString(*row, {value, extra})};
}

QList<SaveFailure> PendingChanges::saveChanges()
{
    QList<SettingChange> wanted;
    for (const ChangeRecord &record : std::as_const(changes))
        if (const SettingRow *row = findSetting(record.locationId))
            wanted.append({row, {}, {record.actionId, record.extraData}});
    QList<SaveFailure> failures = SavePlan(access, wanted).commit(keeper, flags, backups);
    changes.clear();
    return failures;
}

void PendingChanges::dropChanges()
{
    changes.clear();
}

} // namespace varnel
