#include "cli/Registry.h"
#include "cli/Varnelctl.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

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
        if (runProgram(python, {u"-c"_qs, u"import jsonschema"_qs}, varnelctl.environment).status
            != 0)
            GTEST_SKIP() << "python3-jsonschema is not installed";
        installSamples(home, u"binary"_qs);
        anna = home.path() + u"/anna";
        QDir().mkpath(anna + u"/Library/Preferences");
        varnelctl.environment.insert(u"XDG_CONFIG_HOME"_qs, home.path() + u"/.config");
    }

    /// All at once: a validator takes longer to start than to validate.
    void TearDown() override
    {
        if (IsSkipped())
            return;
        QJsonArray all;
        for (const Document &document : documents)
            all.append(QJsonObject {{u"definition"_qs, QString(u"command " + document.command)},
                                    {u"document"_qs, QString::fromUtf8(document.bytes)}});
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
        const QStringList all = command.split(u' ') + arguments + QStringList(u"--json"_qs);
        const Outcome outcome = varnelctl.run(all);
        const QString about = all.join(u' ');
        EXPECT_EQ(outcome.status, status)
            << about.toStdString() << ": " << outcome.err.toStdString();
        note(command, outcome.out, about);
        return outcome.json();
    }

    [[nodiscard]] QStringList inHomes(QStringList arguments) const
    {
        return arguments << u"--home"_qs << home.path() << u"--home"_qs << anna << u"--home"_qs
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
        const QString name = u"command " + command->info().name;
        EXPECT_TRUE(document[u"$defs"].toObject().contains(name)) << name.toStdString();
    }
}

TEST_F(JsonSchemaTest, settings)
{
    check(u"list"_qs, {});
    check(u"list"_qs, inHomes({u"Dock"_qs}), 4);
    for (const char16_t *setting : {u"1004", u"1008", u"1200", u"1302", u"1403", u"1602", u"1804"})
        check(u"show"_qs, {QString::fromUtf16(setting)});
    check(u"show"_qs, inHomes({u"1004"_qs}), 4);
    check(u"get"_qs, {u"1004"_qs});
    check(u"get"_qs, inHomes({u"1004"_qs}), 4);
    check(u"get"_qs, {u"1004"_qs, u"--key"_qs, u"tilesize"_qs});
    check(u"get"_qs, {u"1400"_qs, u"--key"_qs, u"name"_qs}, 1);
    check(u"search"_qs, {u"dock"_qs});
    check(u"search"_qs, {u"no such words"_qs}, 1);
    check(u"search"_qs, inHomes({u"dock"_qs}), 4);
}

TEST_F(JsonSchemaTest, savesAndTheirBackups)
{
    check(u"set"_qs, {u"dock-size=40"_qs, u"screenshot-prefix=x"_qs, u"1302=shown"_qs});
    check(u"set"_qs, {u"dock-size=40"_qs});
    check(u"set"_qs, {u"dock-size=60"_qs, u"--dry-run"_qs, u"--end"_qs});
    check(u"set"_qs, inHomes({u"dock-size=60"_qs, u"--dry-run"_qs, u"--end"_qs}), 4);
    check(u"set"_qs, inHomes({u"dock-size=41"_qs}), 4);
    check(u"reset"_qs, {u"1302"_qs});
    check(u"reset"_qs, inHomes({u"--all"_qs, u"--dry-run"_qs}), 4);
    // Its old text can't go into the backup file, so this save is a partial one.
    ASSERT_EQ(varnelctl.run({u"set"_qs, u"screenshot-prefix=it's"_qs}).status, 0);
    const QJsonObject failed = check(u"set"_qs, {u"screenshot-prefix=y"_qs}, 4);
    EXPECT_FALSE(failed[u"failures"].toArray().isEmpty());

    check(u"backups list"_qs, {});
    check(u"backups list"_qs, inHomes({}), 4);
    check(u"backups show"_qs, {u"quillet1.sqlite"_qs});
    check(u"backups show"_qs, inHomes({u"quillet1.sqlite"_qs}), 4);
    check(u"backups restore"_qs, {u"quillet1.sqlite"_qs, u"--dry-run"_qs});
    check(u"backups restore"_qs, inHomes({u"quillet1.sqlite"_qs}), 4);
    check(u"backups delete"_qs, {u"quillet2.sqlite"_qs});
    check(u"backups delete"_qs, inHomes({u"quillet3.sqlite"_qs}), 4);
}

TEST_F(JsonSchemaTest, profiles)
{
    const QString profile = QStringLiteral(DOCS) + u"/ansible/profile.json";
    check(u"diff"_qs, {profile}, 1);
    check(u"diff"_qs, inHomes({profile}), 4);
    check(u"apply"_qs, {profile, u"--dry-run"_qs});
    check(u"apply"_qs, {profile});
    check(u"apply"_qs, {profile});
    check(u"apply"_qs, inHomes({profile}), 4);
    check(u"diff"_qs, {profile});
    check(u"export"_qs, {});
    check(u"export"_qs, {u"--all"_qs});
    check(u"export"_qs, inHomes({}), 4);
}

TEST_F(JsonSchemaTest, aBackupOfOtherThings)
{
    const QString folder = home.path() + u"/Library/Application Support/Varnel/Backup/";
    QDir().mkpath(folder);
    for (const char16_t *sample : {u"plain.sqlite", u"odd-types.sqlite", u"not-utf8.sqlite"}) {
        const QString name = QString::fromUtf16(sample);
        writeFile(folder + name, fileBytes(QStringLiteral(TEST_DATA) + u"/backups/" + name));
        check(u"backups show"_qs, {name});
    }
    check(u"backups list"_qs, {});
}

TEST_F(JsonSchemaTest, loginItems)
{
    const QString item = u"/Applications/Chess.app"_qs;
    for (const char16_t *verb : {u"add", u"enable", u"disable", u"remove"}) {
        const QString command = u"login-items " + QString::fromUtf16(verb);
        check(command, {item, u"--home"_qs, home.path()});
        check(u"login-items list"_qs, {u"--home"_qs, home.path()});
    }
    check(u"login-items add"_qs, inHomes({item}), 4);
    check(u"login-items add"_qs, {item, u"--home"_qs, anna});
    check(u"login-items disable"_qs, inHomes({item}), 4);
    check(u"login-items list"_qs, inHomes({}), 4);
    check(u"backups restore"_qs, {u"quillet1.sqlite"_qs, u"--home"_qs, anna});
}

TEST_F(JsonSchemaTest, whatIsAboutNoHome)
{
    check(u"system"_qs, {});
    check(u"system"_qs, {u"memory"_qs});
    check(u"completion"_qs, {u"fish"_qs});
    // Ending applications for real is for a test that others do not run beside.
    note(u"end"_qs, fileBytes(QStringLiteral(TEST_DATA) + u"/cli/end.json"));
    // Whether an application runs here is not this test's business.
    for (const char16_t *command : {u"processes", u"processes list"}) {
        const QString name = QString::fromUtf16(command);
        note(name, varnelctl.run(name.split(u' ') + QStringList(u"--json"_qs)).out);
    }
}

TEST_F(JsonSchemaTest, aProcess)
{
    // What a desktop's launcher would have started is listed without a display, too.
    const QString entry = home.path() + u"/clock.desktop";
    writeFile(entry, "[Desktop Entry]\nType=Application\nName=A Clock\nExec=clock\n");
    QProcessEnvironment environment = varnelctl.environment;
    environment.insert(u"GIO_LAUNCHED_DESKTOP_FILE"_qs, entry);
    QProcess application;
    application.setProcessEnvironment(environment);
    application.start(
        u"/bin/sh"_qs,
        {u"-c"_qs, u"GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec sh -c 'echo up; read line'"_qs});
    ASSERT_TRUE(application.waitForReadyRead(60000));
    QJsonObject object =
        check(u"processes terminate"_qs, {QString::number(application.processId())});
    EXPECT_TRUE(application.waitForFinished(60000));
    // Revealing would start a file manager; it prints the same under another name.
    object.insert(u"revealed"_qs, object.take(u"terminated"_qs));
    note(u"processes reveal"_qs, QJsonDocument(object).toJson());
}

TEST_F(JsonSchemaTest, whatIsNotDocumentedIsFound)
{
    struct Case {
        QString command;
        QStringList arguments;
    };
    const QList<Case> cases {
        {u"list"_qs, {u"Dock"_qs}},
        {u"get"_qs, {u"1004"_qs}},
        {u"set"_qs, {u"dock-size=44"_qs}},
        {u"set"_qs, {u"dock-size=45"_qs, u"--home"_qs, anna, u"--home"_qs, home.path()}},
        {u"backups list"_qs, {}},
        {u"system"_qs, {u"memory"_qs}},
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
            first.insert(u"news"_qs, 1);
            elements.replace(0, first);
            QJsonObject more = object;
            more.insert(member, elements);
            noteWrong(each.command, more, u"with news in " + member);
        }
        QJsonObject more = object;
        more.insert(u"news"_qs, 1);
        noteWrong(each.command, more, u"with news"_qs);
    }
}

} // namespace
