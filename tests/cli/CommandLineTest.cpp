#include "cli/Varnelctl.h"

#include <gtest/gtest.h>

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
    const Outcome before = varnelctl.run({u"--json"_qs, u"get"_qs, u"1004"_qs});
    const Outcome between = varnelctl.run({u"get"_qs, u"--json"_qs, u"1004"_qs});
    const Outcome after = varnelctl.run({u"get"_qs, u"1004"_qs, u"--json"_qs});
    EXPECT_EQ(before.status, 0);
    EXPECT_EQ(before.json().value(u"id"_qs).toInt(), 1004);
    EXPECT_EQ(before.out, between.out);
    EXPECT_EQ(before.out, after.out);
}

TEST_F(CommandLineTest, withoutACommandTheSettingsAreListed)
{
    const Outcome bare = varnelctl.run({});
    EXPECT_EQ(bare.status, 0);
    EXPECT_EQ(bare.out, varnelctl.run({u"list"_qs}).out);
}

TEST_F(CommandLineTest, wrongUsageEndsWithTwoSaysWhyAndPrintsNoData)
{
    const QList<QStringList> wrong {
        {u"frobnicate"_qs},
        {u"--frobnicate"_qs},
        {u"list"_qs, u"--frobnicate"_qs},
        {u"list"_qs, u"Dock"_qs, u"Finder"_qs},
        {u"show"_qs},
        {u"get"_qs},
        {u"get"_qs, u"1004"_qs, u"1005"_qs},
        {u"set"_qs},
        {u"search"_qs},
        {u"search"_qs, u"lock"_qs, u"size"_qs},
        {u"list"_qs, u"--home"_qs},
        {u"list"_qs, u"--home"_qs, QString::fromUtf8("")},
        {u"--json=maybe"_qs, u"list"_qs},
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
    EXPECT_TRUE(varnelctl.run({u"rename"_qs, u"a"_qs, u"b"_qs})
                    .err.startsWith("varnelctl: no command is called 'rename'\n"));
    EXPECT_TRUE(varnelctl.run({u"list"_qs, u"Dock"_qs, u"b"_qs, u"a"_qs})
                    .err.startsWith("varnelctl: not understood: b a\n"));
    EXPECT_TRUE(varnelctl.run({u"list"_qs, u"--what"_qs})
                    .err.startsWith("varnelctl: not understood: --what\n"));
}

TEST_F(CommandLineTest, whatIsMissingIsNamed)
{
    EXPECT_EQ(varnelctl.run({u"backups"_qs}).err,
              "varnelctl: 'backups' needs one of its commands: list, show, restore, delete\n"
              "varnelctl: 'varnelctl backups --help' tells more\n");
    EXPECT_TRUE(varnelctl.run({u"list"_qs, u"--home"_qs})
                    .err.startsWith("varnelctl: --home: a value is missing\n"));
}

TEST_F(CommandLineTest, anArgumentThatIsNoUtf8IsRefusedRatherThanChanged)
{
    const Outcome outcome = varnelctl.shell(u"\"$varnelctl\" set 1400=$(printf '\\377')"_qs);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.err.contains("UTF-8"));
}

TEST_F(CommandLineTest, whatFollowsTwoDashesIsAnArgument)
{
    EXPECT_EQ(varnelctl.run({u"search"_qs, u"--"_qs, u"-d"_qs}).status, 0) << "\"2-d\" has it";
    EXPECT_EQ(varnelctl.run({u"search"_qs, u"--"_qs, u"--json"_qs}).status, 1);
}

TEST_F(CommandLineTest, aTextThatLooksLikeAListOrACommandIsStillOneText)
{
    EXPECT_TRUE(varnelctl.run({u"search"_qs, u"[lock,size]"_qs}).err.contains("[lock,size]"));
    EXPECT_TRUE(varnelctl.run({u"search"_qs, u"list"_qs}).out.contains("library-playlist"));
    EXPECT_EQ(varnelctl.run({u"search"_qs, QString::fromUtf8("")}).status, 1);
}

TEST_F(CommandLineTest, everyLevelHasHelpWithAnExample)
{
    QList<QStringList> levels {{}};
    for (const char16_t *command : {u"list", u"show", u"get", u"set", u"reset", u"end", u"search"})
        levels.append({QString::fromUtf16(command)});
    for (const QStringList &level : levels) {
        const Outcome help = varnelctl.run(level + QStringList {u"--help"_qs});
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
    const Outcome version = varnelctl.run({u"--version"_qs});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "varnelctl " VARNEL_VERSION "\n");
}

} // namespace
