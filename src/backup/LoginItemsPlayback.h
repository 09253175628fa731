#pragma once

#include "backup/BackupRow.h"
#include "backup/KeptIndex.h"
#include "loginitems/LoginItemsAccess.h"

#include <QHash>
#include <QList>
#include <QStringList>

namespace varnel {

class KeptBackup;

/// Plays into the list that a backup was made with; where that can't be told, into the one in use.
class PlaybackList {
public:
    PlaybackList(LoginItemsAccess &access, const KeptItems *notes)
        : access(access), before(access.listInUse())
    {
        if (notes != nullptr)
            (void)access.use(notes->list);
    }
    ~PlaybackList() { (void)access.use(before); }
    PlaybackList(const PlaybackList &) = delete;
    PlaybackList &operator=(const PlaybackList &) = delete;

private:
    LoginItemsAccess &access;
    LoginItemsList before;
};

/// Puts login items back, for both programs: each by its row, then those that stand as the run left
/// them exactly: their places in the list and their rows in the store.
class LoginItemsPlayback {
public:
    enum class Manner { Play, TryOut };

    /// Everything outlives this object.
    LoginItemsPlayback(LoginItemsAccess &access, const KeptBackup &kept,
                       Manner manner = Manner::Play);

    Result<void> writeData(int actionId, const QString &path, bool enabled);
    void readData();

    /// The items that the backup file has no rows for. After the last row.
    Result<void> writeWithoutRows();
    /// Their rows, had the file taken them.
    [[nodiscard]] const QList<BackupRow> &playedWithoutRows() const { return withoutRows; }

    /// Puts back the places of what was played. Once, at the end, whether or not all was played.
    Result<void> finish();

private:
    struct Found {
        bool entries = false; ///< stand as the run found or left them
        bool rows = false;
        bool isPlayed = false;
    };
    void look();
    /// Null where the item is not to be put back as it was, or others have changed its entries.
    [[nodiscard]] const KeptItem *ourItem(const QString &path) const;
    void removeEmptyStore();

    LoginItemsAccess &access;
    const KeptBackup &kept;
    Manner manner;
    const KeptItems *notes; ///< null where there are none
    PlaybackList list; ///< before anything is asked of the access
    LoginItemsAccess::Playback playback;
    bool hasLooked = false;
    QHash<QString, Found> found; ///< by path: those that count
    bool orderIsOurs = false;
    QStringList orderFound;
    QList<BackupRow> withoutRows;
};

} // namespace varnel
