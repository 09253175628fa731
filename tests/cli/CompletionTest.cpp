#include "cli/CommandTree.h"
#include "cli/Varnelctl.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace varnel::cli;
using namespace varnel::test;
using namespace testing;

namespace {

/// The scripts in the shells that they are for, started anew for each test.
class CompletionTest : public TestWithParam<const char *> {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(shell).isEmpty())
            GTEST_SKIP() << GetParam() << " is not installed";
        const QString folder = QFileInfo(QStringLiteral(VARNELCTL)).path();
        varnelctl.environment.insert(u"PATH"_s, folder + u":/usr/bin:/bin");
        // The name under which zsh looks for it.
        script = home.path() + u"/scripts/_varnelctl";
        QDir().mkpath(QFileInfo(script).path());
        const Outcome made = varnelctl.run({u"completion"_s, shell});
        ASSERT_EQ(made.status, 0) << made.err.toStdString();
        writeFile(script, made.out);
    }

    /// Presses the key at the end of each line.
    void complete(const QStringList &lines)
    {
        QProcess process;
        process.setProcessEnvironment(varnelctl.environment);
        process.setWorkingDirectory(home.path());
        process.start(u"python3"_s, {QStringLiteral(CLI_TESTS) + u"/complete.py", shell, script});
        process.write(lines.join(u'\n').toUtf8());
        process.closeWriteChannel();
        ASSERT_TRUE(process.waitForFinished(100000));
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        Outcome outcome;
        outcome.out = process.readAllStandardOutput();
        found = outcome.json();
        for (const QString &line : lines)
            ASSERT_TRUE(found.contains(line)) << line.toStdString();
    }

    [[nodiscard]] std::string candidates(const QString &line) const
    {
        QStringList all;
        for (const QJsonValue &each : found[line][u"candidates"].toArray())
            all.append(each.toString());
        return all.join(u", ").toStdString();
    }

    /// What the line became; fish tells only candidates without a terminal.
    void expectLine(const QString &typed, const QString &line) const
    {
        if (shell != u"fish") {
            EXPECT_EQ(found[typed][u"line"].toString().toStdString(), line.toStdString());
        }
    }

    /// What the line's command gets as its last word.
    [[nodiscard]] QString lastWordOf(const QString &line) const
    {
        const QString script =
            u"varnelctl() { while [ $# -gt 1 ]; do shift; done; printf '%s' \"$1\"; }\n"_s + line;
        QStringList options {u"-c"_s, script};
        if (shell == u"zsh")
            options.prepend(u"-f"_s);
        return QString::fromUtf8(runProgram(shell, options, varnelctl.environment).out);
    }

    const QString shell = QString::fromLatin1(GetParam());
    TemporaryHome home;
    Varnelctl varnelctl {home};
    QString script;
    QJsonObject found;
};

std::string sorted(QStringList words)
{
    words.sort();
    return words.join(u", ").toStdString();
}

TEST_P(CompletionTest, everyWordAndOptionOfEveryCommandIsOffered)
{
    const Commands commands = makeCommands();
    QMap<QString, QStringList> wanted;
    for (const TreeNode &node : commandTree(commands)) {
        const QString line = QString(u"varnelctl " + node.path).trimmed() + u' ';
        for (const TreeWord &below : node.below)
            wanted[line].append(below.word);
    }
    for (const auto &command : commands) {
        const CommandInfo info = command.info();
        for (const OptionInfo &option : allOptions(info))
            wanted[u"varnelctl " + info.name + u" --"].append(u"--" + option.name);
    }
    for (const OptionInfo &option : sharedOptions() + programOptions())
        wanted[u"varnelctl --"_s].append(u"--" + option.name);

    complete(wanted.keys());
    for (auto line = wanted.cbegin(); line != wanted.cend(); ++line)
        EXPECT_EQ(candidates(line.key()), sorted(line.value())) << line.key().toStdString();
}

TEST_P(CompletionTest, settingsAndTheirValuesAreOffered)
{
    const QString name = u"varnelctl set dock-p"_s;
    const QString label = u"varnelctl set dock-position=L"_s;
    const QString blanks = u"varnelctl set minimize-effect=sc"_s;
    const QString quotes = u"varnelctl set 'minimize-effect=sc"_s;
    const QString number = u"varnelctl set 1008=g"_s;
    const QString second = u"varnelctl set dock-size=40 autohide="_s;
    const QString anyText = u"varnelctl set screenshot-prefix="_s;
    const QString show = u"varnelctl show dock-p"_s;
    const QString alias = u"varnelctl write dock-position=r"_s;
    const QString reset = u"varnelctl reset dock-size dock-p"_s;
    complete({name, label, blanks, quotes, number, second, anyText, show, alias, reset});

    EXPECT_EQ(candidates(name), "dock-position");
    expectLine(name, u"varnelctl set dock-position="_s);
    EXPECT_EQ(candidates(label), "left");
    expectLine(label, u"varnelctl set dock-position=left "_s);
    EXPECT_EQ(candidates(blanks), "Scale effect");
    expectLine(blanks, u"varnelctl set minimize-effect=Scale\\ effect "_s);
    EXPECT_EQ(candidates(quotes), "Scale effect");
    expectLine(quotes, u"varnelctl set 'minimize-effect=Scale effect' "_s);
    EXPECT_EQ(candidates(number), "Genie effect");
    EXPECT_EQ(candidates(second), "default, no, yes");
    EXPECT_EQ(candidates(anyText), "");
    EXPECT_EQ(candidates(show), "dock-position");
    expectLine(show, u"varnelctl show dock-position "_s);
    EXPECT_EQ(candidates(alias), "right");
    EXPECT_EQ(candidates(reset), "dock-position");
}

TEST_P(CompletionTest, groupsWordsAndFoldersAreOffered)
{
    QDir(home.path()).mkpath(u"disks/anna one"_s);
    writeFile(home.path() + u"/disks/annotations", "");
    const QString group = u"varnelctl list t"_s;
    const QString optional = u"varnelctl reset --group t"_s;
    const QString format = u"varnelctl export --format m"_s;
    const QString application = u"varnelctl end Dock q"_s;
    const QString category = u"varnelctl system "_s;
    const QString folder = u"varnelctl --home "_s + home.path() + u"/disks/ann";
    const QString joined = u"varnelctl list --home="_s + home.path() + u"/disks/ann";
    const QString file = u"varnelctl list --homes-from "_s + home.path() + u"/disks/annot";
    complete({group, optional, format, application, category, folder, joined, file});

    EXPECT_EQ(candidates(group), "Time Machine");
    expectLine(group, u"varnelctl list Time\\ Machine "_s);
    EXPECT_EQ(candidates(optional), "Time Machine");
    EXPECT_EQ(candidates(format), "mobileconfig");
    EXPECT_EQ(candidates(application), "QuickTime Player X");
    EXPECT_EQ(candidates(category), "macosx, memory, network");
    for (const QString &line : {folder, joined}) {
        EXPECT_EQ(candidates(line), "anna one") << line.toStdString();
        expectLine(line, line + u"a\\ one/");
    }
    EXPECT_EQ(candidates(file), "annotations");
}

TEST_P(CompletionTest, whatTheNamedHomeHoldsIsOffered)
{
    const QString anna = home.path() + u"/anna";
    QDir().mkpath(anna + u"/Library/Preferences");
    ASSERT_EQ(varnelctl.run({u"set"_s, u"dock-size=40"_s, u"--home"_s, anna}).status, 0);
    ASSERT_EQ(
        varnelctl.run({u"login-items"_s, u"add"_s, u"/Applications/Chess.app"_s, u"--home"_s, anna})
            .status,
        0);
    const QString named = u"varnelctl --home "_s + anna;
    const QString backup = named + u" backups show quillet1";
    const QString joined = u"varnelctl --home="_s + anna + u" backups restore quillet1";
    const QString item = named + u" login-items enable ";
    const QString own = u"varnelctl backups show "_s;
    const QString only = named + u" backups restore quillet1.sqlite --only 1008 dock-si";
    complete({backup, joined, item, own, only});

    EXPECT_EQ(candidates(backup), "quillet1.sqlite");
    EXPECT_EQ(candidates(joined), "quillet1.sqlite");
    EXPECT_EQ(candidates(item), "Chess.app");
    EXPECT_EQ(candidates(own), "");
    EXPECT_EQ(candidates(only), "dock-size");
}

TEST_P(CompletionTest, nothingIsOfferedWhereNothingFits)
{
    const QString words = u"varnelctl -- se"_s;
    const QString full = u"varnelctl show dock-size "_s;
    const QString text = u"varnelctl search "_s;
    complete({words, full, text});
    EXPECT_EQ(candidates(words), "");
    EXPECT_EQ(candidates(text), "");
    // Where no argument fits, zsh goes on with options by itself.
    if (shell != u"zsh") {
        EXPECT_EQ(candidates(full), "");
    }
}

/// Names that a shell would obey, part or change; each begins with another letter.
const QStringList oddNames {
    u"a b.sqlite"_s,
    u"c\"d.sqlite"_s,
    u"e'f.sqlite"_s,
    u"g\\h\\.sqlite"_s,
    u"i$(touch pwned).sqlite"_s,
    u"j`touch pwned`.sqlite"_s,
    u"k\nl.sqlite"_s,
    u"m\tn.sqlite"_s,
    u"o:p.sqlite"_s,
    u"q=r=s.sqlite"_s,
    u"t;touch pwned.sqlite"_s,
    u"u@v*?[w].sqlite"_s,
    u"-dash.sqlite"_s,
    u"xäß日.sqlite"_s,
    u"y$HOME{1,2}~.sqlite"_s,
    u"z\\n\\t%q&|<>#.sqlite"_s,
};

/// A home with a backup file of each of these names; its folder is no plain word either.
class OddNamesTest : public CompletionTest {
protected:
    OddNamesTest()
    {
        const QString anna = home.path() + u"/an na's (1)";
        const QString folder = anna + u"/Library/Application Support/Varnel/Backup/";
        QDir().mkpath(folder);
        for (const QString &name : oddNames)
            writeFile(folder + name, "");
    }
    ~OddNamesTest() override { EXPECT_FALSE(QFileInfo::exists(home.path() + u"/pwned")); }

    const QString command = u"varnelctl --home an\\ na\\'s\\ \\(1\\) backups show "_s;
};

TEST_P(OddNamesTest, theCommandGetsTheNameWhateverTheShellWouldMakeOfIt)
{
    if (shell == u"fish")
        GTEST_SKIP() << "tells candidates only";
    QMap<QString, QString> wanted;
    for (const QString &name : oddNames)
        for (const QStringView quote : {u"", u"'", u"\""})
            wanted[command + (name.startsWith(u'-') ? u"-- " : u"") + quote + name.front()] = name;
    // Behind a letter at which bash parts words it replaces no more than the rest.
    for (const QString &typed : {u"o:"_s, u"q="_s, u"q=r="_s, u"u@"_s})
        wanted[command + typed] =
            *std::find_if(oddNames.begin(), oddNames.end(),
                          [&](const QString &name) { return name.startsWith(typed); });
    wanted[command + u"a' b'"] = wanted[command + u"a\\ b"] = u"a b.sqlite"_s;
    complete(wanted.keys());
    for (auto line = wanted.cbegin(); line != wanted.cend(); ++line) {
        const QString became = found[line.key()][u"line"].toString();
        EXPECT_EQ(lastWordOf(became).toStdString(), line->toStdString())
            << line.key().toStdString() << " became " << became.toStdString();
    }
}

TEST_P(OddNamesTest, aCandidateIsOfferedUnderItsNameInFish)
{
    if (shell != u"fish")
        GTEST_SKIP() << "the others are held to the line that comes of it";
    complete({command});
    QStringList wanted;
    // Fish parts candidates from each other, and from their descriptions, at these two.
    for (const QString &name : oddNames)
        if (!name.contains(u'\n') && !name.contains(u'\t') && !name.startsWith(u'-'))
            wanted.append(QString(name).replace(u"q=r=s"_s, u"r=s"_s));
    wanted.append(u"-dash.sqlite"_s);
    EXPECT_EQ(candidates(command), sorted(wanted));
}

INSTANTIATE_TEST_SUITE_P(Shells, OddNamesTest, Values("bash", "zsh", "fish"),
                         [](const auto &shell) { return std::string(shell.param); });
INSTANTIATE_TEST_SUITE_P(Shells, CompletionTest, Values("bash", "zsh", "fish"),
                         [](const auto &shell) { return std::string(shell.param); });

TEST(CompletionCommandTest, theScriptForBashPassesShellcheck)
{
    const QString shellcheck = QStandardPaths::findExecutable(u"shellcheck"_s);
    if (shellcheck.isEmpty())
        GTEST_SKIP() << "shellcheck is not installed";
    TemporaryHome home;
    const Varnelctl varnelctl(home);
    const QString script = home.path() + u"/varnelctl.bash";
    writeFile(script, varnelctl.run({u"completion"_s, u"bash"_s}).out);
    const Outcome checked = runProgram(shellcheck, {script}, varnelctl.environment);
    EXPECT_EQ(checked.status, 0) << checked.out.toStdString();
}

/// What the scripts are told.
class CandidatesTest : public Test {
protected:
    [[nodiscard]] Outcome asked(const QStringList &words) const
    {
        return varnelctl.run(QStringList {u"completion"_s, u"--index"_s,
                                          QString::number(words.size()), u"--"_s, u"varnelctl"_s}
                             + words);
    }
    [[nodiscard]] QString inLibrary(const QString &name) const
    {
        const QString path = home.path() + u"/Library/Application Support/Varnel/" + name;
        QDir().mkpath(QFileInfo(path).path());
        return path;
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(CandidatesTest, aLineTellsKindTextAndHelp)
{
    writeFile(inLibrary(u"Backup/a\nb\t\\.sqlite"_s), "");
    EXPECT_TRUE(
        asked({u"backups"_s, u"show"_s, QString()}).out.startsWith("word\ta\\nb\\t\\\\.sqlite\t2"));
    EXPECT_TRUE(asked({u"set"_s, u"dock"_s}).out.contains("part\tdock-size=\tDock: "));
    EXPECT_EQ(asked({u"--home"_s, QString()}).out, "folder\t\t\n");
    EXPECT_EQ(asked({u"--homes-from="_s}).out, "file\t--homes-from=\t\n");
    EXPECT_EQ(
        varnelctl.run({u"completion"_s, u"--index"_s, u"x"_s, u"--"_s, u"varnelctl"_s}).status, 2);
    EXPECT_EQ(
        varnelctl.run({u"completion"_s, u"--index"_s, u"1"_s, u"--json"_s, u"--"_s, u"v"_s}).status,
        2);
}

TEST_F(CandidatesTest, eachOfSeveralHomesIsLookedAt)
{
    QStringList words;
    for (const QString &name : {u"anna"_s, u"bert"_s}) {
        const QString folder =
            home.path() + u'/' + name + u"/Library/Application Support/Varnel/Backup/";
        QDir().mkpath(folder);
        writeFile(folder + name + u".sqlite", "");
        words += {u"--home"_s, home.path() + u'/' + name};
    }
    const QStringList show {u"backups"_s, u"show"_s, QString()};
    const QByteArray both = asked(words + show).out;
    EXPECT_TRUE(both.contains("\tanna.sqlite\t") && both.contains("\tbert.sqlite\t"))
        << both.toStdString();
    writeFile(home.path() + u"/list", (words[1] + u'\n' + words[3]).toUtf8());
    EXPECT_EQ(asked(QStringList {u"--homes-from"_s, u"~/list"_s} + show).out, both);
}

TEST_F(CandidatesTest, whatIsDamagedOrLockedOrNoFileGivesNoneAtOnceAndNoWord)
{
    const QStringList items {u"--home"_s, home.path(), u"login-items"_s, u"enable"_s, QString()};
    writeFile(inLibrary(u"disableLoginItems.sqlite"_s), "no database");
    ASSERT_EQ(runProgram(u"mkfifo"_s, {inLibrary(u"Backup"_s), home.path() + u"/list"},
                         varnelctl.environment)
                  .status,
              0);
    const auto before = snapshot(home.path());
    for (const QStringList &words :
         {items,
          QStringList {u"backups"_s, u"show"_s, QString()},
          {u"--homes-from"_s, home.path() + u"/list", u"backups"_s, u"show"_s, QString()},
          {u"--homes-from"_s, u"-"_s, u"backups"_s, u"show"_s, QString()},
          {u"--home"_s, home.path() + u"/list", u"backups"_s, u"show"_s, QString()},
          {u"--home"_s, QString(), u"backups"_s, u"show"_s, QString()}}) {
        const Outcome outcome = asked(words);
        EXPECT_EQ(outcome.status, 0) << words.join(u' ').toStdString();
        EXPECT_EQ(QByteArray(outcome.out + outcome.err), "") << words.join(u' ').toStdString();
    }
    EXPECT_EQ(snapshot(home.path()), before);

    QFile::remove(inLibrary(u"disableLoginItems.sqlite"_s));
    QProcess locking;
    locking.start(u"python3"_s,
                  {u"-c"_s,
                   u"import sqlite3, sys; s = sqlite3.connect(sys.argv[1]);"
                   u"s.execute('CREATE TABLE users(value1)'); s.commit();"
                   u"s.execute('BEGIN EXCLUSIVE'); print(flush=True); input()"_s,
                   inLibrary(u"disableLoginItems.sqlite"_s)});
    ASSERT_TRUE(locking.waitForReadyRead());
    EXPECT_EQ(QByteArray(asked(items).out + asked(items).err), "");
    locking.write("\n");
    locking.waitForFinished();
}

TEST(CompletionCommandTest, anotherShellIsWrongUsage)
{
    TemporaryHome home;
    const Outcome outcome = Varnelctl(home).run({u"completion"_s, u"csh"_s});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.err.contains("bash, zsh, fish")) << outcome.err.toStdString();
}

} // namespace
