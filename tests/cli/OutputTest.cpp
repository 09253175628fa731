#include "cli/CommandTree.h"
#include "cli/TextWidth.h"
#include "cli/Varnelctl.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel::cli;
using namespace varnel::test;
using namespace testing;

namespace {

class OutputTest : public Test {
protected:
    /// Runs the program with its standard output on a descriptor; its exit status.
    int runOn(int descriptor, const QStringList &arguments) const
    {
        QProcess process;
        process.setProcessEnvironment(varnelctl.environment);
        process.setChildProcessModifier([descriptor] { ::dup2(descriptor, 1); });
        process.start(QStringLiteral(VARNELCTL), arguments, QIODevice::ReadOnly);
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return process.exitCode();
    }

    /// What the program prints on a terminal of so many columns.
    QString onTerminal(unsigned short columns, const QStringList &arguments) const
    {
        const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        EXPECT_EQ(::grantpt(terminal), 0);
        EXPECT_EQ(::unlockpt(terminal), 0);
        const int side = ::open(::ptsname(terminal), O_RDWR | O_NOCTTY | O_CLOEXEC);
        winsize size {};
        size.ws_col = columns;
        size.ws_row = 25;
        EXPECT_EQ(::ioctl(terminal, TIOCSWINSZ, &size), 0);
        EXPECT_EQ(runOn(side, arguments), 0);
        // The terminal keeps what was printed until it is read; its end is an error (EIO).
        ::close(side);
        QByteArray all;
        QByteArray buffer(4096, '\0');
        for (ssize_t got = 1; got > 0;) {
            got = ::read(terminal, buffer.data(), size_t(buffer.size()));
            all.append(buffer.left(std::max<ssize_t>(got, 0)));
        }
        ::close(terminal);
        return QString::fromUtf8(all).remove(u'\r');
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(OutputTest, aFullDiskBehindStandardOutputIsAFailure)
{
    const Outcome list = varnelctl.shell(u"\"$varnelctl\" list >/dev/full"_s);
    EXPECT_EQ(list.status, 3);
    EXPECT_TRUE(list.err.contains("standard output"));
    const Outcome set = varnelctl.shell(u"\"$varnelctl\" set 1004=64 >/dev/full"_s);
    EXPECT_EQ(set.status, 4) << "it is done, but was not told";
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1004"_s}).out, "64\t64 pixels\n");
    EXPECT_EQ(varnelctl.shell(u"\"$varnelctl\" set 1004=64 >/dev/full"_s).status, 3)
        << "nothing was changed";
}

TEST_F(OutputTest, aReaderThatHasGoneIsAFailureWithoutAMessage)
{
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ::close(ends[0]);
    EXPECT_EQ(runOn(ends[1], {u"list"_s}), 3);
    EXPECT_EQ(runOn(ends[1], {u"set"_s, u"1004=64"_s}), 4);
    ::close(ends[1]);
}

TEST_F(OutputTest, closedStreamsDoNotEndUpInFiles)
{
    const Outcome set =
        varnelctl.shell(u"\"$varnelctl\" set 1004=64 1400=x --verbose <&- >&- 2>&-"_s);
    EXPECT_EQ(set.status, 4) << "done, but not told";
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1004"_s}).out, "64\t64 pixels\n");
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1400"_s}).out, "x\n");
    EXPECT_EQ(varnelctl.shell(u"\"$varnelctl\" list >&-"_s).status, 3);
}

TEST_F(OutputTest, aTableFitsTheTerminal)
{
    varnelctl.environment.insert(u"NO_COLOR"_s, u"1"_s);
    installSamples(home, u"binary"_s);
    const QString wide = onTerminal(200, {u"list"_s, u"Dock"_s});
    EXPECT_EQ(wide, QString::fromUtf8(varnelctl.run({u"list"_s, u"Dock"_s}).out));
    for (const int columns : {60, 40, 35}) {
        const QString shown =
            onTerminal(static_cast<unsigned short>(columns), {u"list"_s, u"Dock"_s});
        for (const QString &line : shown.split(u'\n'))
            EXPECT_LE(varnel::cli::textWidth(line), columns) << line.toStdString();
        EXPECT_TRUE(shown.contains(u'…')) << shown.toStdString();
    }
    varnelctl.environment.insert(u"LC_ALL"_s, u"C"_s);
    EXPECT_TRUE(onTerminal(40, {u"list"_s, u"Dock"_s}).contains(u"..."));
}

TEST_F(OutputTest, everyHelpShowsAnExampleAndIsNeverColoured)
{
    QStringList levels {QString()};
    for (const TreeNode &node : commandTree(makeCommands()))
        levels.append(node.path);
    for (const auto &command : makeCommands())
        levels.append(command.name);
    for (const QString &level : levels) {
        const QString help =
            onTerminal(80, level.split(u' ', Qt::SkipEmptyParts) + QStringList(u"--help"_s));
        const QString example = u"\n  varnelctl "_s + level;
        EXPECT_TRUE(help.section(u"Examples:"_s, 1).contains(example)) << level.toStdString();
        EXPECT_FALSE(help.contains(u'\033')) << level.toStdString();
    }
}

TEST_F(OutputTest, colourIsForTerminalsThatWantIt)
{
    EXPECT_TRUE(onTerminal(80, {u"list"_s, u"Dock"_s}).contains(u"\033["));
    EXPECT_FALSE(varnelctl.run({u"list"_s, u"Dock"_s}).out.contains('\033'));
    EXPECT_FALSE(onTerminal(80, {u"get"_s, u"1004"_s, u"--json"_s}).contains(u'\033'));
    varnelctl.environment.insert(u"TERM"_s, u"dumb"_s);
    EXPECT_FALSE(onTerminal(80, {u"list"_s, u"Dock"_s}).contains(u'\033'));
    varnelctl.environment.remove(u"TERM"_s);
    varnelctl.environment.insert(u"NO_COLOR"_s, u""_s);
    EXPECT_TRUE(onTerminal(80, {u"list"_s, u"Dock"_s}).contains(u"\033[")) << "empty is not set";
    varnelctl.environment.insert(u"NO_COLOR"_s, u"1"_s);
    EXPECT_FALSE(onTerminal(80, {u"list"_s, u"Dock"_s}).contains(u'\033'));
}

} // namespace
