#include "backup/BackupReader.h"

#include "base/Logging.h"
#include "base/Sqlite.h"
#include "base/Text.h"
#include "platform/FileStore.h"

#include <QFileInfo>

namespace varnel {

namespace {

Error named(const QString &path, const Error &error, Telling telling)
{
    Error result {error.code, path + u": " + error.text};
    if (result.code != ErrorCode::NotFound && telling == Telling::Log)
        varnelLog(lcIo, result.text);
    return result;
}

/// `path` is what people are told, `place` what is opened.
Result<QList<BackupRow>> rowsAt(const QString &place, const QString &path, const ReadBytes &read,
                                Telling telling = Telling::Log)
{
    constexpr int columns = 4;
    Result<Sqlite> database = Sqlite::open(place, Sqlite::Access::ReadOnly, read);
    if (!database)
        return named(path, database.error(), telling);
    QList<BackupRow> rows;
    const Result<void> selected = database.value().select(
        QStringLiteral("SELECT * FROM users"), columns, [&](const QStringList &texts) {
            rows.append({leadingInt(texts[0]), texts[1], texts[2], texts[3]});
            return true;
        });
    if (!selected)
        return named(path, selected.error(), telling);
    return rows;
}

} // namespace

Result<QList<BackupRow>> readBackupRows(const QString &path)
{
    const QString place = QFileInfo(path).canonicalFilePath();
    return rowsAt(place.isEmpty() ? path : place, path, readPlainly);
}

Result<QList<BackupRow>> readBackupRows(const QString &path, const FileStore &files,
                                        Telling telling)
{
    const Result<FileStore::DatabasePlace> place = files.databasePlace(path);
    if (place)
        return rowsAt(
            place.value().path, path, [&files](const QString &at) { return files.read(at); },
            telling);
    if (place.error().code != ErrorCode::NotFound)
        return place.error();
    return Error {ErrorCode::NotFound, path + u": no such file"};
}

} // namespace varnel
