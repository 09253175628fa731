#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

struct sqlite3;

namespace varnel {

/// One open SQLite database whose only table of interest is `users`.
///
/// Statements are built by putting values into their text as they are. So each text is fenced: it
/// may do its own verb on `users` and nothing else, and nothing behind its first statement runs; a
/// text that holds a second statement fails as a whole, with the library's error text. Errors carry
/// the library's text alone.
class Sqlite {
public:
    enum class Access {
        Create, ///< reads and writes; the file is made when it is missing
        ReadOnly, ///< a file of unknown origin: never made, never written, its triggers, views and
                  ///< functions unused
    };
    /// NotFound, NotAFile, or Unloadable with the library's text. A database may open and fail at
    /// its first statement.
    static Result<Sqlite> open(const QString &path, Access access);

    enum class Verb { CreateTable, Insert, Delete };
    /// Runs a statement that gives no rows.
    Result<void> run(const QString &sql, Verb verb);

    /// Steps a SELECT on `users` and hands each row's columns as text (null columns as empty text)
    /// to `row` until that answers false. At least `columns` columns, else Unloadable. `prepared`
    /// is called before the first step, and not when the statement can't be made.
    Result<void> select(const QString &sql, int columns,
                        const std::function<bool(const QStringList &)> &row,
                        const std::function<void()> &prepared = {});

private:
    struct Close {
        void operator()(sqlite3 *database) const;
    };
    explicit Sqlite(sqlite3 *database);
    [[nodiscard]] Error lastError() const;

    std::unique_ptr<sqlite3, Close> database;
};

} // namespace varnel
