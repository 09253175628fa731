#pragma once

#include "backup/BackupRow.h"
#include "base/Result.h"
#include "platform/FileStore.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace varnel {

class Workspace;

/// One backup file of the folder: its name without the folder, and its date.
using BackupEntry = FolderEntry;

/// The backup files of one home, for everybody who works on them.
///
/// In somebody else's home a link that leads out of it is not followed, be it the folder's or a
/// file's: NotPermitted. Failures are logged to lcIo, each once; that there is no such file only
/// where it was to be read.
class BackupFolder {
public:
    /// The folder's path ends in a slash; it need not be there. `files`, the store of its home,
    /// outlives this object.
    BackupFolder(QString path, FileStore &files);
    /// That of a home.
    explicit BackupFolder(const Workspace &workspace);

    [[nodiscard]] const QString &path() const { return folder; }

    /// Every entry whose extension is exactly "sqlite", hidden ones too, in no particular order; a
    /// name that begins with its only dot has no extension. None where there is no folder.
    [[nodiscard]] Result<QList<BackupEntry>> list() const;

    [[nodiscard]] QString pathOf(const QString &name) const;
    /// The path of a file that list() names; for any other NotFound, or why that can't be told.
    [[nodiscard]] Result<QString> find(const QString &name) const;

    // Of the path of a file in the folder:

    [[nodiscard]] bool exists(const QString &file) const;
    /// The rows of a file, as readBackupRows() has them.
    [[nodiscard]] Result<QList<BackupRow>> read(const QString &file) const;
    /// The same without a word in the log.
    [[nodiscard]] Result<QList<BackupRow>> glanceAt(const QString &file) const;
    /// Deletes a file, what its last writer left beside it, and what its run has kept. One that is
    /// gone is no error. A power cut can bring files back until flush().
    [[nodiscard]] Result<void> remove(const QString &file);

    /// remove() of a name, and flush().
    [[nodiscard]] Result<void> removeForGood(const QString &name);

    /// What runs have kept beside the removed files goes with that.
    Result<void> flush();

private:
    [[nodiscard]] Result<void> checkWay(const QString &to) const;

    QString folder;
    FileStore &files;
    const Workspace *workspace = nullptr;
    QStringList removedFiles; ///< not flushed yet
};

/// "2026-11-21 09:30:00 +0000"; null for a link that leads nowhere, which has no date.
[[nodiscard]] QString creationText(const QDateTime &createdDate);

// The direction flag is named against its effect: true sorts ascending, false descending.

/// By name, without regard to case.
void sortByName(QList<BackupEntry> &entries, bool sortDescending);
/// By creation date.
void sortByDate(QList<BackupEntry> &entries, bool sortDescending);

} // namespace varnel
