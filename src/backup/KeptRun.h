#pragma once

#include "backup/KeptIndex.h"
#include "backup/LoginItemsBackupWriter.h"
#include "settings/OldValues.h"

#include <QHash>
#include <QString>

#include <functional>

namespace varnel {

class Workspace;

/// Keeps what the saves of one run change: old values as rows of its backup file, and the files
/// themselves, as they were before the run first replaced them, in a folder of the run's own.
///
/// The rows are the way back that everybody can read; what is kept beside them makes it exact. So
/// the folder is locked while the run lives, and it counts for nothing without the backup file.
class KeptRun : public OldValueKeeper, public InverseKeeper {
public:
    /// The backup file is asked for when the first row is to be kept. The workspace outlives this
    /// object.
    KeptRun(Workspace &workspace, std::function<QString()> backupFile);

    Result<void> addDataToBackupFile(const ChangeRecord &record) override;
    Result<void> addDataToBackupFile(int actionId, const QString &path, int enabledFlag) override;
    bool keepsStates() const override { return true; }
    void keepStates(const QString &path, const LoginItemsState &before,
                    const LoginItemsState &after) override;
    void keepListFile(const QString &file) override;
    void finishKeeping() override;
    /// Whether a restore brings the setting or the login item back: by its row, or by what is kept
    /// beside rows that the backup file would not take.
    [[nodiscard]] bool hasWayBack(int setting) const;
    [[nodiscard]] bool hasWayBack(const QString &path) const;
    /// Whether a row for the login item stands in the backup file.
    [[nodiscard]] bool hasRowFor(const QString &path) const { return itemRows.keeps(path); }
    /// Whether the backup file, as far as it is there, is about login items, too.
    [[nodiscard]] bool tellsOfLoginItems() const;

    void keepFiles(const QList<ReplacedFile> &files,
                   const std::optional<ChangedFlag> &libraryFlag) override;
    void keepAfresh(const ReplacedFile &file) override;

private:
    [[nodiscard]] bool hasFolder();
    void meet(MetFile met);
    void startAnew();
    void note(const ChangeRecord &record, bool kept);
    void note(const BackupRow &row, bool kept);
    void keepOrder(const QStringList &before, const QStringList &after);
    void keep(const ReplacedFile &file);
    void keep(const ChangedFlag &changed);
    void keepWhole(KeptPreferences &kept, const ReplacedFile &file);
    [[nodiscard]] KeptPreferences &notesOf(const QString &path);
    void addKeys(KeptPreferences &kept, const QList<OldKey> &keys);
    void writeIndex();
    [[nodiscard]] QString belowHome(const QString &path) const;

    Workspace &workspace;
    std::function<QString()> backupFile;
    bool hasBackupFile = false; ///< when its last row was written
    bool hasParent = false; ///< the folder that the runs' folders are in
    QString folder; ///< null until something is kept
    KeptIndex index;
    QHash<QString, QList<OldKey>> keysBefore; ///< by path: what earlier saves have kept
    LoginItemsBackupWriter itemRows;
    bool hasNewStates = false; ///< that the index on the disk does not tell
    bool isIndexWritten = false; ///< as it is
};

/// The folders of runs whose backup files are gone, or not there yet.
[[nodiscard]] QStringList keptFoldersWithoutBackup(const Workspace &workspace);
/// Removes the folders of runs that are over and whose backup files are gone. False: there is no
/// folder that they could be in. Those of a backup file that was made just now are none of its run.
bool sweepKeptFolders(const Workspace &workspace, const QString &newBackup);

/// Whether what stands in both lists stands in one order.
[[nodiscard]] bool haveOneOrder(const QStringList &some, const QStringList &others);

/// The folders that belong to a backup file, whoever made them; of a file's path.
[[nodiscard]] QStringList keptFoldersOf(const Workspace &workspace, const QString &backupFile);

} // namespace varnel
