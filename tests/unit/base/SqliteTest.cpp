#include "base/Sqlite.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace Qt::Literals::StringLiterals;

namespace {

class SqliteFile : public testing::Test {
protected:
    Sqlite open(Sqlite::Access access = Sqlite::Access::Create)
    {
        Result<Sqlite> database = Sqlite::open(path, access);
        EXPECT_TRUE(database.ok());
        return std::move(database).value();
    }

    /// A table with the rows "a" and "b".
    Sqlite filled()
    {
        Sqlite database = open();
        EXPECT_TRUE(database.run(QStringLiteral("CREATE TABLE IF NOT EXISTS users (value1 TEXT)"),
                                 Sqlite::Verb::CreateTable));
        for (const char16_t letter : {u'a', u'b'})
            EXPECT_TRUE(database.run(u"INSERT INTO users VALUES('"_s + letter + u"')",
                                     Sqlite::Verb::Insert));
        return database;
    }

    static QStringList values(Sqlite &database)
    {
        QStringList list;
        EXPECT_TRUE(
            database.select(QStringLiteral("SELECT * FROM users"), 1, [&](const QStringList &row) {
                list.append(row[0]);
                return true;
            }));
        return list;
    }

    QTemporaryDir folder;
    QString path = folder.path() + u"/a.sqlite";
};

} // namespace

TEST_F(SqliteFile, RowsComeBackInTheirOrder)
{
    Sqlite database = filled();
    EXPECT_EQ(values(database), (QStringList {u"a"_s, u"b"_s}));
}

TEST_F(SqliteFile, SelectStopsWhenTheCallerHasEnough)
{
    Sqlite database = filled();
    int calls = 0;
    EXPECT_TRUE(database.select(u"SELECT * FROM users"_s, 1, [&](const QStringList &) {
        ++calls;
        return false;
    }));
    EXPECT_EQ(calls, 1);
}

TEST_F(SqliteFile, ASecondStatementFailsTheWholeText)
{
    Sqlite database = filled();
    const Result<void> run = database.run(
        u"INSERT INTO users VALUES('x'); DROP TABLE users; --')"_s, Sqlite::Verb::Insert);
    ASSERT_FALSE(run.ok());
    EXPECT_EQ(run.error().text, u"not authorized"_s);
    EXPECT_EQ(values(database), (QStringList {u"a"_s, u"b"_s}));
}

TEST_F(SqliteFile, ATextMayDoItsOwnVerbOnly)
{
    Sqlite database = filled();
    EXPECT_FALSE(database.run(u"DELETE FROM users"_s, Sqlite::Verb::Insert).ok());
    EXPECT_FALSE(database.run(u"INSERT INTO users VALUES('x')"_s, Sqlite::Verb::Delete).ok());
    EXPECT_FALSE(database.run(u"DROP TABLE users"_s, Sqlite::Verb::Delete).ok());
    EXPECT_FALSE(database.run(u"ATTACH '/etc/passwd' AS p"_s, Sqlite::Verb::Insert).ok());
    EXPECT_FALSE(database.run(u"CREATE TABLE other (a)"_s, Sqlite::Verb::CreateTable).ok());
    EXPECT_FALSE(database
                     .run(u"INSERT INTO users VALUES((SELECT name FROM sqlite_master))"_s,
                          Sqlite::Verb::Insert)
                     .ok());
    EXPECT_EQ(values(database), (QStringList {u"a"_s, u"b"_s}));
}

TEST_F(SqliteFile, AnApostropheFailsWithTheLibrarysText)
{
    Sqlite database = filled();
    const Result<void> run =
        database.run(u"INSERT INTO users VALUES('it's')"_s, Sqlite::Verb::Insert);
    ASSERT_FALSE(run.ok());
    EXPECT_TRUE(run.error().text.contains(u"syntax error")) << run.error().text.toStdString();
}

TEST_F(SqliteFile, ADeleteWhoseConditionWasWidenedStaysInItsTable)
{
    Sqlite database = filled();
    EXPECT_TRUE(
        database.run(u"DELETE FROM users WHERE value1='x' OR '1'='1'"_s, Sqlite::Verb::Delete));
    EXPECT_TRUE(values(database).isEmpty());
}

TEST_F(SqliteFile, ReadingMakesNoFile)
{
    EXPECT_EQ(Sqlite::open(path, Sqlite::Access::ReadOnly).error().code, ErrorCode::NotFound);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(SqliteFile, WhatIsNoRegularFileIsNotOpened)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_EQ(Sqlite::open(path, Sqlite::Access::ReadOnly).error().code, ErrorCode::NotAFile);
    EXPECT_EQ(Sqlite::open(path, Sqlite::Access::Create).error().code, ErrorCode::NotAFile);
    EXPECT_EQ(Sqlite::open(folder.path(), Sqlite::Access::Create).error().code,
              ErrorCode::NotAFile);
}

TEST_F(SqliteFile, WhatIsNoDatabaseFailsAtItsFirstStatement)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    Sqlite database = open(Sqlite::Access::ReadOnly);
    const Result<void> read =
        database.select(u"SELECT * FROM users"_s, 1, [](const QStringList &) { return true; });
    ASSERT_FALSE(read.ok());
    EXPECT_EQ(read.error().text, u"file is not a database"_s);
}

TEST_F(SqliteFile, TooFewColumnsAreAnError)
{
    Sqlite database = filled();
    EXPECT_FALSE(
        database.select(u"SELECT * FROM users"_s, 4, [](const QStringList &) { return true; })
            .ok());
}

TEST_F(SqliteFile, ATextComesBackWithTheSpaceWithoutWidthAtItsStart)
{
    Sqlite database = open();
    ASSERT_TRUE(database.run(QStringLiteral("CREATE TABLE users (value1 TEXT)"),
                             Sqlite::Verb::CreateTable));
    ASSERT_TRUE(
        database.run(QStringLiteral("INSERT INTO users VALUES('\uFEFFa')"), Sqlite::Verb::Insert));
    EXPECT_EQ(values(database), QStringList {QStringLiteral("\uFEFFa")});
}
