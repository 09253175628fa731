#pragma once

#include "backup/BackupRow.h"
#include "backup/KeptIndex.h"

#include <QList>
#include <QSet>
#include <QString>

#include <optional>
#include <vector>

namespace varnel {

class Workspace;

/// What runs have kept beside the rows of a backup file, as far as it still counts: only for rows
/// that stand as they were written. What is damaged, or belongs to a run that still lives, is left
/// out with a line in the log.
class KeptBackup {
public:
    /// `rows` are all that the backup file has. The workspace outlives this object.
    KeptBackup(const Workspace &workspace, const QString &backupFile, const QList<BackupRow> &rows);

    /// What stood under the keys of a setting; none where only its row tells.
    [[nodiscard]] std::optional<QList<OldKey>> keysOf(int setting) const;
    /// The same with the file that they stood in, which need not be the one that the setting is in
    /// now; in two, where that changed during the run.
    [[nodiscard]] QList<OldKeys> filesOf(int setting) const;
    /// The same of the Library folder's flag; null where only its row tells.
    [[nodiscard]] const KeptFlag *libraryFlag(int setting) const;
    /// Why what a row stands for does not come back exactly as it was; null where it does.
    [[nodiscard]] QString whyNotExact(const BackupRow &row) const;

    /// Settings that the backup file has no rows for, since it would not take them, and that come
    /// back all the same: every other row of their run stands.
    [[nodiscard]] QList<int> settingsWithoutRow() const;

    /// What the one run that changed login items has kept of them, if it is one.
    [[nodiscard]] const KeptItems *loginItems() const;
    /// Whether the item is to be put back as it was.
    [[nodiscard]] bool counts(const KeptItem &item) const;
    /// The rows that it would have put into the backup file, and that go before none.
    [[nodiscard]] QList<BackupRow> itemsWithoutRow() const;
    /// Puts the list's file back as it was, where it is kept and the present one says the same: in
    /// the same bytes, then, with the same attributes and times.
    void putBackList(const QString &path) const;
    /// Takes away the store of disabled items, when it still has those bytes.
    [[nodiscard]] Result<void> removeStore(const QString &path, const QByteArray &bytes) const;

    /// Puts a file back whole, or takes away one that was not there: when it is as the run left it,
    /// and all that the run changed in it, and nothing else, is to be put back. False: it is not.
    [[nodiscard]] bool putBackWhole(const QString &path, const QSet<int> &settings) const;

    /// Bytes of the files that are kept.
    [[nodiscard]] qint64 size() const;

private:
    struct Run {
        QString folder;
        KeptIndex index;
        QSet<QString> standing; ///< subjects whose rows stand as they were written
        bool allStand = false;
    };
    void load(const QString &folder, const QList<BackupRow> &rows);
    [[nodiscard]] bool isInPlace(const KeptPreferences &file) const;
    [[nodiscard]] QString pathOf(const KeptPreferences &file) const;
    [[nodiscard]] bool counts(const Run &run, int setting) const;
    [[nodiscard]] bool isExact(const QString &loginItem) const;

    [[nodiscard]] const Run *runOfLoginItems() const;

    const Workspace &workspace;
    QSet<QString> withRow; ///< subjects
    std::vector<Run> runs;
};

/// For people: that everything in a backup file comes back exactly, or which lines do not, and why;
/// null where there are none.
[[nodiscard]] QString exactnessSentence(const KeptBackup &kept, const QList<BackupRow> &rows);

/// The same in a few words: "comes back exactly"; null where there are no rows.
[[nodiscard]] QString exactnessInWords(const KeptBackup &kept, const QList<BackupRow> &rows);

/// "real 44.0", "array of 2": what stood under a setting's keys; "nothing" where nothing did.
[[nodiscard]] QString exactText(const QList<OldKey> &keys);
/// The same of the Library folder's Finder information: "bytes 0000…", in hexadecimal digits.
[[nodiscard]] QString exactText(const KeptFlag &flag);

} // namespace varnel
