#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <sys/types.h>

namespace varnel {

class FileStore;

/// An autostart entry as it was when it was taken out of the list.
struct KeptEntry {
    QString fileName;
    bool ofUser =
        false; ///< false: a system-wide entry that was hidden; only the hiding is to be lifted
    QByteArray bytes;
    QByteArray link; ///< what the link said, where the entry was one; else null
    mode_t mode = 0;

    bool operator==(const KeptEntry &) const = default;
};

/// The removed entries, one file for each application, in a folder of the program's own.
class KeptLoginItems {
public:
    /// The folder ends in a slash; it must exist before the first keep().
    KeptLoginItems(QString folder, FileStore &files);

    [[nodiscard]] const QString &folder() const { return folderPath; }
    [[nodiscard]] QString fileOf(const QString &path) const;

    /// Empty where nothing is kept; an error where that can't be told.
    [[nodiscard]] Result<QList<KeptEntry>> entriesOf(const QString &path) const;

    /// Adds to what is kept already.
    Result<void> keep(const QString &path, const QList<KeptEntry> &entries);

private:
    QString folderPath;
    FileStore &files;
};

} // namespace varnel
