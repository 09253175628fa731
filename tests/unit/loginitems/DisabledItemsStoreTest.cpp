#include "loginitems/DisabledItemsStore.h"
#include "base/Sqlite.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace varnel;
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
    DisabledItemsStore store {folder.path() + u'/'};
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
