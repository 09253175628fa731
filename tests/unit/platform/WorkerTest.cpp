#include "platform/linux/Worker.h"

#include <QByteArrayList>
#include <QDir>

#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace testing;
using namespace varnel;

namespace {

struct WorkerTest : Test {
    Result<void> run(const Worker::Work &work)
    {
        return Worker(work, limits).follow([this](const QByteArray &line) { heard.append(line); });
    }
    [[nodiscard]] QString whyNot(const Worker::Work &work)
    {
        const Result<void> done = run(work);
        return done ? u"it came to its end"_s : done.error().text;
    }

    Worker::Limits limits;
    QByteArrayList heard;
};

TEST_F(WorkerTest, eachLineArrivesWholeAndInItsOrder)
{
    const QByteArray longLine(300'000, 'x');
    EXPECT_TRUE(run([&](const Worker::Tell &tell) {
        tell("one");
        tell({});
        tell(longLine);
        tell("last");
    }));
    EXPECT_THAT(heard, ElementsAre("one", "", longLine, "last"));
}

TEST_F(WorkerTest, theWorkIsDoneInAnotherProcessWhoseStreamsLeadNowhere)
{
    EXPECT_TRUE(run([](const Worker::Tell &tell) {
        tell(QByteArray::number(::getpid()));
        tell(QByteArray::number(::getsid(0)));
        for (const int stream : {0, 1, 2}) {
            const QByteArray name = "/proc/self/fd/" + QByteArray::number(stream);
            std::array<char, 64> target {};
            const ssize_t size = ::readlink(name.constData(), target.data(), target.size());
            tell(QByteArray(target.data(), size));
        }
    }));
    ASSERT_EQ(heard.size(), 5);
    EXPECT_NE(heard[0].toInt(), ::getpid());
    EXPECT_EQ(heard[0], heard[1]) << "a session of its own";
    EXPECT_THAT(heard.mid(2), Each(QByteArray("/dev/null")));
}

TEST_F(WorkerTest, severalWorkSideBySideAndHearNothingOfEachOther)
{
    const auto files = [](const Worker::Tell &tell) {
        for (const QString &name : QDir(u"/proc/self/fd"_s).entryList(QDir::Files))
            tell(name.toUtf8());
    };
    Worker first(files);
    Worker second(files);
    QByteArrayList heardOfFirst;
    EXPECT_TRUE(second.follow([this](const QByteArray &line) { heard.append(line); }));
    EXPECT_TRUE(first.follow([&](const QByteArray &line) { heardOfFirst.append(line); }));
    EXPECT_EQ(heard, heardOfFirst);
    EXPECT_THAT(heard, IsSubsetOf({"0", "1", "2", "3", "4"})) << "the last lists them";
}

TEST_F(WorkerTest, oneThatNobodyFollowsIsEnded)
{
    const pid_t process = [] {
        const Worker worker([](const Worker::Tell &) {
            for (;;)
                ::pause();
        });
        return worker.id();
    }();
    EXPECT_EQ(::kill(process, 0), -1) << "it is gone";
}

TEST_F(WorkerTest, oneThatDiesIsTold)
{
    EXPECT_EQ(whyNot([](const Worker::Tell &tell) {
                  tell("begun");
                  ::raise(SIGKILL);
              }),
              u"the work was ended by signal 9"_s);
    EXPECT_THAT(heard, ElementsAre("begun"));
}

TEST_F(WorkerTest, oneThatEndsOnItsOwnIsTold)
{
    EXPECT_EQ(whyNot([](const Worker::Tell &) { ::_exit(7); }),
              u"the work ended before its time"_s);
}

TEST_F(WorkerTest, oneThatSomebodyStopsIsEnded)
{
    EXPECT_EQ(whyNot([](const Worker::Tell &tell) {
                  tell(QByteArray::number(::getpid()));
                  ::raise(SIGSTOP);
              }),
              u"somebody stopped the work, so it was ended"_s);
    ASSERT_EQ(heard.size(), 1);
    EXPECT_EQ(::kill(heard[0].toInt(), 0), -1) << "it is gone";
}

TEST_F(WorkerTest, oneThatNeitherSpeaksNorWorksIsEnded)
{
    limits.silence = std::chrono::milliseconds(1);
    EXPECT_EQ(whyNot([](const Worker::Tell &) {
                  for (;;)
                      ::pause();
              }),
              u"nothing was heard of the work for 0 s, so it was ended"_s);
}

TEST_F(WorkerTest, oneThatSaysWithoutEndIsEnded)
{
    limits.bytes = 1'000'000;
    EXPECT_EQ(whyNot([](const Worker::Tell &tell) {
                  for (;;)
                      tell(QByteArray(10'000, 'x'));
              }),
              u"its answer is too long"_s);
}

} // namespace
