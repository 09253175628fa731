#include "support/LoginItemsHome.h"
#include "support/FailingFileStore.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace Qt::Literals::StringLiterals;

namespace {

using Action = LoginItemChange;

const QString clockPath = u"/opt/clock"_s;
const QByteArray clockEntry =
    "# a comment ahead\n\n[Desktop Entry]\nType=Application\nName=Clock\nName[de]=Uhr\n"
    "Name[ja]=\xe6\x99\x82\xe8\xa8\x88\n# a comment within\nExec = /opt/clock\nActions=New;Old;\n"
    "X-Own-Key=  blanks and ; all\n\n[Desktop Action New]\nName=New\nExec=/opt/clock --new\n"
    "[X-Another Group]\nkey=value\n# the end";

/// Disable and enable, and the five restores, on real folders.
class LoginItemsInAHome : public testing::Test, protected LoginItemsHome {
protected:
    void enabledClock() { writeRaw(userFile(u"clock.desktop"_s), clockEntry); }
};

} // namespace

TEST_F(LoginItemsInAHome, DisabledThenEnabledAnEntryIsTheSameByteForByte)
{
    enabledClock();
    EXPECT_TRUE(save(Action::Disable, clockPath).isEmpty());
    EXPECT_EQ(lines(), QStringList {u"off /opt/clock"_s});
    EXPECT_TRUE(entriesOf(folders.user).isEmpty());
    EXPECT_TRUE(save(Action::Enable, clockPath).isEmpty());
    EXPECT_EQ(readRaw(userFile(u"clock.desktop"_s)), clockEntry);
    EXPECT_EQ(lines(), QStringList {u"on /opt/clock"_s});
    EXPECT_TRUE(session.keptIn(clockPath).isNull()) << "what is back needs no keeping";
}

TEST_F(LoginItemsInAHome, DisabledThenEnabledASystemWideEntryIsUntouchedAndShowsAgain)
{
    writeRaw(systemFile(u"clock.desktop"_s), clockEntry);
    EXPECT_TRUE(save(Action::Disable, clockPath).isEmpty());
    EXPECT_EQ(lines(), QStringList {u"off /opt/clock"_s});
    EXPECT_EQ(readRaw(systemFile(u"clock.desktop"_s)), clockEntry);
    EXPECT_TRUE(save(Action::Enable, clockPath).isEmpty());
    EXPECT_EQ(readRaw(systemFile(u"clock.desktop"_s)), clockEntry);
    EXPECT_TRUE(entriesOf(folders.user).isEmpty()) << "the override is lifted";
    EXPECT_EQ(lines(), QStringList {u"on /opt/clock"_s});
}

TEST_F(LoginItemsInAHome, DisabledAndEnabledOverAndOverAnEntryStaysTheSame)
{
    enabledClock();
    for (int round = 0; round < 5; ++round) {
        EXPECT_TRUE(save(Action::Disable, clockPath).isEmpty());
        EXPECT_TRUE(save(Action::Enable, clockPath).isEmpty());
    }
    EXPECT_EQ(readRaw(userFile(u"clock.desktop"_s)), clockEntry);
    EXPECT_EQ(entriesOf(folders.user), QStringList {u"clock.desktop"_s});
}

TEST_F(LoginItemsInAHome, AStoredPathThatIsEnabledIsDeletedOnTheNextReadAndShownOnce)
{
    enabledClock();
    EXPECT_TRUE(disabled.addDisabledLoginItemsData(clockPath, {}));
    EXPECT_EQ(lines(), QStringList {u"on /opt/clock"_s});
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(LoginItemsInAHome, RemovingADisabledItemDeletesItFromTheStoreOnly)
{
    enabledClock();
    EXPECT_TRUE(disabled.addDisabledLoginItemsData(u"/opt/other"_s, {}));
    EXPECT_TRUE(save(Action::Remove, u"/opt/other"_s, false).isEmpty());
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_EQ(readRaw(userFile(u"clock.desktop"_s)), clockEntry);
}

TEST_F(LoginItemsInAHome, RemovingAnEnabledItemDeletesItFromTheListOnly)
{
    enabledClock();
    EXPECT_TRUE(disabled.addDisabledLoginItemsData(u"/opt/other"_s, {}));
    EXPECT_TRUE(save(Action::Remove, clockPath, true).isEmpty());
    EXPECT_EQ(lines(), QStringList {u"off /opt/other"_s});
}

TEST_F(LoginItemsInAHome, EnablingWhatIsInTheListMovesItToTheEnd)
{
    enabledClock();
    writeRaw(userFile(u"z.desktop"_s), "[Desktop Entry]\nType=Application\nName=z\nExec=/opt/z\n");
    ASSERT_EQ(lines(), (QStringList {u"on /opt/clock"_s, u"on /opt/z"_s}));
    EXPECT_TRUE(access.writeData(Action::Add, clockPath, true, false));
    EXPECT_EQ(lines(), (QStringList {u"on /opt/z"_s, u"on /opt/clock"_s}));
    EXPECT_EQ(readRaw(userFile(u"clock.desktop"_s)), clockEntry);
}

TEST_F(LoginItemsInAHome, RemovedReAddedAndRemovedAnItemLeavesOneRow)
{
    enabledClock();
    EXPECT_TRUE(save(Action::Remove, clockPath, true).isEmpty());
    EXPECT_TRUE(save(Action::Add, clockPath).isEmpty());
    EXPECT_TRUE(save(Action::Remove, clockPath, false).isEmpty());
    EXPECT_EQ(backupLines(), QStringList {u"0 /opt/clock 1"_s});
}

TEST_F(LoginItemsInAHome, RestoringAnAddDeletesThePathFromTheStore)
{
    enabledClock();
    EXPECT_TRUE(save(Action::Add, u"/opt/new"_s).isEmpty());
    ASSERT_EQ(stored(), QStringList {u"/opt/new"_s});
    EXPECT_EQ(backupLines(), QStringList {u"1 /opt/new 0"_s});
    restore();
    EXPECT_EQ(lines(), QStringList {u"on /opt/clock"_s});
}

TEST_F(LoginItemsInAHome, RestoringTheRemovalOfAnEnabledItemInsertsItAtTheEndAsItWas)
{
    enabledClock();
    writeRaw(userFile(u"z.desktop"_s), "[Desktop Entry]\nType=Application\nName=z\nExec=/opt/z\n");
    EXPECT_TRUE(save(Action::Remove, clockPath, true).isEmpty());
    EXPECT_EQ(backupLines(), QStringList {u"0 /opt/clock 1"_s});
    restore();
    EXPECT_EQ(readRaw(userFile(u"clock.desktop"_s)), clockEntry);
    EXPECT_EQ(lines(), (QStringList {u"on /opt/z"_s, u"on /opt/clock"_s}));
}

TEST_F(LoginItemsInAHome, RestoringTheRemovalOfADisabledItemStoresItAgain)
{
    EXPECT_TRUE(disabled.addDisabledLoginItemsData(clockPath, {}));
    EXPECT_TRUE(save(Action::Remove, clockPath, false).isEmpty());
    EXPECT_EQ(backupLines(), QStringList {u"0 /opt/clock 0"_s});
    ASSERT_TRUE(stored().isEmpty());
    restore();
    EXPECT_EQ(lines(), QStringList {u"off /opt/clock"_s});
}

TEST_F(LoginItemsInAHome, RestoringAnEnableStoresThePathAndTakesItOutOfTheList)
{
    EXPECT_TRUE(disabled.addDisabledLoginItemsData(clockPath, {}));
    EXPECT_TRUE(save(Action::Enable, clockPath).isEmpty());
    EXPECT_EQ(backupLines(), QStringList {u"3 /opt/clock 0"_s});
    ASSERT_EQ(entriesOf(folders.user), QStringList {u"clock.desktop"_s});
    restore();
    EXPECT_EQ(stored(), QStringList {clockPath});
    EXPECT_TRUE(entriesOf(folders.user).isEmpty());
}

TEST_F(LoginItemsInAHome, RestoringADisableInsertsThePathAndDeletesItFromTheStore)
{
    enabledClock();
    EXPECT_TRUE(save(Action::Disable, clockPath).isEmpty());
    EXPECT_EQ(backupLines(), QStringList {u"2 /opt/clock 0"_s});
    restore();
    EXPECT_EQ(readRaw(userFile(u"clock.desktop"_s)), clockEntry);
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(LoginItemsInAHome, AThousandItemsAreReadWithOneReadOfEachFile)
{
    for (int number = 0; number < 1000; ++number)
        writeRaw(userFile(u"item%1.desktop"_s.arg(number, 4, 10, QChar(u'0'))),
                 "[Desktop Entry]\nType=Application\nName=x\nExec=/opt/"
                     + QByteArray::number(number) + '\n');
    FailingFileStore counting(store);
    LinuxSessionLoginItems counted(home.home(), folders, support, counting, maker, reader);
    const Result<QList<SessionLoginItem>> items = counted.snapshot();
    ASSERT_TRUE(items);
    EXPECT_EQ(items.value().size(), 1000);
    EXPECT_LE(counting.operations, 1001) << "each entry, and the order of the insertions";
}
