#include "settings/SavePlan.h"

#include "base/Logging.h"
#include "platform/FileStore.h"
#include "settings/LibraryFolder.h"
#include "settings/PreferenceFiles.h"
#include "settings/ValueText.h"

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

/// One value for each setting, in the order of the last mention.
QList<WantedValue> lastOfEach(const QList<WantedValue> &wanted)
{
    QList<WantedValue> last;
    for (const WantedValue &each : wanted) {
        last.removeIf([&](const WantedValue &earlier) { return earlier.row == each.row; });
        last.append(each);
    }
    return last;
}

} // namespace

ChangeRecord recordOf(const SettingRow &row, const SettingValue &value)
{
    return {row.id, value.number, value.text};
}

SavePlan::SavePlan(SettingAccess &settingAccess, const QList<WantedValue> &values,
                   bool libraryWillBeMade)
    : access(settingAccess), named(values), wanted(lastOfEach(values)),
      libraryIsMade(libraryWillBeMade)
{
    plan();
}

const SavePlan::Setting &SavePlan::add(const WantedValue &value)
{
    named.append(value);
    wanted.append(value);
    planned.push_back(begun(value));
    editNow(planned.back());
    return planned.back();
}

SavePlan::Setting SavePlan::begun(const WantedValue &value)
{
    Setting setting;
    setting.change = {value.row, readingOf(*value.row).value, value.value};
    setting.write = SettingWrite::of(*value.row, value.value);
    return setting;
}

void SavePlan::editNow(Setting &setting)
{
    const Result<bool> done = edit(setting);
    setting.differs = done && done.value();
    if (!done)
        setting.error = done.error();
}

void SavePlan::plan()
{
    planned.clear();
    files.clear();
    libraryFolder.reset();
    // All old values are those before the save, whatever its settings have in common.
    for (const WantedValue &each : std::as_const(wanted))
        planned.push_back(begun(each));
    for (Setting &setting : planned)
        editNow(setting);
    for (Setting &setting : planned) {
        const SettingRow &row = *setting.change.row;
        const SettingValue &value = setting.change.newValue;
        setting.notMade = !setting.error && !setting.differs
            && !meanTheSame(row, setting.change.oldValue, value)
            && !meanTheSame(row, readingOf(row).value, value);
    }
    if (onlyWhatDiffers)
        keepWhatDiffers();
}

PlannedFile &SavePlan::fileOf(const SettingRow &row)
{
    const QString path = access.filePath(row);
    return files.try_emplace(path, path, access.preferenceFiles().fileStore()).first->second;
}

SavePlan::Library &SavePlan::library()
{
    if (!libraryFolder) {
        FinderInfo::Reading reading = access.finder().read(access.libraryPath());
        if (libraryIsMade)
            reading = {};
        libraryFolder = {reading, reading};
    }
    return *libraryFolder;
}

SettingReading SavePlan::readingOf(const SettingRow &row)
{
    if (row.mechanism == Mechanism::LibraryFolder)
        return libraryReading(library().now);
    const PlannedFile &file = fileOf(row);
    return varnel::readingOf(row, [&](const QStringList &keys) { return file.value(keys); });
}

Result<bool> SavePlan::edit(Setting &setting)
{
    if (setting.write.hidesLibrary)
        return editLibrary(*setting.write.hidesLibrary);
    PlannedFile &file = fileOf(*setting.change.row);
    setting.edit = file.count();
    return file.edit(setting.write);
}

Result<bool> SavePlan::editLibrary(bool hides)
{
    FinderInfo::Reading &now = library().now;
    if (now.error != 0)
        return access.flagError(now.error);
    const FinderInfoBytes bytes = withInvisibility(now.bytes, hides);
    return std::exchange(now.bytes, bytes) != bytes;
}

void SavePlan::keepWhatDiffers()
{
    onlyWhatDiffers = true;
    std::erase_if(planned, [this](const Setting &setting) {
        const bool stays = !setting.differs && !setting.error;
        if (stays && !setting.write.hidesLibrary)
            fileOf(*setting.change.row).leaveOut(setting.edit);
        return stays;
    });
}

QList<ChangeRecord> SavePlan::oldValues() const
{
    QList<ChangeRecord> records;
    for (const WantedValue &each : named) {
        const auto setting = std::find_if(planned.begin(), planned.end(), [&](const Setting &one) {
            return one.change.row == each.row;
        });
        const bool isFirst =
            std::none_of(records.begin(), records.end(), [&](const ChangeRecord &record) {
                return record.locationId == each.row->id;
            });
        if (setting != planned.end() && isFirst)
            records.append(recordOf(*each.row, setting->change.oldValue));
    }
    return records;
}

bool SavePlan::isStillSo() const
{
    const FileStore &store = access.preferenceFiles().fileStore();
    return std::all_of(files.begin(), files.end(),
                       [&](const auto &file) { return file.second.isStillSo(store); });
}

QList<SaveFailure> SavePlan::commit(OldValueKeeper &keeper, RestartFlags &flags,
                                    const std::optional<QList<ChangeRecord>> &rows)
{
    if (!isStillSo())
        plan();
    QList<SaveFailure> failures;
    for (const ChangeRecord &record : rows ? *rows : oldValues()) {
        if (const Result<void> kept = keeper.addDataToBackupFile(record); !kept)
            failures.append({SaveFailure::Step::Backup, record, kept.error()});
    }
    return failures + write(flags);
}

QList<SaveFailure> SavePlan::write(RestartFlags &flags)
{
    QList<SaveFailure> failures;
    std::map<QString, Result<void>> replaced;
    for (const Setting &setting : planned) {
        const auto &[row, oldValue, newValue] = setting.change;
        access.logWrite(*row, newValue);
        const Result<void> written = writeOne(setting, replaced);
        access.wrote(*row);
        if (setting.write.restarts)
            flags |= *setting.write.restarts;
        if (!written)
            failures.append({SaveFailure::Step::Write, recordOf(*row, newValue), written.error()});
    }
    return failures;
}

/// The first setting of a file has the file replaced.
Result<void> SavePlan::writeOne(const Setting &setting, std::map<QString, Result<void>> &replaced)
{
    if (setting.write.hidesLibrary)
        return access.writeLibraryFolder(*setting.write.hidesLibrary);
    const SettingRow &row = *setting.change.row;
    PlannedFile &file = fileOf(row);
    const auto known = replaced.find(access.filePath(row));
    if (known == replaced.end())
        replaced.emplace(access.filePath(row), file.commit(access.preferenceFiles().fileStore()));
    else if (!known->second)
        varnelLog(lcIo, known->second.error().text); // for each setting that it keeps from its file
    return file.outcome(setting.edit);
}

} // namespace varnel
