#include "loginitems/DisabledItemsStore.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "platform/FileStore.h"

#include <QFileInfo>

namespace varnel {

namespace {

QString deleteQuery(const QString &path)
{
    return fillIn(u"DELETE FROM users WHERE value1='%@'", {path});
}

QString quoted(QString text, QChar mark = u'\'')
{
    return mark + text.replace(mark, QString(2, mark)) + mark;
}

Result<void> insert(Sqlite &store, const StoredRow &row)
{
    QStringList names;
    for (const QString &column : row.columns)
        names.append(quoted(column, u'"'));
    const QString columns = names.join(u',');
    const QString values = row.values.join(u',');
    if (store.run(u"INSERT INTO users(rowid," + columns + u") VALUES(" + QString::number(row.place)
                      + u',' + values + u')',
                  Sqlite::Verb::Insert))
        return {};
    return store.run(u"INSERT INTO users(" + columns + u") VALUES(" + values + u')',
                     Sqlite::Verb::Insert);
}

QString fileNameFor(LoginItemsList list)
{
    return list == LoginItemsList::Account ? QStringLiteral("disabledAccountItems.sqlite")
                                           : QStringLiteral("disableLoginItems.sqlite");
}

/// The library's words where nothing was ever stored.
QString noTable()
{
    return QStringLiteral("no such table: users");
}

QString readingQuery()
{
    return QStringLiteral("SELECT * FROM users");
}

Result<void> takeAll(Sqlite &store, const std::function<void(const QString &path)> &take)
{
    return store.select(readingQuery(), 1, [&](const QStringList &texts) {
        take(texts[0]);
        return true;
    });
}

} // namespace

DisabledItemsStore::DisabledItemsStore(const QString &supportFolder, FileStore &files,
                                       Manner manner, LoginItemsList list)
    : storePath(fillIn(u"%@/%@", {supportFolder, fileNameFor(list)})), files(files), manner(manner)
{
}

void DisabledItemsStore::tell(QStringView format, const QString &argument) const
{
    if (manner == Manner::Work)
        varnelLog(lcLoginItems, fillIn(format, {argument}));
}

const QString &DisabledItemsStore::path() const
{
    return storePath;
}

/// The told logs know nothing of a store that can't be opened.
Result<Sqlite> DisabledItemsStore::orUnopened(Result<Sqlite> store) const
{
    if (!store && manner == Manner::Work)
        varnelLog(lcIo, storePath + u": " + store.error().text);
    return store;
}

Result<Sqlite> DisabledItemsStore::opened(const QString &place, Sqlite::Access access)
{
    return orUnopened(
        Sqlite::open(place, access, [this](const QString &path) { return files.read(path); }));
}

Result<Sqlite> DisabledItemsStore::openToWrite()
{
    if (manner == Manner::TryOut)
        return openCopy();
    const Result<FileStore::DatabasePlace> place = files.readyForDatabase(storePath);
    if (!place)
        return place.error();
    Result<Sqlite> store = opened(place.value().path, Sqlite::Access::Create);
    hasWritten = hasWritten || store.ok();
    return store;
}

/// What this object has changed it sees again: for that it waits as for a change until other runs
/// have made theirs. Else what is being written can't be read.
Result<Sqlite> DisabledItemsStore::openToRead(const QString &place)
{
    if (hasWritten)
        if (Result<Sqlite> waiting = openToWrite(); waiting)
            return waiting;
    return Sqlite::open(place, Sqlite::Access::ReadOnly,
                        [this](const QString &path) { return files.read(path); });
}

Result<Sqlite> DisabledItemsStore::openCopy()
{
    if (!copy) {
        const Result<FileStore::DatabasePlace> now = files.databasePlace(storePath);
        if (!now && now.error().code != ErrorCode::NotFound)
            return now.error();
        // What is no file is for whoever opens the database to refuse, in his own words.
        if (now && QFileInfo::exists(now.value().path) && !QFileInfo(now.value().path).isFile())
            return opened(now.value().path, Sqlite::Access::ReadOnly);
        Result<PrivateCopy> made = now
            ? PrivateCopy::of(now.value().path,
                              [this](const QString &at) { return files.read(at); })
            : PrivateCopy::ofNothing();
        if (!made)
            return Error {made.error().code, storePath + u": " + made.error().text};
        copy = std::move(made).value();
    }
    return opened(copy->path(), Sqlite::Access::Scratch);
}

Result<void> DisabledItemsStore::deletePath(Sqlite &store, const QString &sql) const
{
    Result<void> deleted = store.run(sql, Sqlite::Verb::Delete);
    if (deleted)
        return deleted;
    tell(u"Failed to create the SQL query for deleting data with error: %s", deleted.error().text);
    return Error {deleted.error().text == noTable() ? ErrorCode::NotFound : deleted.error().code,
                  deleted.error().text};
}

void DisabledItemsStore::tellReading() const
{
    tell(u"searchQuery (readDisabledLoginItemsData): %@", readingQuery());
}

Result<void> DisabledItemsStore::readPaths(const std::function<void(const QString &path)> &take,
                                           const std::function<void()> &begun)
{
    if (copy) {
        begun();
        Result<Sqlite> tried = openCopy();
        return tried ? takeAll(tried.value(), take) : tried.error();
    }
    // Reading makes no file; a store that is not there holds nothing.
    const Result<FileStore::DatabasePlace> place = files.databasePlace(storePath);
    if (!place && (place.error().code == ErrorCode::NotFound || !files.exists(storePath))) {
        begun();
        return {};
    }
    if (!place)
        return place.error();
    Result<Sqlite> reader = orUnopened(openToRead(place.value().path));
    if (!reader)
        return reader.error();
    begun();
    return takeAll(reader.value(), take);
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
    const std::function<bool(const QString &path)> &isListed, const Guard &whileListed)
{
    QStringList doubled;
    Result<void> read = readPaths(
        [&](const QString &path) {
            if (isListed(path))
                doubled.append(path);
        },
        [this] { tellReading(); });
    if (!read || doubled.isEmpty())
        return read;

    Result<Sqlite> store = openToWrite();
    if (!store)
        return store.error();
    for (const QString &path : doubled)
        whileListed(path, [&] {
            // Logged; the next path has its own chance.
            (void)deletePath(store.value(), deleteQuery(path));
        });
    return {};
}

Result<QList<StoredRow>> DisabledItemsStore::rowsOf(const QString &path)
{
    QList<StoredRow> rows;
    const Result<FileStore::DatabasePlace> place = files.databasePlace(storePath);
    if (!place && (place.error().code == ErrorCode::NotFound || !files.exists(storePath)))
        return rows;
    if (!place)
        return place.error();
    Result<Sqlite> reader = openToRead(place.value().path);
    if (!reader)
        return reader.error();
    const Result<void> read = reader.value().selectLiterals(
        u"SELECT rowid, * FROM users WHERE value1=" + quoted(path),
        [&](const QStringList &names, const QStringList &literals) {
            rows.append({literals.first().toLongLong(), names.mid(1), literals.mid(1)});
            return true;
        });
    if (!read && read.error().text != noTable())
        return read.error();
    return rows;
}

Result<void> DisabledItemsStore::putRows(const QList<PathRows> &paths)
{
    Result<Sqlite> store = openToWrite();
    if (!store)
        return store.error();
    store.value().begin();
    Result<void> put;
    for (auto each = paths.begin(); put && each != paths.end(); ++each)
        put = orLogged(store.value().run(u"DELETE FROM users WHERE value1=" + quoted(each->path),
                                         Sqlite::Verb::Delete));
    for (auto each = paths.begin(); put && each != paths.end(); ++each)
        for (auto row = each->rows.begin(); put && row != each->rows.end(); ++row)
            put = orLogged(insert(store.value(), *row));
    // What is not committed is undone.
    return put ? orLogged(store.value().commit()) : put;
}

Result<void> DisabledItemsStore::orLogged(Result<void> done) const
{
    if (!done)
        varnelLog(lcIo, storePath + u": " + done.error().text);
    return done;
}

bool DisabledItemsStore::exists() const
{
    return files.exists(storePath);
}

std::optional<QByteArray> DisabledItemsStore::emptyStore()
{
    const Result<FileStore::DatabasePlace> place = files.databasePlace(storePath);
    if (!place || QFileInfo::exists(place.value().path + u"-journal")
        || QFileInfo::exists(place.value().path + u"-wal"))
        return std::nullopt;
    const Result<QByteArray> bytes = files.read(storePath);
    Result<Sqlite> reader = opened(place.value().path, Sqlite::Access::ReadOnly);
    if (!bytes || !reader || !reader.value().holdsNothing())
        return std::nullopt;
    return bytes.value();
}

Result<void> DisabledItemsStore::addDisabledLoginItemsData(const QString &path,
                                                           const QString &backupFileName)
{
    Result<Sqlite> store = openToWrite();
    if (!store)
        return store.error();
    tell(u"Opened sqlite database at %@", backupFileName);
    const Result<void> created =
        store.value().run(QStringLiteral("CREATE TABLE IF NOT EXISTS users (value1 TEXT)"),
                          Sqlite::Verb::CreateTable);
    if (!created)
        tell(u"Failed to create the SQL query for creating a table with error: %s",
             created.error().text);

    const QString search = fillIn(u"SELECT * FROM users WHERE value1='%@'", {path});
    tell(u"searchQuery (addDisabledLoginItemsData): %@", search);
    bool stored = false;
    // A search that fails has found nothing; the insertion then says what is wrong.
    (void)store.value().select(search, 1, [&](const QStringList &) {
        stored = true;
        return false;
    });
    if (stored)
        return {};

    const QString query = fillIn(u"INSERT INTO users VALUES('%@')", {path});
    tell(u"query (addDisabledLoginItemsData): %@", query);
    Result<void> inserted = store.value().run(query, Sqlite::Verb::Insert);
    if (!inserted)
        tell(u"Failed to create the SQL query for inserting data with error: %s",
             inserted.error().text);
    return inserted;
}

Result<void> DisabledItemsStore::deleteDisabledLoginItemsData(const QString &path)
{
    Result<Sqlite> store = openToWrite();
    if (!store)
        return store.error();
    const QString query = deleteQuery(path);
    tell(u"query (deleteDisabledLoginItemsData): %@", query);
    return deletePath(store.value(), query);
}

} // namespace varnel
