#pragma once

#include "backup/BackupRow.h"
#include "base/Result.h"
#include "platform/FinderInfo.h"
#include "settings/OldValues.h"

#include <QByteArray>
#include <QList>
#include <QString>

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

/// What a run notes beside the files that it has kept.
struct KeptIndex {
    /// Of an index that is still read. One with all settings has some 20 KiB, unless a key holds
    /// something big.
    static constexpr qint64 largestFile = qint64(16) << 20;

    QList<BackupRow> rows; ///< as they were put into the backup file
    QList<int> withoutRow; ///< settings whose rows the backup file would not take
    QList<KeptPreferences> files;
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
