#include "backup/BackupInsertion.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "base/Sqlite.h"
#include "base/Text.h"
#include "platform/FileStore.h"

namespace varnel {

namespace {

QString tableStatement()
{
    return u"CREATE TABLE IF NOT EXISTS users (id INTEGER NOT NULL,value1 TEXT, value2 TEXT, value3 TEXT)"_s;
}

void createTable(Sqlite &database)
{
    // A failure is logged and the row is tried all the same: the table may be there.
    if (const Result<void> created = database.run(tableStatement(), Sqlite::Verb::CreateTable);
        !created)
        varnelLog(lcBackup,
                  fillIn(u"Failed to create the SQL query for creating a table with error: %s",
                         {created.error().text}));
    else
        varnelLog(lcBackup, u"Create the SQL query for creating a table"_s);
}

bool hasRow(Sqlite &database, const QString &searchQuery)
{
    varnelLog(lcBackup, fillIn(u"searchQuery (LoginItemsView): %@", {searchQuery}));
    bool found = false;
    // A search that fails has found nothing; the insertion then says what is wrong.
    (void)database.select(
        searchQuery, 1,
        [&found](const QStringList &) {
            varnelLog(lcBackup, u"Data found2!"_s);
            found = true;
            return false;
        },
        [] { varnelLog(lcBackup, u"Data found1!"_s); });
    return found;
}

Result<void> insertRow(Sqlite &database, const QString &insertQuery)
{
    varnelLog(lcBackup, fillIn(u"query (LoginItemsView): %@", {insertQuery}));
    Result<void> inserted = database.run(insertQuery, Sqlite::Verb::Insert);
    // A table that was made stays, whatever became of the row.
    if (const Result<void> committed = database.commit(); inserted && !committed)
        inserted = committed;
    if (!inserted)
        varnelLog(lcBackup,
                  fillIn(u"Failed to create the SQL query for inserting data with error: %s",
                         {inserted.error().text}));
    else
        varnelLog(lcBackup, u"Create the SQL query for inserting data"_s);
    return inserted;
}

Error inFile(const QString &backupFileName, const Error &error)
{
    return {error.code, backupFileName + u": " + error.text};
}

} // namespace

Result<void> addBackupRow(FileStore &files, const QString &backupFileName,
                          const BackupInsertion &insertion, MetFile &met)
{
    const Result<FileStore::DatabasePlace> place = files.readyForDatabase(backupFileName);
    met = !place ? MetFile::None : place.value().isNew ? MetFile::Made : MetFile::Stood;
    if (!place)
        return place.error();
    Result<Sqlite> database = Sqlite::open(place.value().path, place.value().access());
    if (!database) {
        const Error error = inFile(backupFileName, database.error());
        varnelLog(lcIo, error.text);
        return error;
    }
    varnelLog(lcBackup, fillIn(u"Opened sqlite database at %@", {backupFileName}));
    // The first row of a file comes with its table in one go; and nobody else adds the row between
    // the search and the insertion.
    database.value().begin();
    createTable(database.value());
    if (hasRow(database.value(), insertion.searchQuery))
        return {};
    const Result<void> inserted = insertRow(database.value(), insertion.insertQuery);
    return inserted ? Result<void>() : inFile(backupFileName, inserted.error());
}

Result<void> tryBackupRow(const FileStore &files, const QString &backupFileName,
                          const BackupInsertion &insertion)
{
    const Result<FileStore::DatabasePlace> there = files.databasePlace(backupFileName);
    if (!there && there.error().code != ErrorCode::NotFound)
        return there.error();
    const Result<PrivateCopy> place = PrivateCopy::ofNothing();
    if (!place)
        return inFile(backupFileName, place.error());
    Result<Sqlite> database = Sqlite::open(place.value().path(), Sqlite::Access::Scratch);
    Result<void> tried = database ? Result<void>() : database.error();
    if (tried)
        tried = database.value().run(tableStatement(), Sqlite::Verb::CreateTable);
    if (tried)
        tried = database.value().run(insertion.insertQuery, Sqlite::Verb::Insert);
    return tried ? tried : inFile(backupFileName, tried.error());
}

} // namespace varnel
