#include "cli/Varnelctl.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

class CommandLineTest : public Test {
protected:
    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(CommandLineTest, optionsStandBeforeOrAfterTheCommand)
{
    const Outcome before = varnelctl.run({u"--json"_s, u"get"_s, u"1004"_s});
    const Outcome between = varnelctl.run({u"get"_s, u"--json"_s, u"1004"_s});
    const Outcome after = varnelctl.run({u"get"_s, u"1004"_s, u"--json"_s});
    EXPECT_EQ(before.status, 0);
    EXPECT_EQ(before.json().value(u"id"_s).toInt(), 1004);
    EXPECT_EQ(before.out, between.out);
    EXPECT_EQ(before.out, after.out);
}

TEST_F(CommandLineTest, withoutACommandTheSettingsAreListed)
{
    const Outcome bare = varnelctl.run({});
    EXPECT_EQ(bare.status, 0);
    EXPECT_EQ(bare.out, varnelctl.run({u"list"_s}).out);
}

TEST_F(CommandLineTest, wrongUsageEndsWithTwoSaysWhyAndPrintsNoData)
{
    const QList<QStringList> wrong {
        {u"frobnicate"_s},
        {u"--frobnicate"_s},
        {u"list"_s, u"--frobnicate"_s},
        {u"list"_s, u"Dock"_s, u"Finder"_s},
        {u"show"_s},
        {u"get"_s},
        {u"get"_s, u"1004"_s, u"1005"_s},
        {u"set"_s},
        {u"search"_s},
        {u"search"_s, u"lock"_s, u"size"_s},
        {u"list"_s, u"--home"_s},
        {u"list"_s, u"--home"_s, QString::fromUtf8("")},
        {u"--json=maybe"_s, u"list"_s},
    };
    for (const QStringList &arguments : wrong) {
        const Outcome outcome = varnelctl.run(arguments);
        const std::string line = arguments.join(u' ').toStdString();
        EXPECT_EQ(outcome.status, 2) << line;
        EXPECT_TRUE(outcome.out.isEmpty()) << line;
        EXPECT_TRUE(outcome.err.startsWith("varnelctl: ")) << line << outcome.err.toStdString();
    }
}

TEST_F(CommandLineTest, whatIsNotUnderstoodIsNamedAsItWasTyped)
{
    EXPECT_TRUE(varnelctl.run({u"rename"_s, u"a"_s, u"b"_s})
                    .err.startsWith("varnelctl: no command is called 'rename'\n"));
    EXPECT_TRUE(varnelctl.run({u"list"_s, u"Dock"_s, u"b"_s, u"a"_s})
                    .err.startsWith("varnelctl: not understood: b a\n"));
    EXPECT_TRUE(varnelctl.run({u"list"_s, u"--what"_s})
                    .err.startsWith("varnelctl: not understood: --what\n"));
}

TEST_F(CommandLineTest, whatIsMissingIsNamed)
{
    EXPECT_EQ(varnelctl.run({u"backups"_s}).err,
              "varnelctl: 'backups' needs one of its commands: list, show, restore, delete\n"
              "varnelctl: 'varnelctl backups --help' tells more\n");
    EXPECT_TRUE(varnelctl.run({u"list"_s, u"--home"_s})
                    .err.startsWith("varnelctl: --home: a value is missing\n"));
}

TEST_F(CommandLineTest, theMessageOfEachSlipStaysLetterForLetter)
{
    const QList<std::pair<QString, QByteArray>> slips {
        {u"--json=maybe list"_s, "json was given a disallowed flag override"},
        {u"--verbose=false list --home"_s, "verbose was given a disallowed flag override"},
        {u"--version=foo"_s, "Could not convert: --version = foo"},
        {u"--json= list"_s, "--json: a value is missing"},
        {u"list --home --homes-from="_s, "--homes-from: a value is missing"},
        {u"get 1004 --key"_s, "--key: a value is missing"},
        {u"backups restore x --only"_s, "--only: a value is missing"},
        {u"-x list"_s, "not understood: -x"},
        {u"frob list --no -x Dock b"_s, "not understood: frob --no -x b"},
        {u"list -- Dock Finder"_s, "not understood: Finder --"},
        {u"-- frob --json"_s, "not understood: -- frob --json"},
        {u"backups show a b"_s, "not understood: b"},
        {u"backups frob show a"_s, "not understood: frob"},
        {u"processes frob list"_s, "not understood: frob"},
        {u"completion bash zsh"_s, "not understood: zsh"},
        {u"backups --dry-run restore a"_s, "not understood: --dry-run"},
    };
    for (const auto &[line, problem] : slips) {
        const Outcome outcome = varnelctl.run(line.split(u' '));
        EXPECT_EQ(outcome.status, 2) << line.toStdString();
        EXPECT_EQ(outcome.err,
                  "varnelctl: " + problem + "\nvarnelctl: 'varnelctl --help' tells more\n")
            << line.toStdString() << '\n'
            << outcome.err.toStdString();
    }
}

TEST_F(CommandLineTest, whatIsToldOfTheProgramComesBeforeWhatIsWrong)
{
    EXPECT_TRUE(
        varnelctl.run({u"list"_s, u"--frob"_s, u"--version"_s}).out.startsWith("varnelctl "));
    EXPECT_TRUE(
        varnelctl.run({u"list"_s, u"--frob"_s, u"-h"_s}).out.startsWith("Usage: varnelctl list"));
    EXPECT_EQ(varnelctl.run({u"list"_s, u"-h"_s, u"--home"_s}).status, 2);
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1004"_s, u"--json=true"_s, u"--json"_s}).json()[u"id"],
              1004);
}

TEST_F(CommandLineTest, anArgumentThatIsNoUtf8IsRefusedRatherThanChanged)
{
    const Outcome outcome = varnelctl.shell(u"\"$varnelctl\" set 1400=$(printf '\\377')"_s);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.err.contains("UTF-8"));
}

TEST_F(CommandLineTest, whatFollowsTwoDashesIsAnArgument)
{
    EXPECT_EQ(varnelctl.run({u"search"_s, u"--"_s, u"-d"_s}).status, 0) << "\"2-d\" has it";
    EXPECT_EQ(varnelctl.run({u"search"_s, u"--"_s, u"--json"_s}).status, 1);
    EXPECT_TRUE(varnelctl.run({u"list"_s, u"Dock"_s, u"--"_s, u"--json"_s})
                    .err.startsWith("varnelctl: not understood: --json\n"));
    EXPECT_TRUE(
        varnelctl.run({u"backups"_s, u"restore"_s, u"--only"_s, u"1004"_s, u"--"_s, u"-a"_s})
            .err.contains("-a: no such backup file"));
    EXPECT_EQ(varnelctl.run({u"list"_s, u"Dock"_s, u"--"_s, u"--"_s}).status, 2);
    EXPECT_EQ(varnelctl.run({u"--"_s}).out, varnelctl.run({}).out);
}

TEST_F(CommandLineTest, aTextThatLooksLikeAListOrACommandIsStillOneText)
{
    EXPECT_TRUE(varnelctl.run({u"search"_s, u"[lock,size]"_s}).err.contains("[lock,size]"));
    EXPECT_TRUE(varnelctl.run({u"search"_s, u"++"_s}).err.contains("'++'"));
    EXPECT_TRUE(varnelctl.run({u"backups"_s, u"restore"_s, u"a"_s, u"--only"_s, u"[1004,1005]"_s})
                    .err.contains("'[1004,1005]'"));
    EXPECT_TRUE(varnelctl.run({u"search"_s, u"list"_s}).out.contains("library-playlist"));
    EXPECT_EQ(varnelctl.run({u"search"_s, QString::fromUtf8("")}).status, 1);
}

TEST_F(CommandLineTest, everyLevelHasHelpWithAnExample)
{
    QList<QStringList> levels {{}};
    for (const char16_t *command : {u"list", u"show", u"get", u"set", u"reset", u"end", u"search"})
        levels.append({QString::fromUtf16(command)});
    for (const QStringList &level : levels) {
        const Outcome help = varnelctl.run(level + QStringList {u"--help"_s});
        const std::string name = level.join(u' ').toStdString();
        EXPECT_EQ(help.status, 0) << name;
        EXPECT_TRUE(help.out.startsWith(level.isEmpty()
                                            ? QByteArray("Shows")
                                            : QByteArray("Usage: varnelctl " + level[0].toUtf8())))
            << help.out.toStdString();
        EXPECT_TRUE(help.out.contains("Examples:\n  varnelctl ")) << name;
        EXPECT_TRUE(help.out.contains("--home DIR")) << name;
        EXPECT_TRUE(help.err.isEmpty()) << name;
        for (const QByteArray &line : help.out.split('\n'))
            EXPECT_LE(line.size(), 100) << line.toStdString();
    }
}

TEST_F(CommandLineTest, theVersionIsTold)
{
    const Outcome version = varnelctl.run({u"--version"_s});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "varnelctl " VARNEL_VERSION "\n");
}

} // namespace
