#include "backup/BackupWriter.h"

#include "platform/linux/LinuxFileStore.h"
#include "settings/PendingChanges.h"
#include "support/LogCapture.h"
#include "support/SettingsHome.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// What the standard tool prints for a statement: a line for each row, columns parted by "|".
QStringList sqlite3Tool(const QString &path, const QString &sql)
{
    QProcess process;
    process.start(u"sqlite3"_s, {u"-batch"_s, u"-nullvalue"_s, u"NULL"_s, path, sql});
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error(process.readAllStandardError().constData());
    return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

class BackupWriterTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(u"sqlite3"_s).isEmpty())
            GTEST_SKIP() << "no sqlite3 tool";
    }

    QStringList rows() const { return sqlite3Tool(path, u"SELECT * FROM users"_s); }
    QStringList logged() const { return log.texts(u"varnel.backup"_s); }

    TemporaryHome home;
    QString path = home.path() + u"/quillet1.sqlite";
    LogCapture log;
    LinuxFileStore store {home.home()};
    BackupWriter writer {path, store};
};

} // namespace

TEST_F(BackupWriterTest, NothingWrittenMakesNoFile)
{
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(BackupWriterTest, TheStandardToolReadsTheTableAndItsRows)
{
    ASSERT_TRUE(writer.addDataToBackupFile({1009, 2, u""_s}).ok());
    ASSERT_TRUE(writer.addDataToBackupFile({1400, 0, u"Größe \U0001F600"_s}).ok());
    ASSERT_TRUE(writer.addDataToBackupFile({1004, -1, u""_s}).ok());
    EXPECT_EQ(rows(), (QStringList {u"1009|2||"_s, u"1400|0|Größe \U0001F600|"_s, u"1004|-1||"_s}));
    EXPECT_EQ(
        sqlite3Tool(path, u"SELECT sql FROM sqlite_master"_s),
        QStringList {
            u"CREATE TABLE users (id INTEGER NOT NULL,value1 TEXT, value2 TEXT, value3 TEXT)"_s});
    EXPECT_EQ(
        sqlite3Tool(
            path,
            u"SELECT typeof(id), typeof(value1), typeof(value2), typeof(value3) FROM users LIMIT 1"_s),
        QStringList {u"integer|text|text|text"_s});
    EXPECT_EQ(sqlite3Tool(path, u"PRAGMA integrity_check"_s), QStringList {u"ok"_s});
}

TEST_F(BackupWriterTest, ASettingSavedTwiceLeavesOneRowWithTheOldestValue)
{
    ASSERT_TRUE(writer.addDataToBackupFile({1009, 2, u""_s}).ok());
    ASSERT_TRUE(writer.addDataToBackupFile({1009, 0, u"later"_s}).ok());
    EXPECT_EQ(rows(), QStringList {u"1009|2||"_s});
}

TEST_F(BackupWriterTest, ALaterWriterOfTheSameFileKeepsTheOldestValueToo)
{
    ASSERT_TRUE(writer.addDataToBackupFile({1009, 2, u""_s}).ok());
    ASSERT_TRUE(BackupWriter(path, store).addDataToBackupFile({1009, 0, u""_s}).ok());
    ASSERT_TRUE(BackupWriter(path, store).addDataToBackupFile({1300, 3, u""_s}).ok());
    EXPECT_EQ(rows(), (QStringList {u"1009|2||"_s, u"1300|3||"_s}));
}

TEST_F(BackupWriterTest, ALoginItemRowWithTheSameTextDoesNotStandInTheWay)
{
    ASSERT_TRUE(writer.addDataToBackupFile({1009, 2, u""_s}).ok());
    (void)sqlite3Tool(path, u"INSERT INTO users VALUES(250, '0', '1', '0')"_s);
    ASSERT_TRUE(writer.addDataToBackupFile({1300, 0, u""_s}).ok());
    EXPECT_EQ(rows(), (QStringList {u"1009|2||"_s, u"250|0|1|0"_s, u"1300|0||"_s}));
}

TEST_F(BackupWriterTest, ANewRowIsLoggedStepByStep)
{
    ASSERT_TRUE(writer.addDataToBackupFile({1400, 0, u"it is"_s}).ok());
    EXPECT_EQ(logged(),
              (QStringList {
                  u"addDataToBackupFile (Quillet): "_s + path,
                  u"Opened sqlite database at "_s + path,
                  u"Create the SQL query for creating a table"_s,
                  u"searchQuery (LoginItemsView): SELECT * FROM users WHERE id=1400"_s,
                  u"Data found1!"_s,
                  u"query (LoginItemsView): INSERT INTO users VALUES('1400','0', 'it is', '')"_s,
                  u"Create the SQL query for inserting data"_s,
              }));
}

TEST_F(BackupWriterTest, ARowThatIsThereAlreadyEndsTheLogAtItsFinding)
{
    ASSERT_TRUE(writer.addDataToBackupFile({1009, 2, u""_s}).ok());
    const qsizetype before = logged().size();
    ASSERT_TRUE(writer.addDataToBackupFile({1009, 1, u""_s}).ok());
    EXPECT_EQ(logged().mid(before),
              (QStringList {
                  u"addDataToBackupFile (Quillet): "_s + path,
                  u"Opened sqlite database at "_s + path,
                  u"Create the SQL query for creating a table"_s,
                  u"searchQuery (LoginItemsView): SELECT * FROM users WHERE id=1009"_s,
                  u"Data found1!"_s,
                  u"Data found2!"_s,
              }));
}

TEST_F(BackupWriterTest, AMissingFolderWritesNothingLogsNothingMoreAndIsTold)
{
    const QString inMissing = home.path() + u"/none/quillet1.sqlite";
    const Result<void> written =
        BackupWriter(inMissing, store).addDataToBackupFile({1009, 2, u""_s});
    ASSERT_FALSE(written.ok());
    EXPECT_TRUE(written.error().text.contains(inMissing));
    EXPECT_EQ(logged(), QStringList {u"addDataToBackupFile (Quillet): "_s + inMissing});
    EXPECT_FALSE(QDir(home.path() + u"/none").exists());
}

TEST_F(BackupWriterTest, ATextWithAnApostropheFailsWithTheLibrarysText)
{
    const Result<void> written = writer.addDataToBackupFile({1400, 0, u"it's"_s});
    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().text, path + u": near \"s\": syntax error");
    EXPECT_EQ(
        logged().mid(5),
        (QStringList {
            u"query (LoginItemsView): INSERT INTO users VALUES('1400','0', 'it's', '')"_s,
            u"Failed to create the SQL query for inserting data with error: near \"s\": syntax error"_s,
        }));
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(BackupWriterTest, NothingBehindTheFirstStatementRuns)
{
    ASSERT_TRUE(writer.addDataToBackupFile({1009, 2, u""_s}).ok());
    const QStringList texts {
        u"x'); DROP TABLE users; --"_s,
        u"x',''); DROP TABLE users; --"_s,
        u"x',''); DELETE FROM users; --"_s,
        u"x',''); INSERT INTO users VALUES(1,'2','3','4'); --"_s,
        u"x','');; ; UPDATE users SET value1='9'; --"_s,
        u"x',''); ATTACH 'other.sqlite' AS other; --"_s,
    };
    for (const QString &text : texts) {
        const Result<void> written = writer.addDataToBackupFile({1400, 0, text});
        EXPECT_FALSE(written.ok()) << text.toStdString();
        EXPECT_TRUE(logged().last().startsWith(
            u"Failed to create the SQL query for inserting data with error: "_s))
            << text.toStdString();
        EXPECT_EQ(rows(), QStringList {u"1009|2||"_s}) << text.toStdString();
    }
}

TEST_F(BackupWriterTest, ANullTextIsKeptAsTheWordThatItPrints)
{
    ASSERT_TRUE(writer.addDataToBackupFile({1400, 0, QString()}).ok());
    EXPECT_EQ(rows(), QStringList {u"1400|0|(null)|"_s});
}

TEST_F(BackupWriterTest, PlaceholdersInATextAreNotFilledIn)
{
    ASSERT_TRUE(writer.addDataToBackupFile({1400, 0, u"%@ %d %1"_s}).ok());
    EXPECT_EQ(rows(), QStringList {u"1400|0|%@ %d %1|"_s});
}

TEST_F(BackupWriterTest, AFileThatIsNoDatabaseIsLeftAloneAndEachStepSaysSo)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    EXPECT_FALSE(writer.addDataToBackupFile({1009, 2, u""_s}).ok());
    EXPECT_EQ(
        logged().mid(2),
        (QStringList {
            u"Failed to create the SQL query for creating a table with error: file is not a database"_s,
            u"searchQuery (LoginItemsView): SELECT * FROM users WHERE id=1009"_s,
            u"query (LoginItemsView): INSERT INTO users VALUES('1009','2', '', '')"_s,
            u"Failed to create the SQL query for inserting data with error: file is not a database"_s,
        }));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray(4096, 'x'));
}

TEST_F(BackupWriterTest, AFailedBackupNeverBlocksTheSave)
{
    SettingsHome settings;
    QList<ChangeRecord> changes;
    QList<ChangeRecord> backups;
    PendingChanges pending(changes, backups, settings.flags, settings.access, writer);
    pending.addDataToBackupDataList(1400, 0, u"it's"_s);
    pending.addDataToChangeDataList(1400, 0, u"new"_s);
    const QList<SaveFailure> failures = pending.saveChanges();
    ASSERT_EQ(failures.size(), 1);
    EXPECT_EQ(failures[0].step, SaveFailure::Step::Backup);
    EXPECT_EQ(settings.read(1400).value, (SettingValue {0, u"new"_s}));
}

TEST_F(BackupWriterTest, SavingTwiceInOneRunLeavesOneRowForEachSettingWithTheOldestValue)
{
    SettingsHome settings;
    settings.put(u"com.apple.dock.plist"_s, u"<key>autohide</key><false/>"_s);
    QList<ChangeRecord> changes;
    QList<ChangeRecord> backups;
    PendingChanges pending(changes, backups, settings.flags, settings.access, writer);
    for (const int value : {0, 2}) {
        const SettingReading old = settings.read(1009);
        pending.addDataToBackupDataList(1009, old.value.number, old.value.text);
        pending.addDataToChangeDataList(1009, value, u""_s);
        EXPECT_TRUE(pending.saveChanges().isEmpty());
    }
    EXPECT_EQ(rows(), QStringList {u"1009|1||"_s});
    EXPECT_FALSE(settings.read(1009).found);
}
