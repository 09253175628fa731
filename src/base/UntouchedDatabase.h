#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QTemporaryDir;

namespace varnel {

// A database file is more than one file: beside it may stand what its last writer left behind, and
// the library acts on that without being asked.

/// Where SQLite keeps what belongs to a database but stands beside it. Whoever deletes the database
/// deletes these next: what is left of one would be taken for the next of that name.
[[nodiscard]] QStringList companionsOf(const QString &path);

/// Gives a file's bytes as they are at one moment, from one opening.
using ReadBytes = std::function<Result<QByteArray>(const QString &path)>;

/// For files that nobody else could exchange for something to be waited for.
[[nodiscard]] Result<QByteArray> readPlainly(const QString &path);

/// Whether what stands beside the database may be acted upon. NotAFile when a journal's place is
/// taken by something that a reader would wait for or follow elsewhere.
[[nodiscard]] Result<void> checkCompanions(const QString &path);

/// Unloadable when the journal beside the database speaks of further files: the library would
/// delete those once it has rolled back.
[[nodiscard]] Result<void> checkJournal(const QString &path);

/// Whether the library might make, change or delete files beside this one by merely reading it: it
/// keeps a write-ahead log, or a log or journal stands there.
[[nodiscard]] bool hasUnfinishedBusiness(const QString &path);

/// A copy of a database and of what its last writer left beside it, in a folder that only this user
/// can read; gone with the object. There the library may finish what was begun.
class PrivateCopy {
public:
    /// Unloadable for what is larger than any file of this program's, for what somebody was writing
    /// meanwhile, and where the copied journal speaks of further files: what was looked at before
    /// may have been exchanged since.
    static Result<PrivateCopy> of(const QString &path, const ReadBytes &read);
    /// A place for a database that is not there yet.
    static Result<PrivateCopy> ofNothing();
    PrivateCopy(PrivateCopy &&other) noexcept;
    PrivateCopy &operator=(PrivateCopy &&other) noexcept;
    ~PrivateCopy();

    [[nodiscard]] QString path() const;

private:
    explicit PrivateCopy(std::unique_ptr<QTemporaryDir> folder);

    std::unique_ptr<QTemporaryDir> folder;
};

} // namespace varnel
