#pragma once

#include "backup/BackupRow.h"
#include "base/Result.h"
#include "loginitems/LoginItemStanding.h"
#include "platform/FinderInfo.h"
#include "settings/OldValues.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace varnel {

/// What a run has kept of one preference file.
struct KeptPreferences {
    QString path; ///< below the home
    enum class Whole {
        Absent, ///< there was no file
        Kept,
        NotKept, ///< it could not be; the keys are all there is
    };
    Whole whole = Whole::NotKept;
    QString name; ///< of the kept file, in the run's folder
    QByteArray digest; ///< of the kept bytes
    qint64 size = 0; ///< of them
    /// Digests of what the run wrote, or was about to write when it stopped: the last two.
    QList<QByteArray> written;
    /// Somebody else changed the file between two saves: it never comes back whole.
    bool disturbed = false;
    QList<OldKey> keys; ///< each as it stood before the run first changed it

    bool operator==(const KeptPreferences &) const = default;
};

/// The Library folder's Finder information.
struct KeptFlag {
    FinderInfo::Reading before;
    FinderInfoBytes written {};
    bool disturbed = false; ///< somebody else changed it between two saves

    bool operator==(const KeptFlag &) const = default;
};

/// What a run has kept of one login item.
struct KeptItem {
    QString path; ///< of the application
    LoginItemStanding before; ///< the run's first change
    LoginItemStanding after; ///< its last
    /// Somebody else changed it between two saves, or it could not be read: it comes back by its
    /// row alone.
    bool disturbed = false;

    bool operator==(const KeptItem &) const = default;
};

/// What a run has kept of the places that login items share.
struct KeptItems {
    QList<KeptItem> items;
    QStringList orderBefore; ///< of the session's list
    QStringList orderAfter;
    bool orderDisturbed = false; ///< by somebody else between two saves
    bool hadStore = true; ///< of disabled items
    LoginItemsList list = LoginItemsList::Session;
    /// The file that is all of the list; none where there is no such one. Only what is kept of the
    /// whole counts.
    std::optional<KeptPreferences> file;

    bool operator==(const KeptItems &) const = default;

    [[nodiscard]] const KeptItem *find(const QString &path) const;
};

/// What a run notes beside the files that it has kept.
struct KeptIndex {
    /// Of an index that is still read. One with all settings has some 20 KiB, unless a key holds
    /// something big.
    static constexpr qint64 largestFile = qint64(16) << 20;

    QList<BackupRow> rows; ///< as they were put into the backup file
    QList<int> withoutRow; ///< settings whose rows the backup file would not take
    QList<BackupRow> itemsWithoutRow; ///< the same of login items, as they would have been put
    QList<KeptPreferences> files;
    KeptItems loginItems;
    std::optional<KeptFlag> libraryFlag;

    bool operator==(const KeptIndex &) const = default;

    [[nodiscard]] QByteArray toBytes() const;
    /// Unloadable unless all of it is as toBytes() writes it.
    [[nodiscard]] static Result<KeptIndex> fromBytes(const QByteArray &bytes);

    [[nodiscard]] KeptPreferences *find(const QString &path);
};

/// Its name in the folder of its run.
[[nodiscard]] QString keptIndexName();

/// Told apart by this, two states of a file are the same.
[[nodiscard]] QByteArray digestOf(const QByteArray &bytes);

} // namespace varnel
