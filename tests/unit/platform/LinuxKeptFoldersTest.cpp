#include "KeptFixture.h"
#include "platform/linux/TemporaryFile.h"
#include "support/ChildProcess.h"
#include "support/FailingKeptFolders.h"

#include <QRegularExpression>

#include <array>

#include <sys/file.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

struct LinuxKeptFoldersTest : KeptFixture {
    LinuxFileStore otherStore {home.home()};
    LinuxKeptFolders otherRun {home.home(), otherStore.turns()};

    /// Leaves what a run leaves that is killed while it writes there.
    void leaveHalfWritten(const QString &run)
    {
        ASSERT_TRUE(endOf(inChild([&] {
            const FileDescriptor folder(::open(qPrintable(run), O_RDONLY | O_DIRECTORY));
            TemporaryFile file(folder, "index");
            ::_exit(file.create() == 0 && file.write("half") == 0 ? 0 : 1);
            return false;
        })));
        ASSERT_EQ(entriesOf(run).size(), 1);
    }
};

TEST_F(LinuxKeptFoldersTest, aRunsFolderIsPrivateHasANameOfItsOwnAndIsHeld)
{
    const QString run = make();
    const QRegularExpression form(u"\\A"_s + QRegularExpression::escape(parent)
                                  + u"quillet7-[0-9a-f]{16}/\\z"_s);
    EXPECT_TRUE(form.match(run).hasMatch()) << qPrintable(run);
    EXPECT_EQ(modeOf(run.chopped(1)), 0700U);
    EXPECT_TRUE(otherRun.isInUse(run).value());
    EXPECT_FALSE(kept.isInUse(run).value()) << "a lock of one's own does not count";
    EXPECT_NE(make(), run);
    EXPECT_EQ(kept.list(parent).value().size(), 2);
}

TEST_F(LinuxKeptFoldersTest, aFolderIsMadeNowhereButInOneThatIsThere)
{
    EXPECT_EQ(codeOf(kept.make(parent + u"No/", u"quillet7"_s)), ErrorCode::NotFound);
    for (const QString &name : {u""_s, u"a/b"_s, u".."_s})
        EXPECT_EQ(codeOf(kept.make(parent, name)), ErrorCode::Failed) << qPrintable(name);
    EXPECT_EQ(entriesOf(parent), QStringList());
}

TEST_F(LinuxKeptFoldersTest, aReleasedFolderIsFreeForAnotherRun)
{
    const QString run = make();
    EXPECT_FALSE(otherRun.hold(run).value());
    kept.release(run.chopped(1));
    EXPECT_FALSE(otherRun.isInUse(run).value());
    EXPECT_TRUE(otherRun.hold(run).value());
    EXPECT_TRUE(otherRun.hold(run).value()) << "holding twice is holding";
    EXPECT_FALSE(kept.hold(run).value());
    EXPECT_TRUE(kept.isInUse(run).value());
}

TEST_F(LinuxKeptFoldersTest, theEndOfTheObjectReleases)
{
    QString run;
    {
        LinuxKeptFolders shortLived(home.home(), otherStore.turns());
        run = shortLived.make(parent, u"quillet7"_s).value();
        EXPECT_TRUE(kept.isInUse(run).value());
    }
    EXPECT_FALSE(kept.isInUse(run).value());
}

TEST_F(LinuxKeptFoldersTest, anotherProcessHoldsItsFolderAsLongAsItLives)
{
    std::array<int, 2> ready {};
    std::array<int, 2> go {};
    ASSERT_EQ(::pipe(ready.data()), 0);
    ASSERT_EQ(::pipe(go.data()), 0);
    const QString run = make();
    kept.release(run);
    const pid_t child = inChild([&] {
        char byte = 0;
        const bool held = otherRun.hold(run).value();
        // Past every destructor, as a killed process would.
        ::_exit(held && ::write(ready[1], &byte, 1) == 1 && ::read(go[0], &byte, 1) == 1 ? 0 : 1);
        return false;
    });
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    EXPECT_TRUE(kept.isInUse(run).value());
    EXPECT_FALSE(kept.hold(run).value());
    EXPECT_FALSE(kept.discard(run).value());
    EXPECT_TRUE(QFileInfo(run).isDir());
    ASSERT_EQ(::write(go[1], &byte, 1), 1);
    EXPECT_TRUE(endOf(child));
    EXPECT_FALSE(kept.isInUse(run).value());
    EXPECT_TRUE(kept.discard(run).value());
    for (const int end : {ready[0], ready[1], go[0], go[1]})
        ::close(end);
}

TEST_F(LinuxKeptFoldersTest, twoThatAskDoNotTakeEachOtherForAHolder)
{
    const QString run = make();
    kept.release(run);
    const FileDescriptor asking(::open(qPrintable(run), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::flock(asking.get(), LOCK_SH | LOCK_NB), 0);
    EXPECT_FALSE(kept.isInUse(run).value());
}

TEST_F(LinuxKeptFoldersTest, onlyRealFoldersAreListed)
{
    const QString run = make();
    writeRaw(parent + u"file", "x");
    linkTo(run, parent + u"link");
    ASSERT_EQ(::mkfifo(qPrintable(QString(parent + u"fifo")), 0600), 0);
    EXPECT_EQ(kept.list(parent).value(), QStringList {QFileInfo(run.chopped(1)).fileName()});
    EXPECT_EQ(codeOf(kept.list(parent + u"No")), ErrorCode::NotFound);
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxKeptFoldersTest, aLinkIsNoFolderOfARun)
{
    const TemporaryHome elsewhere;
    writeRaw(elsewhere.path() + u"/1", "theirs");
    writeRaw(path, "old");
    const QString run = parent + u"quillet7-0123456789abcdef/";
    linkTo(elsewhere.path(), run.chopped(1));
    const auto before = snapshot(elsewhere.path());
    EXPECT_EQ(codeOf(kept.hold(run)), ErrorCode::Failed);
    EXPECT_EQ(codeOf(kept.isInUse(run)), ErrorCode::Failed);
    EXPECT_EQ(codeOf(kept.keep(path, run, u"2"_s)), ErrorCode::Failed);
    EXPECT_EQ(codeOf(kept.read(run, u"1"_s, 100)), ErrorCode::Failed);
    EXPECT_EQ(codeOf(kept.write(run, u"index"_s, "x")), ErrorCode::Failed);
    EXPECT_EQ(codeOf(putBack(run)), ErrorCode::Failed);
    EXPECT_EQ(codeOf(kept.removeFolderIfEmpty(run)), ErrorCode::Failed);
    EXPECT_EQ(logged().size(), 7);
    EXPECT_EQ(codeOf(kept.discard(run)), ErrorCode::Failed);
    EXPECT_TRUE(kept.sweep(parent).ok());
    EXPECT_EQ(snapshot(elsewhere.path()), before);
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_TRUE(QFileInfo(run.chopped(1)).isSymLink());
}

TEST_F(LinuxKeptFoldersTest, inOnesOwnHomeTheFolderOfAllRunsMayBeALink)
{
    const TemporaryHome elsewhere;
    ASSERT_TRUE(QDir().rmdir(parent));
    linkTo(elsewhere.path(), parent.chopped(1));
    writeRaw(path, "old");
    const QString run = make();
    EXPECT_TRUE(keep(run));
    EXPECT_EQ(readRaw(elsewhere.path() + u'/' + QFileInfo(run.chopped(1)).fileName() + u"/1"),
              "old");
}

TEST_F(LinuxKeptFoldersTest, anotherFolderOfAHeldOnesNameIsRefused)
{
    writeRaw(path, "old");
    const QString run = make();
    ASSERT_TRUE(QDir().rename(run, parent + u"away"));
    ASSERT_TRUE(QDir().mkdir(run));
    EXPECT_EQ(codeOf(kept.keep(path, run, u"1"_s)), ErrorCode::Failed);
    EXPECT_EQ(codeOf(kept.write(run, u"index"_s, "x")), ErrorCode::Failed);
    EXPECT_EQ(codeOf(kept.discard(run)), ErrorCode::Failed);
    EXPECT_EQ(entriesOf(run), QStringList());
    EXPECT_EQ(entriesOf(parent + u"away"), QStringList());
}

TEST_F(LinuxKeptFoldersTest, discardingRemovesAFolderWithEveryFileInIt)
{
    const QString run = make();
    writeRaw(path, "old");
    writeRaw(home.path() + u"/other", "theirs");
    ASSERT_TRUE(keep(run));
    ASSERT_TRUE(kept.write(run, u"index"_s, "{}").ok());
    writeRaw(run + u".index.varnel-1-0123456789abcdef", "half");
    linkTo(home.path() + u"/other", run + u"link");
    ASSERT_EQ(::mkfifo(qPrintable(QString(run + u"fifo")), 0600), 0);
    EXPECT_TRUE(kept.discard(run).value());
    EXPECT_EQ(entriesOf(parent), QStringList());
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(readRaw(home.path() + u"/other"), "theirs");
    EXPECT_TRUE(kept.discard(run).value()) << "what is gone is discarded";
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxKeptFoldersTest, aFolderWithAFolderInItIsLeftAsItIs)
{
    const QString run = make();
    ASSERT_TRUE(kept.write(run, u"index"_s, "{}").ok());
    ASSERT_TRUE(QDir().mkdir(run + u"inside"));
    EXPECT_EQ(codeOf(kept.discard(run)), ErrorCode::Failed);
    EXPECT_TRUE(loggedOnce(run));
    EXPECT_EQ(entriesOf(run), (QStringList {u"index"_s, u"inside"_s}));
    EXPECT_TRUE(otherRun.isInUse(run).value()) << "it is held as before";
}

TEST_F(LinuxKeptFoldersTest, anotherRunsFolderIsNotDiscarded)
{
    const QString run = make();
    ASSERT_TRUE(kept.write(run, u"index"_s, "{}").ok());
    EXPECT_FALSE(otherRun.discard(run).value());
    EXPECT_EQ(entriesOf(run), QStringList {u"index"_s});
    kept.release(run);
    EXPECT_TRUE(otherRun.discard(run).value());
    EXPECT_EQ(entriesOf(parent), QStringList());
}

TEST_F(LinuxKeptFoldersTest, onlyAnEmptyFolderIsRemoved)
{
    const QString run = make();
    writeRaw(run + u"file", "x");
    linkTo(run, parent + u"link");
    EXPECT_FALSE(kept.removeFolderIfEmpty(run).value());
    EXPECT_EQ(codeOf(kept.removeFolderIfEmpty(parent + u"link")), ErrorCode::Failed);
    EXPECT_EQ(codeOf(kept.removeFolderIfEmpty(run + u"file")), ErrorCode::Failed);
    EXPECT_EQ(readRaw(run + u"file"), "x");
    ASSERT_TRUE(QFile::remove(run + u"file"));
    EXPECT_TRUE(kept.removeFolderIfEmpty(run).value());
    EXPECT_TRUE(kept.removeFolderIfEmpty(run).value()) << "it is gone";
    EXPECT_EQ(entriesOf(parent), QStringList {u"link"_s});
}

TEST_F(LinuxKeptFoldersTest, whatADeadRunLeftHalfWrittenIsSwept)
{
    const QString run = make();
    leaveHalfWritten(run);
    const QString busy = otherRun.make(parent, u"quillet8"_s).value();
    leaveHalfWritten(busy);
    kept.release(run);
    EXPECT_EQ(codeOf(kept.sweep(parent + u"No")), ErrorCode::NotFound);
    EXPECT_EQ(kept.sweep(parent).value(), kept.list(parent).value());
    EXPECT_EQ(entriesOf(run), QStringList());
    EXPECT_EQ(entriesOf(busy).size(), 1) << "its run lives";
    otherRun.release(busy);
    EXPECT_TRUE(kept.hold(busy).value());
    EXPECT_EQ(entriesOf(busy), QStringList());
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxKeptFoldersTest, aChosenOperationCanBeMadeToFailAndTheOthersGoThrough)
{
    writeRaw(path, "old");
    FailingKeptFolders failing(kept);
    failing.failOperation(2, {ErrorCode::TooBig, u"no room"_s});
    const QString run = failing.make(parent, u"quillet7"_s).value();
    EXPECT_EQ(codeOf(failing.keep(path, run, u"1"_s)), ErrorCode::TooBig);
    EXPECT_TRUE(failing.keep(path, run, u"1"_s).ok());
    EXPECT_EQ(failing.calls,
              (QStringList {u"make " + parent + u"quillet7", u"keep " + path, u"keep " + path}));
}

/// The folders of somebody else's home, where root works without being the owner.
struct LinuxKeptFoldersForeignHome : KeptFixture {
    QString outside = home.path() + u"-outside";

    void SetUp() override
    {
        VARNEL_NEEDS_ROOT();
        ASSERT_TRUE(QDir().mkpath(outside + u"/quillet7-0123456789abcdef"));
        writeRaw(outside + u"/quillet7-0123456789abcdef/1", "secret");
    }
    void TearDown() override { QDir(outside).removeRecursively(); }
};

TEST_F(LinuxKeptFoldersForeignHome, nothingIsDoneThroughALinkOutOfTheHome)
{
    ASSERT_TRUE(QDir().rmdir(parent));
    linkTo(outside, parent.chopped(1));
    writeRaw(path, "old");
    giveAll(home.path(), stranger, stranger);
    const auto before = snapshot(outside);
    const QString run = parent + u"quillet7-0123456789abcdef/";
    EXPECT_EQ(codeOf(kept.make(parent, u"quillet7"_s)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.hold(run)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.isInUse(run)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.list(parent)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.keep(path, run, u"2"_s)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.read(run, u"1"_s, 100)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.write(run, u"index"_s, "x")), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(putBack(run)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.removeFolderIfEmpty(run)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.discard(run)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.sweep(parent)), ErrorCode::NotPermitted);
    EXPECT_EQ(snapshot(outside), before);
    EXPECT_EQ(readRaw(path), "old");
}

TEST_F(LinuxKeptFoldersForeignHome, aPreferenceFileThatLeadsOutIsNeitherKeptNorPutBackNorTaken)
{
    const QString secret = outside + u"/quillet7-0123456789abcdef/1";
    linkTo(secret, path);
    const QString run = make();
    ASSERT_TRUE(kept.write(run, u"1"_s, "kept").ok());
    giveAll(home.path(), stranger, stranger);
    EXPECT_EQ(codeOf(kept.keep(path, run, u"2"_s)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(putBack(run)), ErrorCode::NotPermitted);
    EXPECT_EQ(codeOf(kept.takeAway(path, any)), ErrorCode::NotPermitted);
    EXPECT_EQ(readRaw(secret), "secret");
    EXPECT_EQ(entriesOf(run), QStringList {u"1"_s});
}

} // namespace
