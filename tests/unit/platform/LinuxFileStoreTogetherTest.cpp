#include "platform/linux/TemporaryFile.h"
#include "StoreFixture.h"
#include "support/ChildProcess.h"

#include <QDir>

#include <array>

#include <sys/file.h>

using namespace varnel;
using namespace varnel::test;
using std::chrono::milliseconds;

namespace {

FileDescriptor openFolder(const QString &folder)
{
    return FileDescriptor(::open(qPrintable(folder), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

/// Several runs of the program, and other programs, at the same files.
struct LinuxFileStoreTogether : StoreFixture {
    /// Takes the folder's lock as another run would.
    FileDescriptor lockFolder() const
    {
        FileDescriptor lock = openFolder(folder);
        EXPECT_EQ(::flock(lock.get(), LOCK_EX | LOCK_NB), 0);
        return lock;
    }
    LinuxFileStore impatient {home.home(), milliseconds(1)};
};

TEST_F(LinuxFileStoreTogether, NoChangeOfSeveralProcessesIsLost)
{
    constexpr int processes = 4;
    constexpr int changes = 40;
    std::array<pid_t, processes> children {};
    for (pid_t &child : children) {
        child = inChild([&] {
            LinuxFileStore own(home.home(), std::chrono::minutes(2));
            bool done = true;
            for (int change = 0; change < changes; ++change) {
                done &= own.update(path,
                                   [](const std::optional<QByteArray> &old) {
                                       return std::optional<QByteArray>(old.value_or(QByteArray())
                                                                        + 'x');
                                   })
                            .ok();
            }
            return done && own.changedWithoutLock().isEmpty();
        });
    }
    for (const pid_t child : children)
        EXPECT_TRUE(endOf(child));
    EXPECT_EQ(readRaw(path), QByteArray(processes * changes, 'x'));
    EXPECT_EQ(entriesOf(folder), QStringList {QStringLiteral("a.plist")});
}

TEST_F(LinuxFileStoreTogether, ALockThatIsNotGivenUpIsDoneWithoutAndTold)
{
    const FileDescriptor lock = lockFolder();
    ASSERT_TRUE(impatient.update(path, become("new")).ok());
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_EQ(impatient.changedWithoutLock(), QStringList {path});
    EXPECT_TRUE(loggedOnce(path));
}

TEST_F(LinuxFileStoreTogether, ALockThatIsNotNeededInTheEndIsNotTold)
{
    writeRaw(path, "same");
    const FileDescriptor lock = lockFolder();
    ASSERT_TRUE(impatient.update(path, become("same")).ok());
    EXPECT_EQ(impatient.changedWithoutLock(), QStringList());
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxFileStoreTogether, TheLockIsHeldDuringTheChangeAndGivenUpAfterIt)
{
    bool free = true;
    ASSERT_TRUE(store
                    .update(path,
                            [&](const std::optional<QByteArray> &) {
                                const FileDescriptor other = openFolder(folder);
                                free = ::flock(other.get(), LOCK_EX | LOCK_NB) == 0;
                                return std::optional(QByteArray("new"));
                            })
                    .ok());
    EXPECT_FALSE(free);
    EXPECT_EQ(store.changedWithoutLock(), QStringList());
    lockFolder();
}

TEST_F(LinuxFileStoreTogether, ReadingWaitsForNobody)
{
    writeRaw(path, "old");
    const FileDescriptor lock = lockFolder();
    LinuxFileStore patient(home.home(), std::chrono::hours(1));
    EXPECT_EQ(patient.read(path).value(), "old");
}

TEST_F(LinuxFileStoreTogether, WhatAnotherProgramWritesMeanwhileStands)
{
    writeRaw(path, "old");
    const auto answer = [&](const std::optional<QByteArray> &) {
        writeRaw(path, "theirs");
        return std::optional(QByteArray("ours"));
    };
    const Result<void> result = store.update(path, answer);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, ErrorCode::Failed);
    EXPECT_EQ(readRaw(path), "theirs");
    EXPECT_EQ(entriesOf(folder).size(), 1);
    EXPECT_TRUE(loggedOnce(path));
}

TEST_F(LinuxFileStoreTogether, WhatAnotherProgramPutsInTheFilesPlaceMeanwhileStands)
{
    writeRaw(path, "old");
    const auto answer = [&](const std::optional<QByteArray> &) {
        const QString other = home.preference(QStringLiteral("other"));
        writeRaw(other, "new");
        EXPECT_EQ(::rename(qPrintable(other), qPrintable(path)), 0);
        return std::optional(QByteArray("ours"));
    };
    EXPECT_FALSE(store.update(path, answer).ok());
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_EQ(entriesOf(folder).size(), 1);
}

TEST_F(LinuxFileStoreTogether, AFileThatAnotherProgramMakesMeanwhileStands)
{
    const auto answer = [&](const std::optional<QByteArray> &) {
        writeRaw(path, "theirs");
        return std::optional(QByteArray("ours"));
    };
    EXPECT_FALSE(store.update(path, answer).ok());
    EXPECT_EQ(readRaw(path), "theirs");
    EXPECT_EQ(entriesOf(folder).size(), 1);
}

TEST_F(LinuxFileStoreTogether, AFileThatAnotherProgramRemovesMeanwhileStaysAway)
{
    writeRaw(path, "old");
    const auto answer = [&](const std::optional<QByteArray> &) {
        EXPECT_EQ(::unlink(qPrintable(path)), 0);
        return std::optional(QByteArray("ours"));
    };
    EXPECT_FALSE(store.update(path, answer).ok());
    EXPECT_EQ(entriesOf(folder), QStringList());
}

/// What dead runs leave behind.
struct LinuxFileStoreLeftovers : LinuxFileStoreTogether {
    /// A process that dies between making a temporary file and putting it in its place.
    void leaveOneBehind()
    {
        ASSERT_TRUE(endOf(inChild([&] {
            const FileDescriptor there = openFolder(folder);
            TemporaryFile file(there, "a.plist");
            const bool made = file.create() == 0 && file.write("half") == 0;
            // Past every destructor, as a killed process would.
            ::_exit(made ? 0 : 1);
            return false;
        })));
        ASSERT_EQ(entriesOf(folder).size(), 1);
        ASSERT_TRUE(entriesOf(folder).first().startsWith(QStringLiteral(".a.plist.varnel-")));
    }
};

TEST_F(LinuxFileStoreLeftovers, TheNextChangeInTheFolderRemovesThem)
{
    leaveOneBehind();
    ASSERT_TRUE(store.update(home.preference(QStringLiteral("b.plist")), become("new")).ok());
    EXPECT_EQ(entriesOf(folder), QStringList {QStringLiteral("b.plist")});
}

TEST_F(LinuxFileStoreLeftovers, TheNextStartRemovesThem)
{
    leaveOneBehind();
    store.sweep(folder);
    EXPECT_EQ(entriesOf(folder), QStringList());
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxFileStoreLeftovers, AStartSweepsNoFolderThatIsMissingOrBusy)
{
    leaveOneBehind();
    store.sweep(folder + u"/No");
    store.sweep(home.path());
    const FileDescriptor lock = lockFolder();
    store.sweep(folder);
    EXPECT_EQ(entriesOf(folder).size(), 1);
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxFileStoreLeftovers, ATemporaryFileOfALivingRunStays)
{
    const FileDescriptor there = openFolder(folder);
    TemporaryFile file(there, "a.plist");
    ASSERT_EQ(file.create(), 0);
    ASSERT_EQ(entriesOf(folder).size(), 1);
    store.sweep(folder);
    EXPECT_EQ(entriesOf(folder).size(), 1);
}

TEST_F(LinuxFileStoreLeftovers, OnlyFilesWithNamesOfOurOwnAreRemoved)
{
    const QStringList others {
        QStringLiteral(".a.plist.varnel-12-0123456789abcde"), // a digit is missing
        QStringLiteral(".a.plist.varnel-12-0123456789abcdefg"),
        QStringLiteral(".a.plist.varnel-x-0123456789abcdef"),
        QStringLiteral("a.plist.varnel-12-0123456789abcdef"),
        QStringLiteral(".varnel-12-0123456789abcdef"),
        QStringLiteral(".a.plist.XyZ123"),
    };
    for (const QString &name : others)
        writeRaw(folder + u'/' + name, "theirs");
    const QString asFolder = folder + QStringLiteral("/.f.varnel-12-0123456789abcdef");
    const QString asLink = folder + QStringLiteral("/.l.varnel-12-0123456789abcdef");
    const QString asFifo = folder + QStringLiteral("/.p.varnel-12-0123456789abcdef");
    ASSERT_TRUE(QDir().mkdir(asFolder));
    linkTo(QStringLiteral("a.plist"), asLink);
    ASSERT_EQ(::mkfifo(qPrintable(asFifo), 0600), 0);
    writeRaw(folder + QStringLiteral("/.ours.varnel-12-0123456789abcdef"), "half");
    const qsizetype before = entriesOf(folder).size();
    store.sweep(folder);
    EXPECT_EQ(entriesOf(folder).size(), before - 1);
    EXPECT_FALSE(entriesOf(folder).contains(QStringLiteral(".ours.varnel-12-0123456789abcdef")));
}

} // namespace
