#include "loginitems/DisabledItemsStore.h"
#include "base/Sqlite.h"
#include "platform/linux/LinuxFileStore.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"

#include <QFile>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace Qt::Literals::StringLiterals;

namespace {

class DisabledStore : public testing::Test {
protected:
    QStringList stored()
    {
        QStringList paths;
        (void)store.readDisabledLoginItemsData([&](const QString &path) {
            paths.append(path);
            return false;
        });
        return paths;
    }

    QTemporaryDir folder;
    LinuxFileStore files {{folder.path(), false}};
    DisabledItemsStore store {folder.path() + u'/', files};
};

} // namespace

TEST_F(DisabledStore, LiesInTheSupportFolderBehindADoubledSlash)
{
    EXPECT_EQ(store.path(), folder.path() + u"//disableLoginItems.sqlite");
}

TEST_F(DisabledStore, AddingTheSamePathTwiceStoresItOnce)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}));
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Clock.app"_s, {}));
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}));
    EXPECT_EQ(stored(), (QStringList {u"/A/Mail.app"_s, u"/A/Clock.app"_s}));
}

TEST_F(DisabledStore, APathThatIsListedAlreadyIsDeletedOnTheNextRead)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}));
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Clock.app"_s, {}));
    EXPECT_TRUE(store.readDisabledLoginItemsData(
        [](const QString &path) { return path == u"/A/Mail.app"; }));
    EXPECT_EQ(stored(), (QStringList {u"/A/Clock.app"_s}));
}

TEST_F(DisabledStore, DeletingAPathThatIsNotStoredSucceeds)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}));
    EXPECT_TRUE(store.deleteDisabledLoginItemsData(u"/A/None.app"_s));
    EXPECT_EQ(stored().size(), 1);
    EXPECT_TRUE(store.deleteDisabledLoginItemsData(u"/A/Mail.app"_s));
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(DisabledStore, BeforeTheFirstAdditionReadingMakesNoFileAndDeletingFails)
{
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_FALSE(QFile::exists(store.path()));
    const Result<void> deleted = store.deleteDisabledLoginItemsData(u"/A/Mail.app"_s);
    ASSERT_FALSE(deleted.ok());
    EXPECT_EQ(deleted.error().text, u"no such table: users"_s);
}

TEST_F(DisabledStore, APathWithAnApostropheIsNotStored)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}));
    EXPECT_FALSE(store.addDisabledLoginItemsData(u"/A/Ann's.app"_s, {}).ok());
    EXPECT_EQ(stored(), (QStringList {u"/A/Mail.app"_s}));
}

TEST_F(DisabledStore, APathWithAStatementInItDoesNothing)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}));
    EXPECT_FALSE(store.addDisabledLoginItemsData(u"x'); DROP TABLE users; --"_s, {}).ok());
    EXPECT_FALSE(store.deleteDisabledLoginItemsData(u"x'; DROP TABLE users; --"_s).ok());
    EXPECT_EQ(stored(), (QStringList {u"/A/Mail.app"_s}));
}

TEST_F(DisabledStore, APathThatWidensTheConditionOfADeletionEmptiesTheStore)
{
    // The price of values that go in as they are: within its own verb a text may say more than was
    // meant.
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}));
    EXPECT_TRUE(store.deleteDisabledLoginItemsData(u"x' OR '1'='1"_s));
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(DisabledStore, EachOperationLogsItsStatements)
{
    const auto logged = [&](const auto &operation) {
        const LogCapture log;
        operation();
        return log.texts();
    };
    const QString search =
        u"searchQuery (addDisabledLoginItemsData): SELECT * FROM users WHERE value1='/A/Mail.app'"_s;
    EXPECT_EQ(logged([&] { (void)stored(); }),
              QStringList {u"searchQuery (readDisabledLoginItemsData): SELECT * FROM users"_s});
    EXPECT_EQ(
        logged([&] { (void)store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}); }),
        (QStringList {
            u"Opened sqlite database at (null)"_s, search,
            u"query (addDisabledLoginItemsData): INSERT INTO users VALUES('/A/Mail.app')"_s}));
    EXPECT_EQ(logged([&] {
                  (void)store.addDisabledLoginItemsData(u"/A/Mail.app"_s, u"quillet3.sqlite"_s);
              }),
              (QStringList {u"Opened sqlite database at quillet3.sqlite"_s, search}))
        << "the log names the backup file that was opened last, not the store";
    EXPECT_EQ(
        logged([&] { (void)store.deleteDisabledLoginItemsData(u"/A/Mail.app"_s); }),
        (QStringList {
            u"query (deleteDisabledLoginItemsData): DELETE FROM users WHERE value1='/A/Mail.app'"_s}));
}

TEST_F(DisabledStore, BeforeTheFirstAdditionADeletionLogsItsFailure)
{
    const LogCapture log;
    (void)store.deleteDisabledLoginItemsData(u"/A/Mail.app"_s);
    EXPECT_EQ(
        log.texts().last(),
        u"Failed to create the SQL query for deleting data with error: no such table: users"_s);
}

TEST_F(DisabledStore, FailuresAreLoggedWithTheLibrarysText)
{
    const LogCapture log;
    EXPECT_FALSE(store.addDisabledLoginItemsData(u"/A/Ann's.app"_s, {}).ok());
    EXPECT_EQ(log.texts().last(),
              u"Failed to create the SQL query for inserting data with error: "
              "near \"s\": syntax error"_s);
}

TEST_F(DisabledStore, ATableThatCannotBeMadeIsLoggedAndTheRestIsTried)
{
    writeRaw(store.path(), QByteArray(4096, 'x'));
    const LogCapture log;
    EXPECT_FALSE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}).ok());
    const QStringList texts = log.texts();
    ASSERT_EQ(texts.size(), 5);
    EXPECT_EQ(texts[1],
              u"Failed to create the SQL query for creating a table with error: "
              "file is not a database"_s);
    EXPECT_EQ(texts[4],
              u"Failed to create the SQL query for inserting data with error: "
              "file is not a database"_s);
}

TEST_F(DisabledStore, APathThatIsThereTwiceGoesAltogetherWhenTheListIsRead)
{
    // No addition makes such a store. The deletion of the second row names the path, so both go;
    // the path is shown this once.
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}));
    Sqlite database = Sqlite::open(store.path(), Sqlite::Access::Create).value();
    EXPECT_TRUE(database.run(u"INSERT INTO users VALUES('/A/Mail.app')"_s, Sqlite::Verb::Insert));
    QSet<QString> seen;
    EXPECT_TRUE(store.readDisabledLoginItemsData([&](const QString &path) {
        const bool known = seen.contains(path);
        seen.insert(path);
        return known;
    }));
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(DisabledStore, APathThatWidensASearchIsTakenForStored)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Mail.app"_s, {}));
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"x' OR '1'='1"_s, {})) << "and not inserted";
    EXPECT_EQ(stored(), QStringList {u"/A/Mail.app"_s});
}

TEST_F(DisabledStore, TheStandardToolFindsTheTable)
{
    if (QStandardPaths::findExecutable(u"sqlite3"_s).isEmpty())
        GTEST_SKIP() << "no sqlite3 tool";
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Größe.app"_s, {}));
    QProcess tool;
    tool.start(u"sqlite3"_s, {store.path(), u".schema"_s, u"SELECT * FROM users"_s});
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_EQ(QString::fromUtf8(tool.readAllStandardOutput()),
              u"CREATE TABLE users (value1 TEXT);\n/A/Größe.app\n"_s);
}
