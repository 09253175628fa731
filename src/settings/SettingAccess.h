#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"
#include "settings/SettingRow.h"

#include <QHash>
#include <QString>

namespace varnel {

class FinderInfo;
class PreferenceFiles;

/// The pair that a setting exchanges: its integer, and its string for string settings.
struct SettingValue {
    int number = 0;
    QString text = QStringLiteral("");

    bool operator==(const SettingValue &) const = default;
};

struct SettingReading {
    SettingValue value; ///< what the setting's own control would exchange after a fresh read
    /// Whether the key is there, with a value that the setting can show; for the Library folder,
    /// whether its flag could be read.
    bool found = false;
    /// Text settings: what is stored is no text, and the value is its text form.
    bool notText = false;
    // Text settings: the string as stored. Numbers: the raw number even where a control would clamp
    // it; -1 when not found. 1402 with its key missing reads as its default index.
};

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

    [[nodiscard]] const HomeFolder &home() const;

    /// The preference file that holds the setting; the Library folder for that folder's flag.
    [[nodiscard]] QString filePath(const SettingRow &row) const;
    /// Whether anything stands there.
    [[nodiscard]] bool fileExists(const SettingRow &row) const;

private:
    [[nodiscard]] QString libraryPath() const;
    [[nodiscard]] SettingReading lookUp(const SettingRow &row) const;
    void logNested(const SettingRow &row) const;
    [[nodiscard]] SettingReading readLibraryPlaylist(const SettingRow &row) const;
    [[nodiscard]] SettingReading readLibraryFolder() const;
    [[nodiscard]] SettingReading readNumber(const SettingRow &row) const;
    [[nodiscard]] SettingReading readText(const SettingRow &row) const;
    [[nodiscard]] SettingReading readBarItems(const SettingRow &row) const;

    Result<void> writeLibraryFolder(bool hidden);
    void forgetWhatChanged(const SettingRow &written) const;

    HomeFolder homeFolder;
    PreferenceFiles &files;
    FinderInfo &finderInfo;
    mutable QHash<int, SettingReading> seen; ///< by the setting's number
};

/// The sentence that describes a value of the setting. That of the bar's items is logged.
[[nodiscard]] QString actionString(const SettingRow &row, const SettingValue &value);
/// The same sentence without a word in the log.
[[nodiscard]] QString actionSentence(const SettingRow &row, const SettingValue &value);

} // namespace varnel
