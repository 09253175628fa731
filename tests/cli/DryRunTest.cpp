#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

const QString clock = u"/Applications/Clock.app"_s;
const QString mail = u"/Applications/Mail.app"_s;

/// Every command that writes, with something to do.
const QList<QStringList> writers {
    {u"set"_s, u"1004=64"_s, u"1302=hidden"_s, u"1200=none"_s, u"1400=x"_s, u"--end"_s},
    {u"write"_s, u"com.apple.dock"_s, u"no-glass"_s, u"-bool"_s, u"true"_s},
    {u"reset"_s, u"--all"_s},
    {u"delete"_s, u"com.apple.dock"_s, u"tilesize"_s},
    {u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s, u"--end"_s},
    {u"backups"_s, u"delete"_s, u"quillet1.sqlite"_s, u"quillet2.sqlite"_s},
    {u"login-items"_s, u"add"_s, u"/Applications/Chess.app"_s},
    {u"login-items"_s, u"remove"_s, clock},
    {u"login-items"_s, u"enable"_s, clock},
    {u"login-items"_s, u"disable"_s, mail},
};

class DryRunTest : public TestWithParam<QStringList> {
protected:
    DryRunTest()
    {
        varnelctl.environment.insert(u"XDG_CONFIG_DIRS"_s, home.path() + u"/none");
        varnelctl.environment.insert(u"XDG_DATA_DIRS"_s, home.path() + u"/none");
    }
    /// Backups with a setting and with a login item, one item on and one off.
    void prepare() const
    {
        installSamples(home, u"xml"_s);
        const QString autostart = home.path() + u"/.config/autostart";
        QDir().mkpath(autostart);
        writeFile(autostart + u"/mail.desktop",
                  "[Desktop Entry]\nType=Application\nName=Mail\n"
                  "Exec=/Applications/Mail.app/Contents/MacOS/Mail\n");
        ASSERT_EQ(varnelctl.run({u"set"_s, u"1004=72"_s, u"1100=yes"_s}).status, 0);
        ASSERT_EQ(varnelctl.run({u"login-items"_s, u"add"_s, clock}).status, 0);
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_P(DryRunTest, bytesTimesAndInodesOfTheWholeHomeStay)
{
    prepare();
    const auto before = snapshot(home.path());
    const Outcome json = varnelctl.run(GetParam() + QStringList {u"--dry-run"_s, u"--json"_s});
    EXPECT_EQ(json.status, 0) << json.err.toStdString();
    EXPECT_EQ(json.json().value(u"dryRun"_s), true);
    const QJsonArray told = json.json().value(u"changed"_s).toArray();
    const QJsonArray deleted = json.json().value(u"deleted"_s).toArray();
    EXPECT_GT(told.size() + deleted.size(), 0) << json.out.toStdString();
    const Outcome text = varnelctl.run(GetParam() + QStringList {u"--dry-run"_s});
    EXPECT_EQ(text.status, 0);
    EXPECT_TRUE(text.out.startsWith("Would ")) << text.out.toStdString();
    EXPECT_EQ(snapshot(home.path()), before);

    // The same command has something to do, and does what was told.
    QStringList real = GetParam();
    real.removeAll(u"--end"_s);
    const Outcome done = varnelctl.run(real + QStringList {u"--json"_s});
    EXPECT_EQ(done.status, 0) << done.err.toStdString();
    EXPECT_EQ(done.json().value(u"dryRun"_s), false);
    EXPECT_EQ(done.json().value(u"changed"_s).toArray(), told);
    EXPECT_NE(snapshot(home.path()), before);
}

TEST_P(DryRunTest, noFolderIsMade)
{
    QDir(home.path() + u"/Library").removeRecursively();
    const auto before = snapshot(home.path());
    for (const QStringList &where :
         {QStringList {}, QStringList {u"--home"_s, home.path(), u"--new-home"_s}}) {
        const Outcome outcome = varnelctl.run(GetParam() + QStringList {u"--dry-run"_s} + where);
        EXPECT_NE(outcome.status, 2) << outcome.err.toStdString();
        EXPECT_EQ(snapshot(home.path()), before);
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, DryRunTest, ValuesIn(writers), [](const auto &values) {
    QString name;
    for (const QString &word : values.param.mid(0, 2))
        name += word.section(u'=', 0, 0).remove(u'-').remove(u'.') + u'_';
    return name.toStdString();
});

TEST_F(DryRunTest, aFileThatCannotBeLoadedIsToldAsTheSaveWould)
{
    writeFile(home.preference(u"com.apple.dock.plist"_s), "bplist00 is not one");
    const auto before = snapshot(home.path());
    const Outcome tried =
        varnelctl.run({u"set"_s, u"1004=64"_s, u"1101=yes"_s, u"--dry-run"_s, u"--json"_s});
    EXPECT_EQ(tried.status, 4);
    EXPECT_EQ(snapshot(home.path()), before);
    const Outcome done = varnelctl.run({u"set"_s, u"1004=64"_s, u"1101=yes"_s, u"--json"_s});
    EXPECT_EQ(done.status, 4);
    for (const QString &field : {u"changed"_s, u"failures"_s, u"restart"_s})
        EXPECT_EQ(tried.json().value(field), done.json().value(field)) << field.toStdString();
}

TEST_F(DryRunTest, whatIsSoAlreadyIsNothingToChange)
{
    installSamples(home, u"binary"_s);
    EXPECT_EQ(varnelctl.run({u"set"_s, u"dock-size=48"_s, u"--dry-run"_s}).out,
              "Nothing to change.\n");
    const Outcome unknown =
        varnelctl.run({u"login-items"_s, u"remove"_s, u"/none"_s, u"--dry-run"_s});
    EXPECT_EQ(unknown.status, 1);
}

/// Homes in which something that can be read beforehand stands in the way.
class ForeseenTest : public DryRunTest {
protected:
    /// The command tried out, then done: both end alike, and nothing is touched before.
    void expectForeseen(const QStringList &command, int status) const
    {
        const std::string what = command.join(u' ').toStdString();
        const auto before = snapshot(home.path());
        const Outcome tried = varnelctl.run(command + QStringList {u"--dry-run"_s});
        const Outcome triedJson =
            varnelctl.run(command + QStringList {u"--dry-run"_s, u"--json"_s});
        EXPECT_EQ(snapshot(home.path()), before) << what;
        const Outcome done = varnelctl.run(command + QStringList {u"--json"_s});
        EXPECT_EQ(done.status, status) << what << done.err.toStdString();
        EXPECT_EQ(tried.status, status) << what;
        EXPECT_EQ(triedJson.status, status) << what;
        EXPECT_EQ(tried.err.toStdString(), done.err.toStdString()) << what;
        EXPECT_EQ(triedJson.err.toStdString(), done.err.toStdString()) << what;
        EXPECT_EQ(triedJson.out.isEmpty(), done.out.isEmpty()) << what;
        if (done.out.isEmpty())
            return;
        for (const QString &field :
             {u"changed"_s, u"failures"_s, u"restart"_s, u"loginItems"_s, u"skipped"_s})
            EXPECT_EQ(triedJson.json().value(field), done.json().value(field))
                << what << field.toStdString();
        EXPECT_EQ(triedJson.json().value(u"backup"_s).isString(), command.first() == u"backups")
            << what;
    }
    void autostart(const QString &path) const
    {
        const QString folder = home.path() + u"/.config/autostart";
        QDir().mkpath(folder);
        writeFile(folder + u"/item.desktop",
                  "[Desktop Entry]\nType=Application\nName=Item\nExec=\"" + path.toUtf8() + "\"\n");
        const QJsonArray items = varnelctl.run({u"login-items"_s, u"list"_s, u"--json"_s})
                                     .json()[u"loginItems"]
                                     .toArray();
        ASSERT_EQ(items.size(), 1);
        ASSERT_EQ(items[0][u"path"], path);
    }
    void writeStore(const QByteArray &bytes) const
    {
        QDir().mkpath(supportFolder());
        writeFile(supportFolder() + u"/disableLoginItems.sqlite", bytes);
    }
    [[nodiscard]] QString supportFolder() const
    {
        return home.path() + u"/Library/Application Support/Varnel";
    }
};

TEST_F(ForeseenTest, anOldTextThatNoRowCanHold)
{
    writeFile(home.preference(u"com.apple.screencapture.plist"_s),
              "<plist version=\"1.0\"><dict><key>name</key><string>it's</string></dict></plist>");
    expectForeseen({u"set"_s, u"1009=yes"_s, u"1400=x"_s, u"1004=64"_s}, 4);
}

TEST_F(ForeseenTest, anOldTextWithAQuotedApostropheThatARowHolds)
{
    writeFile(home.preference(u"com.apple.screencapture.plist"_s),
              "<plist version=\"1.0\"><dict><key>name</key><string>it''s</string></dict></plist>");
    expectForeseen({u"set"_s, u"1400=x"_s}, 0);
}

TEST_F(ForeseenTest, anOldTextWithAnApostropheOfAProfile)
{
    writeFile(home.preference(u"com.apple.screencapture.plist"_s),
              "<plist version=\"1.0\"><dict><key>name</key><string>it's</string></dict></plist>");
    writeFile(home.path() + u"/profile",
              R"({"schemaVersion": 1, "settings": {"screenshot-prefix": "x"}})");
    expectForeseen({u"apply"_s, home.path() + u"/profile"}, 4);
    expectForeseen({u"apply"_s, home.path() + u"/profile"}, 0);
}

TEST_F(ForeseenTest, aLoginItemThatNoRowCanHold)
{
    expectForeseen({u"login-items"_s, u"add"_s, u"/O'N.app"_s}, 3);
    expectForeseen({u"login-items"_s, u"add"_s, u"/O''N.app"_s}, 4);
    for (const QString &verb : {u"enable"_s, u"remove"_s})
        expectForeseen({u"login-items"_s, verb, u"/O'N.app"_s}, 4);
}

TEST_F(ForeseenTest, aListedLoginItemThatNoRowCanHold)
{
    for (const QString &verb : {u"disable"_s, u"remove"_s}) {
        autostart(u"/Applications/O'N.app"_s);
        expectForeseen({u"login-items"_s, verb, u"/Applications/O'N.app"_s}, 4);
    }
}

TEST_F(ForeseenTest, aListOfWhatIsSwitchedOffThatCannotBeWritten)
{
    writeStore(
        "no database, but long enough to be looked at as one, were it one at all .............");
    expectForeseen({u"login-items"_s, u"add"_s, mail}, 3);
    autostart(mail);
    expectForeseen({u"login-items"_s, u"disable"_s, mail}, 4);
    QFile::remove(supportFolder() + u"/disableLoginItems.sqlite");
    QDir().mkpath(supportFolder() + u"/disableLoginItems.sqlite");
    expectForeseen({u"login-items"_s, u"add"_s, clock}, 3);
}

TEST_F(ForeseenTest, changesOfListedItemsThatSucceed)
{
    for (const QString &verb : {u"disable"_s, u"enable"_s, u"remove"_s, u"enable"_s, u"add"_s}) {
        if (verb == u"disable")
            autostart(mail);
        expectForeseen({u"login-items"_s, verb, mail}, 0);
    }
}

TEST_F(ForeseenTest, aLibraryFolderThatTheSaveMakes)
{
    for (const QString &value : {u"0"_s, u"1"_s}) {
        QDir(home.path() + u"/Library").removeRecursively();
        expectForeseen({u"set"_s, u"1302="_s + value, u"1004=64"_s}, 0);
        const QString fresh = home.path() + u"/fresh" + value;
        QDir().mkpath(fresh);
        expectForeseen({u"set"_s, u"1302="_s + value, u"--home"_s, fresh, u"--new-home"_s}, 0);
        QDir(fresh + u"/Library").removeRecursively();
        expectForeseen({u"set"_s, u"1302="_s + value, u"--home"_s, fresh}, 3);
    }
}

TEST_F(ForeseenTest, aFileWhereAFolderOfTheHomeBelongs)
{
    const QString library = home.path() + u"/Library";
    for (const QString &place : {QString(library + u"/Application Support"),
                                 QString(library + u"/Preferences"), library}) {
        QDir(place).removeRecursively();
        writeFile(place, "a file");
        expectForeseen({u"set"_s, u"1302=0"_s}, 3);
        expectForeseen({u"login-items"_s, u"add"_s, mail}, 3);
        ASSERT_TRUE(QFile::remove(place));
    }
}

TEST_F(ForeseenTest, aFileWhereAFolderOfThisProgramBelongs)
{
    for (const QString &place : {QString(supportFolder() + u"/Backup"), supportFolder()}) {
        QDir().mkpath(place.section(u'/', 0, -2));
        QDir(place).removeRecursively();
        writeFile(place, "a file");
        expectForeseen({u"set"_s, u"1004="_s + QString::number(64 + place.size() % 2)}, 4);
        ASSERT_TRUE(QFile::remove(place));
    }
}

TEST_F(ForeseenTest, aRestoreThatCannotPutEveryItemBack)
{
    ASSERT_EQ(varnelctl.run({u"login-items"_s, u"add"_s, u"/O''N.app"_s}).status, 4);
    ASSERT_EQ(varnelctl.run({u"set"_s, u"1004=72"_s}).status, 0);
    expectForeseen({u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s}, 4);
    expectForeseen({u"backups"_s, u"restore"_s, u"quillet2.sqlite"_s}, 0);
}

} // namespace
