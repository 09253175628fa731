#include "backup/SettingsPlayback.h"

namespace varnel {

SettingsPlayback::SettingsPlayback(SettingAccess &settingAccess, RestartFlags &restartFlags,
                                   Manner playManner, bool libraryWillBeMade)
    : access(settingAccess), flags(restartFlags), manner(playManner),
      libraryIsMade(libraryWillBeMade)
{
}

SettingsPlayback::~SettingsPlayback()
{
    access.readFrom(nullptr);
}

SavePlan &SettingsPlayback::current()
{
    if (!plan) {
        plan.emplace(access, QList<SettingChange>(), libraryIsMade);
        access.readFrom(&*plan);
    }
    return *plan;
}

Result<void> SettingsPlayback::write(const SettingRow &row, const SettingValue &value)
{
    if (manner == Manner::Play)
        access.logWrite(row, value);
    const SavePlan::Setting &setting = current().add({&row, {}, value});
    access.wrote(row);
    if (setting.write.restarts)
        flags |= *setting.write.restarts;
    if (!setting.error)
        return {};
    failed = {SaveFailure::Step::Write, setting.change, *setting.error};
    return *setting.error;
}

Result<void> SettingsPlayback::carryOut()
{
    if (!plan)
        return {};
    if (manner == Manner::Play)
        if (const std::optional<SaveFailure> failure = plan->replaceFiles())
            failed = failure;
    for (const SavePlan::Setting &setting : plan->settings())
        if (setting.differs && (setting.written || manner == Manner::TryOut))
            done.append(setting.change);
    access.readFrom(nullptr);
    plan.reset();
    return failed ? Result<void>(failed->error) : Result<void>();
}

} // namespace varnel
