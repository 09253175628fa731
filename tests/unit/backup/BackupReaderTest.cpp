#include "backup/BackupReader.h"

#include "backup/BackupWriter.h"
#include "base/Sqlite.h"
#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <random>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString corpus = QStringLiteral(TEST_DATA "/backups/");

/// A folder's entries with everything that a reader might change.
QStringList factsOf(const QString &folder)
{
    QStringList facts;
    for (const QString &name : entriesOf(folder)) {
        const struct stat status = statusOf(folder + u'/' + name);
        QString line = name;
        for (const auto number : {qint64(status.st_ino), qint64(status.st_mode),
                                  qint64(status.st_size), qint64(status.st_mtim.tv_sec),
                                  qint64(status.st_mtim.tv_nsec), qint64(status.st_ctim.tv_nsec)})
            line += u' ' + QString::number(number);
        if (S_ISREG(status.st_mode))
            line += u' ' + QString::fromLatin1(readRaw(folder + u'/' + name).toHex());
        facts.append(line);
    }
    return facts;
}

/// Copies of corpus files in a folder of their own, watched over from here on.
class BackupReaderTest : public testing::Test {
protected:
    void take(const QString &name)
    {
        for (const char16_t *ending : {u".sqlite", u".sqlite-journal", u".sqlite-wal"}) {
            const QString file = name + QString::fromUtf16(ending);
            if (QFile::exists(corpus + file))
                writeRaw(path(file), readRaw(corpus + file));
        }
    }
    [[nodiscard]] QString path(const QString &file) const { return home.path() + u'/' + file; }

    /// Reads, and sees to it that nothing changed by that.
    [[nodiscard]] Result<QList<BackupRow>> read(const QString &file) const
    {
        const QStringList before = factsOf(home.path());
        Result<QList<BackupRow>> rows = readBackupRows(path(file));
        EXPECT_EQ(factsOf(home.path()), before) << qPrintable(file);
        return rows;
    }
    [[nodiscard]] QList<BackupRow> rowsOf(const QString &name)
    {
        take(name);
        const Result<QList<BackupRow>> rows = read(name + u".sqlite");
        EXPECT_TRUE(rows.ok()) << qPrintable(name + u": " + (rows ? u""_s : rows.error().text));
        return rows ? rows.value() : QList<BackupRow>();
    }

    TemporaryHome home;
};

const QList<BackupRow> plainRows {
    {1008, u"2"_s, u""_s, u""_s},
    {1400, u"0"_s, u"Größe"_s, u""_s},
    {250, u"/Applications/Mail.app"_s, u"1"_s, u"0"_s},
};

void sqlite3Tool(const QString &path, const QString &sql)
{
    QProcess process;
    process.start(u"sqlite3"_s, {u"-batch"_s, path, sql});
    ASSERT_TRUE(process.waitForFinished());
    ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
}

} // namespace

TEST_F(BackupReaderTest, RowsComeInFileOrder)
{
    EXPECT_EQ(rowsOf(u"plain"_s), plainRows);
    EXPECT_EQ(rowsOf(u"no-rows"_s), QList<BackupRow>());
}

TEST_F(BackupReaderTest, TheNameOfTheTableMayBeInOtherLetterCase)
{
    EXPECT_EQ(rowsOf(u"other-case"_s), plainRows);
}

TEST_F(BackupReaderTest, TriggersStandAsleep)
{
    EXPECT_EQ(rowsOf(u"trigger"_s), QList<BackupRow>());
}

TEST_F(BackupReaderTest, OfManyColumnsTheFirstFourCount)
{
    EXPECT_EQ(rowsOf(u"sixteen-columns"_s),
              (QList<BackupRow> {{1000, u"1001"_s, u"1002"_s, u"1003"_s}}));
}

TEST_F(BackupReaderTest, ANumberInTextIsItsLeadingDigits)
{
    EXPECT_EQ(rowsOf(u"text-id"_s),
              (QList<BackupRow> {{1009, u"1"_s, u""_s, u""_s},
                                 {1010, u"1"_s, u""_s, u""_s},
                                 {0, u"1"_s, u""_s, u""_s}}));
}

TEST_F(BackupReaderTest, OddTypesAreReadAsTextAndNullsAsEmpty)
{
    const QList<BackupRow> rows = rowsOf(u"odd-types"_s);
    ASSERT_EQ(rows.size(), 5);
    EXPECT_EQ(rows[0].id, 1008);
    EXPECT_EQ(rows[0].settingAction(), 2);
    EXPECT_EQ(rows[0].extraData(), u"");
    EXPECT_FALSE(rows[0].extraData().isNull());
    EXPECT_EQ(rows[1].id, 0);
    EXPECT_EQ(rows[2].id, 1004);
    EXPECT_EQ(rows[2].settingAction(), 48);
    EXPECT_EQ(rows[3].id, std::numeric_limits<int>::max());
    EXPECT_FALSE(rows[4].isLoginItem());
}

TEST_F(BackupReaderTest, TextEndsAtANulAndBytesThatAreNoTextAreReplaced)
{
    EXPECT_EQ(rowsOf(u"nul"_s)[0].extraData(), u"a");
    EXPECT_EQ(rowsOf(u"not-utf8"_s)[0].extraData(), u"a\uFFFDb\uFFFD");
}

TEST_F(BackupReaderTest, WhatIsNoBackupFileIsAnError)
{
    for (const char16_t *name :
         {u"three-columns", u"no-table", u"view", u"endless-view", u"full-text", u"empty",
          u"empty-with-log", u"words", u"cut", u"header-only", u"generated",
          u"generated-by-function", u"swelling", u"doubling", u"endless-tree", u"names-others"}) {
        const QString file = QString::fromUtf16(name);
        take(file);
        const Result<QList<BackupRow>> rows = read(file + u".sqlite");
        ASSERT_FALSE(rows.ok()) << qPrintable(file);
        EXPECT_TRUE(rows.error().text.startsWith(path(file + u".sqlite: ")))
            << qPrintable(rows.error().text);
    }
}

TEST_F(BackupReaderTest, ASearchThatFindsNothingInATreeWithoutEndIsGivenUp)
{
    take(u"endless-tree"_s);
    Result<Sqlite> database =
        Sqlite::open(path(u"endless-tree.sqlite"_s), Sqlite::Access::ReadOnly);
    ASSERT_TRUE(database.ok());
    int rows = 0;
    const Result<void> searched = database.value().select(
        u"SELECT * FROM users WHERE value1='no such value'"_s, 4, [&](const QStringList &) {
            ++rows;
            return true;
        });
    ASSERT_FALSE(searched.ok());
    EXPECT_EQ(searched.error().text, u"interrupted"_s);
    EXPECT_EQ(rows, 0);
}

TEST_F(BackupReaderTest, ASaveThatWasKilledReadsAsBeforeItAndStaysAsItWasLeft)
{
    EXPECT_EQ(rowsOf(u"killed-save"_s), plainRows);
}

TEST_F(BackupReaderTest, AWriteAheadLogIsReadAndNothingIsMadeBesideIt)
{
    EXPECT_EQ(rowsOf(u"with-log"_s), plainRows);
    EXPECT_EQ(rowsOf(u"log-lost"_s), plainRows.first(2));
}

TEST_F(BackupReaderTest, AValueLargerThanAnyOfOursMakesTheFileUnreadable)
{
    if (QStandardPaths::findExecutable(u"sqlite3"_s).isEmpty())
        GTEST_SKIP() << "no sqlite3 tool";
    take(u"plain"_s);
    sqlite3Tool(path(u"plain.sqlite"_s),
                u"INSERT INTO users VALUES(1400,'0',hex(zeroblob(1000000)),'')"_s);
    EXPECT_FALSE(read(u"plain.sqlite"_s).ok());
}

TEST_F(BackupReaderTest, WhatTheStandardToolWroteIsRead)
{
    if (QStandardPaths::findExecutable(u"sqlite3"_s).isEmpty())
        GTEST_SKIP() << "no sqlite3 tool";
    sqlite3Tool(path(u"tool.sqlite"_s),
                u"CREATE TABLE users (id INTEGER NOT NULL,value1 TEXT, value2 TEXT, value3 TEXT);"
                u"INSERT INTO users VALUES('1008','2','','');"
                u"INSERT INTO users VALUES('250','/a ''b''.app','0','1');"_s);
    const Result<QList<BackupRow>> rows = read(u"tool.sqlite"_s);
    ASSERT_TRUE(rows.ok());
    EXPECT_EQ(
        rows.value(),
        (QList<BackupRow> {{1008, u"2"_s, u""_s, u""_s}, {250, u"/a 'b'.app"_s, u"0"_s, u"1"_s}}));
}

TEST_F(BackupReaderTest, ALockedFileIsAnErrorAtOnce)
{
    if (QStandardPaths::findExecutable(u"sqlite3"_s).isEmpty())
        GTEST_SKIP() << "no sqlite3 tool";
    take(u"plain"_s);
    QProcess other;
    other.start(u"sqlite3"_s, {u"-batch"_s, path(u"plain.sqlite"_s)});
    other.write("BEGIN EXCLUSIVE;\n.print locked\n");
    ASSERT_TRUE(other.waitForReadyRead());
    EXPECT_FALSE(read(u"plain.sqlite"_s).ok());
    other.write("ROLLBACK;\n.quit\n");
    ASSERT_TRUE(other.waitForFinished());
    EXPECT_EQ(read(u"plain.sqlite"_s).value(), plainRows);
}

TEST_F(BackupReaderTest, ReadingMakesNoFile)
{
    const Result<QList<BackupRow>> rows = read(u"none.sqlite"_s);
    ASSERT_FALSE(rows.ok());
    EXPECT_EQ(rows.error().code, ErrorCode::NotFound);
}

TEST_F(BackupReaderTest, FoldersPipesAndLinksThatLeadNowhereAreErrorsAndNeverWaitedFor)
{
    ASSERT_TRUE(QDir(home.path()).mkdir(u"folder.sqlite"_s));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"pipe.sqlite"_s)).constData(), 0600), 0);
    linkTo(u"nowhere"_s, path(u"dangling.sqlite"_s));
    for (const QString &name : {u"folder.sqlite"_s, u"pipe.sqlite"_s, u"dangling.sqlite"_s})
        EXPECT_FALSE(read(name).ok()) << qPrintable(name);
}

TEST_F(BackupReaderTest, APipeOrLinkInTheJournalsPlaceIsNotFollowed)
{
    for (const char16_t *ending : {u"-journal", u"-wal"}) {
        const QString companion = path(u"plain.sqlite" + QString::fromUtf16(ending));
        take(u"plain"_s);
        ASSERT_EQ(::mkfifo(QFile::encodeName(companion).constData(), 0600), 0);
        EXPECT_FALSE(read(u"plain.sqlite"_s).ok());
        ASSERT_TRUE(QFile::remove(companion));
        linkTo(u"elsewhere"_s, companion);
        EXPECT_FALSE(read(u"plain.sqlite"_s).ok());
        ASSERT_TRUE(QFile::remove(companion));
    }
}

TEST_F(BackupReaderTest, ALinkIsReadWithWhatStandsBesideItsTarget)
{
    take(u"killed-save"_s);
    linkTo(u"killed-save.sqlite"_s, path(u"link.sqlite"_s));
    const Result<QList<BackupRow>> rows = read(u"link.sqlite"_s);
    ASSERT_TRUE(rows.ok());
    EXPECT_EQ(rows.value(), plainRows);
}

TEST_F(BackupReaderTest, DamagedFilesAreReadToTheEndOrNotAtAll)
{
    std::mt19937 random(20261121); // always the same damage
    const auto hit = [&random](QByteArray &bytes) {
        const auto place = qsizetype(random()) % bytes.size();
        bytes[place] = static_cast<char>(random() & 0xff);
    };
    const QByteArray whole = readRaw(corpus + u"plain.sqlite");
    const QByteArray journal = readRaw(corpus + u"killed-save.sqlite-journal");
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = whole;
        QByteArray left = journal;
        for (int hits = 1 + round % 8; hits > 0; --hits) {
            hit(bytes);
            hit(left);
        }
        writeRaw(path(u"damaged.sqlite"_s), bytes);
        if (round % 2 == 1)
            writeRaw(path(u"damaged.sqlite-journal"_s), left);
        const Result<QList<BackupRow>> rows = read(u"damaged.sqlite"_s);
        EXPECT_LE(rows ? rows.value().size() : 0, 100);
        (void)QFile::remove(path(u"damaged.sqlite-journal"_s));
    }
}
