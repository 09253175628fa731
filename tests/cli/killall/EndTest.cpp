#include "cli/Varnelctl.h"
#include "support/FileFacts.h"
#include "support/NamedProcess.h"
#include "support/ProcessNames.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace varnel::test;
using namespace testing;

namespace {

/// The real killall, upon processes that the test has started. Since that goes by name alone, no
/// two of these run at a time, and none where a stranger has one of the names.
class EndTest : public Test {
protected:
    EndTest() { installSamples(home, u"xml"_qs); }
    void SetUp() override
    {
        if (!QFileInfo(u"/usr/bin/killall"_qs).isExecutable())
            GTEST_SKIP() << "no killall on this machine";
        const QStringList names {u"Dock"_qs, u"Finder"_qs, u"Safari"_qs, u"SystemUIServer"_qs};
        if (const QString running = runningOneOf(names); !running.isNull())
            GTEST_SKIP() << "somebody's " << qPrintable(running) << " runs here";
        dock = std::make_unique<NamedProcess>(folder.path(), u"Dock"_qs);
        finder = std::make_unique<NamedProcess>(folder.path(), u"Finder"_qs);
        systemInterface = std::make_unique<NamedProcess>(folder.path(), u"SystemUIServer"_qs);
    }

    /// Which of the three the program has ended; the others, the test ends.
    [[nodiscard]] QStringList ended() const
    {
        QStringList names;
        for (const auto &[name, process] : {std::pair {u"Dock"_qs, dock.get()},
                                            {u"Finder"_qs, finder.get()},
                                            {u"SystemUIServer"_qs, systemInterface.get()}}) {
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
    const Outcome outcome = varnelctl.run({u"end"_qs, u"dOCK"_qs});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.err, "");
    expectGolden(u"end.txt"_qs, outcome.out, home);
    EXPECT_EQ(dock->endSignal(), SIGTERM);
    EXPECT_EQ(systemInterface->endSignal(), SIGTERM);
    EXPECT_TRUE(finder->killed()) << "the test had to end it";
}

TEST_F(EndTest, severalEndInTheSheetsOrderEachOnceByEitherOfItsNames)
{
    const Outcome outcome = varnelctl.run({u"end"_qs, u"QuickTime Player"_qs, u"finder"_qs,
                                           u"quicktime player x"_qs, u"Dock"_qs, u"--json"_qs});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    expectGolden(u"end.json"_qs, outcome.out, home);
    EXPECT_EQ(ended(), (QStringList {u"Dock"_qs, u"Finder"_qs, u"SystemUIServer"_qs}));
}

TEST_F(EndTest, anUnknownNameEndsNothingAndTheNamesAreTold)
{
    const Outcome outcome = varnelctl.run({u"end"_qs, u"Dock"_qs, u"SystemUIServer"_qs});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.err.contains("'SystemUIServer'")) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.contains("Dock, Finder, Mail, Safari, iTunes, QuickTime Player X, "
                                     "Time Machine"));
    EXPECT_EQ(varnelctl.run({u"end"_qs}).status, 2);
    EXPECT_TRUE(ended().isEmpty());
}

TEST_F(EndTest, aSaveEndsWhatItHasFlagged)
{
    const Outcome outcome = varnelctl.run(
        {u"set"_qs, u"1100=yes"_qs, u"1004=64"_qs, u"1300=when scrolling"_qs, u"--end"_qs});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    expectGolden(u"set-end.txt"_qs, outcome.out, home);
    EXPECT_EQ(ended(), (QStringList {u"Dock"_qs, u"Finder"_qs, u"SystemUIServer"_qs}));
}

TEST_F(EndTest, aResetTellsWhatItEndsAsJson)
{
    const Outcome outcome = varnelctl.run({u"reset"_qs, u"1004"_qs, u"--end"_qs, u"--json"_qs});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    expectGolden(u"reset-end.json"_qs, outcome.out, home);
    EXPECT_EQ(ended(), (QStringList {u"Dock"_qs, u"SystemUIServer"_qs}));
}

TEST_F(EndTest, aRestoreEndsWhatItHasFlagged)
{
    ASSERT_EQ(varnelctl.run({u"set"_qs, u"1100=yes"_qs}).status, 0);
    const Outcome outcome =
        varnelctl.run({u"backups"_qs, u"restore"_qs, u"quillet1.sqlite"_qs, u"--end"_qs});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.endsWith("Ended: Finder, SystemUIServer\n"))
        << outcome.out.toStdString();
    EXPECT_EQ(ended(), (QStringList {u"Finder"_qs, u"SystemUIServer"_qs}));
}

TEST_F(EndTest, withManyHomesTheApplicationsEndOnceAfterTheLast)
{
    TemporaryHome other;
    const QStringList homes {u"--home"_qs, home.path(), u"--home"_qs, other.path()};
    const Outcome outcome =
        varnelctl.run(QStringList {u"set"_qs, u"1004=64"_qs, u"--end"_qs, u"--json"_qs} + homes);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"homes"_qs).toArray().size(), 2);
    EXPECT_EQ(outcome.json().value(u"ended"_qs), (QJsonArray {u"Dock"_qs, u"SystemUIServer"_qs}));
    EXPECT_EQ(ended(), (QStringList {u"Dock"_qs, u"SystemUIServer"_qs}));
    const Outcome text =
        varnelctl.run(QStringList {u"reset"_qs, u"1004"_qs, u"--end"_qs, u"--dry-run"_qs} + homes);
    EXPECT_TRUE(text.out.endsWith("\n\nWould be ended: Dock, SystemUIServer\n"));
    EXPECT_EQ(text.out.count("Would be ended"), 1);
}

/// Root works on two people's homes, while they and root run programs of the same names.
TEST_F(EndTest, inSomebodyElsesHomeOnlyThatPersonsProgramsEnd)
{
    VARNEL_NEEDS_ROOT();
    constexpr uid_t neighbour = stranger + 1;
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0711), 0);
    NamedProcess strangersDock(folder.path(), u"Dock"_qs, stranger);
    NamedProcess strangersFinder(folder.path(), u"Finder"_qs, stranger);
    NamedProcess strangersInterface(folder.path(), u"SystemUIServer"_qs, stranger);
    NamedProcess neighboursDock(folder.path(), u"Dock"_qs, neighbour);
    NamedProcess neighboursFinder(folder.path(), u"Finder"_qs, neighbour);
    TemporaryHome one;
    TemporaryHome other;
    installSamples(one, u"xml"_qs);
    installSamples(other, u"xml"_qs);
    // The one home has already what is to be set of the Finder, the other what is of the Dock.
    ASSERT_EQ(varnelctl.run({u"set"_qs, u"1100=yes"_qs, u"--home"_qs, one.path()}).status, 0);
    ASSERT_EQ(varnelctl.run({u"set"_qs, u"1004=64"_qs, u"--home"_qs, other.path()}).status, 0);
    giveAll(one.path(), stranger, stranger);
    giveAll(other.path(), neighbour, neighbour);

    const Outcome outcome =
        varnelctl.run({u"set"_qs, u"1100=yes"_qs, u"1004=64"_qs, u"--end"_qs, u"--json"_qs,
                       u"--home"_qs, one.path(), u"--home"_qs, other.path()});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"ended"_qs),
              (QJsonArray {u"Dock"_qs, u"Finder"_qs, u"SystemUIServer"_qs}));
    EXPECT_EQ(strangersDock.endSignal(), SIGTERM);
    EXPECT_EQ(strangersInterface.endSignal(), SIGTERM);
    EXPECT_TRUE(strangersFinder.killed()) << "nothing of the Finder was changed there";
    EXPECT_EQ(neighboursFinder.endSignal(), SIGTERM);
    EXPECT_TRUE(neighboursDock.killed()) << "nothing of the Dock was changed there";
    EXPECT_TRUE(ended().isEmpty()) << "root's own programs go on";
}

TEST_F(EndTest, whereNothingIsFlaggedNothingEnds)
{
    EXPECT_EQ(varnelctl.run({u"set"_qs, u"1004=64"_qs}).status, 0) << "--end was not given";
    const Outcome same = varnelctl.run({u"set"_qs, u"1004=64"_qs, u"--end"_qs, u"--json"_qs});
    EXPECT_EQ(same.status, 0);
    EXPECT_EQ(same.json().value(u"ended"_qs), QJsonArray());
    const Outcome global = varnelctl.run({u"set"_qs, u"1300=when scrolling"_qs, u"--end"_qs});
    EXPECT_EQ(global.status, 0);
    EXPECT_FALSE(global.out.contains("Ended")) << "of a general setting no application is told";
    EXPECT_TRUE(ended().isEmpty());
}

TEST_F(EndTest, aDryRunEndsNothing)
{
    const Outcome tried = varnelctl.run({u"set"_qs, u"1004=64"_qs, u"--end"_qs, u"--dry-run"_qs});
    EXPECT_EQ(tried.status, 0);
    EXPECT_TRUE(tried.out.contains("Would be ended: Dock, SystemUIServer\n"));
    EXPECT_TRUE(ended().isEmpty());
}

} // namespace
