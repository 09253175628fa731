#include "loginitems/PendingLoginItems.h"

#include "support/LogCapture.h"
#include "support/LoginItemsHome.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace Qt::Literals::StringLiterals;

namespace {

using Action = LoginItemChange;

class PendingLoginItemsTest : public testing::Test, protected LoginItemsHome {
protected:
    void user(const QString &name, const QByteArray &exec)
    {
        writeRaw(userFile(name), "[Desktop Entry]\nType=Application\nName=x\nExec=" + exec + '\n');
    }
};

} // namespace

TEST_F(PendingLoginItemsTest, ChangingTheSameItemTwiceKeepsOnlyTheSecondChangeAtTheEnd)
{
    pending.addDataToChangeDataList(Action::Disable, u"/opt/a"_s, false);
    pending.addDataToChangeDataList(Action::Disable, u"/opt/b"_s, false);
    pending.addDataToChangeDataList(Action::Enable, u"/opt/a"_s, false);
    EXPECT_EQ(changes,
              (QList<LoginItemChange> {{Action::Disable, u"/opt/b"_s, false},
                                       {Action::Enable, u"/opt/a"_s, false}}));
}

TEST_F(PendingLoginItemsTest, ARemoveAfterAnAddOfTheSamePathReplacesTheAdd)
{
    pending.addDataToChangeDataList(Action::Add, u"/opt/a"_s, false);
    pending.addDataToChangeDataList(Action::Remove, u"/opt/a"_s, true);
    EXPECT_EQ(changes, (QList<LoginItemChange> {{Action::Remove, u"/opt/a"_s, true}}));
}

TEST_F(PendingLoginItemsTest, OnlyTheFirstOfSeveralOlderChangesOfAPathIsReplaced)
{
    // No page makes such a list; one that was filled otherwise loses one entry, not all.
    changes = {{Action::Add, u"/opt/a"_s, false}, {Action::Disable, u"/opt/a"_s, false}};
    pending.addDataToChangeDataList(Action::Enable, u"/opt/a"_s, false);
    EXPECT_EQ(changes,
              (QList<LoginItemChange> {{Action::Disable, u"/opt/a"_s, false},
                                       {Action::Enable, u"/opt/a"_s, false}}));
}

TEST_F(PendingLoginItemsTest, PathsAreComparedLetterByLetter)
{
    pending.addDataToChangeDataList(Action::Add, u"/opt/A"_s, false);
    pending.addDataToChangeDataList(Action::Add, u"/opt/a"_s, false);
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(PendingLoginItemsTest, SavingMakesTheChangesInOrderEachWithItsRowAndEmptiesTheList)
{
    user(u"a.desktop"_s, "/opt/a");
    user(u"b.desktop"_s, "/opt/b");
    pending.addDataToChangeDataList(Action::Disable, u"/opt/b"_s, false);
    pending.addDataToChangeDataList(Action::Remove, u"/opt/a"_s, true);
    pending.addDataToChangeDataList(Action::Add, u"/opt/c"_s, false);
    EXPECT_TRUE(pending.saveChanges().isEmpty());
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(backupLines(), (QStringList {u"2 /opt/b 0"_s, u"0 /opt/a 1"_s, u"1 /opt/c 0"_s}));
    EXPECT_EQ(lines(), (QStringList {u"off /opt/b"_s, u"off /opt/c"_s}));
}

TEST_F(PendingLoginItemsTest, DroppingChangesNothing)
{
    user(u"a.desktop"_s, "/opt/a");
    pending.addDataToChangeDataList(Action::Remove, u"/opt/a"_s, true);
    pending.dropChanges();
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(lines(), QStringList {u"on /opt/a"_s});
    EXPECT_FALSE(QFile::exists(backupFile));
}

TEST_F(PendingLoginItemsTest, AnApostropheFailsTheRowAndTheChangeStillHappens)
{
    user(u"ann.desktop"_s, "\"/opt/ann's\"");
    ASSERT_EQ(lines(), QStringList {u"on /opt/ann's"_s});
    const LogCapture log;
    EXPECT_EQ(save(Action::Remove, u"/opt/ann's"_s, true).size(), 1);
    EXPECT_TRUE(lines().isEmpty());
    EXPECT_TRUE(backupLines().isEmpty());
    EXPECT_EQ(log.texts(u"varnel.backup"_s).filter(u"inserting data with error: "_s).size(), 1);
}

TEST_F(PendingLoginItemsTest, WhereDisablingCannotStoreTheEntryIsKeptAndTheLogSaysWhere)
{
    user(u"ann.desktop"_s, "\"/opt/ann's\"");
    const QByteArray before = readRaw(userFile(u"ann.desktop"_s));
    const LogCapture log;
    EXPECT_EQ(save(Action::Disable, u"/opt/ann's"_s).size(), 1);
    EXPECT_TRUE(lines().isEmpty()) << "removed all the same, and not in the store";
    const QString kept = session.keptIn(u"/opt/ann's"_s);
    ASSERT_FALSE(kept.isNull());
    EXPECT_TRUE(log.texts(u"varnel.io"_s).contains(u"/opt/ann's: kept in "_s + kept));
    EXPECT_TRUE(QFile::exists(kept));
    (void)access.writeData(Action::Enable, u"/opt/ann's"_s, false, false);
    EXPECT_EQ(readRaw(userFile(u"ann.desktop"_s)), before);
    EXPECT_EQ(lines(), QStringList {u"on /opt/ann's"_s});
}

TEST_F(PendingLoginItemsTest, StatementsInAPathDoNothingButFail)
{
    EXPECT_TRUE(save(Action::Add, u"/opt/a"_s).isEmpty());
    const LogCapture log;
    EXPECT_EQ(save(Action::Add, u"/x'); DROP TABLE users; --"_s).size(), 1);
    EXPECT_EQ(save(Action::Remove, u"/x'; DROP TABLE users; --"_s).size(), 1);
    EXPECT_TRUE(log.texts(u"varnel.loginitems"_s)
                    .contains(u"Failed to create the SQL query for deleting data with error: "
                              "not authorized"_s));
    EXPECT_EQ(stored(), QStringList {u"/opt/a"_s});
    EXPECT_EQ(backupLines(), QStringList {u"1 /opt/a 0"_s});
}

TEST(LoginItemActionString, NamesTheActionAndThePath)
{
    EXPECT_EQ(loginItemActionString(0, u"/A/%1%@.app"_s), u"Add \"/A/%1%@.app\""_s);
    EXPECT_EQ(loginItemActionString(1, u"/A/M.app"_s), u"Remove \"/A/M.app\""_s);
    EXPECT_EQ(loginItemActionString(2, u"/A/M.app"_s), u"Enable \"/A/M.app\""_s);
    EXPECT_EQ(loginItemActionString(3, u"/A/M.app"_s), u"Disable \"/A/M.app\""_s);
    EXPECT_EQ(loginItemActionString(4, u"/A/M.app"_s), u"Error"_s);
    EXPECT_EQ(loginItemActionString(-1, u"/A/M.app"_s), u"Error"_s);
}
