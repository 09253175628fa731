#include "backup/SettingsPlayback.h"

#include "backup/KeptBackup.h"
#include "base/Logging.h"
#include "settings/Catalogue.h"

namespace varnel {

SettingsPlayback::SettingsPlayback(SettingAccess &settingAccess, RestartFlags &restartFlags,
                                   const KeptBackup *keptBackup, Manner playManner,
                                   bool libraryWillBeMade)
    : access(settingAccess), flags(restartFlags), kept(keptBackup), manner(playManner),
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
    const QList<OldKeys> files = kept != nullptr ? kept->filesOf(row.id) : QList<OldKeys>();
    if (files.isEmpty())
        return writeIn(row, value, std::nullopt);
    for (const OldKeys &file : files)
        if (const Result<void> written = writeIn(row, value, file); !written)
            return written;
    return {};
}

Result<void> SettingsPlayback::writeIn(const SettingRow &row, const SettingValue &value,
                                       const std::optional<OldKeys> &exactly)
{
    const SavePlan::Setting &setting = current().add({&row, {}, value}, exactly);
    noteFile(setting, exactly.has_value() && !setting.error);
    access.wrote(row);
    if (setting.write.restarts)
        flags |= *setting.write.restarts;
    if (!setting.error)
        return {};
    if (manner == Manner::Play)
        varnelLog(lcIo, setting.error->text);
    failed = {SaveFailure::Step::Write, setting.change, *setting.error};
    return *setting.error;
}

void SettingsPlayback::noteFile(const SavePlan::Setting &setting, bool exactly)
{
    const SettingRow &row = *setting.change.row;
    if (row.mechanism == Mechanism::LibraryFolder) {
        const KeptFlag *flag = kept != nullptr ? kept->libraryFlag(row.id) : nullptr;
        if (flag != nullptr && access.finder().read(access.libraryPath()).bytes == flag->written)
            libraryBefore = flag->before;
        return;
    }
    Played &file = played[setting.path];
    if (exactly)
        file.exactly.insert(row.id);
    else
        file.others = true;
}

Result<void> SettingsPlayback::writeWithoutRows()
{
    if (kept == nullptr)
        return {};
    for (const int setting : kept->settingsWithoutRow()) {
        const SettingRow *row = findSetting(setting);
        const std::optional<QList<OldKey>> keys = kept->keysOf(setting);
        if (row == nullptr || !keys)
            continue;
        if (const Result<void> written = write(*row, readingOf(*row, *keys).value); !written)
            return written;
        hasPlayedWithoutRows = true;
    }
    return {};
}

bool SettingsPlayback::putBackWhole(const QString &path) const
{
    const Played file = played.value(path);
    return kept != nullptr && !file.others && kept->putBackWhole(path, file.exactly);
}

Result<void> SettingsPlayback::putBackLibraryFlag()
{
    if (!libraryBefore)
        return {};
    const FinderInfo::Reading before = *std::exchange(libraryBefore, std::nullopt);
    return access.putBackLibraryFolder(before);
}

Result<void> SettingsPlayback::carryOut()
{
    if (!plan)
        return {};
    if (manner == Manner::Play) {
        if (const auto failure =
                plan->replaceFiles([this](const QString &path) { return putBackWhole(path); }))
            failed = failure;
        else if (const Result<void> flag = putBackLibraryFlag(); !flag)
            failed = {SaveFailure::Step::Write, plan->settings().back().change, flag.error()};
    }
    for (const SavePlan::Setting &setting : plan->settings())
        if (setting.differs && (setting.written || manner == Manner::TryOut))
            done.append(setting.change);
    access.readFrom(nullptr);
    plan.reset();
    return failed ? Result<void>(failed->error) : Result<void>();
}

} // namespace varnel
