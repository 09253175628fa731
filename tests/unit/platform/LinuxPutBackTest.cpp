#include "KeptFixture.h"
#include "support/ChildProcess.h"

#include <array>

#include <sys/file.h>
#include <sys/xattr.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

using PutBack = KeptFolders::PutBack;

/// A preference file that is kept and then changed, as a save does.
struct LinuxPutBackTest : KeptFixture {
    QString run = make();

    void SetUp() override { save(); }
    void save()
    {
        writeRaw(path, "old", 0640);
        attributes = setAttribute(path, "user.kept", "yes");
        makeOld(path);
        original = statusOf(path);
        ASSERT_TRUE(keep(run));
        ASSERT_TRUE(update("new"));
    }
    /// Neither the present file nor the kept one has moved.
    void expectNothingMoved(const QByteArray &now = "new")
    {
        EXPECT_EQ(readRaw(path), now);
        EXPECT_EQ(statusOf(run + u"1").st_ino, original.st_ino);
        EXPECT_EQ(readRaw(run + u"1"), "old");
        EXPECT_EQ(entriesOf(folder), QStringList {u"a.plist"_s});
        EXPECT_EQ(entriesOf(run), QStringList {u"1"_s});
    }
    /// While the present file is looked at, somebody does something.
    Result<PutBack> putBackWhile(const std::function<void()> &somebody)
    {
        return kept.putBack(run, u"1"_s, path, yes, [&](const std::optional<QByteArray> &) {
            somebody();
            return true;
        });
    }

    struct stat original { };
    bool attributes = false;
};

TEST_F(LinuxPutBackTest, theVeryFileStandsThereAgainWithItsTimes)
{
    const auto right = [](const QByteArray &bytes) { return bytes == "old"; };
    const auto accept = [](const std::optional<QByteArray> &now) { return now == "new"; };
    EXPECT_EQ(kept.putBack(run, u"1"_s, path, right, accept).value(), PutBack::Done);
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(statusOf(path).st_ino, original.st_ino);
    EXPECT_EQ(statusOf(path).st_nlink, 1U);
    EXPECT_EQ(modeOf(path), 0640U);
    if (attributes) {
        EXPECT_EQ(attributeOf(path, "user.kept"), "yes");
    }
    EXPECT_EQ(entriesOf(run), QStringList());
    EXPECT_EQ(entriesOf(folder), QStringList {u"a.plist"_s});
    EXPECT_EQ(logged(), QStringList());
    EXPECT_EQ(codeOf(putBack(run)), ErrorCode::NotFound);
}

TEST_F(LinuxPutBackTest, itsTimesAreThoseFromBeforeTheSave)
{
    ASSERT_EQ(putBack(run).value(), PutBack::Done);
    EXPECT_TRUE(isOld(path));
}

TEST_F(LinuxPutBackTest, whereNothingStandsAnyMoreItIsPutBackToo)
{
    ASSERT_TRUE(QFile::remove(path));
    const auto accept = [](const std::optional<QByteArray> &now) { return !now.has_value(); };
    EXPECT_EQ(kept.putBack(run, u"1"_s, path, yes, accept).value(), PutBack::Done);
    EXPECT_EQ(statusOf(path).st_ino, original.st_ino);
    EXPECT_TRUE(isOld(path));
}

TEST_F(LinuxPutBackTest, intoAMissingFolderItCanNotGoBack)
{
    ASSERT_TRUE(QDir(folder).removeRecursively());
    EXPECT_EQ(codeOf(putBack(run)), ErrorCode::NotFound);
    EXPECT_EQ(readRaw(run + u"1"), "old");
}

TEST_F(LinuxPutBackTest, whoeverSaysNoHasNothingChanged)
{
    const auto no = [](const auto &) { return false; };
    EXPECT_EQ(kept.putBack(run, u"1"_s, path, yes, no).value(), PutBack::Declined);
    EXPECT_TRUE(isOld(run + u"1"));
    expectNothingMoved();
    bool asked = false;
    const auto accept = [&](const std::optional<QByteArray> &) { return asked = true; };
    EXPECT_EQ(kept.putBack(run, u"1"_s, path, no, accept).value(), PutBack::WrongKept);
    EXPECT_FALSE(asked);
    expectNothingMoved();
}

TEST_F(LinuxPutBackTest, whatSomebodyChangedOfTheAttributesStays)
{
    if (!attributes || !setAttribute(path, accessList, accessControlList(6, 6)))
        GTEST_SKIP() << "needs a file system with attributes and access control lists";
    ASSERT_TRUE(setAttribute(path, "user.kept", "changed"));
    ASSERT_TRUE(setAttribute(path, "user.added", "too"));
    ASSERT_TRUE(setAttribute(run + u"1", "user.removed", "since"));
    ASSERT_EQ(::chmod(qPrintable(path), 01660), 0);
    ASSERT_EQ(putBack(run).value(), PutBack::Done);
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(statusOf(path).st_ino, original.st_ino);
    EXPECT_EQ(attributeOf(path, "user.kept"), "changed");
    EXPECT_EQ(attributeOf(path, "user.added"), "too");
    EXPECT_EQ(attributeOf(path, "user.removed"), std::nullopt);
    EXPECT_EQ(attributeOf(path, accessList), accessControlList(6, 6));
    EXPECT_EQ(modeOf(path), 01660U);
}

TEST_F(LinuxPutBackTest, anAccessListThatSomebodyRemovedStaysAway)
{
    if (!setAttribute(run + u"1", accessList, accessControlList(7, 7)))
        GTEST_SKIP() << "needs a file system with access control lists";
    ASSERT_EQ(putBack(run).value(), PutBack::Done);
    EXPECT_EQ(attributeOf(path, accessList), std::nullopt);
    EXPECT_EQ(modeOf(path), 0640U);
}

TEST_F(LinuxPutBackTest, attributesThatSomebodyChangedDoNotChangeTheTimes)
{
    ASSERT_EQ(::chmod(qPrintable(path), 0600), 0);
    if (attributes) {
        ASSERT_TRUE(setAttribute(path, "user.added", "too"));
    }
    ASSERT_EQ(putBack(run).value(), PutBack::Done);
    EXPECT_TRUE(isOld(path));
    EXPECT_EQ(modeOf(path), 0600U);
}

TEST_F(LinuxPutBackTest, whatASaveLeavesOutComesBackWithTheFile)
{
    const QString other = home.preference(u"b.plist"_s);
    writeRaw(other, "old", 06755);
    const QByteArray capabilities = QByteArray::fromHex("0100000200200000000000000000000000000000");
    const bool rights =
        ::geteuid() == 0 && attributes && setAttribute(other, "security.capability", capabilities);
    ASSERT_TRUE(kept.keep(other, run, u"2"_s).ok());
    ASSERT_TRUE(store.update(other, become("new")).ok());
    ASSERT_EQ(modeOf(other), 0755U);
    ASSERT_EQ(kept.putBack(run, u"2"_s, other, yes, any).value(), PutBack::Done);
    EXPECT_EQ(modeOf(other), 06755U);
    if (rights) {
        EXPECT_EQ(attributeOf(other, "security.capability"), capabilities);
    }
}

TEST_F(LinuxPutBackTest, aGroupThatSomebodyGaveItStays)
{
    VARNEL_NEEDS_ROOT();
    ASSERT_EQ(::chown(qPrintable(path), stranger, 777), 0);
    ASSERT_EQ(::chmod(qPrintable(QString(run + u"1")), 06640), 0);
    ASSERT_EQ(putBack(run).value(), PutBack::Done);
    EXPECT_EQ(statusOf(path).st_uid, stranger);
    EXPECT_EQ(statusOf(path).st_gid, 777U);
    EXPECT_EQ(modeOf(path), 0640U) << "nobody gets the right to run as another";
}

TEST_F(LinuxPutBackTest, aFileThatWasKeptAndNeverReplacedOnlyLosesItsSecondName)
{
    const QString other = home.preference(u"b.plist"_s);
    writeRaw(other, "old");
    makeOld(other);
    ASSERT_TRUE(kept.keep(other, run, u"2"_s).ok());
    EXPECT_EQ(kept.putBack(run, u"2"_s, other, yes, any).value(), PutBack::Done);
    EXPECT_TRUE(isOld(other));
    EXPECT_EQ(readRaw(other), "old");
    EXPECT_EQ(statusOf(other).st_nlink, 1U);
    EXPECT_EQ(entriesOf(run), QStringList {u"1"_s});
}

TEST_F(LinuxPutBackTest, ofALinkTheTargetIsReplacedAndTheLinkStays)
{
    const QString target = home.path() + u"/real.plist";
    ASSERT_TRUE(QFile::rename(path, target));
    linkTo(u"../../real.plist"_s, path);
    ASSERT_EQ(putBack(run).value(), PutBack::Done);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(statusOf(target).st_ino, original.st_ino);
    ASSERT_TRUE(keep(run));
    ASSERT_TRUE(QFile::remove(target));
    ASSERT_EQ(putBack(run).value(), PutBack::Done) << "where a link leads to nothing";
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(statusOf(target).st_ino, original.st_ino);
}

TEST_F(LinuxPutBackTest, aKeptFileWithANameElsewhereIsPutBackAllTheSame)
{
    ASSERT_EQ(::link(qPrintable(QString(run + u"1")), qPrintable(QString(home.path() + u"/x"))), 0);
    ASSERT_EQ(putBack(run).value(), PutBack::Done);
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(readRaw(home.path() + u"/x"), "old");
}

TEST_F(LinuxPutBackTest, whatIsNoFileIsNotPutBack)
{
    writeRaw(home.path() + u"/other", "theirs");
    for (const auto &plant : std::initializer_list<std::function<void(const QString &)>> {
             [&](const QString &place) { linkTo(home.path() + u"/other", place); },
             [](const QString &place) { ASSERT_EQ(::mkfifo(qPrintable(place), 0600), 0); },
             [](const QString &place) { ASSERT_TRUE(QDir().mkdir(place)); }}) {
        QFile::remove(run + u"1");
        plant(run + u"1");
        EXPECT_EQ(codeOf(putBack(run)), ErrorCode::NotAFile);
        EXPECT_EQ(readRaw(path), "new");
    }
}

TEST_F(LinuxPutBackTest, whatStandsInThePlaceAndIsNoFileStays)
{
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_EQ(::mkfifo(qPrintable(path), 0600), 0);
    EXPECT_EQ(codeOf(putBack(run)), ErrorCode::NotAFile);
    EXPECT_TRUE(loggedOnce(path));
    EXPECT_TRUE(S_ISFIFO(statusOf(path).st_mode));
    EXPECT_EQ(readRaw(run + u"1"), "old");
}

TEST_F(LinuxPutBackTest, whatAnotherProgramWritesMeanwhileStands)
{
    EXPECT_EQ(codeOf(putBackWhile([&] { writeRaw(path, "theirs", 0640); })), ErrorCode::Failed);
    EXPECT_TRUE(loggedOnce(path));
    expectNothingMoved("theirs");
    EXPECT_EQ(codeOf(putBackWhile([&] { QFile::remove(path); })), ErrorCode::Failed);
    EXPECT_EQ(entriesOf(folder), QStringList());
    EXPECT_EQ(codeOf(putBackWhile([&] { writeRaw(path, "made"); })), ErrorCode::Failed);
    expectNothingMoved("made");
}

TEST_F(LinuxPutBackTest, aKeptFileThatIsExchangedMeanwhileIsNotPutBack)
{
    const auto exchange = [&] {
        writeRaw(run + u"2", "planted");
        ASSERT_EQ(::rename(qPrintable(QString(run + u"2")), qPrintable(QString(run + u"1"))), 0);
    };
    EXPECT_EQ(codeOf(putBackWhile(exchange)), ErrorCode::Failed);
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_EQ(readRaw(run + u"1"), "planted");
    EXPECT_EQ(codeOf(putBackWhile([&] { QFile::remove(run + u"1"); })), ErrorCode::Failed);
    EXPECT_EQ(readRaw(path), "new");
}

TEST_F(LinuxPutBackTest, theLockIsHeldWhileThePresentFileIsLookedAt)
{
    bool free = true;
    ASSERT_TRUE(putBackWhile([&] {
                    const FileDescriptor other(::open(qPrintable(folder), O_RDONLY | O_DIRECTORY));
                    free = ::flock(other.get(), LOCK_EX | LOCK_NB) == 0;
                }).ok());
    EXPECT_FALSE(free);
    EXPECT_EQ(store.changedWithoutLock(), QStringList());
}

TEST_F(LinuxPutBackTest, aLockThatIsNotGivenUpIsDoneWithoutAndTold)
{
    const FileDescriptor lock(::open(qPrintable(folder), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::flock(lock.get(), LOCK_EX | LOCK_NB), 0);
    LinuxFileStore impatient(home.home(), std::chrono::milliseconds(1));
    LinuxKeptFolders own(home.home(), impatient.turns());
    const auto no = [](const auto &) { return false; };
    EXPECT_EQ(own.putBack(run, u"1"_s, path, yes, no).value(), PutBack::Declined);
    EXPECT_EQ(own.takeAway(path, no).value(), false);
    EXPECT_EQ(impatient.changedWithoutLock(), QStringList());
    EXPECT_EQ(own.putBack(run, u"1"_s, path, yes, any).value(), PutBack::Done);
    EXPECT_EQ(impatient.changedWithoutLock(), QStringList {path});
    EXPECT_TRUE(loggedOnce(path));
    EXPECT_TRUE(own.takeAway(path, any).value());
    EXPECT_EQ(impatient.changedWithoutLock(), QStringList {path});
}

TEST_F(LinuxPutBackTest, ofSeveralRunsOnePutsItBack)
{
    std::array<pid_t, 4> children {};
    constexpr int done = 10;
    constexpr int missing = 11;
    for (pid_t &child : children) {
        child = inChild([&] {
            LinuxFileStore ownStore(home.home(), std::chrono::minutes(2));
            LinuxKeptFolders own(home.home(), ownStore.turns());
            const auto accept = [](const std::optional<QByteArray> &now) { return now == "new"; };
            const Result<PutBack> result = own.putBack(run, u"1"_s, path, yes, accept);
            if (result.ok() && result.value() == PutBack::Done)
                ::_exit(done);
            ::_exit(missing);
            return true;
        });
    }
    int count = 0;
    for (const pid_t child : children) {
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        count += WEXITSTATUS(status) == done;
        EXPECT_TRUE(WEXITSTATUS(status) == done || WEXITSTATUS(status) == missing);
    }
    EXPECT_EQ(count, 1);
    EXPECT_EQ(statusOf(path).st_ino, original.st_ino);
    EXPECT_EQ(entriesOf(run), QStringList());
}

TEST_F(LinuxPutBackTest, onAnotherFileSystemACopyTakesThePlaceWithAllThatItHas)
{
    VARNEL_NEEDS_OTHER_FILE_SYSTEM(elsewhere);
    const QString target = elsewhere->path() + u"/real.plist";
    const QString link = home.preference(u"b.plist"_s);
    linkTo(target, link);
    writeRaw(target, "old", 0640);
    const bool there = setAttribute(target, "user.kept", "yes");
    makeOld(target);
    ASSERT_FALSE(kept.keep(link, run, u"2"_s).value().linked);
    ASSERT_TRUE(store.update(link, become("new")).ok());
    if (there) {
        ASSERT_TRUE(setAttribute(target, "user.added", "too"));
    }
    ASSERT_EQ(kept.putBack(run, u"2"_s, link, yes, any).value(), PutBack::Done);
    EXPECT_TRUE(isOld(target));
    EXPECT_EQ(readRaw(target), "old");
    EXPECT_EQ(modeOf(target), 0640U);
    if (there) {
        EXPECT_EQ(attributeOf(target, "user.kept"), "yes");
        EXPECT_EQ(attributeOf(target, "user.added"), "too");
    }
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(entriesOf(elsewhere->path()), QStringList {u"real.plist"_s});
    EXPECT_EQ(entriesOf(run), QStringList {u"1"_s});
}

TEST_F(LinuxPutBackTest, onAnotherFileSystemWhatAnotherProgramWritesStandsToo)
{
    VARNEL_NEEDS_OTHER_FILE_SYSTEM(elsewhere);
    const QString target = elsewhere->path() + u"/real.plist";
    writeRaw(target, "new");
    ASSERT_TRUE(QFile::remove(path));
    linkTo(target, path);
    EXPECT_EQ(codeOf(putBackWhile([&] { writeRaw(target, "theirs"); })), ErrorCode::Failed);
    EXPECT_EQ(readRaw(target), "theirs");
    ASSERT_TRUE(QFile::remove(target));
    EXPECT_EQ(codeOf(putBackWhile([&] { writeRaw(target, "made"); })), ErrorCode::Failed);
    EXPECT_EQ(readRaw(target), "made");
    EXPECT_EQ(entriesOf(elsewhere->path()), QStringList {u"real.plist"_s});
    ASSERT_TRUE(QFile::remove(target));
    EXPECT_EQ(putBack(run).value(), PutBack::Done) << "where nothing stands";
    EXPECT_TRUE(isOld(target));
    EXPECT_EQ(readRaw(target), "old");
}

struct LinuxTakeAwayTest : KeptFixture { };

TEST_F(LinuxTakeAwayTest, aFileThatWasNotThereIsGoneAgain)
{
    writeRaw(path, "made");
    const auto accept = [](const std::optional<QByteArray> &now) { return now == "made"; };
    EXPECT_TRUE(kept.takeAway(path, accept).value());
    EXPECT_EQ(entriesOf(folder), QStringList());
}

TEST_F(LinuxTakeAwayTest, nothingThereIsNoErrorAndNobodyIsAsked)
{
    const auto accept = [](const auto &) {
        ADD_FAILURE();
        return true;
    };
    EXPECT_TRUE(kept.takeAway(path, accept).value());
    EXPECT_TRUE(kept.takeAway(folder + u"/No/a.plist", accept).value());
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxTakeAwayTest, whoeverSaysNoHasNothingRemoved)
{
    writeRaw(path, "made");
    EXPECT_FALSE(kept.takeAway(path, [](const auto &) { return false; }).value());
    EXPECT_EQ(readRaw(path), "made");
}

TEST_F(LinuxTakeAwayTest, ofALinkTheTargetIsRemovedAndTheLinkStays)
{
    writeRaw(home.path() + u"/real.plist", "made");
    linkTo(u"../../real.plist"_s, path);
    EXPECT_TRUE(kept.takeAway(path, any).value());
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(home.path() + u"/real.plist"));
}

TEST_F(LinuxTakeAwayTest, whatAnotherProgramWritesMeanwhileStands)
{
    writeRaw(path, "made");
    const auto accept = [&](const auto &) {
        writeRaw(path, "theirs");
        return true;
    };
    EXPECT_EQ(codeOf(kept.takeAway(path, accept)), ErrorCode::Failed);
    EXPECT_TRUE(loggedOnce(path));
    EXPECT_EQ(readRaw(path), "theirs");
}

struct LinuxPutBackPlainUser : PlainUser {
    QString parent = home.path() + u"/Library/Application Support/";
    std::unique_ptr<LinuxKeptFolders> kept =
        std::make_unique<LinuxKeptFolders>(home.home(), store.turns());
    QString run;

    static bool yes(const QByteArray &) { return true; }
    static bool any(const std::optional<QByteArray> &) { return true; }
    void save()
    {
        writeRaw(path, "old", 0600);
        if (::geteuid() == 0)
            giveAll(home.path(), stranger, stranger);
        const ActingAs user(stranger);
        run = kept->make(parent, u"quillet7"_s).value();
        ASSERT_TRUE(kept->keep(path, run, u"1"_s).value().linked);
        ASSERT_TRUE(update("new"));
    }
    /// Neither the file gives way to the kept one, nor is it taken away.
    void expectRefused()
    {
        {
            const ActingAs user(stranger);
            const Result<PutBack> result = kept->putBack(run, u"1"_s, path, yes, any);
            ASSERT_FALSE(result.ok());
            EXPECT_EQ(result.error().code, ErrorCode::NotPermitted);
            EXPECT_TRUE(loggedOnce(path));
        }
        EXPECT_EQ(readRaw(path), "new");
        EXPECT_EQ(readRaw(run + u"1"), "old");
        EXPECT_EQ(entriesOf(folder), QStringList {u"a.plist"_s});
    }
};

TEST_F(LinuxPutBackPlainUser, theOwnersFileIsPutBackWithoutPrivileges)
{
    VARNEL_NEEDS_REACH();
    save();
    const ActingAs user(stranger);
    EXPECT_EQ(kept->putBack(run, u"1"_s, path, yes, any).value(), PutBack::Done);
    EXPECT_EQ(readRaw(path), "old");
}

TEST_F(LinuxPutBackPlainUser, aFileThatSomebodyMadeReadOnlyStays)
{
    VARNEL_NEEDS_REACH();
    save();
    ASSERT_EQ(::chmod(qPrintable(path), 0400), 0);
    expectRefused();
    const ActingAs user(stranger);
    EXPECT_FALSE(kept->takeAway(path, any));
    EXPECT_EQ(modeOf(path), 0400U);
}

TEST_F(LinuxPutBackPlainUser, aReadOnlyFolderIsLeftAlone)
{
    VARNEL_NEEDS_REACH();
    save();
    ASSERT_EQ(::chmod(qPrintable(folder), 0500), 0);
    expectRefused();
    ASSERT_EQ(::chmod(qPrintable(folder), 0700), 0);
}

TEST_F(LinuxPutBackPlainUser, outOfAReadOnlyFolderNothingIsPutBack)
{
    VARNEL_NEEDS_REACH();
    save();
    ASSERT_EQ(::chmod(qPrintable(run), 0500), 0);
    expectRefused();
    ASSERT_EQ(::chmod(qPrintable(run), 0700), 0);
}

TEST_F(LinuxPutBackPlainUser, nothingIsKeptInAReadOnlyFolder)
{
    VARNEL_NEEDS_REACH();
    save();
    ASSERT_EQ(::chmod(qPrintable(run), 0500), 0);
    const ActingAs user(stranger);
    EXPECT_EQ(kept->keep(path, run, u"2"_s).error().code, ErrorCode::NotPermitted);
    EXPECT_EQ(kept->write(run, u"index"_s, "x").error().code, ErrorCode::NotPermitted);
    EXPECT_EQ(entriesOf(run), QStringList {u"1"_s});
    EXPECT_EQ(::chmod(qPrintable(run), 0700), 0);
}

} // namespace
