#pragma once

#include "base/Result.h"
#include "platform/FinderInfo.h"
#include "settings/ChangeRecord.h"
#include "settings/PlannedFile.h"
#include "settings/SettingAccess.h"
#include "settings/SettingWrite.h"
#include "settings/WantedValue.h"

#include <QList>
#include <QString>

#include <map>
#include <optional>
#include <vector>

namespace varnel {

/// Where the old value of a setting is kept before the new one is written.
class OldValueKeeper {
public:
    virtual ~OldValueKeeper() = default;
    /// Keeps the record, unless one of the same setting is kept already.
    virtual Result<void> addDataToBackupFile(const ChangeRecord &record) = 0;
};

[[nodiscard]] ChangeRecord recordOf(const SettingRow &row, const SettingValue &value);

/// What went wrong with one setting of a save.
struct SaveFailure {
    enum class Step { Backup, Write };
    Step step = Step::Write;
    ChangeRecord record; ///< the old value that was to be kept, or the new one to be written
    Error error;
};

/// What a save of several settings does, made of what the home holds and of what is wanted: to be
/// told (a dry run, a comparison) or committed.
///
/// Each file is read once and edited in memory, each setting on the result of those before it.
class SavePlan {
public:
    struct Setting {
        SettingChange change; ///< the old value is what the home held before the save
        SettingWrite write;
        bool differs = false; ///< its file would hold something else
        /// It stays as it is: its dictionary or file is not there, and is not made by a save.
        bool notMade = false;
        /// Why it can't be written: Unloadable where its file is no property list, else why the
        /// file can't be read.
        std::optional<Error> error;
        qsizetype edit = 0; ///< its number in its file
    };

    /// Of several values for one setting the last counts. `access` outlives the plan; a Library
    /// folder that `libraryIsMade` says will be there by then has no Finder information yet.
    SavePlan(SettingAccess &access, const QList<WantedValue> &wanted, bool libraryIsMade = false);

    [[nodiscard]] const std::vector<Setting> &settings() const { return planned; }

    /// One more, on the result of all before it: its old value is what they would have left.
    const Setting &add(const WantedValue &value);

    /// Takes out what would leave its file as it is.
    void keepWhatDiffers();

    /// The old values, as rows for the keeper: in the order in which the settings were first named.
    [[nodiscard]] QList<ChangeRecord> oldValues() const;

    /// The rows first, one by one, then each preference file once, in the order of the first
    /// setting of each: what is to be written to it reaches it together. Where a file is not what
    /// was read, all is planned again before. `rows` are what is to be kept; without them, the
    /// plan's old values. Raises the restart flags whatever the outcome. Failures stop nothing and
    /// come in the order in which they happened, those of a file for each of its settings.
    [[nodiscard]] QList<SaveFailure>
    commit(OldValueKeeper &keeper, RestartFlags &flags,
           const std::optional<QList<ChangeRecord>> &rows = std::nullopt);
    /// The same without rows.
    [[nodiscard]] QList<SaveFailure> write(RestartFlags &flags);

private:
    /// The Library folder's flag, with what the settings before have made of it.
    struct Library {
        FinderInfo::Reading before;
        FinderInfo::Reading now;
    };

    void plan();
    [[nodiscard]] Setting begun(const WantedValue &value);
    void editNow(Setting &setting);
    [[nodiscard]] Library &library();
    [[nodiscard]] PlannedFile &fileOf(const SettingRow &row);
    [[nodiscard]] SettingReading readingOf(const SettingRow &row);
    [[nodiscard]] Result<bool> edit(Setting &setting);
    [[nodiscard]] Result<bool> editLibrary(bool hides);
    [[nodiscard]] bool isStillSo() const;
    [[nodiscard]] Result<void> writeOne(const Setting &setting,
                                        std::map<QString, Result<void>> &replaced);

    SettingAccess &access;
    QList<WantedValue> named; ///< as they were given
    QList<WantedValue> wanted; ///< the last of each setting
    bool libraryIsMade;
    bool onlyWhatDiffers = false;
    std::vector<Setting> planned;
    std::map<QString, PlannedFile> files;
    std::optional<Library> libraryFolder;
};

} // namespace varnel
