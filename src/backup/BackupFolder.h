#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

namespace varnel {

/// One backup file of the folder.
struct BackupEntry {
    QString name; ///< without its folder
    QDateTime createdDate; ///< the file system's birth time, or the modification time where there
                           ///< is none; UTC; invalid where a link leads nowhere

    bool operator==(const BackupEntry &) const = default;
};

/// Every entry of the folder whose extension is exactly "sqlite", hidden ones too, in no particular
/// order; a name that begins with its only dot has no extension. Empty when the folder can't be
/// read.
[[nodiscard]] QList<BackupEntry> listBackups(const QString &folder);

/// "2026-11-21 09:30:00 +0000"; null for a link that leads nowhere, which has no date.
[[nodiscard]] QString creationText(const QDateTime &createdDate);

// The direction flag is named against its effect: true sorts ascending, false descending.

/// By name, without regard to case.
void sortByName(QList<BackupEntry> &entries, bool sortDescending);
/// By creation date.
void sortByDate(QList<BackupEntry> &entries, bool sortDescending);

} // namespace varnel
