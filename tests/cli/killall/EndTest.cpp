#include "cli/Varnelctl.h"
#include "support/FileFacts.h"
#include "support/NamedProcess.h"
#include "support/ProcessNames.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

/// The real killall, upon processes that the test has started. Since that goes by name alone, no
/// two of these run at a time, and none where a stranger has one of the names.
class EndTest : public Test {
protected:
    EndTest() { installSamples(home, u"xml"_s); }
    void SetUp() override
    {
        if (!QFileInfo(u"/usr/bin/killall"_s).isExecutable())
            GTEST_SKIP() << "no killall on this machine";
        const QStringList names {u"Dock"_s, u"Finder"_s, u"Safari"_s, u"SystemUIServer"_s};
        if (const QString running = runningOneOf(names); !running.isNull())
            GTEST_SKIP() << "somebody's " << qPrintable(running) << " runs here";
        dock = std::make_unique<NamedProcess>(folder.path(), u"Dock"_s);
        finder = std::make_unique<NamedProcess>(folder.path(), u"Finder"_s);
        systemInterface = std::make_unique<NamedProcess>(folder.path(), u"SystemUIServer"_s);
    }

    /// Which of the three the program has ended; the others, the test ends.
    [[nodiscard]] QStringList ended() const
    {
        QStringList names;
        for (const auto &[name, process] : {std::pair {u"Dock"_s, dock.get()},
                                            {u"Finder"_s, finder.get()},
                                            {u"SystemUIServer"_s, systemInterface.get()}}) {
            if (!process->killed())
                names.append(name);
        }
        return names;
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
    QTemporaryDir folder;
    std::unique_ptr<NamedProcess> dock;
    std::unique_ptr<NamedProcess> finder;
    std::unique_ptr<NamedProcess> systemInterface;
};

TEST_F(EndTest, whatIsNamedEndsThenTheSystemsInterface)
{
    const Outcome outcome = varnelctl.run({u"end"_s, u"dOCK"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.err, "");
    expectGolden(u"end.txt"_s, outcome.out, home);
    EXPECT_EQ(dock->endSignal(), SIGTERM);
    EXPECT_EQ(systemInterface->endSignal(), SIGTERM);
    EXPECT_TRUE(finder->killed()) << "the test had to end it";
}

TEST_F(EndTest, severalEndInTheSheetsOrderEachOnceByEitherOfItsNames)
{
    const Outcome outcome = varnelctl.run({u"end"_s, u"QuickTime Player"_s, u"finder"_s,
                                           u"quicktime player x"_s, u"Dock"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    expectGolden(u"end.json"_s, outcome.out, home);
    EXPECT_EQ(ended(), (QStringList {u"Dock"_s, u"Finder"_s, u"SystemUIServer"_s}));
}

TEST_F(EndTest, anUnknownNameEndsNothingAndTheNamesAreTold)
{
    const Outcome outcome = varnelctl.run({u"end"_s, u"Dock"_s, u"SystemUIServer"_s});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.err.contains("'SystemUIServer'")) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.contains("Dock, Finder, Mail, Safari, iTunes, QuickTime Player X, "
                                     "Time Machine"));
    EXPECT_EQ(varnelctl.run({u"end"_s}).status, 2);
    EXPECT_TRUE(ended().isEmpty());
}

TEST_F(EndTest, aSaveEndsWhatItHasFlagged)
{
    const Outcome outcome = varnelctl.run(
        {u"set"_s, u"1100=yes"_s, u"1004=64"_s, u"1300=when scrolling"_s, u"--end"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    expectGolden(u"set-end.txt"_s, outcome.out, home);
    EXPECT_EQ(ended(), (QStringList {u"Dock"_s, u"Finder"_s, u"SystemUIServer"_s}));
}

TEST_F(EndTest, aResetTellsWhatItEndsAsJson)
{
    const Outcome outcome = varnelctl.run({u"reset"_s, u"1004"_s, u"--end"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    expectGolden(u"reset-end.json"_s, outcome.out, home);
    EXPECT_EQ(ended(), (QStringList {u"Dock"_s, u"SystemUIServer"_s}));
}

TEST_F(EndTest, aRestoreEndsWhatItHasFlagged)
{
    ASSERT_EQ(varnelctl.run({u"set"_s, u"1100=yes"_s}).status, 0);
    const Outcome outcome =
        varnelctl.run({u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s, u"--end"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.endsWith("Ended: Finder, SystemUIServer\n"))
        << outcome.out.toStdString();
    EXPECT_EQ(ended(), (QStringList {u"Finder"_s, u"SystemUIServer"_s}));
}

TEST_F(EndTest, withManyHomesTheApplicationsEndOnceAfterTheLast)
{
    TemporaryHome other;
    const QStringList homes {u"--home"_s, home.path(), u"--home"_s, other.path()};
    const Outcome outcome =
        varnelctl.run(QStringList {u"set"_s, u"1004=64"_s, u"--end"_s, u"--json"_s} + homes);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"homes"_s).toArray().size(), 2);
    EXPECT_EQ(outcome.json().value(u"ended"_s), (QJsonArray {u"Dock"_s, u"SystemUIServer"_s}));
    EXPECT_EQ(ended(), (QStringList {u"Dock"_s, u"SystemUIServer"_s}));
    const Outcome text =
        varnelctl.run(QStringList {u"reset"_s, u"1004"_s, u"--end"_s, u"--dry-run"_s} + homes);
    EXPECT_TRUE(text.out.endsWith("\n\nWould be ended: Dock, SystemUIServer\n"));
    EXPECT_EQ(text.out.count("Would be ended"), 1);
}

/// Root works on two people's homes, while they and root run programs of the same names.
TEST_F(EndTest, inSomebodyElsesHomeOnlyThatPersonsProgramsEnd)
{
    VARNEL_NEEDS_ROOT();
    constexpr uid_t neighbour = stranger + 1;
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0711), 0);
    NamedProcess strangersDock(folder.path(), u"Dock"_s, stranger);
    NamedProcess strangersFinder(folder.path(), u"Finder"_s, stranger);
    NamedProcess strangersInterface(folder.path(), u"SystemUIServer"_s, stranger);
    NamedProcess neighboursDock(folder.path(), u"Dock"_s, neighbour);
    NamedProcess neighboursFinder(folder.path(), u"Finder"_s, neighbour);
    TemporaryHome one;
    TemporaryHome other;
    installSamples(one, u"xml"_s);
    installSamples(other, u"xml"_s);
    // The one home has already what is to be set of the Finder, the other what is of the Dock.
    ASSERT_EQ(varnelctl.run({u"set"_s, u"1100=yes"_s, u"--home"_s, one.path()}).status, 0);
    ASSERT_EQ(varnelctl.run({u"set"_s, u"1004=64"_s, u"--home"_s, other.path()}).status, 0);
    giveAll(one.path(), stranger, stranger);
    giveAll(other.path(), neighbour, neighbour);

    const Outcome outcome =
        varnelctl.run({u"set"_s, u"1100=yes"_s, u"1004=64"_s, u"--end"_s, u"--json"_s, u"--home"_s,
                       one.path(), u"--home"_s, other.path()});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"ended"_s),
              (QJsonArray {u"Dock"_s, u"Finder"_s, u"SystemUIServer"_s}));
    EXPECT_EQ(strangersDock.endSignal(), SIGTERM);
    EXPECT_EQ(strangersInterface.endSignal(), SIGTERM);
    EXPECT_TRUE(strangersFinder.killed()) << "nothing of the Finder was changed there";
    EXPECT_EQ(neighboursFinder.endSignal(), SIGTERM);
    EXPECT_TRUE(neighboursDock.killed()) << "nothing of the Dock was changed there";
    EXPECT_TRUE(ended().isEmpty()) << "root's own programs go on";
}

TEST_F(EndTest, whereNothingIsFlaggedNothingEnds)
{
    EXPECT_EQ(varnelctl.run({u"set"_s, u"1004=64"_s}).status, 0) << "--end was not given";
    const Outcome same = varnelctl.run({u"set"_s, u"1004=64"_s, u"--end"_s, u"--json"_s});
    EXPECT_EQ(same.status, 0);
    EXPECT_EQ(same.json().value(u"ended"_s), QJsonArray());
    const Outcome global = varnelctl.run({u"set"_s, u"1300=when scrolling"_s, u"--end"_s});
    EXPECT_EQ(global.status, 0);
    EXPECT_FALSE(global.out.contains("Ended")) << "of a general setting no application is told";
    EXPECT_TRUE(ended().isEmpty());
}

TEST_F(EndTest, aDryRunEndsNothing)
{
    const Outcome tried = varnelctl.run({u"set"_s, u"1004=64"_s, u"--end"_s, u"--dry-run"_s});
    EXPECT_EQ(tried.status, 0);
    EXPECT_TRUE(tried.out.contains("Would be ended: Dock, SystemUIServer\n"));
    EXPECT_TRUE(ended().isEmpty());
}

} // namespace
