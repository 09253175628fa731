#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

const QByteArray mailEntry = "[Desktop Entry]\nType=Application\nName=Mail\nName[de]=Post\n"
                             "Exec=/Applications/Mail.app/Contents/MacOS/Mail\n# kept\nX-A=b\n";
const QString mail = u"/Applications/Mail.app"_s;
const QString clock = u"/Applications/Clock.app"_s;

class LoginItemsTest : public Test {
protected:
    LoginItemsTest()
    {
        QDir().mkpath(autostart);
        // One's own home would have the machine's system-wide entries above it.
        varnelctl.environment.insert(u"XDG_CONFIG_DIRS"_s, home.path() + u"/none");
        varnelctl.environment.insert(u"XDG_DATA_DIRS"_s, home.path() + u"/none");
    }

    Outcome run(const QStringList &words, bool named = true) const
    {
        QStringList all = QStringList {u"login-items"_s} + words;
        if (named)
            all += {u"--home"_s, home.path()};
        return varnelctl.run(all);
    }
    [[nodiscard]] QStringList list() const
    {
        QStringList lines;
        const QJsonObject object = run({u"list"_s, u"--json"_s}).json();
        EXPECT_EQ(object.value(u"schemaVersion"_s).toInt(), 1);
        for (const QJsonValue &value : object.value(u"loginItems"_s).toArray()) {
            const QJsonObject item = value.toObject();
            EXPECT_EQ(item.keys(), (QStringList {u"enabled"_s, u"name"_s, u"path"_s}));
            lines.append((item.value(u"enabled"_s).toBool() ? u"on "_s : u"off "_s)
                         + item.value(u"name"_s).toString() + u' '
                         + item.value(u"path"_s).toString());
        }
        return lines;
    }
    [[nodiscard]] QByteArray rows(int number) const
    {
        return runProgram(u"sqlite3"_s,
                          {support + u"Backup/quillet" + QString::number(number) + u".sqlite",
                           u"SELECT * FROM users"_s},
                          varnelctl.environment)
            .out;
    }
    void putMail() const { writeFile(autostart + u"/mail.desktop", mailEntry); }

    TemporaryHome home;
    QString autostart = home.path() + u"/.config/autostart";
    QString support = home.path() + u"/Library/Application Support/Varnel/";
    Varnelctl varnelctl {home};
};

TEST_F(LoginItemsTest, listingChangesAndMakesNothing)
{
    putMail();
    const auto before = snapshot(home.path());
    EXPECT_EQ(list(), QStringList {u"on Mail /Applications/Mail.app"_s});
    EXPECT_EQ(run({u"list"_s}).out, "  on  Mail  /Applications/Mail.app\n");
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(LoginItemsTest, anEmptyListIsDoneAllTheSame)
{
    const Outcome outcome = run({u"list"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "No login items.\n");
    EXPECT_TRUE(list().isEmpty());
}

TEST_F(LoginItemsTest, anAddedApplicationIsOffUntilItIsEnabled)
{
    const Outcome added = run({u"add"_s, clock});
    EXPECT_EQ(added.status, 0) << added.err.toStdString();
    EXPECT_TRUE(added.out.contains("'login-items enable' is the next step"));
    EXPECT_EQ(list(), QStringList {u"off Clock.app /Applications/Clock.app"_s});
    EXPECT_EQ(rows(1), "250|/Applications/Clock.app|1|0\n");
    EXPECT_TRUE(QDir(autostart).isEmpty());

    EXPECT_EQ(run({u"enable"_s, clock}).status, 0);
    EXPECT_EQ(list(), QStringList {u"on Clock /Applications/Clock.app"_s});
    EXPECT_EQ(rows(2), "250|/Applications/Clock.app|3|0\n") << "a save, a backup file";
}

TEST_F(LoginItemsTest, disabledAndEnabledAnEntryIsTheSameByteForByte)
{
    putMail();
    EXPECT_EQ(run({u"disable"_s, mail}).status, 0);
    EXPECT_TRUE(QDir(autostart).isEmpty());
    EXPECT_EQ(list(), QStringList {u"off Mail.app /Applications/Mail.app"_s});
    EXPECT_EQ(run({u"enable"_s, mail}).status, 0);
    EXPECT_EQ(fileBytes(autostart + u"/mail.desktop"), mailEntry);
    EXPECT_EQ(rows(1), "250|/Applications/Mail.app|2|0\n");
    EXPECT_EQ(rows(2), "250|/Applications/Mail.app|3|0\n");
}

TEST_F(LoginItemsTest, aRemovedEntryIsGoneFromBothPlacesAndCanStillBeEnabled)
{
    putMail();
    EXPECT_EQ(run({u"remove"_s, mail}).status, 0);
    EXPECT_TRUE(list().isEmpty());
    EXPECT_EQ(rows(1), "250|/Applications/Mail.app|0|1\n");
    EXPECT_EQ(run({u"enable"_s, mail}).status, 0);
    EXPECT_EQ(fileBytes(autostart + u"/mail.desktop"), mailEntry);

    EXPECT_EQ(run({u"disable"_s, mail}).status, 0);
    EXPECT_EQ(run({u"remove"_s, mail}).status, 0);
    EXPECT_EQ(rows(4), "250|/Applications/Mail.app|0|0\n");
    EXPECT_TRUE(list().isEmpty());
}

TEST_F(LoginItemsTest, whatIsSoAlreadyIsLeftAloneWithoutABackupFile)
{
    putMail();
    EXPECT_EQ(run({u"add"_s, clock}).status, 0);
    const auto before = snapshot(home.path());
    for (const QStringList &words : {QStringList {u"add"_s, clock},
                                     {u"add"_s, mail},
                                     {u"enable"_s, mail},
                                     {u"disable"_s, clock}}) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.out, "Nothing to change.\n");
    }
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(LoginItemsTest, anUnknownItemIsANegativeAnswerAndMakesNothing)
{
    const auto before = snapshot(home.path());
    for (const char16_t *verb : {u"remove", u"enable", u"disable"}) {
        const Outcome outcome = run({QString::fromUtf16(verb), mail});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_TRUE(outcome.err.contains("/Applications/Mail.app: no login item"));
    }
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(LoginItemsTest, wrongUsageWritesNothing)
{
    const auto before = snapshot(home.path());
    for (const QStringList &words : {QStringList {u"add"_s},
                                     {u"add"_s, QString()},
                                     {u"list"_s, mail},
                                     {u"add"_s, mail, clock},
                                     {u"toggle"_s, mail},
                                     QStringList {}})
        EXPECT_EQ(run(words).status, 2) << words.join(u' ').toStdString();
    EXPECT_EQ(snapshot(home.path()), before);
    EXPECT_EQ(varnelctl.run({u"login-items"_s, u"add"_s, mail, u"--home"_s, home.path() + u"/none"})
                  .status,
              3);
}

TEST_F(LoginItemsTest, aPathIsMadeAbsoluteUnlessItIsListedAsItIsTyped)
{
    EXPECT_EQ(run({u"add"_s, u"/Applications//Clock.app/"_s}).status, 0);
    EXPECT_EQ(list(), QStringList {u"off Clock.app /Applications/Clock.app"_s});
    EXPECT_EQ(run({u"remove"_s, u"/Applications/./Clock.app/"_s}).status, 0);
    EXPECT_TRUE(list().isEmpty());
}

TEST_F(LoginItemsTest, whereStoringFailsTheItemIsKeptAndTheMessageSaysWhere)
{
    writeFile(autostart + u"/ann.desktop",
              "[Desktop Entry]\nType=Application\nName=Ann\nExec=\"/opt/ann's\"\n");
    const QByteArray before = fileBytes(autostart + u"/ann.desktop");
    const Outcome outcome = run({u"disable"_s, u"/opt/ann's"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 4);
    EXPECT_TRUE(outcome.err.contains("syntax error")) << outcome.err.toStdString();
    EXPECT_TRUE(
        QString::fromUtf8(outcome.err).contains(u"kept in " + support + u"RemovedLoginItems/"));
    EXPECT_EQ(outcome.json().value(u"changed"_s).toArray().size(), 0);
    EXPECT_EQ(outcome.json().value(u"failures"_s).toArray().size(), 1);
    EXPECT_TRUE(list().isEmpty());
    EXPECT_EQ(run({u"enable"_s, u"/opt/ann's"_s}).status, 4) << "done, but without its row";
    EXPECT_EQ(fileBytes(autostart + u"/ann.desktop"), before);
}

TEST_F(LoginItemsTest, ofTwoEntriesOfOneProgramEachCanBeTakenOutAndComesBack)
{
    writeFile(autostart + u"/one.desktop", mailEntry);
    writeFile(autostart + u"/two.desktop", mailEntry);
    const QString two = autostart + u"/two.desktop";
    for (const QString &path : {mail, two}) {
        EXPECT_EQ(run({u"disable"_s, path}).status, 0);
        EXPECT_EQ(list().filter(u"on "_s).size(), 1);
        EXPECT_EQ(list().filter(u"off "_s), list().filter(path));
        const Outcome enabled = run({u"enable"_s, path});
        EXPECT_EQ(enabled.status, 0);
        EXPECT_TRUE(enabled.out.startsWith("Changed")) << enabled.out.toStdString();
        EXPECT_EQ(list().filter(u"on "_s).size(), 2);
    }
}

TEST_F(LoginItemsTest, whatDoesNotComeIntoTheListStaysOffAndEndsWithFour)
{
    const QString hidden = home.path() + u"/hidden.desktop";
    writeFile(hidden, mailEntry.left(mailEntry.indexOf("# kept")) + "Hidden=true\n");
    EXPECT_EQ(run({u"add"_s, hidden}).status, 0);
    EXPECT_EQ(run({u"add"_s, clock}).status, 0);
    const QStringList before = list();
    const auto expectRefused = [&](const QString &path) {
        const Outcome outcome = run({u"enable"_s, path, u"--json"_s, u"--verbose"_s});
        EXPECT_EQ(outcome.status, 4);
        EXPECT_TRUE(QString::fromUtf8(outcome.err).contains(path)) << outcome.err.toStdString();
        EXPECT_FALSE(outcome.err.contains("deleteDisabledLoginItemsData"));
        EXPECT_EQ(outcome.json().value(u"failures"_s).toArray().size(), 1);
        EXPECT_EQ(list(), before);
    };
    expectRefused(hidden);
    ASSERT_TRUE(QDir(autostart).isEmpty());
    ASSERT_TRUE(QDir().rmdir(autostart));
    writeFile(autostart, "a file in the folder's place");
    expectRefused(clock);
}

TEST_F(LoginItemsTest, whatCannotBeAddedChangesNothing)
{
    const Outcome outcome = run({u"add"_s, u"/opt/ann's"_s});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(list().isEmpty());
}

TEST_F(LoginItemsTest, jsonTellsTheBackupAndTheChange)
{
    const QJsonObject object = run({u"add"_s, clock, u"--json"_s}).json();
    EXPECT_EQ(object.value(u"backup"_s).toString(), support + u"Backup/quillet1.sqlite");
    EXPECT_EQ(object.value(u"changed"_s).toArray(),
              (QJsonArray {QJsonObject {{u"path"_s, clock},
                                        {u"action"_s, u"Add \"/Applications/Clock.app\""_s}}}));
    EXPECT_EQ(run({u"add"_s, clock, u"--json"_s}).json().value(u"backup"_s), QJsonValue());
}

TEST_F(LoginItemsTest, whereTheRowIsOfAnotherPathNoWayBackIsTold)
{
    // The statement makes one apostrophe of two.
    const Outcome outcome = run({u"add"_s, u"/O''N.app"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 4);
    EXPECT_TRUE(outcome.json().value(u"backup"_s).isNull());
}

TEST_F(LoginItemsTest, onesOwnHomeHasTheSessionsList)
{
    const QString system = home.path() + u"/xdg/autostart";
    QDir().mkpath(system);
    varnelctl.environment.insert(u"XDG_CONFIG_DIRS"_s, home.path() + u"/xdg");
    writeFile(system + u"/clock.desktop",
              "[Desktop Entry]\nType=Application\nName=Clock\nExec=/opt/clock\n");
    EXPECT_EQ(run({u"list"_s}, false).out, "  on  Clock  /opt/clock\n");
    EXPECT_EQ(run({u"list"_s}).out, "No login items.\n") << "but not one that is named";
    EXPECT_EQ(run({u"disable"_s, u"/opt/clock"_s}, false).status, 0);
    EXPECT_EQ(run({u"list"_s}, false).out, "  off  clock  /opt/clock\n");
    EXPECT_EQ(run({u"enable"_s, u"/opt/clock"_s}, false).status, 0);
    EXPECT_TRUE(QDir(autostart).isEmpty());
}

TEST_F(LoginItemsTest, theHelpOfAddNamesTheNextStep)
{
    const QByteArray help = varnelctl.run({u"login-items"_s, u"add"_s, u"--help"_s}).out;
    EXPECT_TRUE(help.contains("The next step is\n'varnelctl login-items enable PATH'"));
}

} // namespace
