#pragma once

#include "settings/SavePlan.h"

#include <QHash>
#include <QList>
#include <QSet>

#include <optional>

namespace varnel {

class KeptBackup;

/// Puts settings back, for both programs: each on the result of those before it, in memory, then
/// each file once: whole where all of it comes back. Meanwhile whoever reads through `access` finds
/// what has been played so far.
class SettingsPlayback {
public:
    enum class Manner { Play, TryOut };

    /// `access` and the flags outlive this object. A Library folder that `libraryIsMade` says will
    /// be there by then has no Finder information yet. What is kept beside the rows goes before
    /// them.
    SettingsPlayback(SettingAccess &access, RestartFlags &flags, const KeptBackup *kept = nullptr,
                     Manner manner = Manner::Play, bool libraryIsMade = false);
    SettingsPlayback(const SettingsPlayback &) = delete;
    SettingsPlayback &operator=(const SettingsPlayback &) = delete;
    /// What was not carried out is dropped.
    ~SettingsPlayback();

    /// Raises the restart flag whatever the outcome. An error says that the value can't be written:
    /// nothing is to be played after it.
    Result<void> write(const SettingRow &row, const SettingValue &value);

    /// Puts back the settings that the backup file has no rows for. After the last row.
    Result<void> writeWithoutRows();
    [[nodiscard]] bool playedWithoutRows() const { return hasPlayedWithoutRows; }

    /// Has what was played reach the files, unless it is only tried out; up to the first file that
    /// can't be replaced. Before anything else is changed that a later row may depend on, and at
    /// the end.
    Result<void> carryOut();

    /// What differs from before, in the order in which it was played.
    [[nodiscard]] const QList<SettingChange> &changes() const { return done; }
    /// What ended the playback.
    [[nodiscard]] const std::optional<SaveFailure> &failure() const { return failed; }

private:
    [[nodiscard]] SavePlan &current();
    [[nodiscard]] Result<void> writeIn(const SettingRow &row, const SettingValue &value,
                                       const std::optional<OldKeys> &exactly);
    void noteFile(const SavePlan::Setting &setting, bool exactly);
    [[nodiscard]] bool putBackWhole(const QString &path) const;
    [[nodiscard]] Result<void> putBackLibraryFlag();

    /// What was played of one file.
    struct Played {
        QSet<int> exactly;
        bool others = false; ///< by their rows
    };

    SettingAccess &access;
    RestartFlags &flags;
    const KeptBackup *kept;
    Manner manner;
    bool libraryIsMade;
    std::optional<SavePlan> plan; ///< of what was not carried out yet
    QHash<QString, Played> played; ///< by path
    std::optional<FinderInfo::Reading> libraryBefore; ///< what the Library folder is to have again
    QList<SettingChange> done;
    std::optional<SaveFailure> failed;
    bool hasPlayedWithoutRows = false;
};

} // namespace varnel
