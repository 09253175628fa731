#include "shell/TerminalCommand.h"

#include "support/FakeCommandRunner.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

std::shared_ptr<const TaskData> task(const QString &path)
{
    auto data = std::make_shared<TaskData>();
    data->setLaunchPath(path);
    data->setArguments({QStringLiteral("-a"), QStringLiteral("b c")});
    return data;
}

Result<QString> failToStart(const FakeCommandRunner::Call &)
{
    return Error {ErrorCode::Failed, QStringLiteral("does not start")};
}

struct TerminalCommandTest : testing::Test {
    FakeCommandRunner runner;
    LogCapture log;
    std::shared_ptr<const TaskData> data = task(QStringLiteral("/bin/one"));
};

} // namespace

TEST_F(TerminalCommandTest, AFreshOneHasNoTaskAndNoRecord)
{
    const TerminalCommand command(runner);
    EXPECT_FALSE(command.task());
    EXPECT_EQ(command.taskCount(), 0);
}

TEST_F(TerminalCommandTest, ItRunsTheRecordAsGivenAndDropsItsTaskAtTheEnd)
{
    TerminalCommand command(runner);
    bool set = false;
    runner.answer = [&](const FakeCommandRunner::Call &) {
        set = command.task().has_value();
        return Result<QString>(QStringLiteral("output nobody reads"));
    };
    command.setTaskData(data);
    EXPECT_EQ(command.taskCount(), 1);
    EXPECT_TRUE(command.executeCommand());
    const QList<FakeCommandRunner::Call> expected {
        {QStringLiteral("/bin/one"), {QStringLiteral("-a"), QStringLiteral("b c")}}};
    EXPECT_EQ(runner.calls, expected);
    EXPECT_TRUE(set) << "the task is set while the child runs";
    EXPECT_FALSE(command.task());
}

TEST_F(TerminalCommandTest, ItIsRefusedWhileATaskIsSetAndNoRecordWasEverGiven)
{
    TerminalCommand command(runner);
    runner.answer = failToStart;
    EXPECT_FALSE(command.executeCommand());
    ASSERT_TRUE(command.task());
    EXPECT_FALSE(command.executeCommand());
    EXPECT_EQ(runner.calls.size(), 1) << "the second was refused before anything was started";
}

TEST_F(TerminalCommandTest, ATaskThatIsSetDoesNotRefuseOnceARecordWasGiven)
{
    TerminalCommand command(runner);
    command.setTaskData(data);
    runner.answer = failToStart;
    EXPECT_FALSE(command.executeCommand());
    ASSERT_TRUE(command.task());
    runner.answer = [](const FakeCommandRunner::Call &) { return Result<QString>(QString()); };
    EXPECT_TRUE(command.executeCommand());
    EXPECT_EQ(runner.calls.size(), 2);
}

TEST_F(TerminalCommandTest, EveryLiveCommandDropsItsTaskAtTheEndOfAnyChild)
{
    TerminalCommand waiting(runner);
    waiting.setTaskData(data);
    runner.answer = failToStart;
    EXPECT_FALSE(waiting.executeCommand());
    ASSERT_TRUE(waiting.task());

    TerminalCommand other(runner);
    const auto otherData = task(QStringLiteral("/bin/two"));
    other.setTaskData(otherData);
    runner.answer = [](const FakeCommandRunner::Call &) { return Result<QString>(QString()); };
    EXPECT_TRUE(other.executeCommand());
    EXPECT_FALSE(waiting.task());
}

TEST_F(TerminalCommandTest, ACommandThatRunsAChildOfItsOwnLosesItsTaskToo)
{
    TerminalCommand outer(runner);
    TerminalCommand inner(runner);
    outer.setTaskData(data);
    inner.setTaskData(data);
    bool outerKept = true;
    bool nested = false;
    runner.answer = [&](const FakeCommandRunner::Call &) {
        if (!std::exchange(nested, true)) {
            EXPECT_TRUE(inner.executeCommand());
            outerKept = outer.task().has_value();
        }
        return Result<QString>(QString());
    };
    EXPECT_TRUE(outer.executeCommand());
    EXPECT_FALSE(outerKept);
}

TEST_F(TerminalCommandTest, AProgramThatCannotBeStartedIsLogged)
{
    TerminalCommand command(runner);
    command.setTaskData(data);
    runner.answer = failToStart;
    EXPECT_FALSE(command.executeCommand());
    EXPECT_EQ(log.texts(QStringLiteral("varnel.io")),
              QStringList(QStringLiteral("does not start")));
}

TEST_F(TerminalCommandTest, ACommandThatIsGoneHearsNothing)
{
    {
        const TerminalCommand gone(runner);
    }
    TerminalCommand::postChildEnded();
}
