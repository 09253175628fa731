#include "base/Sqlite.h"
#include "unit/platform/StoreFixture.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct DatabasePlace : StoreFixture {
    QString database = home.path() + u"/Library/a.sqlite";
};
struct ForeignDatabasePlace : ForeignHome {
    QString database = home.path() + u"/Library/a.sqlite";
    [[nodiscard]] ErrorCode readyError()
    {
        const Result<FileStore::DatabasePlace> ready = store.readyForDatabase(database);
        return ready ? ErrorCode::Invalid : ready.error().code;
    }
};

bool fill(const QString &path)
{
    Result<Sqlite> opened = Sqlite::open(path, Sqlite::Access::Create);
    return opened
        && opened.value().run(u"CREATE TABLE users (value1 TEXT)"_s, Sqlite::Verb::CreateTable);
}

} // namespace

TEST_F(DatabasePlace, AMissingDatabaseBecomesAnEmptyFileThatTheLibraryTakes)
{
    ASSERT_TRUE(store.readyForDatabase(database));
    EXPECT_EQ(readRaw(database), QByteArray());
    EXPECT_EQ(modeOf(database), 0600U);
    EXPECT_TRUE(fill(database));
}

TEST_F(DatabasePlace, ADatabaseThatIsThereStaysAsItIs)
{
    ASSERT_TRUE(fill(database));
    const QByteArray before = readRaw(database);
    EXPECT_TRUE(store.readyForDatabase(database));
    EXPECT_EQ(readRaw(database), before);
}

TEST_F(DatabasePlace, AMissingFolderIsNotFoundAndNothingIsMade)
{
    const Result<FileStore::DatabasePlace> ready =
        store.readyForDatabase(home.path() + u"/none/a.sqlite");
    ASSERT_FALSE(ready.ok());
    EXPECT_EQ(ready.error().code, ErrorCode::NotFound);
    EXPECT_FALSE(QFileInfo::exists(home.path() + u"/none"));
}

TEST_F(DatabasePlace, InOnesOwnHomeALinkIsFollowedAndAJournalIsTheLibrarysBusiness)
{
    const QTemporaryDir outside;
    linkTo(outside.path() + u"/there.sqlite", database);
    writeRaw(database + u"-journal", "x");
    EXPECT_TRUE(store.readyForDatabase(database));
    EXPECT_TRUE(QFileInfo::exists(outside.path() + u"/there.sqlite"));
}

TEST_F(ForeignDatabasePlace, ALinkOutOfTheHomeIsRefusedWhetherItsTargetIsThereOrNot)
{
    const QTemporaryDir outside;
    const QString target = outside.path() + u"/planted";
    linkTo(target, database);
    handOver();
    EXPECT_EQ(readyError(), ErrorCode::NotPermitted);
    EXPECT_FALSE(QFileInfo::exists(target));
    EXPECT_FALSE(store.exists(database));
    ASSERT_TRUE(fill(target));
    EXPECT_EQ(readyError(), ErrorCode::NotPermitted);
    EXPECT_FALSE(store.exists(database));
}

TEST_F(ForeignDatabasePlace, AFolderThatLeadsOutOfTheHomeIsRefused)
{
    const QTemporaryDir outside;
    linkTo(outside.path(), home.path() + u"/Library/Backup");
    handOver();
    database = home.path() + u"/Library/Backup/a.sqlite";
    EXPECT_EQ(readyError(), ErrorCode::NotPermitted);
    EXPECT_TRUE(entriesOf(outside.path()).isEmpty());
}

TEST_F(ForeignDatabasePlace, ALinkThatStaysInTheHomeIsFollowed)
{
    writeRaw(home.path() + u"/Library/b.sqlite", {});
    linkTo(u"b.sqlite"_s, database);
    handOver();
    EXPECT_TRUE(store.readyForDatabase(database));
}

TEST_F(ForeignDatabasePlace, APlantedJournalIsRefused)
{
    ASSERT_TRUE(fill(database));
    for (const char16_t *ending : {u"-journal", u"-wal"}) {
        const QString journal = database + QString::fromUtf16(ending);
        writeRaw(journal, "x");
        handOver();
        EXPECT_EQ(readyError(), ErrorCode::NotPermitted);
        EXPECT_TRUE(QFile::remove(journal));
        EXPECT_EQ(readyError(), ErrorCode::Invalid) << "nothing is wrong any more";
    }
}
