#pragma once

#include "base/Result.h"
#include "platform/FinderInfo.h"
#include "settings/OldValues.h"
#include "settings/PlannedFile.h"
#include "settings/SettingAccess.h"
#include "settings/SettingReading.h"
#include "settings/SettingWrite.h"

#include <QList>
#include <QString>

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace varnel {

/// The row that keeps a change's old value.
[[nodiscard]] ChangeRecord oldValueOf(const SettingChange &change);

/// What went wrong with one setting of a save.
struct SaveFailure {
    enum class Step { Backup, Write };
    Step step = Step::Write;
    /// The setting, with the old value that was to be kept or the new one that was to be written;
    /// no setting where the row's number is none's.
    SettingChange change;
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
        QString path; ///< of its file
        SettingWrite write;
        bool differs = false; ///< its file would hold something else
        /// It stays as it is: its dictionary or file is not there, and is not made by a save.
        bool notMade = false;
        /// Why it can't be written: Unloadable where its file is no property list, else why the
        /// file can't be read.
        std::optional<Error> error;
        bool written = false; ///< it has reached its file
        qsizetype edit = 0; ///< its number in its file
    };

    /// Of several values for one setting the last counts. `access` outlives the plan; a Library
    /// folder that `libraryIsMade` says will be there by then has no Finder information yet.
    SavePlan(SettingAccess &access, const QList<SettingChange> &wanted, bool libraryIsMade = false);

    [[nodiscard]] const std::vector<Setting> &settings() const { return planned; }

    /// One more, on the result of all before it: its old value is what they would have left. Where
    /// what stood under its keys is known, that is what it gets, in the file that it stood in, and
    /// the value is only told.
    const Setting &add(const SettingChange &value,
                       const std::optional<OldKeys> &exactly = std::nullopt);

    /// What a setting would be read as, and what would stand in its file.
    [[nodiscard]] SettingReading readingOf(const SettingRow &row);
    [[nodiscard]] plist::Value stored(const SettingRow &row, const QStringList &keys);

    /// Takes out what would leave its file as it is.
    void keepWhatDiffers();

    /// The changes whose old values are to be kept: in the order in which the settings were first
    /// named.
    [[nodiscard]] QList<SettingChange> firstNamed() const;

    /// The rows first, one by one, then each preference file once, in the order of the first
    /// setting of each: what is to be written to it reaches it together. Where a file is not what
    /// was read, all is planned again before. `rows` are what is to be kept; without them, the
    /// plan's old values. Raises the restart flags whatever the outcome. Failures stop nothing and
    /// come in the order in which they happened, those of a file for each of its settings.
    [[nodiscard]] QList<SaveFailure>
    commit(OldValueKeeper &keeper, RestartFlags &flags,
           const std::optional<QList<ChangeRecord>> &rows = std::nullopt);

    /// What is told of each setting was told when it was added: only replaces the files, in the
    /// same order, up to the first that can't be replaced.
    /// Of each file it is asked first whether it has come to hold what was planned in another way.
    using OtherWay = std::function<bool(const QString &path)>;
    [[nodiscard]] std::optional<SaveFailure> replaceFiles(const OtherWay &otherWay = nullptr);

private:
    /// The Library folder's flag, with what the settings before have made of it.
    struct Library {
        FinderInfo::Reading before;
        FinderInfo::Reading now;
    };

    void plan();
    [[nodiscard]] Setting begun(const SettingChange &value, const QString &path);
    [[nodiscard]] QString pathOf(const SettingRow &row) const;
    void editNow(Setting &setting);
    [[nodiscard]] Library &library();
    [[nodiscard]] PlannedFile &fileAt(const QString &path);
    [[nodiscard]] SettingReading readingIn(const QString &path, const SettingRow &row);
    [[nodiscard]] Result<bool> edit(Setting &setting);
    [[nodiscard]] Result<bool> editLibrary(bool hides);
    [[nodiscard]] bool isStillSo() const;
    using Replaced = std::map<QString, Result<void>>; ///< by path
    /// How a file comes to hold what was planned.
    using Replace = std::function<Result<void>(PlannedFile &file, const QString &path)>;
    [[nodiscard]] QList<SaveFailure> write(OldValueKeeper &keeper, RestartFlags &flags);
    [[nodiscard]] Result<void> writeOne(Setting &setting, Replaced &replaced,
                                        const Replace &replace);
    [[nodiscard]] Result<void> replaceFileOf(const Setting &setting, Replaced &replaced,
                                             const Replace &replace);
    [[nodiscard]] QList<ReplacedFile> replacedFiles() const;

    SettingAccess &access;
    QList<SettingChange> named; ///< as they were given
    QList<SettingChange> wanted; ///< the last of each setting
    bool libraryIsMade;
    bool onlyWhatDiffers = false;
    std::vector<Setting> planned;
    std::optional<PreferencePlaces> places; ///< of the files, from when the planning began
    std::map<QString, PlannedFile> files;
    std::optional<Library> libraryFolder;
};

} // namespace varnel
