#include "cli/Varnelctl.h"
#include "doctor/Finding.h"
#include "platform/linux/FileDescriptor.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QJsonArray>
#include <QMap>
#include <QProcess>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace testing;

namespace {

QString factsOf(const QString &path)
{
    const struct stat status = statusOf(path);
    QStringList facts;
    for (const quint64 fact :
         {quint64(status.st_ino), quint64(status.st_mode), quint64(status.st_uid),
          quint64(status.st_nlink), quint64(status.st_size), quint64(status.st_mtim.tv_sec),
          quint64(status.st_mtim.tv_nsec), quint64(status.st_ctim.tv_sec),
          quint64(status.st_ctim.tv_nsec)})
        facts += QString::number(fact);
    const QByteArray bytes =
        S_ISREG(status.st_mode) && QFileInfo(path).isReadable() ? readRaw(path) : QByteArray();
    return facts.join(u' ') + u' ' + QString::fromLatin1(bytes.toBase64());
}

/// Every name beneath a folder, and the folder itself, with its bytes and times.
QMap<QString, QString> everythingIn(const QString &folder)
{
    QMap<QString, QString> everything {{folder, factsOf(folder)}};
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = all.next();
        everything.insert(path, factsOf(path));
    }
    return everything;
}

class DoctorTest : public Test {
protected:
    /// Beneath the test's folder.
    QString makeHome(const QString &name) const
    {
        QString path = folder.path() + u'/' + name;
        QDir().mkpath(path + u"/Library/Preferences");
        QDir().mkpath(path + u"/Library/Application Support");
        return path;
    }
    /// Runs the doctor, after which everything in the test's folder must be as it was.
    [[nodiscard]] Outcome doctor(const QStringList &words) const
    {
        const QMap<QString, QString> before = everythingIn(folder.path());
        const Outcome outcome = varnelctl.run(QStringList {u"doctor"_s} + words);
        EXPECT_EQ(everythingIn(folder.path()), before);
        return outcome;
    }
    [[nodiscard]] Outcome examine(const QString &path) const
    {
        return doctor({u"--json"_s, u"--home"_s, path});
    }
    /// The findings as "name path", the path below the home.
    [[nodiscard]] static QStringList found(const QJsonObject &told, const QString &path)
    {
        QStringList findings;
        for (const QJsonValue finding : told.value(u"findings"_s).toArray()) {
            const QString at = finding[u"path"].toString();
            findings += finding[u"name"].toString() + u' '
                + (at.startsWith(path) ? at.mid(path.size()) : at);
            EXPECT_FALSE(finding[u"sentence"].toString().contains(u"%@"));
        }
        return findings;
    }
    [[nodiscard]] static QStringList found(const Outcome &outcome, const QString &path)
    {
        return found(outcome.json(), path);
    }
    static void put(const QString &path, const QByteArray &bytes)
    {
        QDir().mkpath(path.section(u'/', 0, -2));
        writeFile(path, bytes);
    }
    static QByteArray plist(const QByteArray &members)
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + members
            + "</dict></plist>\n";
    }
    void save(const QString &path) const
    {
        ASSERT_EQ(varnelctl.run({u"set"_s, u"dock-size=40"_s, u"--home"_s, path}).status, 0);
    }
    /// One of each thing that can be wrong without a second user; the findings.
    QStringList spoil(const QString &path) const
    {
        const QString preferences = path + u"/Library/Preferences";
        const QString own = path + u"/Library/Application Support/Varnel";
        save(path);
        put(preferences + u"/com.apple.finder.plist", "no property list");
        put(preferences + u"/com.apple.Dock.plist", plist("<key>tilesize</key><real>9</real>"));
        put(preferences + u"/com.apple.Safari.plist", plist({}));
        QDir().mkpath(path + u"/Library/Containers/com.apple.Safari/Data/Library/Preferences");
        put(preferences + u"/com.apple.screencapture.plist",
            plist("<key>type</key><string>nosuchtype</string>"));
        put(preferences + u"/ByHost/com.apple.dock.0A1B2C3D-0000-1111-2222-333344445555.plist",
            plist("<key>autohide</key><true/>"));
        put(own + u"/Backup/quillet5.sqlite", "no database");
        EXPECT_TRUE(
            QFile::copy(own + u"/Backup/quillet1.sqlite", own + u"/Backup/quillet6.sqlite"));
        QDir().mkpath(own + u"/Kept/quillet9-0123456789abcdef");
        put(own + u"/Backup/quillet8.sqlite-journal", {});
        put(preferences + u"/.com.apple.dock.plist.varnel-1-0123456789abcdef", "half");
        put(path + u"/.config/autostart/gone.desktop",
            "[Desktop Entry]\nType=Application\nName=Gone\nExec=/nowhere/at/all\n");
        return {
            u"unloadable-file /Library/Preferences/com.apple.finder.plist"_s,
            u"second-file /Library/Preferences/com.apple.Dock.plist"_s,
            u"file-beside-container /Library/Preferences/com.apple.Safari.plist"_s,
            u"no-choice /Library/Preferences/com.apple.screencapture.plist"_s,
            u"per-machine-value /Library/Preferences/ByHost/"
            u"com.apple.dock.0A1B2C3D-0000-1111-2222-333344445555.plist"_s,
            u"unreadable-database /Library/Application Support/Varnel/Backup/quillet5.sqlite"_s,
            u"backup-without-kept /Library/Application Support/Varnel/Backup/quillet6.sqlite"_s,
            u"kept-without-backup /Library/Application Support/Varnel/Kept/"
            u"quillet9-0123456789abcdef"_s,
            u"journal-left /Library/Application Support/Varnel/Backup/quillet8.sqlite-journal"_s,
            u"temporary-file-left /Library/Preferences/"
            u".com.apple.dock.plist.varnel-1-0123456789abcdef"_s,
            u"application-gone /nowhere/at/all"_s};
    }

    TemporaryHome vault;
    TemporaryHome folder;
    Varnelctl varnelctl {vault};
};

/// A program that runs until the end of the test.
class Program {
public:
    explicit Program(const QString &home, const QStringList &words = {u"600"_s})
    {
        QProcessEnvironment environment;
        environment.insert(u"HOME"_s, home);
        process.setProcessEnvironment(environment);
        process.start(u"/bin/sleep"_s, words);
        EXPECT_TRUE(process.waitForStarted());
    }
    ~Program()
    {
        process.kill();
        process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Program)
    [[nodiscard]] qint64 id() const { return process.processId(); }

private:
    QProcess process;
};

TEST_F(DoctorTest, aHealthyHomeEndsWithNothingFoundAndItsFacts)
{
    const QString root = folder.path() + u"/disk";
    put(root + u"/System/Library/CoreServices/SystemVersion.plist",
        plist("<key>ProductVersion</key><string>10.7.5</string>"));
    const QString path = makeHome(u"disk/Users/anna"_s);
    installSample(folder, u"binary"_s, u"com.apple.dock.plist"_s);
    ASSERT_TRUE(QFile::copy(folder.preference(u"com.apple.dock.plist"_s),
                            path + u"/Library/Preferences/com.apple.dock.plist"));
    save(path);
    put(root + u"/Applications/Clock.app/Contents/Info.plist", plist({}));
    put(path + u"/.config/autostart/clock.desktop",
        "[Desktop Entry]\nType=Application\nName=Clock\n"
        "Exec=/Applications/Clock.app/Contents/MacOS/Clock\n");
    const Outcome outcome = examine(path);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QJsonObject told = outcome.json();
    EXPECT_EQ(found(told, path), QStringList());
    EXPECT_EQ(told.value(u"systemVersion"_s).toString(), u"10.7.5");
    EXPECT_EQ(told.value(u"backups"_s)[u"count"].toInt(), 1);
    EXPECT_EQ(told.value(u"kept"_s)[u"count"].toInt(), 1);
    EXPECT_GT(told.value(u"kept"_s)[u"bytes"].toInt(), 0);
    EXPECT_EQ(told.value(u"processes"_s), QJsonArray());

    const Outcome text = doctor({u"--home"_s, path});
    EXPECT_EQ(text.status, 0);
    EXPECT_TRUE(text.out.startsWith("Nothing found.\n\nHome\n  System        10.7.5\n"))
        << text.out.toStdString();
}

TEST_F(DoctorTest, anEmptyHomeIsHealthyAndOnesOwnToo)
{
    const QString path = makeHome(u"anna"_s);
    EXPECT_EQ(examine(path).status, 0);
    varnelctl.environment.insert(u"HOME"_s, path);
    const Program inSession(path);
    const Outcome own = doctor({u"--json"_s});
    EXPECT_EQ(own.status, 0) << own.out.toStdString();
    EXPECT_EQ(own.json().value(u"processes"_s)[0][u"processId"].toInt(), inSession.id());
}

TEST_F(DoctorTest, linksOnTheWayToAnApplicationMeanWhatTheyMeanOnTheDisk)
{
    const QString root = folder.path() + u"/disk";
    put(root + u"/System/Library/CoreServices/SystemVersion.plist",
        plist("<key>ProductVersion</key><string>10.7.5</string>"));
    const QString path = makeHome(u"disk/Users/anna"_s);
    put(root + u"/Applications/Clock.app/Contents/Info.plist", plist({}));
    ASSERT_TRUE(QFile::link(u"/Applications"_s, path + u"/Applications"));
    ASSERT_TRUE(QFile::link(u"/usr/bin"_s, path + u"/bin"));
    int count = 0;
    for (const QString &program : {QString(path + u"/Applications/Clock.app/Contents/MacOS/Clock"),
                                   QString(root + u"/Applications/Clock.app/Contents/MacOS/Clock"),
                                   u"/Users/anna/Applications/Clock.app/Contents/MacOS/Clock"_s,
                                   QString(path + u"/bin/env")})
        put(path + u"/.config/autostart/" + QString::number(++count) + u".desktop",
            "[Desktop Entry]\nType=Application\nName=Clock\nExec=" + program.toUtf8() + '\n');
    EXPECT_EQ(found(examine(path), path), QStringList(u"application-gone /bin/env"_s));
}

TEST_F(DoctorTest, anApplicationInAFolderThatIsClosedIsNotTakenForGone)
{
    VARNEL_NEEDS_ROOT();
    const QString root = folder.path() + u"/disk";
    put(root + u"/System/Library/CoreServices/SystemVersion.plist",
        plist("<key>ProductVersion</key><string>10.7.5</string>"));
    const QString path = makeHome(u"disk/Users/anna"_s);
    put(root + u"/Applications/Clock.app/Contents/Info.plist", plist({}));
    put(path + u"/.config/autostart/clock.desktop",
        "[Desktop Entry]\nType=Application\nName=Clock\n"
        "Exec=/Applications/Clock.app/Contents/MacOS/Clock\n");
    giveAll(path, stranger, stranger);
    for (const QString &closed : {u"/Applications"_s, u"/System"_s, u""_s}) {
        ASSERT_EQ(::chmod(qPrintable(root + closed), closed.isEmpty() ? 0711 : 0), 0);
        EXPECT_EQ(found(examine(path), path), QStringList()) << closed.toStdString();
        ASSERT_EQ(::chmod(qPrintable(root + closed), 0755), 0);
    }
}

TEST_F(DoctorTest, everythingThatIsWrongIsNamedWithWhatToDo)
{
    const QString path = makeHome(u"anna"_s);
    const QStringList wrong = spoil(path);
    const Program running(path);
    const Program elsewhere(vault.path());
    const Outcome outcome = examine(path);
    EXPECT_EQ(outcome.status, 1) << outcome.err.toStdString();
    EXPECT_EQ(found(outcome, path).join(u'\n').toStdString(),
              (wrong + QStringList(u"program-running "_s)).join(u'\n').toStdString());
    const QJsonArray findings = outcome.json().value(u"findings"_s).toArray();
    EXPECT_TRUE(findings.last()[u"path"].isNull());
    EXPECT_TRUE(findings.last()[u"sentence"].toString().contains(QString::number(running.id())));
    const Outcome text = doctor({u"--home"_s, path});
    EXPECT_EQ(text.status, 1);
    for (const QJsonValue finding : findings)
        for (const QString &member : {u"name"_s, u"sentence"_s, u"advice"_s})
            EXPECT_TRUE(QString::fromUtf8(text.out).contains(finding[member].toString()))
                << finding[member].toString().toStdString();
}

TEST_F(DoctorTest, aWriteAheadLogIsReadInACopyAndStaysAsItIs)
{
    const QString path = makeHome(u"anna"_s);
    save(path);
    const QString backup = path + u"/Library/Application Support/Varnel/Backup/quillet1.sqlite";
    // Its writer was killed: log and index are left.
    const Outcome written =
        runProgram(u"/usr/bin/python3"_s,
                   {u"-c"_s,
                    u"import os,sqlite3,sys\n"
                    u"d=sqlite3.connect(sys.argv[1])\n"
                    u"d.execute('PRAGMA journal_mode=WAL')\n"
                    u"d.execute(\"INSERT INTO users VALUES('1300','1','','')\")\n"
                    u"d.commit()\n"
                    u"os._exit(0)\n"_s,
                    backup},
                   varnelctl.environment);
    ASSERT_EQ(written.status, 0) << written.err.toStdString();
    const QString below = backup.mid(path.size());
    EXPECT_EQ(
        found(examine(path), path),
        (QStringList {u"journal-left " + below + u"-shm", u"journal-left " + below + u"-wal"}));
}

/// Another program that has a database open, in a way that SQLite's own statements say.
class Writer {
public:
    Writer(const QString &database, const QString &statements)
    {
        process.start(u"/usr/bin/python3"_s,
                      {u"-c"_s,
                       u"import sqlite3,sys\n"
                       u"d=sqlite3.connect(sys.argv[1],isolation_level=None)\n"
                       u"for each in sys.argv[2].split(';'): d.execute(each).fetchall()\n"
                       u"print('ready',flush=True)\n"
                       u"sys.stdin.read()\n"_s,
                       database, statements});
        EXPECT_TRUE(process.waitForReadyRead()) << process.readAllStandardError().toStdString();
    }
    ~Writer()
    {
        process.closeWriteChannel();
        process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Writer)

private:
    QProcess process;
};

TEST_F(DoctorTest, aDatabaseThatIsBeingWrittenAndItsJournalAreNoFindings)
{
    const QString path = makeHome(u"anna"_s);
    const QString own = path + u"/Library/Application Support/Varnel/";
    const QString row = u"INSERT INTO users VALUES('1300','1','','')"_s;
    save(path);
    for (const QString &begun :
         {u"BEGIN IMMEDIATE;"_s, u"BEGIN EXCLUSIVE;"_s, u"PRAGMA journal_mode=WAL;"_s}) {
        const Writer writer(own + u"Backup/quillet1.sqlite", begun + row);
        EXPECT_EQ(found(examine(path), path), QStringList()) << begun.toStdString();
    }
    const QString table = u";CREATE TABLE users (value1 TEXT)"_s;
    const Writer ofStore(own + u"disableLoginItems.sqlite", u"BEGIN EXCLUSIVE"_s + table);
    const Writer ofFirstRow(own + u"Backup/quillet2.sqlite", u"BEGIN EXCLUSIVE"_s + table);
    EXPECT_EQ(found(examine(path), path), QStringList());
}

TEST_F(DoctorTest, aBackupThatARunHasOnlyBegunIsNoFinding)
{
    const QString path = makeHome(u"anna"_s);
    const QString own = path + u"/Library/Application Support/Varnel/";
    put(own + u"Backup/quillet1.sqlite", {});
    EXPECT_EQ(found(examine(path), path), QStringList());
    put(own + u"Backup/quillet2.sqlite", "no database");
    put(own + u"Backup/quillet2.sqlite-journal", {});
    const QString kept = own + u"Kept/quillet2-0123456789abcdef";
    QDir().mkpath(kept);
    EXPECT_EQ(found(examine(path), path).size(), 2);
    const FileDescriptor run(::open(qPrintable(kept), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::flock(run.get(), LOCK_EX), 0);
    EXPECT_EQ(found(examine(path), path), QStringList());
}

TEST_F(DoctorTest, aStoreOfDisabledItemsThatIsNoneIsFound)
{
    const QString path = makeHome(u"anna"_s);
    const QString store = u"/Library/Application Support/Varnel/disableLoginItems.sqlite"_s;
    put(path + store, {});
    EXPECT_EQ(found(examine(path), path), QStringList());
    put(path + store,
        "no database, and long enough to have the header of one: " + QByteArray(99, 'x'));
    EXPECT_EQ(found(examine(path), path), QStringList(QString(u"unreadable-database " + store)));
}

TEST_F(DoctorTest, whatIsNoHomeIsNotReadable)
{
    const Outcome none = doctor({u"--home"_s, folder.path() + u"/none"});
    EXPECT_EQ(none.status, 3);
    QDir().mkpath(folder.path() + u"/bare");
    const Outcome bare = doctor({u"--home"_s, folder.path() + u"/bare"});
    EXPECT_EQ(bare.status, 3);
    EXPECT_TRUE(bare.err.contains("/bare: no folder Library in it"));
    EXPECT_TRUE(QByteArray(none.out + bare.out).isEmpty());
}

TEST_F(DoctorTest, whatOnlyTheCallerMayNotReadIsNoFinding)
{
    VARNEL_NEEDS_ROOT();
    if (!varnelctl.canRunAs(stranger))
        GTEST_SKIP() << "no tool to run it as somebody else";
    const QString path = makeHome(u"anna"_s);
    ASSERT_TRUE(
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    giveAll(path, stranger + 1, stranger + 1);
    const Outcome outcome = varnelctl.runAs(stranger, {u"doctor"_s, u"--home"_s, path});
    EXPECT_EQ(outcome.status, 3) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.err.contains(": Permission denied")) << outcome.err.toStdString();
    EXPECT_EQ(doctor({u"--home"_s, path}).status, 0);
}

TEST_F(DoctorTest, aFolderThatOnlyTheCallerMayNotEnterIsToldOnce)
{
    VARNEL_NEEDS_ROOT();
    if (!varnelctl.canRunAs(stranger))
        GTEST_SKIP() << "no tool to run it as somebody else";
    const QString path = makeHome(u"anna"_s);
    const QString preferences = path + u"/Library/Preferences";
    for (const QString &name : {u"dock"_s, u"finder"_s, u"Safari"_s})
        put(preferences + u"/com.apple." + name + u".plist", plist({}));
    giveAll(path, stranger + 1, stranger + 1);
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0755), 0);
    for (const mode_t mode : {mode_t(0700), mode_t(0744)}) {
        ASSERT_EQ(::chmod(qPrintable(preferences), mode), 0);
        const Outcome outcome = varnelctl.runAs(stranger, {u"doctor"_s, u"--home"_s, path});
        EXPECT_EQ(outcome.status, 3) << outcome.out.toStdString();
        EXPECT_EQ(outcome.err.count("Permission denied"), 1) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains(QByteArray(preferences.toUtf8() + ": Permission denied")));
    }
}

TEST_F(DoctorTest, aLinkThatLeadsToItselfIsOneFinding)
{
    const QString path = makeHome(u"anna"_s);
    const QString dock = u"/Library/Preferences/com.apple.dock.plist"_s;
    ASSERT_TRUE(QFile::link(path + dock, path + dock));
    EXPECT_EQ(found(examine(path), path), QStringList(QString(u"out-of-reach " + dock)));
}

TEST_F(DoctorTest, ownersAndModesThatKeepTheOwnerOutAreToldAndNotRefused)
{
    VARNEL_NEEDS_ROOT();
    const QString path = makeHome(u"anna"_s);
    const QStringList wrong = spoil(path);
    giveAll(path, stranger, stranger);
    const QString preferences = path + u"/Library/Preferences";
    put(preferences + u"/com.apple.iTunes.plist", plist({}));
    ASSERT_EQ(::chmod(qPrintable(preferences + u"/com.apple.dock.plist"), 0400), 0);
    const Outcome outcome = examine(path);
    EXPECT_EQ(outcome.status, 1) << outcome.err.toStdString();
    EXPECT_EQ(found(outcome, path).join(u'\n').toStdString(),
              (QStringList {u"foreign-owner /Library/Preferences/com.apple.iTunes.plist"_s,
                            u"closed-mode /Library/Preferences/com.apple.dock.plist"_s}
               + wrong)
                  .join(u'\n')
                  .toStdString());
    EXPECT_TRUE(outcome.err.isEmpty()) << outcome.err.toStdString();
}

TEST_F(DoctorTest, aHomeThatIsClosedToItsOwnerIsOneFinding)
{
    VARNEL_NEEDS_ROOT();
    const QString path = makeHome(u"anna"_s);
    static_cast<void>(spoil(path));
    giveAll(path, stranger, stranger);
    for (const QString &closed : {u""_s, u"/Library"_s, u"/Library/Preferences"_s}) {
        ASSERT_EQ(::chmod(qPrintable(path + closed), 0), 0);
        const Outcome outcome = examine(path);
        EXPECT_EQ(outcome.status, 1) << outcome.err.toStdString();
        EXPECT_EQ(found(outcome, path).value(0).toStdString(),
                  "closed-mode " + closed.toStdString());
        EXPECT_TRUE(outcome.err.isEmpty()) << outcome.err.toStdString();
        if (closed.isEmpty()) {
            EXPECT_EQ(found(outcome, path).size(), 1);
            EXPECT_TRUE(outcome.json().value(u"backups"_s).isNull());
        }
        ASSERT_EQ(::chmod(qPrintable(path + closed), 0755), 0);
    }
}

TEST_F(DoctorTest, whatCannotBeLookedIntoIsNotTakenForEmpty)
{
    VARNEL_NEEDS_ROOT();
    const QString path = makeHome(u"anna"_s);
    save(path);
    giveAll(path, stranger, stranger);
    for (const QString &closed : {u"/Library/Application Support/Varnel/Backup"_s,
                                  u"/Library/Application Support/Varnel/Kept"_s}) {
        ASSERT_EQ(::chmod(qPrintable(path + closed), 0), 0);
        EXPECT_EQ(found(examine(path), path), QStringList(QString(u"closed-mode " + closed)));
        ASSERT_EQ(::chmod(qPrintable(path + closed), 0700), 0);
    }
    EXPECT_EQ(examine(path).status, 0);
}

TEST_F(DoctorTest, aLinkToWhatTheOwnerMayNotReadIsAFinding)
{
    VARNEL_NEEDS_ROOT();
    const QString path = makeHome(u"anna"_s);
    put(vault.path() + u"/secret.plist", plist("<key>tilesize</key><string>secret</string>"));
    ASSERT_EQ(::chmod(qPrintable(vault.path()), 0700), 0);
    ASSERT_TRUE(QFile::link(vault.path() + u"/secret.plist",
                            path + u"/Library/Preferences/com.apple.dock.plist"));
    giveAll(path, stranger, stranger);
    const Outcome outcome = examine(path);
    EXPECT_EQ(outcome.status, 1) << outcome.err.toStdString();
    EXPECT_EQ(found(outcome, path),
              QStringList(u"out-of-reach /Library/Preferences/com.apple.dock.plist"_s));
    EXPECT_FALSE(outcome.out.contains("holds secret"));
}

TEST_F(DoctorTest, aHomeOfTwoOwnersIsToldAndNothingInItLookedAt)
{
    VARNEL_NEEDS_ROOT();
    const QString path = makeHome(u"anna"_s);
    static_cast<void>(spoil(path));
    giveAll(path, stranger, stranger);
    ASSERT_EQ(::chown(qPrintable(path + u"/Library"), stranger + 1, stranger + 1), 0);
    const Outcome outcome = examine(path);
    EXPECT_EQ(outcome.status, 1) << outcome.err.toStdString();
    EXPECT_EQ(found(outcome, path), QStringList(u"two-owners "_s));
    EXPECT_TRUE(outcome.json().value(u"kept"_s).isNull());
    EXPECT_EQ(varnelctl.run({u"list"_s, u"--home"_s, path}).status, 3);
}

TEST_F(DoctorTest, twoHundredHomesAreLookedOverInOneRun)
{
    constexpr int count = 200;
    QByteArray list;
    QStringList homes;
    for (int i = 0; i < count; ++i) {
        homes.append(makeHome(u"user"_s + QString::number(i)));
        list += homes.last().toUtf8() + '\n';
        put(homes.last() + u"/Library/Preferences/com.apple.dock.plist",
            plist("<key>tilesize</key><integer>48</integer>"));
    }
    const QStringList wrong = spoil(homes[77]);
    if (::geteuid() == 0)
        for (int i = 0; i < count; ++i)
            giveAll(homes[i], stranger + uid_t(i), stranger + gid_t(i));
    put(folder.path() + u"/homes.txt", list);
    const Outcome outcome = doctor({u"--json"_s, u"--homes-from"_s, folder.path() + u"/homes.txt"});
    EXPECT_EQ(outcome.status, 1) << outcome.err.toStdString();
    const QJsonArray results = outcome.json().value(u"homes"_s).toArray();
    ASSERT_EQ(results.size(), count);
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(results[i][u"home"].toString(), homes[i]);
        EXPECT_EQ(results[i][u"status"].toInt(-1), i == 77 ? 1 : 0);
        EXPECT_EQ(found(results[i].toObject(), homes[i]), i == 77 ? wrong : QStringList());
    }
}

TEST_F(DoctorTest, everyFindingIsDescribed)
{
    const QByteArray page = fileBytes(QStringLiteral(DOCS) + u"/doctor.md");
    for (const FindingRow &row : findingRows())
        EXPECT_TRUE(page.contains(QByteArray("| `" + row.name.toUtf8() + "` |")))
            << row.name.toStdString();
}

} // namespace
