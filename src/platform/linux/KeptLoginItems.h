#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>

#include <optional>

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
    std::optional<qint64> changed = {}; ///< when, in nanoseconds since 1970

    /// An entry that was only touched is the same.
    bool operator==(const KeptEntry &other) const
    {
        return fileName == other.fileName && ofUser == other.ofUser && bytes == other.bytes
            && link == other.link && mode == other.mode;
    }
};

/// Of those of one name the one that was kept last.
[[nodiscard]] QList<KeptEntry> latestOfEachName(const QList<KeptEntry> &entries);

/// What is kept of all applications.
struct AllKept {
    QMap<QString, QList<KeptEntry>> byPath;
    QSet<QString> unreadable; ///< files of applications that can't be told

    /// Whether one of those is the application's.
    [[nodiscard]] bool mayHold(const QString &path) const;
};

/// The removed entries, one file for each application, in a folder of the program's own. What
/// stands in such a file and is none that can be read stays there.
class KeptLoginItems {
public:
    /// The folder ends in a slash; it must exist before the first keep().
    KeptLoginItems(QString folder, FileStore &files, HomeFolder home = {});

    [[nodiscard]] const QString &folder() const { return folderPath; }
    [[nodiscard]] QString fileOf(const QString &path) const;

    /// In the order in which they were kept, of one name the latest last. Empty where nothing is
    /// kept; an error where that can't be told.
    [[nodiscard]] Result<QList<KeptEntry>> entriesOf(const QString &path) const;

    [[nodiscard]] AllKept all() const;
    void readAgain(AllKept &all, const QString &path) const;

    /// Adds to what is kept already: of one name, other bytes stay beside the new ones.
    Result<void> keep(const QString &path, const QList<KeptEntry> &entries);

    /// Gives these up. Answers whether anything else stands in the file; where nothing does, it is
    /// left as it is, to be removed.
    Result<bool> forget(const QString &path, const QList<KeptEntry> &entries);

private:
    void readRecord(AllKept &all, const QString &name) const;
    [[nodiscard]] Error unreadable(const QString &path) const;

    QString folderPath;
    FileStore &files;
    HomeFolder home; ///< by which the folder is reached
};

} // namespace varnel
