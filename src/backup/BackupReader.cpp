#include "backup/BackupReader.h"

#include "base/Text.h"

#include <QFile>
#include <QFileInfo>

#include <memory>

#include <sqlite3.h>

namespace varnel {

namespace {

/// No row that this program writes comes near it; a hostile value must not fill the memory.
constexpr int largestValue = 1 << 20;

struct CloseDatabase {
    void operator()(sqlite3 *database) const { sqlite3_close(database); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

Error unreadable(const QString &path, const QString &why)
{
    return {ErrorCode::Unloadable, path + u": " + why};
}

Error unreadable(const QString &path, sqlite3 *database)
{
    return unreadable(path, QString::fromUtf8(sqlite3_errmsg(database)));
}

/// Only reading the columns of a table; no function, pragma, attached file, view or trigger of the
/// file's own.
int allowReading(void *, int action, const char *, const char *, const char *, const char *trigger)
{
    const bool reads = action == SQLITE_SELECT || action == SQLITE_READ;
    return reads && trigger == nullptr ? SQLITE_OK : SQLITE_DENY;
}

Result<Database> openForReading(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return Error {ErrorCode::NotFound, path + u": no such backup file"};
    sqlite3 *raw = nullptr;
    const int outcome =
        sqlite3_open_v2(QFile::encodeName(path).constData(), &raw, SQLITE_OPEN_READONLY, nullptr);
    Database database(raw);
    if (outcome != SQLITE_OK)
        return unreadable(path, raw);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_limit(raw, SQLITE_LIMIT_LENGTH, largestValue);
    sqlite3_set_authorizer(raw, allowReading, nullptr);
    return database;
}

QString text(sqlite3_stmt *statement, int column)
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
    return bytes == nullptr ? QStringLiteral("") : QString::fromUtf8(bytes);
}

BackupRow currentRow(sqlite3_stmt *statement)
{
    return {leadingInt(text(statement, 0)), text(statement, 1), text(statement, 2),
            text(statement, 3)};
}

} // namespace

Result<QList<BackupRow>> readBackupRows(const QString &path)
{
    Result<Database> database = openForReading(path);
    if (!database)
        return database.error();
    sqlite3_stmt *raw = nullptr;
    const int prepared =
        sqlite3_prepare_v2(database.value().get(), "SELECT * FROM users", -1, &raw, nullptr);
    const Statement statement(raw);
    if (prepared != SQLITE_OK)
        return unreadable(path, database.value().get());
    if (sqlite3_column_count(raw) < 4)
        return unreadable(path, QStringLiteral("the table users has fewer than four columns"));

    QList<BackupRow> rows;
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(raw)) == SQLITE_ROW)
        rows.append(currentRow(raw));
    if (step != SQLITE_DONE)
        return unreadable(path, database.value().get());
    return rows;
}

} // namespace varnel
