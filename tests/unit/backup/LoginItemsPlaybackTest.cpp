#include "backup/LoginItemsPlayback.h"

#include "backup/BackupFolder.h"
#include "backup/KeptBackup.h"
#include "backup/KeptRun.h"
#include "base/Literals.h"
#include "home/Workspace.h"
#include "platform/linux/LinuxFinderInfo.h"
#include "platform/linux/LinuxKeptFolders.h"
#include "platform/linux/LinuxStandardFolders.h"
#include "support/FakeCommandRunner.h"
#include "support/LoginItemsHome.h"

#include <QProcess>

#include <array>

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;
using namespace testing;

namespace {

using Action = LoginItemChange::Action;

QByteArray entryOf(const QString &path)
{
    return "[Desktop Entry]\nType=Application\nName=N\nExec=\"" + path.toUtf8() + "\"\n# own\n";
}

class LoginItemsPlaybackTest : public Test {
protected:
    LoginItemsPlaybackTest() { QDir().mkpath(at.support + u"Backup"); }

    /// What one run of the program changes with.
    struct Run {
        Run(LoginItemsPlaybackTest &test, const QString &file)
            : keeper(test.workspace, [file] { return file; }),
              access(test.at.session, test.at.disabled, keeper, test.at.reader)
        {
        }
        void save(Action action, const QString &path, bool enabled = false)
        {
            pending.addDataToChangeDataList(action, path, enabled);
            (void)pending.saveChanges();
        }
        KeptRun keeper;
        LoginItemsAccess access;
        QList<LoginItemChange> changes;
        PendingLoginItems pending {changes, access};
    };

    [[nodiscard]] QString fileOf(int number) const
    {
        return at.support + u"Backup/quillet" + QString::number(number) + u".sqlite";
    }

    Result<void> restore(int number, bool keepFile = false)
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
        const QString file = fileOf(number);
        const QList<BackupRow> rows = readBackupRows(file).value();
        const KeptBackup kept(workspace, file, rows);
        Target target(at.access, kept);
        Result<void> played = playBack(rows, target);
        if (!keepFile) {
            EXPECT_TRUE(BackupFolder(workspace).removeForGood(QFileInfo(file).fileName()));
        }
        return played;
    }

    /// An entry of the user's, put into the list's own order.
    void put(const QString &name) const
    {
        writeRaw(at.userFile(name + u".desktop"), entryOf(u"/opt/" + name), 0640);
    }
    void insert(const QStringList &names)
    {
        for (const QString &name : names) {
            put(name);
            EXPECT_TRUE(at.session.insertAtEnd(u"/opt/" + name));
        }
    }
    void store(const QStringList &paths)
    {
        for (const QString &path : paths)
            EXPECT_TRUE(at.disabled.addDisabledLoginItemsData(path, {}));
    }
    void editBackup(const QString &sql) const
    {
        Result<Sqlite> file = Sqlite::open(fileOf(1), Sqlite::Access::Create);
        EXPECT_TRUE(file.value().run(sql, Sqlite::Verb::Insert));
    }

    LoginItemsHome at;
    LinuxKeptFolders keptFolders {at.home.home(), at.store.turns()};
    LinuxFinderInfo finderInfo {at.home.home()};
    LinuxStandardFolders standardFolders;
    FakeCommandRunner runner;
    Workspace workspace {at.home.home(),
                         {at.store, finderInfo, at.maker, keptFolders, standardFolders, at.session,
                          at.reader, runner}};
};

TEST_F(LoginItemsPlaybackTest, anItemThatWasInsertedComesBackToItsPlaceInTheMiddle)
{
    insert({u"c"_s, u"b"_s, u"a"_s});
    const QStringList before = at.lines();
    for (const Action action : {Action::Remove, Action::Disable}) {
        Run run(*this, fileOf(1));
        run.save(action, u"/opt/b"_s, action == Action::Remove);
        EXPECT_NE(at.lines(), before);
        EXPECT_TRUE(restore(1));
        EXPECT_EQ(at.lines(), before);
    }
}

TEST_F(LoginItemsPlaybackTest, anItemThatWasNeverInsertedComesBackToItsPlaceByName)
{
    for (const QString &name : {u"a"_s, u"b"_s, u"c"_s})
        put(name);
    const QStringList before = at.lines();
    Run run(*this, fileOf(1));
    run.save(Action::Remove, u"/opt/b"_s, true);
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(at.lines(), before);
}

TEST_F(LoginItemsPlaybackTest, bytesModeAndTimeOfAnEntryComeBackAndSoDoThoseOfALink)
{
    put(u"a"_s);
    writeRaw(at.home.path() + u"/elsewhere.desktop", entryOf(u"/opt/linked"_s));
    linkTo(at.home.path() + u"/elsewhere.desktop", at.userFile(u"linked.desktop"_s));
    const std::array<timespec, 2> times {timespec {0, UTIME_OMIT}, timespec {1'000'000'000, 123}};
    for (const QString &name : {u"a.desktop"_s, u"linked.desktop"_s})
        ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(at.userFile(name)).constData(),
                              times.data(), AT_SYMLINK_NOFOLLOW),
                  0);
    Run run(*this, fileOf(1));
    run.save(Action::Remove, u"/opt/a"_s, true);
    run.save(Action::Disable, u"/opt/linked"_s);
    ASSERT_TRUE(entriesOf(at.folders.user).isEmpty());
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(readRaw(at.userFile(u"a.desktop"_s)), entryOf(u"/opt/a"_s));
    EXPECT_EQ(modeOf(at.userFile(u"a.desktop"_s)), 0640U);
    EXPECT_EQ(QFile::symLinkTarget(at.userFile(u"linked.desktop"_s)),
              at.home.path() + u"/elsewhere.desktop");
    for (const QString &name : {u"a.desktop"_s, u"linked.desktop"_s}) {
        EXPECT_EQ(statusOf(at.userFile(name)).st_mtim.tv_sec, 1'000'000'000);
        EXPECT_EQ(statusOf(at.userFile(name)).st_mtim.tv_nsec, 123);
    }
}

TEST_F(LoginItemsPlaybackTest, severalSavesOfOneRunComeBackAtOnce)
{
    insert({u"d"_s, u"c"_s, u"b"_s});
    store({u"/opt/x"_s, u"/opt/y"_s, u"/opt/z"_s});
    const QStringList before = at.lines();
    Run run(*this, fileOf(1));
    run.save(Action::Disable, u"/opt/d"_s);
    run.save(Action::Enable, u"/opt/y"_s);
    run.save(Action::Remove, u"/opt/c"_s, true);
    run.save(Action::Enable, u"/opt/d"_s);
    run.save(Action::Remove, u"/opt/x"_s);
    run.save(Action::Add, u"/opt/new"_s);
    run.save(Action::Add, u"/opt/x"_s);
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(at.lines(), before);
}

TEST_F(LoginItemsPlaybackTest, twoRunsComeBackOneAfterTheOther)
{
    insert({u"d"_s, u"c"_s, u"b"_s});
    store({u"/opt/x"_s, u"/opt/y"_s});
    const QStringList before = at.lines();
    {
        Run first(*this, fileOf(1));
        first.save(Action::Disable, u"/opt/c"_s);
        first.save(Action::Remove, u"/opt/x"_s);
    }
    const QStringList between = at.lines();
    {
        Run second(*this, fileOf(2));
        second.save(Action::Remove, u"/opt/d"_s, true);
        second.save(Action::Enable, u"/opt/c"_s);
    }
    EXPECT_TRUE(restore(2));
    EXPECT_EQ(at.lines(), between);
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(at.lines(), before);
}

TEST_F(LoginItemsPlaybackTest, restoringTwiceDoesNoHarm)
{
    insert({u"c"_s, u"b"_s, u"a"_s});
    store({u"/opt/x"_s, u"/opt/y"_s});
    const QStringList before = at.lines();
    Run run(*this, fileOf(1));
    run.save(Action::Disable, u"/opt/b"_s);
    run.save(Action::Remove, u"/opt/x"_s);
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(restore(1, true));
        EXPECT_EQ(at.lines(), before);
    }
}

TEST_F(LoginItemsPlaybackTest, aRowOfMoreColumnsComesBackWholeToItsPlace)
{
    store({u"/opt/x"_s});
    const auto sqlite = [&](const QByteArray &sql) {
        QProcess tool;
        tool.start(u"sqlite3"_s, {at.disabled.path(), QString::fromUtf8(sql)});
        EXPECT_TRUE(tool.waitForFinished());
        return tool.readAllStandardOutput();
    };
    sqlite("ALTER TABLE users ADD COLUMN \"a note\";"
           "INSERT INTO users VALUES('/opt/y', x'00ff');"
           "INSERT INTO users VALUES('/opt/z', 'it''s'); UPDATE users SET \"a note\"=0.1 "
           "WHERE value1='/opt/x'");
    const QByteArray dump = "SELECT rowid, value1, quote(\"a note\") FROM users";
    const QByteArray before = sqlite(dump);
    Run run(*this, fileOf(1));
    for (const QString &path : {u"/opt/y"_s, u"/opt/x"_s})
        run.save(Action::Remove, path);
    EXPECT_NE(sqlite(dump), before);
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(sqlite(dump), before);
}

TEST_F(LoginItemsPlaybackTest, aStoreThatTheRunMadeIsGoneAgainUnlessSomethingElseIsInIt)
{
    put(u"a"_s);
    for (const bool others : {false, true}) {
        ASSERT_FALSE(QFile::exists(at.disabled.path()));
        Run run(*this, fileOf(1));
        run.save(Action::Disable, u"/opt/a"_s);
        run.save(Action::Add, u"/opt/b"_s);
        if (others)
            store({u"/opt/others"_s});
        EXPECT_TRUE(restore(1));
        EXPECT_EQ(QFile::exists(at.disabled.path()), others);
    }
    EXPECT_EQ(at.stored(), QStringList {u"/opt/others"_s});
}

TEST_F(LoginItemsPlaybackTest, whatNoRowTellsComesBackWhereAllRowsStand)
{
    insert({u"c"_s, u"it's"_s, u"a"_s});
    const QStringList before = at.lines();
    ASSERT_EQ(before.size(), 3);
    for (const bool edited : {false, true}) {
        Run run(*this, fileOf(1));
        run.save(Action::Disable, u"/opt/it's"_s);
        run.save(Action::Disable, u"/opt/c"_s);
        if (edited)
            editBackup(u"INSERT INTO users VALUES(250, '/opt/c', '2', '0')"_s);
        EXPECT_TRUE(restore(1));
        EXPECT_EQ(at.lines() == before, !edited);
        EXPECT_EQ(at.lines().contains(u"on /opt/it's"_s), !edited);
    }
}

TEST_F(LoginItemsPlaybackTest, anItemWhoseRowWasEditedComesBackByItsRow)
{
    insert({u"c"_s, u"b"_s, u"a"_s});
    Run run(*this, fileOf(1));
    run.save(Action::Disable, u"/opt/c"_s);
    run.save(Action::Disable, u"/opt/b"_s);
    editBackup(u"INSERT INTO users VALUES(250, '/opt/c', '2', '0')"_s);
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(at.lines(), (QStringList {u"on /opt/b"_s, u"on /opt/a"_s, u"on /opt/c"_s}));
}

TEST_F(LoginItemsPlaybackTest, whatAnotherProgramChangedStaysAndTheRowIsPlayed)
{
    insert({u"c"_s, u"b"_s, u"a"_s});
    Run run(*this, fileOf(1));
    run.save(Action::Remove, u"/opt/c"_s, true);
    const QByteArray theirs = entryOf(u"/opt/c"_s) + "X-Theirs=1\n";
    writeRaw(at.userFile(u"c.desktop"_s), theirs);
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(readRaw(at.userFile(u"c.desktop"_s)), theirs);
    EXPECT_EQ(at.lines(), (QStringList {u"on /opt/b"_s, u"on /opt/a"_s, u"on /opt/c"_s}));
}

TEST_F(LoginItemsPlaybackTest, anOrderThatSomebodyElseChangedStays)
{
    insert({u"c"_s, u"b"_s, u"a"_s});
    Run run(*this, fileOf(1));
    run.save(Action::Remove, u"/opt/c"_s, true);
    ASSERT_TRUE(at.session.insertAtEnd(u"/opt/b"_s));
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(at.lines(), (QStringList {u"on /opt/a"_s, u"on /opt/b"_s, u"on /opt/c"_s}));
}

TEST_F(LoginItemsPlaybackTest, whatWasInsertedMeanwhileStaysBehindTheItem)
{
    insert({u"c"_s, u"b"_s});
    Run run(*this, fileOf(1));
    run.save(Action::Remove, u"/opt/c"_s, true);
    insert({u"new"_s});
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(at.lines(), (QStringList {u"on /opt/c"_s, u"on /opt/b"_s, u"on /opt/new"_s}));
}

TEST_F(LoginItemsPlaybackTest, aSystemWideEntryThatWasHiddenComesToLightInItsPlace)
{
    writeRaw(at.systemFile(u"m.desktop"_s), entryOf(u"/opt/m"_s));
    insert({u"z"_s, u"a"_s});
    const QStringList before = at.lines();
    Run run(*this, fileOf(1));
    run.save(Action::Remove, u"/opt/m"_s, true);
    ASSERT_EQ(at.lines().size(), 2);
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(at.lines(), before);
    EXPECT_FALSE(QFile::exists(at.userFile(u"m.desktop"_s)));
}

TEST_F(LoginItemsPlaybackTest, notesThatAreDamagedLeaveTheRowsToBePlayed)
{
    insert({u"c"_s, u"b"_s});
    store({u"/opt/x"_s});
    Run run(*this, fileOf(1));
    run.save(Action::Remove, u"/opt/c"_s, true);
    run.save(Action::Remove, u"/opt/x"_s);
    const QString folder = keptFoldersOf(workspace, fileOf(1)).value(0);
    QByteArray notes = readRaw(folder + u"index.json");
    ASSERT_TRUE(notes.contains("\"'/opt/x'\""));
    notes.replace("\"'/opt/x'\"", "\"'/opt/x'),('/opt/evil'\"");
    writeRaw(folder + u"index.json", notes);
    EXPECT_TRUE(restore(1));
    EXPECT_EQ(at.lines(), (QStringList {u"on /opt/b"_s, u"on /opt/c"_s, u"off /opt/x"_s}));
}

} // namespace
