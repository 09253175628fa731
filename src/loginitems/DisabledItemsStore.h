#pragma once

#include "base/Result.h"
#include "base/Sqlite.h"
#include "base/UntouchedDatabase.h"
#include "loginitems/LoginItemStanding.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace varnel {

class FileStore;

/// The applications that this program has taken out of a list of login items: one SQLite table
/// `users` with one column. Each list has a store of its own. Opened and closed for each operation.
/// Values go into the statements as they are; each statement may do only its own verb on that
/// table, and nothing behind its first statement runs.
class DisabledItemsStore {
public:
    /// TryOut: changes are made in a private copy, gone with this object, and nothing is told.
    enum class Manner { Work, TryOut };
    /// supportFolder ends in a slash; the doubled slash that results in the path is part of it.
    /// `files`, which outlives this object, readies the database's place.
    DisabledItemsStore(const QString &supportFolder, FileStore &files, Manner manner = Manner::Work,
                       LoginItemsList list = LoginItemsList::Session);

    [[nodiscard]] const QString &path() const;

    /// Calls `isListed` for each stored path in order: true deletes the path from the store, false
    /// leaves it to the caller, who has taken it into the list.
    /// `whileListed` does the deletion, if the path is listed still.
    using Guard = std::function<void(const QString &path, const std::function<void()> &deletion)>;
    Result<void> readDisabledLoginItemsData(
        const std::function<bool(const QString &path)> &isListed,
        const Guard &whileListed = [](const QString &, const auto &deletion) { deletion(); });
    /// The log line of a reading.
    void tellReading() const;
    /// A reading without that line: the paths that are stored, in order. An error where the store
    /// can't be opened.
    [[nodiscard]] Result<QStringList> storedPaths();

    /// The rows of a path; none where nothing was ever stored. Nothing is told.
    [[nodiscard]] Result<QList<StoredRow>> rowsOf(const QString &path);
    /// Has these rows in the place of all that a path has, whatever it says. Where a place is taken
    /// by now, the row goes to the end.
    struct PathRows {
        QString path;
        QList<StoredRow> rows;
    };
    Result<void> putRows(const QList<PathRows> &paths);

    [[nodiscard]] bool exists() const;
    /// The bytes of a store in which there is nothing, and beside which nothing stands.
    [[nodiscard]] std::optional<QByteArray> emptyStore();

    /// `backupFileName` is only printed (null when none was chosen).
    Result<void> addDisabledLoginItemsData(const QString &path, const QString &backupFileName);

    /// A path that is not stored is no error; NotFound where nothing was ever stored.
    Result<void> deleteDisabledLoginItemsData(const QString &path);

private:
    Result<void> readPaths(const std::function<void(const QString &path)> &take,
                           const std::function<void()> &begun);
    [[nodiscard]] Result<Sqlite> orUnopened(Result<Sqlite> store) const;
    [[nodiscard]] Result<Sqlite> opened(const QString &place, Sqlite::Access access);
    [[nodiscard]] Result<Sqlite> openToWrite();
    [[nodiscard]] Result<Sqlite> openToRead(const QString &place);
    [[nodiscard]] Result<Sqlite> openCopy();
    Result<void> deletePath(Sqlite &store, const QString &sql) const;
    Result<void> orLogged(Result<void> done) const;
    void tell(QStringView format, const QString &argument) const;

    QString storePath;
    FileStore &files;
    Manner manner;
    std::optional<PrivateCopy> copy; ///< where changes were tried out
    bool hasWritten = false; ///< to the store itself
};

} // namespace varnel
