#include "backup/BackupFolder.h"
#include "backup/KeptBackup.h"
#include "backup/KeptRun.h"
#include "backup/LoginItemsPlayback.h"
#include "base/Literals.h"
#include "home/Workspace.h"
#include "loginitems/AccountLoginItems.h"
#include "platform/linux/LinuxFinderInfo.h"
#include "platform/linux/LinuxKeptFolders.h"
#include "platform/linux/LinuxStandardFolders.h"
#include "support/FakeCommandRunner.h"
#include "support/LoginItemsHome.h"

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;
using namespace testing;

namespace {

using Change = LoginItemChange;

const QString clockPath = u"/Applications/Clock.app"_s;

/// A home with both lists, and runs that change and restore the account's.
struct AccountPlayback {
    AccountPlayback()
    {
        QDir().mkpath(at.support + u"Backup");
        at.access.addAccount(account, accountStore);
    }

    struct AccountRun {
        AccountRun(AccountPlayback &test, LoginItemsList list)
            : keeper(test.workspace, [&test] { return test.backup; }),
              access(test.at.session, test.at.disabled, keeper, test.at.reader)
        {
            access.addAccount(test.account, test.accountStore);
            EXPECT_TRUE(access.use(list));
        }
        QList<LoginItemFailure> save(Change::Action action, const QString &path,
                                     bool enabled = false)
        {
            pending.addDataToChangeDataList(action, path, enabled);
            return pending.saveChanges();
        }
        KeptRun keeper;
        LoginItemsAccess access;
        QList<LoginItemChange> changes;
        PendingLoginItems pending {changes, access};
    };

    /// By whatever list is in use.
    Result<void> restore()
    {
        struct Target : PlaybackTarget {
            Target(LoginItemsAccess &access, const KeptBackup &kept) : playback(access, kept) { }
            Result<void> writeSetting(int, int, const QString &) override { return {}; }
            Result<void> writeLoginItem(int action, const QString &path, bool enabled) override
            {
                return playback.writeData(action, path, enabled);
            }
            void readLoginItems() override { playback.readData(); }
            Result<void> writeWithoutRows() override { return playback.writeWithoutRows(); }
            Result<void> finish() override { return playback.finish(); }
            LoginItemsPlayback playback;
        };
        const QList<BackupRow> rows = readBackupRows(backup).value();
        const KeptBackup kept(workspace, backup, rows);
        Result<void> played;
        {
            Target target(at.access, kept);
            played = playBack(rows, target);
        }
        EXPECT_TRUE(BackupFolder(workspace).removeForGood(QFileInfo(backup).fileName()));
        return played;
    }

    void use(const QString &sample)
    {
        writeRaw(file, readRaw(QStringLiteral(TEST_DATA "/loginitems/") + sample));
    }
    [[nodiscard]] QStringList lines()
    {
        EXPECT_TRUE(at.access.use(LoginItemsList::Account));
        QStringList lines = at.lines();
        EXPECT_TRUE(at.access.use(LoginItemsList::Session));
        return lines;
    }
    [[nodiscard]] QStringList paths() const
    {
        QStringList paths;
        for (const SessionLoginItem &item : account.snapshot().value())
            if (!paths.contains(item.path))
                paths.append(item.path);
        return paths;
    }
    [[nodiscard]] QString storeFile() const { return at.support + u"disabledAccountItems.sqlite"; }

    LoginItemsHome at;
    AccountLoginItems account {at.home.home(), at.store, at.maker, {at.reader, {}}};
    DisabledItemsStore accountStore {at.support, at.store, DisabledItemsStore::Manner::Work,
                                     LoginItemsList::Account};
    QString file = AccountLoginItems::fileOf(at.home.home());
    QString backup = at.support + u"Backup/quillet1.sqlite";
    FakeCommandRunner runner;
    LinuxFinderInfo finderInfo {at.home.home()};
    LinuxStandardFolders standardFolders;
    LinuxKeptFolders keptFolders {at.home.home(), at.store.turns()};
    HomePorts ports {at.store,        finderInfo, at.maker,  keptFolders,
                     standardFolders, at.session, at.reader, runner};
    Workspace workspace {at.home.home(), ports};
};

class AccountPlaybackTest : public TestWithParam<const char *>, protected AccountPlayback { };
/// Where one sample does.
class AccountItemsInAHome : public Test, protected AccountPlayback { };

} // namespace

TEST_P(AccountPlaybackTest, DisablingOrRemovingAnItemAndRestoringGivesTheFirstBytes)
{
    use(QString::fromLatin1(GetParam()));
    const QByteArray before = readRaw(file);
    const struct stat status = statusOf(file);
    for (const QString &path : paths())
        for (const Change::Action action : {Change::Disable, Change::Remove}) {
            {
                AccountRun run(*this, LoginItemsList::Account);
                EXPECT_TRUE(run.save(action, path, action == Change::Remove).isEmpty());
            }
            EXPECT_NE(readRaw(file), before);
            EXPECT_FALSE(paths().contains(path));
            EXPECT_TRUE(restore());
            EXPECT_EQ(readRaw(file), before) << qPrintable(path);
            EXPECT_EQ(statusOf(file).st_mtim.tv_nsec, status.st_mtim.tv_nsec);
            EXPECT_EQ(statusOf(file).st_mode, status.st_mode);
            EXPECT_FALSE(QFile::exists(storeFile())) << "there was no store";
        }
}

TEST_P(AccountPlaybackTest, ManyChangesOfOneRunComeBackTogether)
{
    use(QString::fromLatin1(GetParam()));
    const QByteArray before = readRaw(file);
    const QStringList all = paths();
    {
        AccountRun run(*this, LoginItemsList::Account);
        for (const QString &path : all)
            run.pending.addDataToChangeDataList(Change::Disable, path, false);
        EXPECT_TRUE(run.pending.saveChanges().isEmpty());
        EXPECT_TRUE(run.save(Change::Enable, all.first()).isEmpty());
        EXPECT_TRUE(run.save(Change::Add, u"/Applications/New.app"_s).isEmpty());
    }
    EXPECT_EQ(paths(), QStringList {all.first()});
    EXPECT_TRUE(restore());
    EXPECT_EQ(readRaw(file), before);
    EXPECT_FALSE(QFile::exists(storeFile()));
}

INSTANTIATE_TEST_SUITE_P(Samples, AccountPlaybackTest,
                         Values("leopard-xml.plist", "leopard-binary.plist",
                                "snow-leopard-xml.plist", "snow-leopard-binary.plist",
                                "sierra-xml.plist", "sierra-binary.plist"));

TEST_F(AccountItemsInAHome, DisabledAndEnabledByAnotherRunAnItemIsTheIdenticalDictionary)
{
    use(u"snow-leopard-binary.plist"_s);
    const auto dictionaries = [&] {
        return plist::PropertyList::open(readRaw(file))
            .value()
            .elements({u"SessionItems"_s, u"CustomListItems"_s});
    };
    const std::vector<plist::Object> before = dictionaries();
    EXPECT_TRUE(
        AccountRun(*this, LoginItemsList::Account).save(Change::Disable, clockPath).isEmpty());
    EXPECT_EQ(lines().last(), u"off " + clockPath);
    EXPECT_EQ(dictionaries().size(), before.size() - 2);
    EXPECT_TRUE(
        AccountRun(*this, LoginItemsList::Account).save(Change::Enable, clockPath).isEmpty());
    EXPECT_EQ(dictionaries(),
              std::vector<plist::Object>(
                  {before[1], before[2], before[3], before[5], before[0], before[4]}));
    EXPECT_EQ(lines().last(), u"on " + clockPath);
}

TEST_F(AccountItemsInAHome, WhatWasNeverInTheListStaysInItsStore)
{
    use(u"sierra-xml.plist"_s);
    const QByteArray before = readRaw(file);
    const QString added = u"/Applications/New.app"_s;
    AccountRun run(*this, LoginItemsList::Account);
    EXPECT_TRUE(run.save(Change::Add, added).isEmpty());
    const QList<LoginItemFailure> failures = run.save(Change::Enable, added);
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().error.text.contains(u"never in the account's list"));
    EXPECT_EQ(lines().last(), u"off " + added);
    EXPECT_EQ(readRaw(file), before);
}

TEST_F(AccountItemsInAHome, EachListHasAStoreThatItCleansAlone)
{
    use(u"snow-leopard-xml.plist"_s);
    EXPECT_TRUE(at.disabled.addDisabledLoginItemsData(clockPath, {}));
    EXPECT_TRUE(accountStore.addDisabledLoginItemsData(clockPath, {}));
    const QStringList shown = lines();
    EXPECT_EQ(shown.count(u"on " + clockPath), 2);
    EXPECT_FALSE(shown.contains(u"off " + clockPath));
    EXPECT_TRUE(accountStore.storedPaths().value().isEmpty()) << "it is in the account's list";
    EXPECT_EQ(at.stored(), QStringList {clockPath}) << "but not in the session's";
}

TEST_F(AccountItemsInAHome, ARestorePlaysIntoTheListThatTheBackupWasMadeWith)
{
    use(u"snow-leopard-xml.plist"_s);
    const QByteArray before = readRaw(file);
    writeRaw(at.userFile(u"clock.desktop"_s),
             "[Desktop Entry]\nType=Application\nName=Clock\nExec=\"" + clockPath.toUtf8()
                 + "\"\n");
    EXPECT_EQ(at.lines(), QStringList {u"on " + clockPath});
    const QByteArray entry = readRaw(at.userFile(u"clock.desktop"_s));
    EXPECT_TRUE(
        AccountRun(*this, LoginItemsList::Account).save(Change::Disable, clockPath).isEmpty());
    ASSERT_EQ(at.access.listInUse(), LoginItemsList::Session);
    EXPECT_TRUE(restore());
    EXPECT_EQ(readRaw(file), before);
    EXPECT_EQ(readRaw(at.userFile(u"clock.desktop"_s)), entry);
    EXPECT_EQ(at.access.listInUse(), LoginItemsList::Session) << "as before";

    EXPECT_TRUE(
        AccountRun(*this, LoginItemsList::Session).save(Change::Disable, clockPath).isEmpty());
    EXPECT_TRUE(at.access.use(LoginItemsList::Account));
    EXPECT_TRUE(restore());
    EXPECT_EQ(readRaw(file), before);
    EXPECT_EQ(readRaw(at.userFile(u"clock.desktop"_s)), entry);
}

TEST_F(AccountItemsInAHome, RowsWithoutNotesPlayIntoTheListInUse)
{
    use(u"snow-leopard-xml.plist"_s);
    EXPECT_TRUE(
        AccountRun(*this, LoginItemsList::Account).save(Change::Disable, clockPath).isEmpty());
    EXPECT_TRUE(QDir(Tools::keptFolderOf(at.home.home())).removeRecursively());
    EXPECT_TRUE(at.access.use(LoginItemsList::Account));
    EXPECT_TRUE(restore());
    EXPECT_EQ(paths().last(), clockPath) << "at the end, as its row says";
}

TEST_F(AccountItemsInAHome, WhatTheMacHasAddedSinceIsNotTakenBackByARestore)
{
    for (const QString &format : {u"xml"_s, u"binary"_s}) {
        use(u"snow-leopard-"_s + format + u".plist");
        EXPECT_TRUE(
            AccountRun(*this, LoginItemsList::Account).save(Change::Disable, clockPath).isEmpty());
        plist::PropertyList list = plist::PropertyList::open(readRaw(file)).value();
        ASSERT_TRUE(list.set({u"Added"_s}, qint64(7)));
        writeRaw(file, list.bytes());
        EXPECT_TRUE(restore());
        const plist::PropertyList now = plist::PropertyList::open(readRaw(file)).value();
        EXPECT_EQ(now.value({u"Added"_s}).integer, 7);
        ASSERT_TRUE(paths().contains(clockPath));
        EXPECT_EQ(paths().first(), clockPath) << "where it was";
    }
}
