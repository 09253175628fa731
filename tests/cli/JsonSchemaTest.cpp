#include "cli/Registry.h"
#include "cli/Varnelctl.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::cli;
using namespace varnel::test;
using namespace testing;

namespace {

/// Debian's own, which sees Debian's modules.
const QString python = QStringLiteral("/usr/bin/python3");
const QString schema = QStringLiteral(DOCS) + u"/json/varnelctl.schema.json";

/// What the real program prints, against the documented schema.
class JsonSchemaTest : public Test {
private:
    struct Document {
        QString command;
        QByteArray bytes;
        QString about;
        bool right;
    };
    QList<Document> documents;

protected:
    void SetUp() override
    {
        if (runProgram(python, {u"-c"_s, u"import jsonschema"_s}, varnelctl.environment).status
            != 0)
            GTEST_SKIP() << "python3-jsonschema is not installed";
        installSamples(home, u"binary"_s);
        anna = home.path() + u"/anna";
        QDir().mkpath(anna + u"/Library/Preferences");
        varnelctl.environment.insert(u"XDG_CONFIG_HOME"_s, home.path() + u"/.config");
    }

    /// All at once: a validator takes longer to start than to validate.
    void TearDown() override
    {
        if (IsSkipped())
            return;
        QJsonArray all;
        for (const Document &document : documents)
            all.append(QJsonObject {{u"definition"_s, QString(u"command " + document.command)},
                                    {u"document"_s, QString::fromUtf8(document.bytes)}});
        QProcess process;
        process.setProcessEnvironment(varnelctl.environment);
        process.start(python, {QStringLiteral(CLI_TESTS) + u"/validate_json.py", schema});
        process.write(QJsonDocument(all).toJson());
        process.closeWriteChannel();
        ASSERT_TRUE(process.waitForFinished(100000));
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        const QJsonArray problems =
            QJsonDocument::fromJson(process.readAllStandardOutput()).array();
        ASSERT_EQ(problems.size(), documents.size());
        for (qsizetype i = 0; i < documents.size(); ++i) {
            const std::string problem = problems[i].toString().toStdString();
            EXPECT_EQ(problem.empty(), documents[i].right)
                << documents[i].about.toStdString() << '\n'
                << problem;
        }
    }

    /// To be held against the schema at the end.
    void note(const QString &command, const QByteArray &bytes, const QString &about = {},
              bool right = true)
    {
        documents.append({command, bytes, about, right});
    }

    /// One that the schema must not take.
    void noteWrong(const QString &command, const QJsonObject &object, const QString &about)
    {
        note(command, QJsonDocument(object).toJson(), command + u' ' + about, false);
    }

    /// Runs the command, and notes what it printed.
    QJsonObject check(const QString &command, const QStringList &arguments, int status = 0)
    {
        const QStringList all = command.split(u' ') + arguments + QStringList(u"--json"_s);
        const Outcome outcome = varnelctl.run(all);
        const QString about = all.join(u' ');
        EXPECT_EQ(outcome.status, status)
            << about.toStdString() << ": " << outcome.err.toStdString();
        note(command, outcome.out, about);
        return outcome.json();
    }

    [[nodiscard]] QStringList inHomes(QStringList arguments) const
    {
        return arguments << u"--home"_s << home.path() << u"--home"_s << anna << u"--home"_s
                         << home.path() + u"/none";
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
    QString anna;
};

TEST_F(JsonSchemaTest, everyCommandIsInTheSchema)
{
    const QJsonObject document = QJsonDocument::fromJson(fileBytes(schema)).object();
    for (const auto &command : makeCommands()) {
        const QString name = u"command " + command.name;
        EXPECT_TRUE(document[u"$defs"].toObject().contains(name)) << name.toStdString();
    }
}

TEST_F(JsonSchemaTest, settings)
{
    check(u"list"_s, {});
    check(u"list"_s, inHomes({u"Dock"_s}), 4);
    for (const char16_t *setting : {u"1004", u"1008", u"1200", u"1302", u"1403", u"1602", u"1804"})
        check(u"show"_s, {QString::fromUtf16(setting)});
    check(u"show"_s, inHomes({u"1004"_s}), 4);
    check(u"get"_s, {u"1004"_s});
    check(u"get"_s, inHomes({u"1004"_s}), 4);
    check(u"get"_s, {u"1004"_s, u"--key"_s, u"tilesize"_s});
    check(u"get"_s, {u"1400"_s, u"--key"_s, u"name"_s}, 1);
    writeFile(home.preference(u"com.apple.screencapture.plist"_s),
              "<plist><dict><key>name</key><integer>5</integer></dict></plist>");
    EXPECT_TRUE(check(u"get"_s, {u"1400"_s}).contains(u"note"_s));
    check(u"search"_s, {u"dock"_s});
    check(u"search"_s, {u"no such words"_s}, 1);
    check(u"search"_s, inHomes({u"dock"_s}), 4);
}

TEST_F(JsonSchemaTest, savesAndTheirBackups)
{
    check(u"set"_s, {u"dock-size=40"_s, u"screenshot-prefix=x"_s, u"1302=shown"_s});
    check(u"set"_s, {u"dock-size=40"_s});
    check(u"set"_s, {u"dock-size=60"_s, u"--dry-run"_s, u"--end"_s});
    check(u"set"_s, inHomes({u"dock-size=60"_s, u"--dry-run"_s, u"--end"_s}), 4);
    check(u"set"_s, inHomes({u"dock-size=41"_s}), 4);
    check(u"reset"_s, {u"1302"_s});
    check(u"reset"_s, inHomes({u"--all"_s, u"--dry-run"_s}), 4);
    // Its old text can't go into the backup file, so this save is a partial one.
    ASSERT_EQ(varnelctl.run({u"set"_s, u"screenshot-prefix=it's"_s}).status, 0);
    const QJsonObject failed = check(u"set"_s, {u"screenshot-prefix=y"_s}, 4);
    EXPECT_FALSE(failed[u"failures"].toArray().isEmpty());

    check(u"doctor"_s, {});
    check(u"doctor"_s, inHomes({}), 4);
    check(u"backups list"_s, {});
    check(u"backups list"_s, inHomes({}), 4);
    check(u"backups show"_s, {u"quillet1.sqlite"_s});
    check(u"backups show"_s, inHomes({u"quillet1.sqlite"_s}), 4);
    check(u"backups restore"_s, {u"quillet1.sqlite"_s, u"--dry-run"_s});
    check(u"backups restore"_s, inHomes({u"quillet1.sqlite"_s}), 4);
    check(u"backups delete"_s, {u"quillet2.sqlite"_s});
    check(u"backups delete"_s, inHomes({u"quillet3.sqlite"_s}), 4);
}

TEST_F(JsonSchemaTest, profiles)
{
    const QString profile = QStringLiteral(DOCS) + u"/ansible/profile.json";
    check(u"diff"_s, {profile}, 1);
    check(u"diff"_s, inHomes({profile}), 4);
    check(u"apply"_s, {profile, u"--dry-run"_s});
    check(u"apply"_s, {profile});
    check(u"apply"_s, {profile});
    check(u"apply"_s, inHomes({profile}), 4);
    check(u"diff"_s, {profile});
    check(u"export"_s, {});
    check(u"export"_s, {u"--all"_s});
    check(u"export"_s, inHomes({}), 4);
}

TEST_F(JsonSchemaTest, aBackupOfOtherThings)
{
    const QString folder = home.path() + u"/Library/Application Support/Varnel/Backup/";
    QDir().mkpath(folder);
    for (const char16_t *sample : {u"plain.sqlite", u"odd-types.sqlite", u"not-utf8.sqlite"}) {
        const QString name = QString::fromUtf16(sample);
        writeFile(folder + name, fileBytes(QStringLiteral(TEST_DATA) + u"/backups/" + name));
        check(u"backups show"_s, {name});
    }
    check(u"backups list"_s, {});
}

TEST_F(JsonSchemaTest, loginItems)
{
    const QString newerList = u"com.apple.backgroundtaskmanagementagent"_s;
    const QString item = u"/Applications/Chess.app"_s;
    for (const char16_t *verb : {u"add", u"enable", u"disable", u"remove"}) {
        const QString command = u"login-items " + QString::fromUtf16(verb);
        for (const char16_t *list : {u"session", u"account"}) {
            const QStringList named {u"--list"_s, QString::fromUtf16(list), u"--home"_s,
                                     home.path()};
            const bool refused = command.endsWith(u"enable") && list == u"account"_s;
            check(command, QStringList {item} + named, refused ? 3 : 0);
            check(u"login-items list"_s, named);
        }
    }
    QDir().mkpath(home.path() + u"/Library/Application Support/" + newerList);
    writeFile(home.path() + u"/Library/Application Support/" + newerList + u"/backgrounditems.btm",
              "");
    check(u"login-items list"_s, {u"--home"_s, home.path()});
    check(u"login-items add"_s, {item, u"--home"_s, home.path()});
    check(u"login-items add"_s, inHomes({item}), 4);
    check(u"login-items add"_s, {item, u"--home"_s, anna});
    check(u"login-items disable"_s, inHomes({item}), 4);
    check(u"login-items list"_s, inHomes({}), 4);
    check(u"backups restore"_s, {u"quillet1.sqlite"_s, u"--home"_s, anna});
}

TEST_F(JsonSchemaTest, whatIsAboutNoHome)
{
    check(u"system"_s, {});
    check(u"system"_s, {u"memory"_s});
    check(u"completion"_s, {u"fish"_s});
    // Ending applications for real is for a test that others do not run beside.
    note(u"end"_s, fileBytes(QStringLiteral(TEST_DATA) + u"/cli/end.json"));
    // Whether an application runs here is not this test's business.
    for (const char16_t *command : {u"processes", u"processes list"}) {
        const QString name = QString::fromUtf16(command);
        note(name, varnelctl.run(name.split(u' ') + QStringList(u"--json"_s)).out);
    }
}

TEST_F(JsonSchemaTest, aProcess)
{
    // What a desktop's launcher would have started is listed without a display, too.
    const QString entry = home.path() + u"/clock.desktop";
    writeFile(entry, "[Desktop Entry]\nType=Application\nName=A Clock\nExec=clock\n");
    QProcessEnvironment environment = varnelctl.environment;
    environment.insert(u"GIO_LAUNCHED_DESKTOP_FILE"_s, entry);
    QProcess application;
    application.setProcessEnvironment(environment);
    application.start(
        u"/bin/sh"_s,
        {u"-c"_s, u"GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec sh -c 'echo up; read line'"_s});
    ASSERT_TRUE(application.waitForReadyRead(60000));
    QJsonObject object =
        check(u"processes terminate"_s, {QString::number(application.processId())});
    EXPECT_TRUE(application.waitForFinished(60000));
    // Revealing would start a file manager; it prints the same under another name.
    object.insert(u"revealed"_s, object.take(u"terminated"_s));
    note(u"processes reveal"_s, QJsonDocument(object).toJson());
}

TEST_F(JsonSchemaTest, whatIsNotDocumentedIsFound)
{
    struct Case {
        QString command;
        QStringList arguments;
    };
    const QList<Case> cases {
        {u"list"_s, {u"Dock"_s}},
        {u"get"_s, {u"1004"_s}},
        {u"set"_s, {u"dock-size=44"_s}},
        {u"set"_s, {u"dock-size=45"_s, u"--home"_s, anna, u"--home"_s, home.path()}},
        {u"backups list"_s, {}},
        {u"system"_s, {u"memory"_s}},
    };
    for (const Case &each : cases) {
        const QJsonObject object = check(each.command, each.arguments);
        for (const QString &member : object.keys()) {
            QJsonObject less = object;
            less.remove(member);
            noteWrong(each.command, less, u"without " + member);
            QJsonArray elements = object[member].toArray();
            if (!elements.first().isObject())
                continue;
            QJsonObject first = elements.first().toObject();
            first.insert(u"news"_s, 1);
            elements.replace(0, first);
            QJsonObject more = object;
            more.insert(member, elements);
            noteWrong(each.command, more, u"with news in " + member);
        }
        QJsonObject more = object;
        more.insert(u"news"_s, 1);
        noteWrong(each.command, more, u"with news"_s);
    }
}

} // namespace
