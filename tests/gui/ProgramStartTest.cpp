#include "support/gui/RunningProgram.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QProcess>

#include <gtest/gtest.h>

#include <array>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;

namespace {

/// The real program, started by a line for the shell in which "$varnel" names it.
class ProgramStart : public testing::Test {
protected:
    struct Outcome {
        int status = -1;
        QByteArray err;
    };
    [[nodiscard]] Outcome shell(const QString &line) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, home.path());
        environment.insert(u"varnel"_s, QStringLiteral(VARNEL_PROGRAM));
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(u"/bin/sh"_s, {u"-c"_s, line});
        EXPECT_TRUE(program.waitForFinished(60000));
        return {program.exitCode(), program.readAllStandardError()};
    }

    TemporaryHome home;
};

TEST_F(ProgramStart, AnAnswerThatCannotBeWrittenIsAFailure)
{
    for (const QString &option : {u"--help"_s, u"--version"_s}) {
        EXPECT_EQ(shell(u"\"$varnel\" "_s + option + u" >/dev/null").status, 0);
        const Outcome full = shell(u"\"$varnel\" "_s + option + u" >/dev/full");
        EXPECT_EQ(full.status, 3);
        EXPECT_TRUE(full.err.startsWith("varnel: standard output: ")) << full.err.toStdString();
    }
}

TEST_F(ProgramStart, AHomeWhoseNameIsNotUtf8IsRefusedAndNoOtherTaken)
{
    ASSERT_TRUE(QDir(home.path()).mkpath(u"hc\ufffd/Library"_s));
    const QString made =
        uR"sh(d=$(printf '%s/hc\377' "$HOME"); mkdir -p "$d/Library"; ln -s "$d" "$HOME/l"; )sh"
        uR"sh(export QT_QPA_PLATFORM=offscreen; )sh"_s;
    const QString gone = uR"sh(; status=$?; rm -r "$d" "$HOME/l"; exit $status)sh"_s;
    for (const QString &start :
         {uR"sh((env HOME="$d" "$varnel"))sh"_s, uR"sh((cd "$d" && exec "$varnel" --home .))sh"_s,
          uR"sh("$varnel" --home "$HOME/l")sh"_s}) {
        const Outcome outcome = shell(made + start + gone);
        EXPECT_EQ(outcome.status, 3) << qPrintable(start);
        EXPECT_TRUE(outcome.err.contains("/hc\\xff: its name is not UTF-8 text"))
            << outcome.err.toStdString();
    }
    const Outcome typed = shell(made + uR"sh("$varnel" --home "$d")sh"_s + gone);
    EXPECT_EQ(typed.status, 2);
    EXPECT_EQ(typed.err, "varnel: an argument is not UTF-8 text\n");
    EXPECT_TRUE(QDir(home.path() + u"/hc\ufffd/Library").isEmpty());
}

TEST_F(ProgramStart, WithoutADisplayAFolderThatIsNoHomeIsToldOnStandardErrorAlone)
{
    ASSERT_TRUE(QDir(home.path()).mkpath(u"empty"_s));
    const QString start = uR"sh(export QT_QPA_PLATFORM=offscreen; "$varnel" )sh"_s;
    const Outcome empty = shell(start + uR"sh("$HOME/empty")sh"_s);
    EXPECT_EQ(empty.status, 3);
    EXPECT_TRUE(empty.err.contains("/empty: No folder \"Library\" in it; is this a home folder?"))
        << empty.err.toStdString();
    EXPECT_TRUE(QDir(home.path() + u"/empty").isEmpty());
    const Outcome missing = shell(start + uR"sh("$HOME/missing")sh"_s);
    EXPECT_EQ(missing.status, 3);
    EXPECT_TRUE(missing.err.contains("/missing: No such file or directory"));
}

TEST(ProgramStreams, AReaderOfTheLogThatHasGoneEndsNothing)
{
    std::array<int, 2> ends {};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ::close(ends[0]);
    RunningProgram program;
    program.start([&] { ::dup2(ends[1], STDERR_FILENO); });
    ::close(ends[1]);
    ASSERT_TRUE(program.isUp());
    program.send(SIGTERM);
    EXPECT_EQ(program.end(), 0);
}

TEST(ProgramStreams, TheLogGoesIntoNothingThatTheProgramOpened)
{
    RunningProgram program;
    program.start([] {
        for (const int closed : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::close(closed);
    });
    ASSERT_TRUE(program.isUp());
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        EXPECT_EQ(program.descriptor(number).toStdString(), "/dev/null") << number;
    program.send(SIGTERM);
    EXPECT_EQ(program.end(), 0);
}

TEST(ProgramStreams, ALimitOnTheSizeOfFilesFailsWritesAndEndsNothing)
{
    RunningProgram program;
    program.start([] {
        const rlimit nothing {0, 0};
        ::setrlimit(RLIMIT_FSIZE, &nothing);
    });
    ASSERT_TRUE(program.isUp());
    program.send(SIGTERM);
    // The window's size could not be kept.
    EXPECT_EQ(program.end(), 0);
    EXPECT_TRUE(
        program.process.readAllStandardError().contains("window.ini: could not be written"));
}

} // namespace
