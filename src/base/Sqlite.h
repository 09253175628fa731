#pragma once

#include "base/Result.h"
#include "base/UntouchedDatabase.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace varnel {

/// One open SQLite database whose only table of interest is `users`.
///
/// Statements are built by putting values into their text as they are. So each text is fenced: it
/// may do its own verb on `users` and nothing else, and nothing behind its first statement runs; a
/// text that holds a second statement fails as a whole, with the library's error text. Errors carry
/// the library's text alone. A statement that takes the library too long fails as interrupted.
class Sqlite {
public:
    enum class Access {
        Create, ///< reads and writes; the file is made when it is missing. A statement that has
                ///< run is on the disk. Waits up to five seconds for another writer of the file.
        Scratch, ///< as Create, for a private file that nobody needs after this process: nothing
                 ///< waits for the disk
        ReadOnly, ///< a file of unknown origin: never made, never written, nothing made or deleted
                  ///< beside it; its triggers, views and unsafe functions unused
    };
    /// NotFound, NotAFile, or Unloadable with the library's text; Unloadable too where columns of
    /// `users` are computed from others. A database may open and fail at its first statement.
    ///
    /// A read-only database is read in its place, under the library's lock. Where that would change
    /// what stands beside it (a journal that a killed writer left, a write-ahead log), a private
    /// copy is read instead: what was begun is undone or finished there, and here stays as it is.
    ///
    /// `path` is absolute and opened as it stands, without a link in the place of the file: what
    /// belongs beside the database is looked for there. `read` takes what is copied.
    static Result<Sqlite> open(const QString &path, Access access,
                               const ReadBytes &read = readPlainly);

    enum class Verb { CreateTable, Insert, Delete };
    /// Runs a statement that gives no rows.
    Result<void> run(const QString &sql, Verb verb);

    /// From here to commit(), what runs reaches the disk together: each statement by itself waits
    /// for the disk five times. Where another writer is in the way for too long, or begun already,
    /// each does so as ever.
    void begin();
    /// Nothing is to be done where nothing was begun. What is not committed is undone at the end.
    Result<void> commit();

    /// Steps a SELECT on `users` and hands each row's columns as text (null columns as empty text)
    /// to `row` until that answers false: the first `columns` of them; a table with fewer is
    /// Unloadable, and so is one that gives out more than any file of this program could hold.
    /// `prepared` is called before the first step, and not when the statement can't be made.
    Result<void> select(const QString &sql, int columns,
                        const std::function<bool(const QStringList &)> &row,
                        const std::function<void()> &prepared = {});
    /// The same with all columns, each under its name and as a statement writes its value.
    Result<void> selectLiterals(
        const QString &sql,
        const std::function<bool(const QStringList &names, const QStringList &literals)> &row);

    /// Whether there is nothing in the database but `users`, and nothing in that.
    [[nodiscard]] bool holdsNothing();

private:
    struct Close {
        void operator()(sqlite3 *database) const;
    };
    using Handle = std::unique_ptr<sqlite3, Close>;
    explicit Sqlite(Handle database, std::optional<PrivateCopy> copy = {});
    static Result<Handle> connect(const QString &path, int flags, Access access);
    static Result<Sqlite> openCopy(const QString &path, const ReadBytes &read);
    [[nodiscard]] Error lastError() const;
    /// Answers what the row weighs; below 0: no more.
    using TakeRow = std::function<qint64(sqlite3_stmt *)>;
    Result<void> step(sqlite3_stmt *statement, const TakeRow &row);

    std::optional<PrivateCopy> copy; ///< outlives the connection to it
    Handle database;
};

} // namespace varnel
