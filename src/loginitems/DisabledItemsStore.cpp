#include "loginitems/DisabledItemsStore.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "platform/FileStore.h"

namespace varnel {

namespace {

void logFailure(QStringView format, const Error &error)
{
    varnelLog(lcLoginItems, fillIn(format, {error.text}));
}

Result<void> deletePath(Sqlite &store, const QString &sql)
{
    Result<void> deleted = store.run(sql, Sqlite::Verb::Delete);
    if (deleted)
        return deleted;
    logFailure(u"Failed to create the SQL query for deleting data with error: %s", deleted.error());
    const bool noTable = deleted.error().text == u"no such table: users";
    return Error {noTable ? ErrorCode::NotFound : deleted.error().code, deleted.error().text};
}

QString deleteQuery(const QString &path)
{
    return fillIn(u"DELETE FROM users WHERE value1='%@'", {path});
}

QString readingQuery()
{
    return QStringLiteral("SELECT * FROM users");
}

} // namespace

DisabledItemsStore::DisabledItemsStore(const QString &supportFolder, FileStore &files)
    : storePath(fillIn(u"%@/%@", {supportFolder, QStringLiteral("disableLoginItems.sqlite")})),
      files(files)
{
}

const QString &DisabledItemsStore::path() const
{
    return storePath;
}

/// The told logs know nothing of a store that can't be opened.
Result<Sqlite> DisabledItemsStore::opened(const QString &place, Sqlite::Access access)
{
    Result<Sqlite> store =
        Sqlite::open(place, access, [this](const QString &path) { return files.read(path); });
    if (!store)
        varnelLog(lcIo, storePath + u": " + store.error().text);
    return store;
}

Result<Sqlite> DisabledItemsStore::openToWrite()
{
    const Result<FileStore::DatabasePlace> place = files.readyForDatabase(storePath);
    return place ? opened(place.value().path, place.value().access()) : place.error();
}

void DisabledItemsStore::tellReading()
{
    varnelLog(lcLoginItems,
              fillIn(u"searchQuery (readDisabledLoginItemsData): %@", {readingQuery()}));
}

Result<void> DisabledItemsStore::readPaths(const std::function<void(const QString &path)> &take,
                                           const std::function<void()> &begun)
{
    // Reading makes no file; a store that is not there holds nothing.
    const Result<FileStore::DatabasePlace> place = files.databasePlace(storePath);
    if (!place && (place.error().code == ErrorCode::NotFound || !files.exists(storePath))) {
        begun();
        return {};
    }
    if (!place)
        return place.error();
    Result<Sqlite> reader = opened(place.value().path, Sqlite::Access::ReadOnly);
    if (!reader)
        return reader.error();
    begun();
    return reader.value().select(readingQuery(), 1, [&](const QStringList &texts) {
        take(texts[0]);
        return true;
    });
}

Result<QStringList> DisabledItemsStore::storedPaths()
{
    QStringList paths;
    bool begun = false;
    const Result<void> read =
        readPaths([&](const QString &path) { paths.append(path); }, [&begun] { begun = true; });
    // What opens and has no table holds nothing.
    return begun ? Result<QStringList>(paths) : read.error();
}

Result<void> DisabledItemsStore::readDisabledLoginItemsData(
    const std::function<bool(const QString &path)> &isListed)
{
    QStringList doubled;
    Result<void> read = readPaths(
        [&](const QString &path) {
            if (isListed(path))
                doubled.append(path);
        },
        tellReading);
    if (!read || doubled.isEmpty())
        return read;

    Result<Sqlite> store = openToWrite();
    if (!store)
        return store.error();
    for (const QString &path : doubled)
        (void)deletePath(store.value(),
                         deleteQuery(path)); // logged; the next path has its own chance
    return {};
}

Result<void> DisabledItemsStore::addDisabledLoginItemsData(const QString &path,
                                                           const QString &backupFileName)
{
    Result<Sqlite> store = openToWrite();
    if (!store)
        return store.error();
    varnelLog(lcLoginItems, fillIn(u"Opened sqlite database at %@", {backupFileName}));
    const Result<void> created =
        store.value().run(QStringLiteral("CREATE TABLE IF NOT EXISTS users (value1 TEXT)"),
                          Sqlite::Verb::CreateTable);
    if (!created)
        logFailure(u"Failed to create the SQL query for creating a table with error: %s",
                   created.error());

    const QString search = fillIn(u"SELECT * FROM users WHERE value1='%@'", {path});
    varnelLog(lcLoginItems, fillIn(u"searchQuery (addDisabledLoginItemsData): %@", {search}));
    bool stored = false;
    // A search that fails has found nothing; the insertion then says what is wrong.
    (void)store.value().select(search, 1, [&](const QStringList &) {
        stored = true;
        return false;
    });
    if (stored)
        return {};

    const QString query = fillIn(u"INSERT INTO users VALUES('%@')", {path});
    varnelLog(lcLoginItems, fillIn(u"query (addDisabledLoginItemsData): %@", {query}));
    Result<void> inserted = store.value().run(query, Sqlite::Verb::Insert);
    if (!inserted)
        logFailure(u"Failed to create the SQL query for inserting data with error: %s",
                   inserted.error());
    return inserted;
}

Result<void> DisabledItemsStore::deleteDisabledLoginItemsData(const QString &path)
{
    Result<Sqlite> store = openToWrite();
    if (!store)
        return store.error();
    const QString query = deleteQuery(path);
    varnelLog(lcLoginItems, fillIn(u"query (deleteDisabledLoginItemsData): %@", {query}));
    return deletePath(store.value(), query);
}

} // namespace varnel
