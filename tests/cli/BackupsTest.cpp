#include "cli/Varnelctl.h"
#include "support/FileFacts.h"

#include <QDir>
#include <QJsonArray>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;

namespace {

QStringList words(const QJsonValue &array)
{
    QStringList list;
    for (const QJsonValue &value : array.toArray())
        list.append(value.toString());
    return list;
}

/// A home with sample preferences and the backups that a test puts there.
class BackupsTest : public testing::Test {
protected:
    BackupsTest()
    {
        installSamples(home, u"xml"_s);
        QDir().mkpath(folder);
    }
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(u"sqlite3"_s).isEmpty())
            GTEST_SKIP() << "no sqlite3 tool";
    }

    void put(const QString &name, const QStringList &rows) const
    {
        QString sql = u"CREATE TABLE users (id INTEGER NOT NULL,value1 TEXT, value2 TEXT, value3 "
                      u"TEXT);"_s;
        for (const QString &row : rows)
            sql += u"INSERT INTO users VALUES(" + row + u");";
        const Outcome made =
            runProgram(u"sqlite3"_s, {u"-batch"_s, folder + name, sql}, varnelctl.environment);
        ASSERT_EQ(made.status, 0) << made.err.toStdString();
    }
    [[nodiscard]] QStringList files() const
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    [[nodiscard]] Outcome backups(const QStringList &arguments) const
    {
        return varnelctl.run(QStringList {u"backups"_s} + arguments);
    }
    [[nodiscard]] QByteArray dock() const
    {
        return fileBytes(home.preference(u"com.apple.dock.plist"_s));
    }

    TemporaryHome home;
    QString folder = home.path() + u"/Library/Application Support/Varnel/Backup/";
    Varnelctl varnelctl {home};
};

const QString effectRow = QStringLiteral("1008,'1','',''");
const QString sizeRow = QStringLiteral("1004,'64','',''");

TEST_F(BackupsTest, whereTheFolderMayNotBeReadThatIsTheReasonTold)
{
    VARNEL_NEEDS_ROOT();
    put(u"quillet1.sqlite"_s, {});
    giveAll(home.path(), stranger, stranger);
    if (!varnelctl.canRunAs(stranger))
        GTEST_SKIP() << "needs setpriv and a build folder that other users may enter";
    // May be searched and not listed; neither.
    for (const mode_t mode : {0300U, 0000U}) {
        ASSERT_EQ(::chmod(qPrintable(folder), mode), 0);
        const Outcome outcome = varnelctl.runAs(
            stranger, {u"backups"_s, u"delete"_s, u"quillet1.sqlite"_s, u"--verbose"_s});
        EXPECT_EQ(outcome.status, 3);
        EXPECT_TRUE(outcome.err.contains("Permission denied")) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains(QByteArray("varnel.io: " + folder.toUtf8())))
            << outcome.err.toStdString();
        EXPECT_FALSE(outcome.err.contains("no such")) << outcome.err.toStdString();
        const Outcome none =
            varnelctl.runAs(stranger, {u"backups"_s, u"delete"_s, u"quillet2.sqlite"_s});
        EXPECT_EQ(none.err.contains("no such"), mode != 0) << none.err.toStdString();
        const Outcome list = varnelctl.runAs(stranger, {u"backups"_s, u"list"_s});
        EXPECT_EQ(list.status, 3);
        EXPECT_TRUE(list.err.contains("Permission denied")) << list.err.toStdString();
        EXPECT_TRUE(list.out.isEmpty()) << "not that there are none";
    }
    ASSERT_EQ(::chmod(qPrintable(folder), 0755), 0);
    EXPECT_EQ(files(), QStringList(u"quillet1.sqlite"_s));
}

TEST_F(BackupsTest, listGoesByNamePlainly)
{
    put(u"quillet2.sqlite"_s, {});
    put(u"quillet10.sqlite"_s, {});
    put(u"Alpha.sqlite"_s, {});
    writeFile(folder + u"other.SQLITE", "x");
    const Outcome listed = backups({u"list"_s, u"--json"_s});
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.json().keys(), (QStringList {u"backups"_s, u"schemaVersion"_s}));
    QStringList names;
    for (const QJsonValue &backup : listed.json()[u"backups"].toArray()) {
        names.append(backup[u"name"].toString());
        EXPECT_EQ(backup.toObject().keys(),
                  (QStringList {u"createdDate"_s, u"exact"_s, u"keptBytes"_s, u"name"_s}));
        EXPECT_EQ(backup[u"exact"], true) << "nothing in it does not come back";
        const QString date = backup[u"createdDate"].toString();
        EXPECT_EQ(date.size(), 25) << date.toStdString();
        EXPECT_TRUE(date.endsWith(u" +0000"));
    }
    EXPECT_EQ(names,
              (QStringList {u"Alpha.sqlite"_s, u"quillet10.sqlite"_s, u"quillet2.sqlite"_s}));
    EXPECT_TRUE(backups({u"list"_s}).out.contains("quillet10.sqlite"));
}

TEST_F(BackupsTest, listAndShowMakeNothing)
{
    TemporaryHome empty;
    const QMap<QString, QString> before = snapshot(empty.path());
    const Varnelctl other(empty);
    const Outcome listed = other.run({u"backups"_s, u"list"_s, u"--json"_s});
    EXPECT_EQ(listed.status, 0);
    EXPECT_TRUE(listed.json()[u"backups"].toArray().isEmpty());
    EXPECT_EQ(other.run({u"backups"_s, u"show"_s, u"quillet1.sqlite"_s}).status, 3);
    EXPECT_EQ(snapshot(empty.path()), before);
}

TEST_F(BackupsTest, showGivesTheRowsInFileOrderWithTheirWords)
{
    put(u"quillet1.sqlite"_s, {effectRow, u"77,'a','b','c'"_s, u"250,'/Apps/Mail.app','1','0'"_s});
    const Outcome shown = backups({u"show"_s, u"quillet1.sqlite"_s, u"--json"_s});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.json()[u"name"], u"quillet1.sqlite"_s);
    const QJsonArray rows = shown.json()[u"rows"].toArray();
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].toObject(),
              (QJsonObject {{u"id"_s, 1008},
                            {u"value1"_s, u"1"_s},
                            {u"value2"_s, u""_s},
                            {u"value3"_s, u""_s},
                            {u"location"_s, u"Dock"_s},
                            {u"description"_s, u"Use scale effect when minimizing appliction"_s},
                            {u"exact"_s, false}}));
    EXPECT_EQ(rows[1][u"description"], u""_s);
    EXPECT_EQ(rows[1][u"value3"], u"c"_s);
    EXPECT_EQ(rows[2][u"location"], u"Login Items"_s);
    EXPECT_EQ(rows[2][u"description"], u"Remove \"/Apps/Mail.app\""_s);
    EXPECT_TRUE(backups({u"show"_s, u"quillet1.sqlite"_s}).out.contains("Login Items"));
}

TEST_F(BackupsTest, restorePlaysTheWholeFileAndDeletesIt)
{
    put(u"quillet1.sqlite"_s, {effectRow, u"77,'1','',''"_s, u"1100,'0','',''"_s, sizeRow});
    const Outcome restored = backups({u"restore"_s, u"quillet1.sqlite"_s, u"--json"_s});
    EXPECT_EQ(restored.status, 0) << restored.err.toStdString();
    const QJsonObject object = restored.json();
    EXPECT_EQ(object[u"backup"], u"quillet1.sqlite"_s);
    EXPECT_EQ(object[u"deleted"], true);
    EXPECT_EQ(object[u"dryRun"], false);
    EXPECT_EQ(object[u"skipped"], (QJsonArray {77}));
    EXPECT_EQ(words(object[u"restart"]), (QStringList {u"Dock"_s, u"Finder"_s}));
    ASSERT_EQ(object[u"changed"].toArray().size(), 3);
    EXPECT_EQ(object[u"changed"][0][u"id"], 1008);
    EXPECT_EQ(object[u"changed"][0][u"old"], 0);
    EXPECT_EQ(object[u"changed"][0][u"new"], 1);
    EXPECT_TRUE(dock().contains("<string>scale</string>"));
    EXPECT_TRUE(dock().contains("<integer>64</integer>"));
    EXPECT_TRUE(files().isEmpty()) << "the restored file is gone, and no new one is made";
}

TEST_F(BackupsTest, savingAndRestoringGivesTheBytesBack)
{
    const QByteArray before = dock();
    ASSERT_EQ(varnelctl.run({u"set"_s, u"1008=1"_s, u"1004=64"_s}).status, 0);
    ASSERT_EQ(files(), QStringList {u"quillet1.sqlite"_s});
    ASSERT_NE(dock(), before);
    const Outcome restored = backups({u"restore"_s, u"quillet1.sqlite"_s});
    EXPECT_EQ(restored.status, 0);
    EXPECT_TRUE(restored.out.contains("To be restarted: Dock"));
    EXPECT_EQ(dock().toStdString(), before.toStdString());
}

TEST_F(BackupsTest, keepLeavesTheFile)
{
    put(u"quillet1.sqlite"_s, {sizeRow});
    const Outcome restored =
        backups({u"restore"_s, u"quillet1.sqlite"_s, u"--keep"_s, u"--json"_s});
    EXPECT_EQ(restored.status, 0);
    EXPECT_EQ(restored.json()[u"deleted"], false);
    EXPECT_EQ(files(), QStringList {u"quillet1.sqlite"_s});
    EXPECT_TRUE(dock().contains("<integer>64</integer>"));
}

TEST_F(BackupsTest, onlyPlaysTheNamedSettingsAndKeepsTheFile)
{
    put(u"quillet1.sqlite"_s, {effectRow, sizeRow, u"1009,'0','',''"_s, u"250,'/a.app','0','0'"_s});
    const Outcome restored = backups(
        {u"restore"_s, u"quillet1.sqlite"_s, u"--only"_s, u"1008"_s, u"autohide"_s, u"--json"_s});
    EXPECT_EQ(restored.status, 0) << restored.err.toStdString();
    EXPECT_EQ(restored.json()[u"changed"].toArray().size(), 2);
    EXPECT_TRUE(restored.json()[u"loginItems"].toArray().isEmpty());
    EXPECT_TRUE(dock().contains("<string>scale</string>"));
    EXPECT_TRUE(dock().contains("<integer>48</integer>"));
    EXPECT_EQ(files(), QStringList {u"quillet1.sqlite"_s});
}

TEST_F(BackupsTest, onlyOfWhatTheFileDoesNotHoldChangesNothing)
{
    put(u"quillet1.sqlite"_s, {effectRow});
    const QMap<QString, QString> before = snapshot(home.path());
    const Outcome restored =
        backups({u"restore"_s, u"quillet1.sqlite"_s, u"--only"_s, u"1008"_s, u"dock-size"_s});
    EXPECT_EQ(restored.status, 1);
    EXPECT_TRUE(restored.err.contains("dock-size"));
    EXPECT_EQ(backups({u"restore"_s, u"quillet1.sqlite"_s, u"--only"_s, u"nothing"_s}).status, 2);
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(BackupsTest, aDryRunTellsWhatWouldChangeAndTouchesNothing)
{
    put(u"quillet1.sqlite"_s,
        {effectRow, u"1004,'48','',''"_s, u"1302,'0','',''"_s, u"250,'/Apps/Mail.app','0','1'"_s});
    const QMap<QString, QString> before = snapshot(home.path());
    const Outcome tried =
        backups({u"restore"_s, u"quillet1.sqlite"_s, u"--dry-run"_s, u"--json"_s});
    EXPECT_EQ(tried.status, 0) << tried.err.toStdString();
    const QJsonObject object = tried.json();
    EXPECT_EQ(object[u"dryRun"], true);
    EXPECT_EQ(object[u"deleted"], false);
    EXPECT_EQ(object[u"changed"][0][u"id"], 1008);
    EXPECT_EQ(object[u"loginItems"][0][u"description"], u"Add \"/Apps/Mail.app\""_s);
    EXPECT_TRUE(words(object[u"restart"]).contains(u"Dock"_s));
    EXPECT_TRUE(
        backups({u"restore"_s, u"quillet1.sqlite"_s, u"--dry-run"_s}).out.contains("Would be"));
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(BackupsTest, aSettingThatCannotBeWrittenStopsThereAndTheFileStays)
{
    writeFile(home.preference(u"com.apple.finder.plist"_s), "no property list");
    put(u"quillet1.sqlite"_s, {effectRow, u"1100,'0','',''"_s, sizeRow});
    const Outcome tried = backups({u"restore"_s, u"quillet1.sqlite"_s, u"--dry-run"_s});
    EXPECT_EQ(tried.status, 4);
    const Outcome restored = backups({u"restore"_s, u"quillet1.sqlite"_s, u"--json"_s});
    EXPECT_EQ(restored.status, 4);
    EXPECT_TRUE(restored.err.contains("com.apple.finder.plist")) << restored.err.toStdString();
    EXPECT_EQ(restored.json()[u"changed"].toArray().size(), 1);
    EXPECT_EQ(restored.json()[u"failures"].toArray().size(), 1);
    EXPECT_TRUE(dock().contains("<string>scale</string>"));
    EXPECT_TRUE(dock().contains("<integer>48</integer>"));
    EXPECT_EQ(files(), QStringList {u"quillet1.sqlite"_s});
    EXPECT_EQ(fileBytes(home.preference(u"com.apple.finder.plist"_s)), "no property list");
}

TEST_F(BackupsTest, loginItemsAreTakenInAndOutOfTheList)
{
    varnelctl.environment.remove(u"XDG_CONFIG_HOME"_s);
    const QString program = home.path() + u"/starts";
    writeFile(program, "#!/bin/sh\n");
    ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    put(u"quillet1.sqlite"_s, {u"250,'" + program + u"','0','1'"});
    put(u"quillet2.sqlite"_s, {u"250,'" + program + u"','1','1'"});
    const QString autostart = home.path() + u"/.config/autostart";
    const Outcome added = backups({u"restore"_s, u"quillet1.sqlite"_s});
    EXPECT_EQ(added.status, 0) << added.err.toStdString();
    EXPECT_EQ(QDir(autostart).entryList({u"*.desktop"_s}, QDir::Files).size(), 1);
    const Outcome removed = backups({u"restore"_s, u"quillet2.sqlite"_s});
    EXPECT_EQ(removed.status, 0) << removed.err.toStdString();
    EXPECT_TRUE(QDir(autostart).entryList({u"*.desktop"_s}, QDir::Files).isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(BackupsTest, aLoginItemThatCannotBePutBackStopsThereAndTheFileStays)
{
    varnelctl.environment.remove(u"XDG_CONFIG_HOME"_s);
    QDir().mkpath(home.path() + u"/.config");
    writeFile(home.path() + u"/.config/autostart", "no folder");
    put(u"quillet1.sqlite"_s, {effectRow, u"250,'/Apps/Mail.app','0','1'"_s, sizeRow});
    const Outcome restored = backups({u"restore"_s, u"quillet1.sqlite"_s, u"--json"_s});
    EXPECT_EQ(restored.status, 4);
    EXPECT_EQ(restored.json()[u"failures"].toArray().size(), 1);
    EXPECT_EQ(restored.json()[u"changed"].toArray().size(), 1);
    EXPECT_TRUE(dock().contains("<string>scale</string>"));
    EXPECT_TRUE(dock().contains("<integer>48</integer>")) << "the rows behind it are not played";
    EXPECT_EQ(files(), QStringList {u"quillet1.sqlite"_s});
}

TEST_F(BackupsTest, anItemIsPutBackIntoTheListWhereThereIsNoStoreToTakeItFrom)
{
    QDir().mkpath(home.path() + u"/.config/autostart");
    put(u"quillet1.sqlite"_s, {u"250,'/Apps/Mail.app','2','0'"_s, sizeRow});
    const Outcome restored =
        backups({u"restore"_s, u"quillet1.sqlite"_s, u"--home"_s, home.path()});
    EXPECT_EQ(restored.status, 0) << restored.err.toStdString();
    EXPECT_EQ(entriesOf(home.path() + u"/.config/autostart"), QStringList {u"Mail.desktop"_s});
    EXPECT_TRUE(dock().contains("<integer>64</integer>"));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(BackupsTest, loginItemsAreReadAgainAfterEachRow)
{
    const QStringList here {u"--home"_s, home.path()};
    const QString autostart = home.path() + u"/.config/autostart";
    QDir().mkpath(autostart);
    writeFile(autostart + u"/a.desktop",
              "[Desktop Entry]\nType=Application\nName=A\nExec=/A.app/A\n");
    put(u"quillet1.sqlite"_s, {u"250,'/A.app','0','0'"_s, u"250,'/A.app','1','1'"_s});
    const Outcome restored = backups(QStringList {u"restore"_s, u"quillet1.sqlite"_s} + here);
    EXPECT_EQ(restored.status, 0) << restored.err.toStdString();
    const Outcome listed =
        varnelctl.run(QStringList {u"login-items"_s, u"list"_s, u"--json"_s} + here);
    EXPECT_TRUE(listed.json()[u"loginItems"].toArray().isEmpty()) << listed.out.toStdString();
}

TEST_F(BackupsTest, aLoginItemThatDoesNotComeIntoTheListStaysOffAndTheFileStays)
{
    varnelctl.environment.remove(u"XDG_CONFIG_HOME"_s);
    const QString entry = home.path() + u"/hidden.desktop";
    writeFile(entry, "[Desktop Entry]\nType=Application\nName=x\nExec=/opt/x\nHidden=true\n");
    put(u"quillet1.sqlite"_s, {u"250,'" + entry + u"','3','0'"});
    put(u"quillet2.sqlite"_s, {u"250,'" + entry + u"','2','0'"});
    EXPECT_EQ(backups({u"restore"_s, u"quillet1.sqlite"_s}).status, 0);
    const Outcome restored = backups({u"restore"_s, u"quillet2.sqlite"_s});
    EXPECT_EQ(restored.status, 4);
    EXPECT_TRUE(restored.err.contains("hidden.desktop")) << restored.err.toStdString();
    EXPECT_TRUE(QDir(home.path() + u"/.config/autostart").isEmpty());
    EXPECT_TRUE(varnelctl.run({u"login-items"_s, u"list"_s}).out.contains("off  hidden.desktop"));
}

TEST_F(BackupsTest, aLoginItemWithoutAWholePathWritesNothingAndFails)
{
    varnelctl.environment.remove(u"XDG_CONFIG_HOME"_s);
    put(u"quillet1.sqlite"_s, {u"250,'','0','1'"_s});
    put(u"quillet2.sqlite"_s, {u"250,'Mail.app','2','0'"_s});
    for (const QString &file : {u"quillet1.sqlite"_s, u"quillet2.sqlite"_s}) {
        const Outcome restored = backups({u"restore"_s, file, u"--json"_s});
        EXPECT_EQ(restored.status, 4);
        EXPECT_TRUE(restored.err.contains("does not begin with a slash"))
            << restored.err.toStdString();
        EXPECT_EQ(restored.json()[u"failures"].toArray().size(), 1);
    }
    EXPECT_FALSE(QDir(home.path() + u"/.config/autostart").exists());
    EXPECT_FALSE(varnelctl.run({u"login-items"_s, u"list"_s}).out.contains("Mail"));
}

TEST_F(BackupsTest, aFileThatIsNoBackupChangesNothing)
{
    writeFile(folder + u"quillet1.sqlite", "words");
    const QMap<QString, QString> before = snapshot(home.path());
    for (const QString &command : {u"show"_s, u"restore"_s}) {
        const Outcome outcome = backups({command, u"quillet1.sqlite"_s, u"--json"_s});
        EXPECT_EQ(outcome.status, 3);
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.err.contains("quillet1.sqlite"));
    }
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(BackupsTest, deleteTakesSeveralAndChecksThemAllFirst)
{
    for (const QString &name : {u"quillet1.sqlite"_s, u"quillet2.sqlite"_s, u"b.sqlite"_s})
        put(name, {});
    EXPECT_EQ(backups({u"delete"_s, u"quillet1.sqlite"_s, u"none.sqlite"_s}).status, 3);
    EXPECT_EQ(files().size(), 3);
    const Outcome deleted =
        backups({u"delete"_s, u"quillet1.sqlite"_s, u"b.sqlite"_s, u"--json"_s});
    EXPECT_EQ(deleted.status, 0);
    EXPECT_EQ(words(deleted.json()[u"deleted"]),
              (QStringList {u"quillet1.sqlite"_s, u"b.sqlite"_s}));
    EXPECT_EQ(files(), QStringList {u"quillet2.sqlite"_s});
}

TEST_F(BackupsTest, theJournalOfAKilledSaveGoesWithItsFile)
{
    for (const QString &name : {u"quillet1.sqlite"_s, u"quillet2.sqlite"_s}) {
        put(name, {sizeRow});
        writeFile(folder + name + u"-journal", "left");
    }
    EXPECT_EQ(backups({u"delete"_s, u"quillet2.sqlite"_s}).status, 0);
    EXPECT_EQ(files(), (QStringList {u"quillet1.sqlite"_s, u"quillet1.sqlite-journal"_s}));
    const Outcome restored = backups({u"restore"_s, u"quillet1.sqlite"_s});
    EXPECT_EQ(restored.status, 0) << restored.err.toStdString();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(BackupsTest, aNameIsThatOfAListedFileAndNoPath)
{
    put(u"quillet1.sqlite"_s, {effectRow});
    writeFile(folder + u"notes.txt", "mine");
    const QMap<QString, QString> before = snapshot(home.path());
    for (const QString &command : {u"show"_s, u"restore"_s, u"delete"_s}) {
        EXPECT_EQ(backups({command, u"../Backup/quillet1.sqlite"_s}).status, 2);
        EXPECT_EQ(backups({command, folder + u"quillet1.sqlite"}).status, 2);
        EXPECT_EQ(backups({command, u".."_s}).status, 3);
        EXPECT_EQ(backups({command, u"notes.txt"_s}).status, 3);
        EXPECT_EQ(backups({command}).status, 2);
    }
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(BackupsTest, everyHelpAndEveryObjectIsComplete)
{
    put(u"quillet1.sqlite"_s, {effectRow});
    for (const QStringList &command :
         {QStringList {u"list"_s}, QStringList {u"show"_s, u"quillet1.sqlite"_s},
          QStringList {u"restore"_s, u"quillet1.sqlite"_s, u"--keep"_s},
          QStringList {u"delete"_s, u"quillet1.sqlite"_s}}) {
        EXPECT_EQ(backups(command + QStringList {u"--json"_s}).json()[u"schemaVersion"], 1);
        EXPECT_TRUE(backups({command.first(), u"--help"_s}).out.startsWith("Usage: "));
    }
    EXPECT_TRUE(backups({u"restore"_s, u"--help"_s}).out.contains("--only SETTING..."));
    EXPECT_EQ(backups({}).status, 2);
}

} // namespace
