#include "settings/SavePlan.h"

#include "base/Logging.h"
#include "platform/FileStore.h"
#include "settings/Catalogue.h"
#include "settings/LibraryFolder.h"
#include "settings/PreferenceFiles.h"
#include "settings/ValueText.h"

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

/// One value for each setting, in the order of the last mention.
QList<SettingChange> lastOfEach(const QList<SettingChange> &wanted)
{
    QList<SettingChange> last;
    for (const SettingChange &each : wanted) {
        last.removeIf([&](const SettingChange &earlier) { return earlier.row == each.row; });
        last.append(each);
    }
    return last;
}

QList<ChangeRecord> rowsFor(const QList<SettingChange> &changes)
{
    QList<ChangeRecord> rows;
    for (const SettingChange &change : changes)
        rows.append(oldValueOf(change));
    return rows;
}

} // namespace

ChangeRecord oldValueOf(const SettingChange &change)
{
    return {change.row->id, change.oldValue.number, change.oldValue.text};
}

SavePlan::SavePlan(SettingAccess &settingAccess, const QList<SettingChange> &values,
                   bool libraryWillBeMade)
    : access(settingAccess), named(values), wanted(lastOfEach(values)),
      libraryIsMade(libraryWillBeMade)
{
    plan();
}

const SavePlan::Setting &SavePlan::add(const SettingChange &value,
                                       const std::optional<OldKeys> &exactly)
{
    named.append(value);
    wanted.append(value);
    planned.push_back(begun(value, exactly ? exactly->path : pathOf(*value.row)));
    if (exactly)
        planned.back().write.exactly = exactly->keys;
    editNow(planned.back());
    return planned.back();
}

SavePlan::Setting SavePlan::begun(const SettingChange &wish, const QString &path)
{
    Setting setting;
    setting.path = path;
    setting.change = {wish.row, readingIn(path, *wish.row).value, wish.newValue};
    setting.write = SettingWrite::of(*wish.row, wish.newValue);
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
    places.emplace(access.findFiles());
    // All old values are those before the save, whatever its settings have in common.
    for (const SettingChange &each : std::as_const(wanted))
        planned.push_back(begun(each, pathOf(*each.row)));
    for (Setting &setting : planned)
        editNow(setting);
    for (Setting &setting : planned) {
        const SettingRow &row = *setting.change.row;
        const SettingValue &value = setting.change.newValue;
        setting.notMade = !setting.error && !setting.differs
            && !meanTheSame(row, setting.change.oldValue, value)
            && !meanTheSame(row, readingIn(setting.path, row).value, value);
    }
    if (onlyWhatDiffers)
        keepWhatDiffers();
}

QString SavePlan::pathOf(const SettingRow &row) const
{
    return access.filePath(row, *places);
}

PlannedFile &SavePlan::fileAt(const QString &path)
{
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
    return readingIn(pathOf(row), row);
}

SettingReading SavePlan::readingIn(const QString &path, const SettingRow &row)
{
    if (row.mechanism == Mechanism::LibraryFolder)
        return libraryReading(library().now);
    PlannedFile &file = fileAt(path);
    return varnel::readingOf(row, [&](const QStringList &keys) { return file.value(keys); });
}

plist::Value SavePlan::stored(const SettingRow &row, const QStringList &keys)
{
    return fileAt(pathOf(row)).value(keys);
}

Result<bool> SavePlan::edit(Setting &setting)
{
    if (setting.write.hidesLibrary)
        return editLibrary(*setting.write.hidesLibrary);
    PlannedFile &file = fileAt(setting.path);
    setting.edit = file.count();
    return file.edit(setting.change.row->id, setting.write);
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
            fileAt(setting.path).leaveOut(setting.edit);
        return stays;
    });
}

QList<SettingChange> SavePlan::firstNamed() const
{
    QList<SettingChange> changes;
    for (const SettingChange &each : named) {
        const auto setting = std::find_if(planned.begin(), planned.end(), [&](const Setting &one) {
            return one.change.row == each.row;
        });
        const bool isFirst =
            std::none_of(changes.begin(), changes.end(),
                         [&](const SettingChange &change) { return change.row == each.row; });
        if (setting != planned.end() && isFirst)
            changes.append(setting->change);
    }
    return changes;
}

bool SavePlan::isStillSo() const
{
    return std::all_of(files.begin(), files.end(),
                       [](const auto &file) { return file.second.isStillSo(); });
}

QList<SaveFailure> SavePlan::commit(OldValueKeeper &keeper, RestartFlags &flags,
                                    const std::optional<QList<ChangeRecord>> &rows)
{
    if (!isStillSo())
        plan();
    QList<SaveFailure> failures;
    for (const ChangeRecord &row : rows ? *rows : rowsFor(firstNamed())) {
        if (const Result<void> kept = keeper.addDataToBackupFile(row); !kept) {
            const SettingChange change {
                findSetting(row.locationId), {row.actionId, row.extraData}, {}};
            failures.append({SaveFailure::Step::Backup, change, kept.error()});
        }
    }
    keeper.keepFiles(replacedFiles());
    if (libraryFolder && libraryFolder->now != libraryFolder->before)
        keeper.keepLibraryFlag(libraryFolder->before, libraryFolder->now.bytes);
    return failures + write(keeper, flags);
}

QList<ReplacedFile> SavePlan::replacedFiles() const
{
    QList<ReplacedFile> replaced;
    for (const auto &[path, file] : files)
        if (std::optional<ReplacedFile> replacement = file.replacement())
            replaced.append(std::move(*replacement));
    return replaced;
}

QList<SaveFailure> SavePlan::write(OldValueKeeper &keeper, RestartFlags &flags)
{
    QList<SaveFailure> failures;
    Replaced replaced;
    FileStore &store = access.preferenceFiles().fileStore();
    const Replace replace = [&](PlannedFile &file, const QString & /*path*/) {
        return file.commit(store, &keeper);
    };
    for (Setting &setting : planned) {
        const auto &[row, oldValue, newValue] = setting.change;
        access.logWrite(*row, newValue);
        const Result<void> written = writeOne(setting, replaced, replace);
        access.wrote(*row);
        if (setting.write.restarts)
            flags |= *setting.write.restarts;
        if (!written)
            failures.append({SaveFailure::Step::Write, setting.change, written.error()});
    }
    return failures;
}

std::optional<SaveFailure> SavePlan::replaceFiles(const OtherWay &otherWay)
{
    std::optional<SaveFailure> failure;
    Replaced replaced;
    FileStore &store = access.preferenceFiles().fileStore();
    const Replace replace = [&](PlannedFile &file, const QString &path) {
        return otherWay && otherWay(path) ? Result<void>() : file.commit(store);
    };
    for (Setting &setting : planned) {
        // What failed when it was played has been told as not written, and must not be after all.
        if (setting.error || (failure && !replaced.contains(setting.path)))
            continue;
        const Result<void> written = writeOne(setting, replaced, replace);
        access.wrote(*setting.change.row);
        if (!written && !failure)
            failure = {SaveFailure::Step::Write, setting.change, written.error()};
    }
    return failure;
}

Result<void> SavePlan::writeOne(Setting &setting, Replaced &replaced, const Replace &replace)
{
    const Result<void> written = setting.write.hidesLibrary
        ? access.writeLibraryFolder(*setting.write.hidesLibrary)
        : replaceFileOf(setting, replaced, replace);
    setting.written = written.ok();
    return written;
}

/// The first setting of a file has the file replaced.
Result<void> SavePlan::replaceFileOf(const Setting &setting, Replaced &replaced,
                                     const Replace &replace)
{
    PlannedFile &file = fileAt(setting.path);
    const auto known = replaced.find(setting.path);
    if (known == replaced.end())
        replaced.emplace(setting.path, replace(file, setting.path));
    else if (!known->second)
        varnelLog(lcIo, known->second.error().text); // for each setting that it keeps from its file
    return file.outcome(setting.edit);
}

} // namespace varnel
