#include "cli/Varnelctl.h"
#include "support/PlantedLinks.h"
#include "support/PlistReferee.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

const QString clock = u"/Applications/Clock.app"_s;
const QString added = u"/Applications/New.app"_s;
const QByteArray mailEntry =
    "[Desktop Entry]\nType=Application\nName=Mail\nExec=/Applications/Mail.app/Mail\n";

/// A Mac account's list in a home on that Mac's disk.
class AccountItemsTest : public Test {
protected:
    AccountItemsTest() { QDir().mkpath(home + u"/Library/Preferences"); }

    void use(const QString &sample) const
    {
        writeFile(file, fileBytes(QStringLiteral(TEST_DATA "/loginitems/") + sample));
    }
    void putEntry() const
    {
        QDir().mkpath(home + u"/.config/autostart");
        writeFile(home + u"/.config/autostart/mail.desktop", mailEntry);
    }
    void putSystem(const QByteArray &version) const
    {
        const QString folder = disk.path() + u"/System/Library/CoreServices";
        QDir().mkpath(folder);
        writeFile(folder + u"/SystemVersion.plist",
                  "<plist version=\"1.0\"><dict><key>ProductVersion</key><string>" + version
                      + "</string></dict></plist>");
    }
    [[nodiscard]] Outcome run(const QStringList &words) const
    {
        return varnelctl.run(QStringList {u"login-items"_s} + words
                             + QStringList {u"--home"_s, home});
    }
    [[nodiscard]] Outcome account(const QStringList &words) const
    {
        return run(words + QStringList {u"--list"_s, u"account"_s});
    }
    [[nodiscard]] QStringList paths(const QStringList &words) const
    {
        QStringList paths;
        for (const QJsonValue &item :
             run(QStringList {u"list"_s, u"--json"_s} + words).json()[u"loginItems"].toArray())
            paths.append((item[u"enabled"].toBool() ? u"on "_s : u"off "_s)
                         + item[u"path"].toString());
        return paths;
    }

    TemporaryHome disk;
    QString home = disk.path() + u"/Users/anna";
    QString file = home + u"/Library/Preferences/com.apple.loginitems.plist";
    QString support = home + u"/Library/Application Support/Varnel/";
    Varnelctl varnelctl {disk};
};

TEST_F(AccountItemsTest, eachListIsNamedByAnOptionAndByTheJson)
{
    use(u"snow-leopard-binary.plist"_s);
    putEntry();
    const QStringList session = {u"--list"_s, u"session"_s};
    EXPECT_EQ(paths(session), QStringList {u"on /Applications/Mail.app"_s});
    EXPECT_EQ(paths({u"--list=account"_s}).size(), 6);
    EXPECT_EQ(account({u"list"_s, u"--json"_s}).json()[u"list"].toString(), u"account"_s);
    EXPECT_EQ(run(QStringList {u"list"_s, u"--json"_s} + session).json()[u"list"].toString(),
              u"session"_s);
    EXPECT_TRUE(account({u"list"_s}).out.startsWith("Login items of the Mac account\n  on  "));
    EXPECT_EQ(run(QStringList {u"list"_s} + session).out, "  on  Mail  /Applications/Mail.app\n");

    const Outcome disabled = account({u"disable"_s, clock, u"--json"_s});
    EXPECT_EQ(disabled.status, 0) << disabled.err.toStdString();
    EXPECT_EQ(disabled.json()[u"list"].toString(), u"account"_s);
    EXPECT_TRUE(paths({u"--list"_s, u"account"_s}).contains(u"off " + clock));
    EXPECT_EQ(paths(session), QStringList {u"on /Applications/Mail.app"_s});
    EXPECT_EQ(account({u"enable"_s, clock}).out.left(36), "Changed in the Mac account's list\n  ");
    EXPECT_EQ(run(QStringList {u"disable"_s, u"/Applications/Mail.app"_s} + session).status, 0);
    EXPECT_EQ(paths({u"--list"_s, u"account"_s}).filter(u"off "_s), QStringList());
}

TEST_F(AccountItemsTest, withoutTheOptionItIsTheAccountsUnlessThereAreOnlyEntriesOfASession)
{
    const auto listed = [&](const Outcome &outcome) { return outcome.json()[u"list"].toString(); };
    const QStringList json {u"list"_s, u"--json"_s};
    EXPECT_EQ(listed(run(json)), u"account"_s);
    putEntry();
    EXPECT_EQ(listed(run(json)), u"session"_s);
    use(u"sierra-binary.plist"_s);
    EXPECT_EQ(listed(run(json)), u"account"_s);
    varnelctl.environment.insert(u"HOME"_s, home);
    EXPECT_EQ(listed(varnelctl.run(QStringList {u"login-items"_s} + json)), u"session"_s)
        << "one's own";
}

TEST_F(AccountItemsTest, anApplicationIsNamedAsItStandsHereOrAsOnItsMac)
{
    use(u"sierra-binary.plist"_s);
    const QString agent = u"/Applications/Agent.app"_s;
    EXPECT_EQ(run({u"disable"_s, disk.path() + agent}).status, 0);
    EXPECT_TRUE(paths({}).contains(u"off " + agent));
    EXPECT_EQ(run({u"add"_s, disk.path() + added}).status, 0);
    EXPECT_TRUE(paths({}).contains(u"off " + added));
}

TEST_F(AccountItemsTest, aRestoreGoesToTheListThatTheBackupWasMadeWithElseToTheUsualOne)
{
    use(u"snow-leopard-binary.plist"_s);
    putEntry();
    const QByteArray before = fileBytes(file);
    const auto restore = [&] {
        return varnelctl.run({u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s, u"--home"_s, home});
    };
    const QString entry = home + u"/.config/autostart/mail.desktop";
    EXPECT_EQ(run({u"disable"_s, u"/Applications/Mail.app"_s, u"--list"_s, u"session"_s}).status,
              0);
    EXPECT_FALSE(QFile::exists(entry));
    EXPECT_EQ(restore().status, 0);
    EXPECT_EQ(fileBytes(entry), mailEntry);
    EXPECT_EQ(fileBytes(file), before);

    EXPECT_EQ(run({u"remove"_s, clock}).status, 0);
    EXPECT_NE(fileBytes(file), before);
    ASSERT_TRUE(QDir(support + u"Kept").removeRecursively());
    EXPECT_EQ(restore().status, 0) << "by its row alone";
    EXPECT_TRUE(paths({}).contains(u"on " + clock));
}

TEST_F(AccountItemsTest, anotherWordThanTheTwoIsWrongUsageAndTouchesNothing)
{
    use(u"sierra-xml.plist"_s);
    const auto before = snapshot(home);
    for (const char16_t *word : {u"", u"Account", u"mac"})
        for (const QStringList &words : {QStringList {u"list"_s}, {u"disable"_s, clock}}) {
            const Outcome outcome =
                run(words + QStringList {u"--list"_s, QString::fromUtf16(word)});
            EXPECT_EQ(outcome.status, 2) << outcome.err.toStdString();
            EXPECT_TRUE(outcome.err.contains("--list takes 'session' or 'account'"));
        }
    EXPECT_EQ(snapshot(home), before);
}

TEST_F(AccountItemsTest, whatWasNeverInTheListIsNotEnabledAndStaysInTheStore)
{
    use(u"sierra-binary.plist"_s);
    const QByteArray before = fileBytes(file);
    const Outcome add = account({u"add"_s, added});
    EXPECT_EQ(add.status, 0) << add.err.toStdString();
    EXPECT_TRUE(add.out.contains("only the Mac itself can make its entry"))
        << add.out.toStdString();
    for (const QStringList &dry : {QStringList(), {u"--dry-run"_s}}) {
        const Outcome enabled = account(QStringList {u"enable"_s, added, u"--json"_s} + dry);
        EXPECT_EQ(enabled.status, 3);
        EXPECT_TRUE(enabled.err.contains("/Applications/New.app: it was never in the account's "
                                         "list, and only the Mac itself can make an entry there"))
            << enabled.err.toStdString();
        EXPECT_EQ(enabled.json()[u"failures"].toArray().size(), 1);
        EXPECT_TRUE(enabled.json()[u"backup"].isNull());
    }
    EXPECT_EQ(paths({u"--list"_s, u"account"_s}).last(), u"off " + added);
    EXPECT_EQ(fileBytes(file), before);
    EXPECT_EQ(entriesOf(support + u"Backup"), QStringList {u"quillet1.sqlite"_s});
}

TEST_F(AccountItemsTest, anApplicationThatWasInTheListBeforeIsAddedAndEnabled)
{
    use(u"sierra-binary.plist"_s);
    const QString agent = u"/Applications/Agent.app"_s;
    EXPECT_EQ(account({u"remove"_s, agent}).status, 0);
    const Outcome add = account({u"add"_s, agent});
    EXPECT_TRUE(add.out.contains("'login-items enable' is the next step")) << add.out.toStdString();
    EXPECT_EQ(account({u"enable"_s, agent}).status, 0);
    EXPECT_EQ(paths({u"--list"_s, u"account"_s}).last(), u"on " + agent);
}

TEST_F(AccountItemsTest, aListThatCannotBeReadIsToldAndLeftAlone)
{
    writeFile(file, "no property list");
    const Outcome listed = account({u"list"_s});
    EXPECT_EQ(listed.status, 3);
    EXPECT_TRUE(listed.err.contains("not a property list that can be read"))
        << listed.err.toStdString();
    const auto before = snapshot(home);
    for (const char16_t *verb : {u"add", u"remove", u"enable", u"disable"}) {
        const Outcome outcome = account({QString::fromUtf16(verb), clock});
        EXPECT_EQ(outcome.status, 3) << QString::fromUtf16(verb).toStdString();
        EXPECT_TRUE(outcome.err.contains("not a property list that can be read"))
            << outcome.err.toStdString();
    }
    EXPECT_EQ(snapshot(home), before);
}

TEST_F(AccountItemsTest, ofANewerSystemItIsSaidThatItsListIsNotChanged)
{
    use(u"sierra-binary.plist"_s);
    const QString sentence =
        u"This account's system keeps its login items in another list, which Varnel does not change."_s;
    const auto isTold = [&](const QStringList &words) {
        const Outcome outcome = run(words + QStringList {u"--json"_s});
        const bool told = outcome.json()[u"notice"].toString() == sentence;
        EXPECT_EQ(QString::fromUtf8(outcome.err).contains(sentence), told);
        EXPECT_EQ(outcome.status, 0);
        return told;
    };
    EXPECT_FALSE(isTold({u"list"_s}));
    putSystem("10.12.6");
    EXPECT_FALSE(isTold({u"list"_s}));
    putSystem("10.13.1");
    EXPECT_TRUE(isTold({u"list"_s}));
    EXPECT_TRUE(isTold({u"list"_s, u"--list"_s, u"session"_s}));
    EXPECT_TRUE(isTold({u"add"_s, added}));
    putSystem("10.11");
    const QString agent =
        home + u"/Library/Application Support/com.apple.backgroundtaskmanagementagent";
    QDir().mkpath(agent);
    writeFile(agent + u"/backgrounditems.btm", "");
    EXPECT_TRUE(isTold({u"disable"_s, added}));
}

TEST_F(AccountItemsTest, completionOffersTheListsAndTheItemsOfTheNamedOne)
{
    use(u"sierra-binary.plist"_s);
    putEntry();
    const auto asked = [&](const QStringList &words) {
        return varnelctl
            .run(QStringList {u"completion"_s, u"--index"_s, QString::number(words.size()), u"--"_s,
                              u"varnelctl"_s}
                 + words)
            .out;
    };
    const QStringList command {u"login-items"_s, u"disable"_s, u"--home"_s, home, u"--list"_s};
    EXPECT_EQ(asked(command + QStringList {QString()}), "word\tsession\t\nword\taccount\t\n");
    EXPECT_TRUE(asked(command + QStringList {u"session"_s, QString()}).contains("Mail.app"));
    const QByteArray items = asked(command + QStringList {u"account"_s, QString()});
    EXPECT_TRUE(items.contains("/Applications/Agent.app")) << items.toStdString();
    EXPECT_FALSE(items.contains("Mail.app"));
}

} // namespace
