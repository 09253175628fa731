#include "support/LoginItemsHome.h"
#include "support/FailingFileStore.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

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
    static QByteArray entry(const QByteArray &exec, const QByteArray &more = {})
    {
        return "[Desktop Entry]\nType=Application\nName=x\nExec=" + exec + '\n' + more;
    }
    void keepAs(const QString &path, const QStringList &names)
    {
        QDir().mkpath(support + u"RemovedLoginItems");
        QList<KeptEntry> entries;
        for (const QString &name : names)
            entries.append(
                {name, true, entry(path.toUtf8(), "X-Of=" + name.toUtf8() + '\n'), {}, 0644});
        EXPECT_TRUE(KeptLoginItems(support + u"RemovedLoginItems/", store).keep(path, entries));
    }
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

TEST_F(LoginItemsInAHome, OfTwoEntriesOfOneProgramTheFirstGoesAndComesBackAndTheOtherStaysAsItIs)
{
    for (const QByteArray exec : {"/opt/clock", "/opt/Clock.app/Contents/MacOS/Clock"}) {
        writeRaw(userFile(u"one.desktop"_s), entry(exec));
        writeRaw(userFile(u"two.desktop"_s), entry(exec, "X-Own=two\n"));
        const QString program = exec.startsWith("/opt/Clock") ? u"/opt/Clock.app"_s : clockPath;
        const QString two = userFile(u"two.desktop"_s);
        ASSERT_EQ(lines(), (QStringList {u"on " + program, u"on " + two}));
        EXPECT_TRUE(save(Action::Disable, program).isEmpty());
        EXPECT_EQ(lines(), (QStringList {u"on " + two, u"off " + program}));
        EXPECT_EQ(stored(), QStringList {program}) << "reading does not clean it out";
        restore();
        EXPECT_EQ(lines(), (QStringList {u"on " + two, u"on " + program}));
        EXPECT_EQ(readRaw(userFile(u"one.desktop"_s)), entry(exec));
        EXPECT_TRUE(stored().isEmpty());
        EXPECT_TRUE(QFile::remove(backupFile));
        EXPECT_TRUE(QFile::remove(support + u"LoginItemsOrder.txt"));
    }
}

TEST_F(LoginItemsInAHome, InWhateverOrderEntriesOfOneProgramGoAndComeBackEachKeepsItsPath)
{
    const QStringList names {u"a.desktop"_s, u"b.desktop"_s, u"c.desktop"_s};
    QStringList paths {clockPath, userFile(names[1]), userFile(names[2])};
    const auto states = [&](const QStringList &out) {
        QStringList all;
        for (const QString &path : paths)
            all.append((out.contains(path) ? u"off " : u"on ") + path);
        all.sort();
        return all;
    };
    const auto sortedLines = [&] {
        QStringList all = lines();
        all.sort();
        return all;
    };
    for (const QString &name : names)
        writeRaw(userFile(name), entry("/opt/clock", "X-Of=" + name.toUtf8() + '\n'));
    QStringList order = paths;
    std::sort(order.begin(), order.end());
    do {
        QStringList out;
        for (const QString &path : std::as_const(order)) {
            EXPECT_TRUE(save(Action::Disable, path).isEmpty());
            out.append(path);
            EXPECT_EQ(sortedLines(), states(out));
        }
        for (const QString &path : std::as_const(order)) {
            EXPECT_TRUE(save(Action::Enable, path).isEmpty());
            out.removeOne(path);
            EXPECT_EQ(sortedLines(), states(out));
        }
        for (const QString &name : names)
            EXPECT_TRUE(readRaw(userFile(name)).contains(name.toUtf8()));
        EXPECT_TRUE(entriesOf(support + u"RemovedLoginItems").isEmpty());
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(LoginItemsInAHome, AnItemThatAnEarlierVersionLetAnotherStandForCanBeEnabled)
{
    keepAs(clockPath, {u"one.desktop"_s});
    const QString two = userFile(u"two.desktop"_s);
    writeRaw(two, entry("/opt/clock"));
    EXPECT_EQ(lines(), QStringList {u"on " + two});
    EXPECT_TRUE(disabled.addDisabledLoginItemsData(u"/opt/other"_s, {}));
    EXPECT_TRUE(access.writeData(Action::Enable, clockPath, false, false));
    EXPECT_EQ(lines(), (QStringList {u"on " + two, u"on " + clockPath, u"off /opt/other"_s}));
    EXPECT_TRUE(readRaw(userFile(u"one.desktop"_s)).contains("X-Of=one"));
}

TEST_F(LoginItemsInAHome, TwoEntriesThatAnEarlierVersionTookOutUnderOnePathComeBackAsTwo)
{
    keepAs(clockPath, {u"one.desktop"_s, u"two.desktop"_s});
    EXPECT_TRUE(disabled.addDisabledLoginItemsData(clockPath, {}));
    EXPECT_EQ(lines(), QStringList {u"off " + clockPath});
    EXPECT_TRUE(save(Action::Enable, clockPath).isEmpty());
    EXPECT_EQ(lines(), (QStringList {u"on " + clockPath, u"on " + userFile(u"two.desktop"_s)}));
    EXPECT_TRUE(stored().isEmpty());
}

TEST_F(LoginItemsInAHome, AnItemComesBackUnderItsPathThoughThatWouldBeWorkedOutOtherwiseByNow)
{
    const QString installed = folders.applications.first() + u"/clock.desktop";
    writeRaw(installed, clockEntry);
    enabledClock();
    ASSERT_EQ(lines(), QStringList {u"on " + installed});
    EXPECT_TRUE(save(Action::Disable, installed).isEmpty());
    writeRaw(installed, clockEntry + "\nX-New=of the next release\n");
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(save(Action::Enable, installed).isEmpty());
        EXPECT_EQ(lines(), QStringList {u"on " + installed});
        EXPECT_EQ(readRaw(userFile(u"clock.desktop"_s)), clockEntry);
        EXPECT_EQ(entriesOf(folders.user), QStringList {u"clock.desktop"_s});
        EXPECT_TRUE(save(Action::Disable, installed).isEmpty());
        EXPECT_EQ(lines(), QStringList {u"off " + installed});
    }
}

TEST_F(LoginItemsInAHome, WhatTheListDoesNotShowAfterItWasAddedStaysInTheStore)
{
    const QString path = home.path() + u"/clock.desktop";
    for (const QByteArray more : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n",
                                  "OnlyShowIn=KDE;\n", "NotShowIn=GNOME;\n"}) {
        writeRaw(path, entry("/opt/clock", more));
        EXPECT_TRUE(disabled.addDisabledLoginItemsData(path, {}));
        const LogCapture log;
        for (int again = 0; again < 2; ++again)
            EXPECT_EQ(save(Action::Enable, path).size(), 1) << more.toStdString();
        EXPECT_EQ(lines(), QStringList {u"off " + path}) << more.toStdString();
        EXPECT_EQ(log.texts(u"varnel.io"_s).filter(path).size(), 2);
        EXPECT_TRUE(log.texts(u"varnel.loginitems"_s)
                        .filter(u"(deleteDisabledLoginItemsData)"_s)
                        .isEmpty());
        EXPECT_TRUE(entriesOf(folders.user).isEmpty()) << "no copy that nothing starts is left";
    }
}

TEST_F(LoginItemsInAHome, AnEntryOfAnotherDesktopIsNotPutBackAndStaysKeptAndStored)
{
    writeRaw(userFile(u"clock.desktop"_s), entry("/opt/clock", "OnlyShowIn=GNOME;\n"));
    EXPECT_TRUE(save(Action::Disable, clockPath).isEmpty());
    AutostartFolders elsewhere = folders;
    elsewhere.desktops = {u"KDE"_s};
    LinuxSessionLoginItems there(home.home(), elsewhere, support, store, maker, reader);
    LoginItemsAccess accessThere(there, disabled, backup, reader);
    EXPECT_FALSE(accessThere.writeData(Action::Enable, clockPath, false, false).ok());
    EXPECT_EQ(stored(), QStringList {clockPath});
    EXPECT_TRUE(entriesOf(folders.user).isEmpty());
    EXPECT_TRUE(save(Action::Enable, clockPath).isEmpty());
    EXPECT_EQ(lines(), QStringList {u"on " + clockPath});
}

TEST_F(LoginItemsInAHome, WhereTheFolderCannotBeWrittenTheItemStaysInTheStoreAndTheLogSaysSoOnce)
{
    EXPECT_TRUE(disabled.addDisabledLoginItemsData(clockPath, {}));
    QDir().rmdir(folders.user);
    writeRaw(folders.user, "a file in the folder's place");
    const LogCapture log;
    const QList<Error> failures = save(Action::Enable, clockPath);
    ASSERT_EQ(failures.size(), 1);
    EXPECT_EQ(log.texts(u"varnel.io"_s), QStringList {failures[0].text});
    EXPECT_EQ(lines(), QStringList {u"off " + clockPath});
}

TEST_F(LoginItemsInAHome, WhatCannotBeTakenOutIsLoggedOnce)
{
    enabledClock();
    writeRaw(support + u"RemovedLoginItems", "a file in the folder's place");
    const LogCapture log;
    const QList<Error> failures = save(Action::Remove, clockPath, true);
    ASSERT_EQ(failures.size(), 1);
    EXPECT_EQ(log.texts(u"varnel.io"_s), QStringList {failures[0].text});
    EXPECT_EQ(readRaw(userFile(u"clock.desktop"_s)), clockEntry);
}

TEST_F(LoginItemsInAHome, ARowOfABackupWithoutAWholePathWritesNothingAndIsAFailure)
{
    const QStringList before = entriesOf(support);
    for (const QString &path : {QString(), u"Mail.app"_s, u"../Mail.app"_s, u" /Mail.app"_s}) {
        for (const int action : {0, 1, 2, 3}) {
            for (const bool enabled : {false, true}) {
                const LogCapture log;
                const Result<void> played = access.writeData(action, path, enabled, false);
                ASSERT_FALSE(played.ok()) << action << ' ' << path.toStdString();
                EXPECT_EQ(log.texts(), QStringList {path + u": " + played.error().text});
            }
        }
    }
    EXPECT_EQ(entriesOf(support), before);
    EXPECT_TRUE(entriesOf(folders.user).isEmpty());
}

TEST_F(LoginItemsInAHome, WhatStandsInTheStoreWithoutAWholePathCanBeRemoved)
{
    EXPECT_TRUE(disabled.addDisabledLoginItemsData(u"Mail.app"_s, {}));
    EXPECT_EQ(save(Action::Enable, u"Mail.app"_s).size(), 1);
    EXPECT_EQ(lines(), QStringList {u"off Mail.app"_s});
    EXPECT_TRUE(save(Action::Remove, u"Mail.app"_s).isEmpty());
    EXPECT_TRUE(lines().isEmpty());
}
