#include "cli/CommandLine.h"
#include "cli/CommandTree.h"
#include "cli/Help.h"
#include "cli/OwnWords.h"

#include <gtest/gtest.h>

#include <QSet>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::cli;

namespace {

class FakeCommand : public Command {
public:
    explicit FakeCommand(CommandDescription description) : described(std::move(description)) { }
    [[nodiscard]] CommandDescription description() const override { return described; }
    ExitStatus run(const Request &, Console &) const override { return ExitStatus::Done; }

private:
    CommandDescription described;
};

NamedCommand fake(const QString &name, const QStringList &aliases,
                  const CommandDescription &description)
{
    return {name, aliases, [description] { return std::make_unique<FakeCommand>(description); }};
}

Commands fakes()
{
    using Count = ParameterInfo::Count;
    return {
        fake(u"plain"_s, {},
             {u"Plain"_s, {}, {{u"WHAT"_s, {}, Count::Optional}}, {}, {u"plain"_s}}),
        fake(u"pick"_s, {u"choose"_s},
             {u"Picks"_s, {}, {{u"NUT"_s, {}, Count::Any}}, {}, {u"pick"_s}}),
        fake(u"boxes list"_s, {}, {u"Lists the boxes"_s, {}, {}, {}, {u"boxes list"_s}}),
        fake(u"boxes show"_s, {},
             {u"Shows boxes"_s,
              {},
              {{u"BOX"_s, {}, Count::OneOrMore}},
              {{u"lid"_s, {}, u"with its lid"_s}, {u"size"_s, u"N"_s, u"its size"_s}},
              {u"boxes show 1"_s, u"boxes show 2"_s}}),
    };
}

CommandLine parsed(const QByteArrayList &words)
{
    static const Commands commands = fakes();
    return parseCommandLine(QByteArrayList {"varnelctl"} + words, commands);
}

TEST(RegistryTest, commandsMayStandBeneathAWord)
{
    const CommandLine show = parsed({"boxes", "--json", "show", "a", "--size", "5", "b", "--lid"});
    ASSERT_EQ(show.wish, CommandLine::Wish::Run) << show.problem.toStdString();
    EXPECT_EQ(show.command->name, u"boxes show");
    EXPECT_EQ(show.request.arguments, (QStringList {u"a"_s, u"b"_s}));
    EXPECT_TRUE(show.request.has(u"json"_s));
    EXPECT_TRUE(show.request.has(u"lid"_s));
    EXPECT_EQ(show.request.value(u"size"_s), u"5");
    EXPECT_EQ(parsed({"boxes", "list"}).command->name, u"boxes list");
}

TEST(RegistryTest, aCommandAnswersToItsOtherNameAndSoDoesItsHelp)
{
    const CommandLine chosen = parsed({"--json", "choose", "a", "b"});
    ASSERT_EQ(chosen.wish, CommandLine::Wish::Run) << chosen.problem.toStdString();
    EXPECT_EQ(chosen.command->name, u"pick");
    EXPECT_EQ(chosen.request.arguments, (QStringList {u"a"_s, u"b"_s}));
    EXPECT_EQ(parsed({"choose", "--help"}).command->name, u"pick");
    EXPECT_TRUE(commandHelp(chosen.command->info()).contains(u"Picks (also: choose)."));
    EXPECT_TRUE(programHelp(fakes()).contains(u"Picks (also: choose)\n"));
}

TEST(RegistryTest, anyNumberMayBeNone)
{
    EXPECT_EQ(parsed({"pick"}).wish, CommandLine::Wish::Run);
    EXPECT_TRUE(commandHelp(parsed({"pick"}).command->info()).contains(u"[NUT...]"));
}

TEST(RegistryTest, aWordThatOnlyHoldsCommandsIsNoCommand)
{
    const CommandLine bare = parsed({"boxes"});
    EXPECT_EQ(bare.wish, CommandLine::Wish::Wrong);
    EXPECT_TRUE(bare.problem.contains(u"boxes"));
    const CommandLine help = parsed({"boxes", "--help"});
    EXPECT_EQ(help.wish, CommandLine::Wish::Help);
    EXPECT_EQ(help.group, u"boxes");
    const QString text = groupHelp(help.group, fakes());
    EXPECT_TRUE(text.contains(u"boxes show"));
    EXPECT_TRUE(text.contains(u"Examples:\n  varnelctl boxes list\n"));
    EXPECT_FALSE(text.contains(u"Plain"));
}

TEST(RegistryTest, anOptionBelongsToItsCommandOnly)
{
    EXPECT_EQ(parsed({"boxes", "list", "--lid"}).wish, CommandLine::Wish::Wrong);
    EXPECT_EQ(parsed({"boxes", "show", "a", "--size"}).wish, CommandLine::Wish::Wrong);
    EXPECT_EQ(parsed({"boxes", "show", "--lid"}).problem, u"'boxes show' needs BOX");
}

TEST(RegistryTest, theLastOfSeveralValuesCountsAndAllAreKept)
{
    const CommandLine line = parsed({"plain", "--home", "a", "--home=b c"});
    EXPECT_EQ(line.request.value(u"home"_s), u"b c");
    EXPECT_EQ(line.request.options.value(u"home"_s), (QStringList {u"a"_s, u"b c"_s}));
}

TEST(RegistryTest, aValueInBracketsOrWithCommasIsOneValue)
{
    EXPECT_EQ(parsed({"plain", "[a,b]"}).request.arguments, QStringList {u"[a,b]"_s});
    EXPECT_EQ(parsed({"plain", "--home", "[a,b]"}).request.value(u"home"_s), u"[a,b]");
}

TEST(RegistryTest, everyCommandOfTheProgramIsDescribedAndNamedOnce)
{
    QSet<QString> names;
    for (const auto &command : makeCommands()) {
        const CommandInfo info = command.info();
        for (const QString &name : QStringList {info.name} + info.aliases) {
            EXPECT_FALSE(names.contains(name)) << name.toStdString();
            names.insert(name);
        }
        EXPECT_FALSE(info.summary.isEmpty() || info.summary.endsWith(u'.'));
        ASSERT_FALSE(info.examples.isEmpty());
        for (const QString &example : info.examples)
            EXPECT_TRUE(example.startsWith(info.name));
        for (const ParameterInfo &parameter : info.parameters)
            EXPECT_FALSE(parameter.help.isEmpty());
    }
}

/// The program's commands, and which of them were made: nothing is described that was not.
class WatchedCommands {
public:
    WatchedCommands()
    {
        for (NamedCommand &command : commands)
            command.make = [this, name = command.name, make = command.make] {
                made.insert(name);
                return make();
            };
    }

    /// What is made while the words are sorted out as the program does it.
    QStringList madeFor(const QString &words)
    {
        made.clear();
        const Result<QByteArrayList> own =
            inOwnWords((u"varnelctl "_s + words).toUtf8().split(' '), commands);
        EXPECT_TRUE(own.ok()) << words.toStdString();
        line = parseCommandLine(own.value(), commands);
        return made.values();
    }

    Commands commands = makeCommands();
    CommandLine line;

private:
    QSet<QString> made;
};

TEST(RegistryTest, onlyTheCommandThatIsNamedIsMadeAndDescribed)
{
    WatchedCommands watched;
    for (const NamedCommand &command : makeCommands()) {
        for (const QString &name : allNames(command.info())) {
            for (const QStringView further :
                 {u" --json", u" --help", u" --json --help", u" --no-such-option", u" set=1 end"}) {
                const QString words = name + further;
                EXPECT_EQ(watched.madeFor(words), QStringList {command.name})
                    << words.toStdString();
            }
        }
    }
    EXPECT_EQ(watched.madeFor(u"write com.apple.dock autohide -bool true"_s),
              QStringList {u"set"_s});
}

TEST(RegistryTest, noCommandIsMadeWhereNoneIsNamed)
{
    WatchedCommands watched;
    for (const QString &words : {u"--json"_s, u"--help"_s, u"--version"_s, u"--no-such-option"_s,
                                 u"no-such-command"_s, u"backups --help"_s, u"login-items"_s})
        EXPECT_EQ(watched.madeFor(words), QStringList {}) << words.toStdString();
    EXPECT_EQ(watched.line.problem,
              u"'login-items' needs one of its commands: list, add, remove, enable, disable");
}

} // namespace
