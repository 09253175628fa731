#include "backup/BackupReader.h"

#include "base/Logging.h"
#include "base/Sqlite.h"
#include "base/Text.h"

namespace varnel {

Result<QList<BackupRow>> readBackupRows(const QString &path)
{
    constexpr int columns = 4;
    const auto named = [&](const Error &error) {
        Error result {error.code, path + u": " + error.text};
        if (result.code != ErrorCode::NotFound)
            varnelLog(lcIo, result.text);
        return result;
    };
    Result<Sqlite> database = Sqlite::open(path, Sqlite::Access::ReadOnly);
    if (!database)
        return named(database.error());
    QList<BackupRow> rows;
    const Result<void> read = database.value().select(
        QStringLiteral("SELECT * FROM users"), columns, [&](const QStringList &texts) {
            rows.append({leadingInt(texts[0]), texts[1], texts[2], texts[3]});
            return true;
        });
    if (!read)
        return named(read.error());
    return rows;
}

} // namespace varnel
