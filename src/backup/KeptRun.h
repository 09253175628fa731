#pragma once

#include "backup/KeptIndex.h"
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
class KeptRun : public OldValueKeeper {
public:
    /// The backup file is asked for when the first row is to be kept. The workspace outlives this
    /// object.
    KeptRun(Workspace &workspace, std::function<QString()> backupFile);

    Result<void> addDataToBackupFile(const ChangeRecord &record) override;
    void keepFiles(const QList<ReplacedFile> &files) override;
    void keepLibraryFlag(const FinderInfo::Reading &before, const FinderInfoBytes &after) override;
    void keepAfresh(const ReplacedFile &file) override;

private:
    [[nodiscard]] bool hasFolder();
    void startAnew();
    void note(const ChangeRecord &record, bool kept);
    void keep(const ReplacedFile &file);
    void keepWhole(KeptPreferences &kept, const ReplacedFile &file);
    [[nodiscard]] KeptPreferences &notesOf(const QString &path);
    void addKeys(KeptPreferences &kept, const QList<OldKey> &keys);
    void writeIndex();
    [[nodiscard]] QString belowHome(const QString &path) const;

    Workspace &workspace;
    std::function<QString()> backupFile;
    QString folder; ///< null until something is kept
    KeptIndex index;
    QHash<QString, QList<OldKey>> keysBefore; ///< by path: what earlier saves have kept
};

/// Removes the folders of runs that are over and whose backup files are gone.
void sweepKeptFolders(const Workspace &workspace);

/// The folders that belong to a backup file, whoever made them; of a file's path.
[[nodiscard]] QStringList keptFoldersOf(const Workspace &workspace, const QString &backupFile);

} // namespace varnel
