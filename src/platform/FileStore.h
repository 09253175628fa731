#pragma once

#include "base/Sqlite.h"
#include "platform/FileReader.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

#include <functional>
#include <optional>

namespace varnel {

/// One name in a folder.
struct FolderEntry {
    QString name;
    QDateTime createdDate; ///< the file system's birth time, or the modification time where there
                           ///< is none; UTC; invalid where a link leads nowhere or out of bounds

    bool operator==(const FolderEntry &) const = default;
};

/// Reads, replaces and removes whole files of one home folder. The only way in which this program
/// touches preference files.
///
/// Links are followed; when the process's user is not the home's owner, only to places beneath the
/// home (NotPermitted otherwise, reading and writing). Anything but a regular file is NotAFile, and
/// never blocks.
class FileStore : public FileReader {
public:
    enum class Standing {
        Nothing,
        Something,
        Outside, ///< a link on the way leads out of bounds; what stands there is not looked at
    };
    /// What a path leads to, for whoever hands it to a library that would follow any link. Not
    /// logged.
    [[nodiscard]] virtual Result<Standing> look(const QString &path) const = 0;
    /// Whether both lead to one name in one folder, through whatever links. Not logged.
    [[nodiscard]] virtual bool areOnePlace(const QString &one, const QString &other) const = 0;

    /// What stands in a folder, hidden names too, in no particular order; names that are no UTF-8
    /// are left out. NotFound where there is no folder.
    [[nodiscard]] virtual Result<QList<FolderEntry>> list(const QString &folder) const = 0;

    /// The names alone, which costs no look at what they name. Not logged.
    [[nodiscard]] virtual Result<QStringList> names(const QString &folder) const = 0;

    /// Gets the old bytes (none: no file) and answers the new ones (none: leave everything as it
    /// is).
    using Change =
        std::function<Result<std::optional<QByteArray>>(const std::optional<QByteArray> &old)>;

    /// Read, change, replace, as one step against other runs of this program. The file is replaced
    /// atomically, keeping owner, group, mode and extended attributes; a new file belongs to the
    /// home's owner, mode 0600. On any failure the old file stands, no other file is left, and the
    /// error names the file. Bytes equal to the old ones write nothing. The change function may be
    /// called once at most.
    [[nodiscard]] virtual Result<void> update(const QString &path, const Change &change) = 0;

    /// Removes a file; of a link, the link. Nothing there is no error. Until its folder is flushed,
    /// a power cut can bring it back.
    [[nodiscard]] virtual Result<void> remove(const QString &path) = 0;
    [[nodiscard]] virtual Result<void> flush(const QString &folder) = 0;

    /// Removes the temporary files that runs which died left in a folder. Updates do so in the
    /// folder that they write to; this is for the start of a run.
    virtual void sweep(const QString & /*folder*/) { }

    /// The files that were changed without a lock, because another run did not give it up in time.
    /// What that run changed meanwhile may be lost: worth telling the user.
    [[nodiscard]] virtual QStringList changedWithoutLock() const { return {}; }

    /// Where a library finds a database.
    struct DatabasePlace {
        QString path; ///< to be opened as it stands: every link on the way is resolved
        bool lasts = true; ///< false: changes there are only tried out, and gone with this store
        bool isNew = false; ///< nothing stood there until now

        /// How to open it for changes.
        [[nodiscard]] Sqlite::Access access() const
        {
            return lasts ? Sqlite::Access::Create : Sqlite::Access::Scratch;
        }
    };

    /// Makes a place ready for a library that opens its database by path: where nothing stands, an
    /// empty file (which is a valid empty database) is made as update() makes one. When the
    /// process's user is not the home's owner, a place outside the home is NotPermitted, and so is
    /// one with a journal beside it: the library would do what that journal says.
    [[nodiscard]] virtual Result<DatabasePlace> readyForDatabase(const QString &path) = 0;

    /// The place of a database that is only read; nothing is made. NotFound where nothing stands; a
    /// place outside the home is refused as above, a journal is not.
    [[nodiscard]] virtual Result<DatabasePlace> databasePlace(const QString &path) const = 0;
};

} // namespace varnel
