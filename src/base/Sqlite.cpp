#include "base/Sqlite.h"

#include "base/SqliteLibrary.h"
#include "base/Text.h"

#include <QFile>
#include <QFileInfo>

#include <cstring>
#include <utility>

namespace varnel {

namespace {

/// No value that this program writes comes near it; a hostile one must not fill the memory.
constexpr int largestValue = 1 << 20;
/// The same for all values together: a small file can be made to give out very much.
constexpr qint64 largestAnswer = qint64(64) << 20;
/// Two hundred saves of every setting; each row of a backup costs the edit of a file.
constexpr int mostRows = 10000;
/// Steps of the library's own machine for one statement: a damaged tree may name one page over and
/// over, and takes forever to walk although no row comes out. The fullest file of a megabyte that
/// is sound takes a tenth of it.
constexpr int mostSteps = 10'000'000;
/// The longest program that a statement may become; those on plain tables have some dozens of
/// steps.
constexpr int longestProgram = 25'000;

/// Only after open() has found the library; without it there is no database to call it for.
const SqliteLibrary &sqlite()
{
    return *SqliteLibrary::get();
}

struct Finalize {
    void operator()(sqlite3_stmt *statement) const { sqlite().finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

bool isUsers(const char *name)
{
    return sqlite().compareCaseless(name, "users") == 0;
}

bool isSchema(const char *name)
{
    return name != nullptr && std::strncmp(name, "sqlite_", 7) == 0;
}

// Each of the following allows one verb. A trigger or view acts under its own name in the last
// argument; none may.

int allowSelect(void *, int action, const char *first, const char *, const char *,
                const char *inner)
{
    const bool allowed = action == SQLITE_SELECT || (action == SQLITE_READ && isUsers(first));
    return allowed && inner == nullptr ? SQLITE_OK : SQLITE_DENY;
}

int allowInsert(void *, int action, const char *first, const char *, const char *,
                const char *inner)
{
    return action == SQLITE_INSERT && isUsers(first) && inner == nullptr ? SQLITE_OK : SQLITE_DENY;
}

int allowDelete(void *, int action, const char *first, const char *, const char *,
                const char *inner)
{
    const bool allowed = (action == SQLITE_DELETE || action == SQLITE_READ) && isUsers(first);
    return allowed && inner == nullptr ? SQLITE_OK : SQLITE_DENY;
}

int allowCreateTable(void *, int action, const char *first, const char *, const char *,
                     const char *)
{
    switch (action) {
    case SQLITE_CREATE_TABLE:
        return isUsers(first) ? SQLITE_OK : SQLITE_DENY;
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_READ:
        return isSchema(first) ? SQLITE_OK : SQLITE_DENY;
    default:
        return SQLITE_DENY;
    }
}

int allowColumnList(void *, int action, const char *first, const char *, const char *, const char *)
{
    return action == SQLITE_PRAGMA && qstrcmp(first, "table_xinfo") == 0 ? SQLITE_OK : SQLITE_DENY;
}

int allowEverySelect(void *, int action, const char *first, const char *, const char *,
                     const char *inner)
{
    const bool allowed =
        action == SQLITE_SELECT || (action == SQLITE_READ && (isUsers(first) || isSchema(first)));
    return allowed && inner == nullptr ? SQLITE_OK : SQLITE_DENY;
}

int allowTransaction(void *, int action, const char *, const char *, const char *, const char *)
{
    return action == SQLITE_TRANSACTION ? SQLITE_OK : SQLITE_DENY;
}

int allowNothing(void *, int, const char *, const char *, const char *, const char *)
{
    return SQLITE_DENY;
}

using Authorizer = int (*)(void *, int, const char *, const char *, const char *, const char *);

Authorizer authorizerFor(Sqlite::Verb verb)
{
    switch (verb) {
    case Sqlite::Verb::CreateTable:
        return allowCreateTable;
    case Sqlite::Verb::Insert:
        return allowInsert;
    case Sqlite::Verb::Delete:
        return allowDelete;
    }
    return allowNothing;
}

/// Prepares the first statement; an error of the library when the text does not parse, may not do
/// what it says, or holds a second statement. Null with SQLITE_OK when the text holds none.
int prepare(sqlite3 *database, const QString &sql, Authorizer authorizer, Statement &statement)
{
    const QByteArray text = sql.toUtf8();
    const char *tail = nullptr;
    sqlite3_stmt *raw = nullptr;
    sqlite().setAuthorizer(database, authorizer, nullptr);
    int outcome = sqlite().prepare(database, text.constData(), -1, &raw, &tail);
    statement.reset(raw);
    // Where nothing stands behind, nothing is asked again: each change of what is allowed has the
    // library prepare the statement a second time.
    if (outcome != SQLITE_OK || tail == nullptr || *tail == '\0')
        return outcome;
    // Whatever stands behind is denied, so that the library itself says what is wrong with it.
    sqlite().setAuthorizer(database, allowNothing, nullptr);
    outcome = sqlite().prepare(database, tail, -1, &raw, nullptr);
    sqlite().finalize(raw);
    sqlite().setAuthorizer(database, authorizer, nullptr);
    return outcome;
}

void defend(sqlite3 *database)
{
    sqlite().configure(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite().configure(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite().configure(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite().configure(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite().configure(database, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite().limit(database, SQLITE_LIMIT_LENGTH, largestValue);
    sqlite().limit(database, SQLITE_LIMIT_ATTACHED, 0);
    sqlite().limit(database, SQLITE_LIMIT_VDBE_OP, longestProgram);
}

/// Bounds the steps of one statement while it lives; past that the library answers "interrupted".
class StepLimit {
public:
    explicit StepLimit(sqlite3 *database) : database(database)
    {
        sqlite().progressHandler(database, stepsPerCall, &StepLimit::isReached, this);
    }
    StepLimit(const StepLimit &) = delete;
    StepLimit &operator=(const StepLimit &) = delete;
    ~StepLimit() { sqlite().progressHandler(database, 0, nullptr, nullptr); }

private:
    static constexpr int stepsPerCall = 1000;

    static int isReached(void *data)
    {
        return ++static_cast<StepLimit *>(data)->calls > mostSteps / stepsPerCall ? 1 : 0;
    }

    sqlite3 *database;
    int calls = 0;
};

/// Whether a column of `users` is worked out from others when it is read or written. Eight
/// kilobytes of such columns, each naming the last one twice, become a program without end while
/// the statement is prepared; and no file of this program has any.
bool hasComputedColumns(sqlite3 *database)
{
    constexpr int hiddenColumn = 6;
    constexpr int firstComputedKind = 2; // 1 is a hidden column of a virtual table
    Statement columns;
    if (prepare(database, QStringLiteral("PRAGMA table_xinfo(users)"), allowColumnList, columns)
        != SQLITE_OK)
        return false; // the statements on the table will say what is wrong with it
    while (sqlite().step(columns.get()) == SQLITE_ROW)
        if (sqlite().columnNumber(columns.get(), hiddenColumn) >= firstComputedKind)
            return true;
    return false;
}

void prepareToWrite(sqlite3 *database)
{
    // Another run may be adding its row to the same file.
    constexpr int longestWait = 5000; // milliseconds
    sqlite().busyTimeout(database, longestWait);
    // Whatever is done next counts on this having happened: so the end of the journal, which is
    // what ends a change, is flushed too. What stands in the way of it shows at the first
    // statement.
    sqlite().execute(database, "PRAGMA synchronous=EXTRA", nullptr, nullptr, nullptr);
}

void prepareScratch(sqlite3 *database)
{
    sqlite().execute(database, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
}

QString columnText(sqlite3_stmt *statement, int column)
{
    const unsigned char *bytes = sqlite().columnText(statement, column);
    return bytes == nullptr ? QStringLiteral("")
                            : textOfUtf8(reinterpret_cast<const char *>(bytes));
}

QStringList rowTexts(sqlite3_stmt *statement, int columns)
{
    QStringList texts;
    texts.reserve(columns);
    for (int column = 0; column < columns; ++column)
        texts.append(columnText(statement, column));
    return texts;
}

/// What a row weighs, however little is in it.
qint64 sizeOf(const QStringList &texts)
{
    constexpr qint64 ofRow = 64;
    qint64 size = ofRow;
    for (const QString &text : texts)
        size += text.size();
    return size;
}

constexpr qint64 noMore = -1;

/// As a statement writes it, so that it comes back the same.
QString literal(sqlite3_stmt *statement, int column)
{
    constexpr int digitsOfEveryDouble = 17;
    switch (sqlite().columnType(statement, column)) {
    case SQLITE_NULL:
        return QStringLiteral("NULL");
    case SQLITE_INTEGER:
        return columnText(statement, column);
    case SQLITE_FLOAT:
        return QString::number(sqlite().columnDouble(statement, column), 'e', digitsOfEveryDouble);
    case SQLITE_BLOB: {
        const void *bytes = sqlite().columnBlob(statement, column);
        const int size = sqlite().columnBytes(statement, column);
        return u"X'"
            + QString::fromLatin1(QByteArray(static_cast<const char *>(bytes), size).toHex())
            + u'\'';
    }
    default:
        return u'\'' + columnText(statement, column).replace(u'\'', QStringLiteral("''")) + u'\'';
    }
}

Error errorOf(sqlite3 *database)
{
    return {ErrorCode::Unloadable, QString::fromUtf8(sqlite().errorMessage(database))};
}

} // namespace

void Sqlite::Close::operator()(sqlite3 *opened) const
{
    sqlite().close(opened);
}

Sqlite::Sqlite(Handle database, std::optional<PrivateCopy> copy)
    : copy(std::move(copy)), database(std::move(database))
{
}

Error Sqlite::lastError() const
{
    return errorOf(database.get());
}

Result<Sqlite::Handle> Sqlite::connect(const QString &path, int flags, Access access)
{
    sqlite3 *raw = nullptr;
    if (SqliteLibrary::get() == nullptr)
        return Error {ErrorCode::Unloadable, QStringLiteral("the SQLite library cannot be loaded")};
    const int outcome = sqlite().open(QFile::encodeName(path).constData(), &raw, flags,
                                      SqliteLibrary::filesAsNamed);
    Handle opened(raw);
    if (outcome != SQLITE_OK)
        return errorOf(raw);
    defend(raw);
    // Before the first look at the file: that may have to wait already, and it leaves a fence
    // behind.
    if (access == Access::Create)
        prepareToWrite(raw);
    else if (access == Access::Scratch)
        prepareScratch(raw);
    if (hasComputedColumns(raw))
        return Error {ErrorCode::Unloadable, QStringLiteral("computed columns in users")};
    return opened;
}

Result<Sqlite> Sqlite::openCopy(const QString &path, const ReadBytes &read)
{
    Result<PrivateCopy> copy = PrivateCopy::of(path, read);
    if (!copy)
        return copy.error();
    Result<Handle> opened = connect(copy.value().path(), SQLITE_OPEN_READWRITE, Access::ReadOnly);
    if (!opened)
        return opened.error();
    return Sqlite(std::move(opened).value(), std::move(copy).value());
}

Result<Sqlite> Sqlite::open(const QString &path, Access access, const ReadBytes &read)
{
    const QFileInfo file(path);
    // The library would open a FIFO and wait for it.
    if (file.exists() && !file.isFile())
        return Error {ErrorCode::NotAFile, QStringLiteral("not a regular file")};
    if (access == Access::ReadOnly && !file.exists())
        return Error {ErrorCode::NotFound, QStringLiteral("no such file")};
    if (const Result<void> sound = checkCompanions(path); !sound)
        return sound.error();
    if (access == Access::ReadOnly && hasUnfinishedBusiness(path))
        return openCopy(path, read);
    if (const Result<void> sound = checkJournal(path); !sound)
        return sound.error();

    Result<Handle> opened =
        connect(path,
                access == Access::ReadOnly ? SQLITE_OPEN_READONLY
                                           : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                access);
    if (!opened)
        return opened.error();
    return Sqlite(std::move(opened).value());
}

void Sqlite::begin()
{
    Statement statement;
    // At once as a writer: a reader who becomes one later may be refused without any waiting.
    if (prepare(database.get(), QStringLiteral("BEGIN IMMEDIATE"), allowTransaction, statement)
        == SQLITE_OK)
        sqlite().step(statement.get());
}

Result<void> Sqlite::commit()
{
    if (sqlite().isCommittingItself(database.get()) != 0)
        return {};
    Statement statement;
    if (prepare(database.get(), QStringLiteral("COMMIT"), allowTransaction, statement) != SQLITE_OK
        || sqlite().step(statement.get()) != SQLITE_DONE)
        return lastError();
    return {};
}

Result<void> Sqlite::run(const QString &sql, Verb verb)
{
    Statement statement;
    if (prepare(database.get(), sql, authorizerFor(verb), statement) != SQLITE_OK)
        return lastError();
    if (!statement)
        return {};
    const StepLimit limit(database.get());
    int step = SQLITE_ROW;
    while ((step = sqlite().step(statement.get())) == SQLITE_ROW) { }
    if (step != SQLITE_DONE)
        return lastError();
    return {};
}

Result<void> Sqlite::select(const QString &sql, int columns,
                            const std::function<bool(const QStringList &)> &row,
                            const std::function<void()> &prepared)
{
    Statement statement;
    if (prepare(database.get(), sql, allowSelect, statement) != SQLITE_OK)
        return lastError();
    if (sqlite().columnCount(statement.get()) < columns)
        return Error {ErrorCode::Unloadable, QStringLiteral("too few columns in users")};
    if (prepared)
        prepared();
    return step(statement.get(), [&](sqlite3_stmt *at) {
        const QStringList texts = rowTexts(at, columns);
        return row(texts) ? sizeOf(texts) : noMore;
    });
}

Result<void> Sqlite::selectLiterals(
    const QString &sql,
    const std::function<bool(const QStringList &names, const QStringList &literals)> &row)
{
    Statement statement;
    if (prepare(database.get(), sql, allowSelect, statement) != SQLITE_OK)
        return lastError();
    QStringList names;
    for (int column = 0; column < sqlite().columnCount(statement.get()); ++column)
        names.append(QString::fromUtf8(sqlite().columnName(statement.get(), column)));
    return step(statement.get(), [&](sqlite3_stmt *at) {
        QStringList literals;
        for (int column = 0; column < names.size(); ++column)
            literals.append(literal(at, column));
        return row(names, literals) ? sizeOf(literals) : noMore;
    });
}

bool Sqlite::holdsNothing()
{
    const auto isEmpty = [this](const QString &sql) {
        Statement statement;
        if (prepare(database.get(), sql, allowEverySelect, statement) != SQLITE_OK)
            return false;
        return sqlite().step(statement.get()) == SQLITE_DONE;
    };
    return isEmpty(QStringLiteral("SELECT name FROM sqlite_master"))
        || (isEmpty(QStringLiteral("SELECT name FROM sqlite_master WHERE name<>'users'"))
            && isEmpty(QStringLiteral("SELECT * FROM users")));
}

Result<void> Sqlite::step(sqlite3_stmt *statement, const TakeRow &row)
{
    const StepLimit limit(database.get());
    int outcome = SQLITE_ROW;
    int rows = 0;
    qint64 answered = 0;
    while ((outcome = sqlite().step(statement)) == SQLITE_ROW) {
        const qint64 size = ++rows <= mostRows ? row(statement) : largestAnswer;
        if (size == noMore)
            return {};
        answered += size;
        if (answered > largestAnswer || rows > mostRows)
            return Error {ErrorCode::Unloadable, QStringLiteral("too much data in users")};
    }
    if (outcome != SQLITE_DONE)
        return lastError();
    return {};
}

} // namespace varnel
