#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"
#include "platform/FinderInfo.h"
#include "settings/PreferencePlaces.h"
#include "settings/SettingReading.h"

#include <QHash>
#include <QString>

#include <optional>

namespace varnel {

class PreferenceFiles;
class SavePlan;

/// Reads and writes settings by their rows, without any control.
class SettingAccess {
public:
    SettingAccess(HomeFolder home, PreferenceFiles &files, FinderInfo &finderInfo);

    [[nodiscard]] SettingReading read(const SettingRow &row) const;

    /// What read() found last; after a write() that may have changed it, what is there now, looked
    /// up once and without a word in the log.
    [[nodiscard]] SettingReading lastSeen(const SettingRow &row) const;

    /// Writes or removes; raises the row's restart flag whatever the outcome (but never for the
    /// removal of a BarItems row). The error says what could not be written; the file is then as it
    /// was.
    Result<void> write(const SettingRow &row, const SettingValue &value, RestartFlags &flags);

    // What a write consists of, for a plan of several.

    /// What is told of a write before it is made.
    void logWrite(const SettingRow &row, const SettingValue &value) const;
    Result<void> writeLibraryFolder(bool hidden);
    /// All of its Finder information, as it was before; none where there was none.
    Result<void> putBackLibraryFolder(const FinderInfo::Reading &before);
    [[nodiscard]] Error flagError(int error) const;
    /// Takes notice of a write: what it may have changed is looked up when it is next asked for.
    void wrote(const SettingRow &row) const;

    /// Until the next call reading finds what a plan has made of the files in memory; null: what
    /// the home holds, again. Whoever says so takes it back before the plan ends.
    void readFrom(SavePlan *plan) { planned = plan; }

    [[nodiscard]] PreferenceFiles &preferenceFiles() { return files; }
    [[nodiscard]] const PreferenceFiles &preferenceFiles() const { return files; }
    [[nodiscard]] const FinderInfo &finder() const { return finderInfo; }
    [[nodiscard]] QString libraryPath() const;

    [[nodiscard]] const HomeFolder &home() const;

    /// The preference file that holds the setting; the Library folder for that folder's flag.
    [[nodiscard]] QString filePath(const SettingRow &row) const;
    /// Whether anything stands there.
    [[nodiscard]] bool fileExists(const SettingRow &row) const;
    /// What else stands there of the setting's domain, and its application does not read.
    [[nodiscard]] QList<FurtherFile> furtherFiles(const SettingRow &row) const;

    /// Where the home's preference files lie now, for several questions.
    [[nodiscard]] PreferencePlaces findFiles() const;
    [[nodiscard]] QString filePath(const SettingRow &row, const PreferencePlaces &places) const;

    /// While one lives, where the files lie is looked up once, for all that is read meanwhile. May
    /// nest.
    class ReadPass {
    public:
        explicit ReadPass(const SettingAccess &access);
        ~ReadPass();
        ReadPass(const ReadPass &) = delete;
        ReadPass &operator=(const ReadPass &) = delete;

    private:
        const SettingAccess &access;
    };

private:
    [[nodiscard]] SettingReading lookUp(const SettingRow &row) const;
    [[nodiscard]] plist::Value stored(const SettingRow &row, const QStringList &keys) const;
    void logNested(const SettingRow &row) const;

    HomeFolder homeFolder;
    PreferenceFiles &files;
    FinderInfo &finderInfo;
    SavePlan *planned = nullptr;
    mutable QHash<int, SettingReading> seen; ///< by the setting's number
    mutable std::optional<PreferencePlaces> found; ///< in a pass
    mutable int passes = 0;
};

/// The sentence that describes a value of the setting. That of the bar's items is logged.
[[nodiscard]] QString actionString(const SettingRow &row, const SettingValue &value);
/// The same sentence without a word in the log.
[[nodiscard]] QString actionSentence(const SettingRow &row, const SettingValue &value);

} // namespace varnel
