#include "platform/linux/LinuxInstanceGuard.h"

#include "platform/linux/RuntimeFolder.h"
#include "support/ChildProcess.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>

#include <fcntl.h>
#include <sys/file.h>

using namespace varnel;
using namespace varnel::test;
using Outcome = InstanceGuard::Outcome;

namespace {

struct LinuxInstanceGuardTest : testing::Test {
    LinuxInstanceGuardTest() { qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8()); }

    static Outcome acquire(LinuxInstanceGuard &guard, const QString &folder)
    {
        return guard.acquire(folder, [] {});
    }

    QTemporaryDir runtime; // in the system's folder, for an address has little room
    TemporaryHome home;
    LogCapture log;
};

TEST_F(LinuxInstanceGuardTest, TheSecondStartRaisesTheFirst)
{
    int raised = 0;
    QEventLoop loop;
    LinuxInstanceGuard first;
    ASSERT_EQ(first.acquire(home.path(),
                            [&] {
                                ++raised;
                                loop.quit();
                            }),
              Outcome::First);
    LinuxInstanceGuard second;
    EXPECT_EQ(acquire(second, home.path()), Outcome::AlreadyRunning);
    EXPECT_EQ(raised, 0);
    loop.exec();
    EXPECT_EQ(raised, 1);
    LinuxInstanceGuard third;
    EXPECT_EQ(acquire(third, home.path()), Outcome::AlreadyRunning);
    loop.exec();
    EXPECT_EQ(raised, 2);
    EXPECT_EQ(log.texts(), QStringList());
}

TEST_F(LinuxInstanceGuardTest, ASecondProcessIsTheSecondAndRaisesTheFirst)
{
    QEventLoop loop;
    LinuxInstanceGuard first;
    ASSERT_EQ(first.acquire(home.path(), [&] { loop.quit(); }), Outcome::First);
    const pid_t child = inChild([&] {
        LinuxInstanceGuard second;
        return acquire(second, home.path()) == Outcome::AlreadyRunning;
    });
    loop.exec();
    EXPECT_TRUE(endOf(child));
}

TEST_F(LinuxInstanceGuardTest, OtherHomesAreNoneOfItsBusiness)
{
    const TemporaryHome other;
    LinuxInstanceGuard first;
    LinuxInstanceGuard second;
    EXPECT_EQ(acquire(first, home.path()), Outcome::First);
    EXPECT_EQ(acquire(second, other.path()), Outcome::First);
}

TEST_F(LinuxInstanceGuardTest, AHomeIsTheSameUnderAllItsNames)
{
    const QString alias = home.path() + u"-alias";
    linkTo(home.path(), alias);
    LinuxInstanceGuard first;
    ASSERT_EQ(acquire(first, home.path()), Outcome::First);
    for (const QString &name :
         {QString(home.path() + u'/'), alias, QString(home.path() + u"/Library/..")}) {
        LinuxInstanceGuard second;
        EXPECT_EQ(acquire(second, name), Outcome::AlreadyRunning);
    }
    ASSERT_TRUE(QFile::remove(alias));
}

TEST_F(LinuxInstanceGuardTest, WhenTheFirstIsGoneTheNextIsFirst)
{
    {
        LinuxInstanceGuard first;
        ASSERT_EQ(acquire(first, home.path()), Outcome::First);
    }
    EXPECT_EQ(entriesOf(runtime.path()).filter(QStringLiteral(".socket")), QStringList());
    LinuxInstanceGuard next;
    EXPECT_EQ(acquire(next, home.path()), Outcome::First);
}

TEST_F(LinuxInstanceGuardTest, WhatAKilledProcessLeftDoesNotStandInTheWay)
{
    ASSERT_TRUE(endOf(inChild([&] {
        LinuxInstanceGuard first;
        ::_exit(acquire(first, home.path()) == Outcome::First ? 0 : 1);
        return false;
    })));
    ASSERT_EQ(entriesOf(runtime.path()).filter(QStringLiteral(".socket")).size(), 1);
    QEventLoop loop;
    LinuxInstanceGuard next;
    ASSERT_EQ(next.acquire(home.path(), [&] { loop.quit(); }), Outcome::First);
    LinuxInstanceGuard second;
    EXPECT_EQ(acquire(second, home.path()), Outcome::AlreadyRunning);
    loop.exec();
}

TEST_F(LinuxInstanceGuardTest, OfManyProcessesThatStartAtOnceOneIsFirst)
{
    constexpr int processes = 8;
    std::array<int, 2> told {};
    std::array<int, 2> end {};
    ASSERT_EQ(::pipe2(told.data(), O_CLOEXEC), 0);
    ASSERT_EQ(::pipe2(end.data(), O_CLOEXEC), 0);
    std::array<pid_t, processes> children {};
    for (pid_t &child : children) {
        child = inChild([&] {
            ::close(end[1]);
            LinuxInstanceGuard guard(std::chrono::minutes(1));
            const char letter = acquire(guard, home.path()) == Outcome::First ? 'F' : 'A';
            // Everybody stays until all have told.
            char nothing = 0;
            return ::write(told[1], &letter, 1) == 1 && ::read(end[0], &nothing, 1) == 0;
        });
    }
    QByteArray letters;
    while (letters.size() < processes) {
        char letter = 0;
        ASSERT_EQ(::read(told[0], &letter, 1), 1);
        letters.append(letter);
    }
    ::close(end[1]);
    for (const pid_t child : children)
        EXPECT_TRUE(endOf(child));
    EXPECT_EQ(letters.count('F'), 1);
    EXPECT_EQ(letters.count('A'), processes - 1);
}

TEST_F(LinuxInstanceGuardTest, AFirstThatDoesNotListenIsToldAndStaysTheOnlyOne)
{
    {
        LinuxInstanceGuard first;
        ASSERT_EQ(acquire(first, home.path()), Outcome::First);
    }
    const QStringList locks = entriesOf(runtime.path()).filter(QStringLiteral(".lock"));
    ASSERT_EQ(locks.size(), 1);
    const FileDescriptor silent(
        ::open(qPrintable(QString(runtime.path() + u'/' + locks.first())), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(::flock(silent.get(), LOCK_EX | LOCK_NB), 0);
    LinuxInstanceGuard second(std::chrono::milliseconds(1));
    EXPECT_EQ(acquire(second, home.path()), Outcome::AlreadyRunning);
    const QStringList lines = log.texts(QStringLiteral("varnel.io"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines.first().contains(home.path()));
}

TEST_F(LinuxInstanceGuardTest, WithoutALockTheWindowOpensAllTheSame)
{
    {
        LinuxInstanceGuard named;
        ASSERT_EQ(acquire(named, home.path()), Outcome::First);
    }
    const QString lock = runtime.path() + u'/' + entriesOf(runtime.path()).first();
    ASSERT_TRUE(QFile::remove(lock) && QDir().mkdir(lock));
    LinuxInstanceGuard guard;
    EXPECT_EQ(acquire(guard, home.path()), Outcome::First);
    const QStringList lines = log.texts(QStringLiteral("varnel.io"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines.first().endsWith(qt_error_string(EISDIR)));
}

TEST_F(LinuxInstanceGuardTest, ALinkInTheLocksPlaceIsNotFollowed)
{
    {
        LinuxInstanceGuard named;
        ASSERT_EQ(acquire(named, home.path()), Outcome::First);
    }
    const QString lock = runtime.path() + u'/' + entriesOf(runtime.path()).first();
    const QString elsewhere = home.path() + u"/elsewhere";
    const QString nowhere = home.path() + u"/nowhere";
    writeRaw(elsewhere, "somebody's");
    const FileDescriptor held(::open(qPrintable(elsewhere), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(::flock(held.get(), LOCK_EX | LOCK_NB), 0);
    for (const QString &target : {elsewhere, nowhere}) {
        ASSERT_TRUE(QFile::remove(lock));
        linkTo(target, lock);
        LinuxInstanceGuard guard(std::chrono::milliseconds(1));
        EXPECT_EQ(acquire(guard, home.path()), Outcome::First) << qPrintable(target);
    }
    EXPECT_FALSE(QFile::exists(nowhere));
    const QStringList lines = log.texts(QStringLiteral("varnel.io"));
    ASSERT_EQ(lines.size(), 2);
    for (const QString &line : lines)
        EXPECT_TRUE(line.endsWith(qt_error_string(ELOOP))) << qPrintable(line);
}

TEST_F(LinuxInstanceGuardTest, TheSessionsFolderIsUsedOnlyIfItIsPrivate)
{
    const QByteArray own = "/tmp/varnel-" + QByteArray::number(::geteuid());
    EXPECT_EQ(runtimeFolder(), runtime.path().toUtf8());
    ASSERT_EQ(::chmod(qPrintable(runtime.path()), 0755), 0);
    EXPECT_EQ(runtimeFolder(), own);
    EXPECT_EQ(modeOf(QString::fromUtf8(own)), 0700U);
    ASSERT_EQ(::chmod(qPrintable(runtime.path()), 0700), 0);
    qputenv("XDG_RUNTIME_DIR", "relative");
    EXPECT_EQ(runtimeFolder(), own);
    qputenv("XDG_RUNTIME_DIR", QByteArray(runtime.path().toUtf8() + '/' + QByteArray(100, 'x')));
    EXPECT_EQ(runtimeFolder(), own);
    qunsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(runtimeFolder(), own);
}

} // namespace
