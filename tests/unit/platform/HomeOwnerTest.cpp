#include "platform/linux/HomeOwner.h"

#include "base/Containers.h"
#include "base/Sqlite.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/Worker.h"
#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace testing;
using namespace varnel;
using namespace varnel::test;

namespace {

/// Root, and the home of somebody without an account.
struct HomeOwnerTest : Test {
    void SetUp() override
    {
        VARNEL_NEEDS_ROOT();
        giveAll(home.path(), stranger, stranger);
    }
    /// What a process tells that has taken up the home; an error where it may not.
    using Work = std::function<QByteArray(const HomeFolder &worked)>;
    [[nodiscard]] QByteArray taken(const Work &work) const
    {
        QByteArray told;
        Worker worker([&](const Worker::Tell &tell) {
            const Result<HomeFolder> worked = workAsOwner(home.home());
            tell((worked ? work(worked.value()) : "refused: " + worked.error().text.toUtf8())
                     .replace('\n', ' '));
        });
        const Result<void> done = worker.follow([&](const QByteArray &line) { told = line; });
        return done ? told : done.error().text.toUtf8();
    }
    static void give(const QString &path, uid_t user, gid_t group)
    {
        ASSERT_EQ(::lchown(qPrintable(path), user, group), 0);
    }

    TemporaryHome home;
    QString library = home.path() + u"/Library";
};

QByteArray ids(const HomeFolder &)
{
    QFile file(u"/proc/self/status"_s);
    QByteArray lines;
    if (file.open(QIODevice::ReadOnly))
        for (const QByteArray &line : file.readAll().split('\n'))
            for (const char *name : {"Uid:", "Gid:", "Groups:", "Cap", "NoNewPrivs:"})
                if (line.startsWith(name))
                    lines += line.simplified() + ';';
    return lines;
}

FileStore::Change become(const QByteArray &bytes)
{
    return [bytes](const std::optional<QByteArray> &) { return std::optional(bytes); };
}

TEST_F(HomeOwnerTest, theProcessBecomesTheOwnerWithAllIdsAndNoCapability)
{
    EXPECT_EQ(taken(ids),
              "Uid: 54321 54321 54321 54321;Gid: 54321 54321 54321 54321;Groups: 54321;"
              "CapInh: 0000000000000000;CapPrm: 0000000000000000;CapEff: 0000000000000000;"
              "CapBnd: 0000000000000000;CapAmb: 0000000000000000;NoNewPrivs: 1;");
}

TEST_F(HomeOwnerTest, theWayBackIsShutAndTheProcessIsClosedToOthers)
{
    EXPECT_EQ(taken([](const HomeFolder &) -> QByteArray {
                  return QByteArray::number(::setresuid(0, 0, 0)) + ' '
                      + QByteArray::number(::setgid(0)) + ' '
                      + QByteArray::number(::prctl(PR_GET_DUMPABLE));
              }),
              "-1 -1 0");
}

TEST_F(HomeOwnerTest, inRootsGroupNobodyIsThoughTheHomeIs)
{
    give(home.path(), stranger, 0);
    EXPECT_THAT(taken(ids).toStdString(), HasSubstr("Gid: 65534 65534 65534 65534;Groups: 65534;"));
}

TEST_F(HomeOwnerTest, rootsOwnHomeIsWorkedOnAsRoot)
{
    giveAll(home.path(), 0, 0);
    EXPECT_EQ(taken([](const HomeFolder &worked) -> QByteArray {
                  return QByteArray::number(::geteuid()) + (worked.asOwner() ? " owner" : " own");
              }),
              "0 own");
}

TEST_F(HomeOwnerTest, aFolderOfRootsWithSomebodysLibraryIsThatSomebodys)
{
    give(home.path(), 0, 0);
    EXPECT_THAT(taken(ids).toStdString(), HasSubstr("Uid: 54321 54321 54321 54321;"));
}

TEST_F(HomeOwnerTest, whereRootOwnsTheLibraryTooAFolderOfSomebodysInItIsThatSomebodys)
{
    const QString container = containerPreferences(home.home(), u"com.apple.mail"_s);
    QDir().mkpath(container);
    for (const QString &folder : {u"/Preferences"_s, u"/Application Support"_s, u"/Containers"_s,
                                  container.mid(library.size())}) {
        giveAll(home.path(), 0, 0);
        give(library + folder, stranger, stranger);
        EXPECT_TRUE(taken(ids).startsWith("Uid: 54321 54321 54321 54321;")) << qPrintable(folder);
    }
    give(library + u"/Preferences", stranger + 1, stranger);
    EXPECT_TRUE(taken(ids).startsWith("refused: ")) << "two people have a part in it";
}

TEST_F(HomeOwnerTest, aHomeAndALibraryOfTwoPeopleAreRefusedAndBothAreNamed)
{
    give(library, stranger + 1, stranger);
    EXPECT_EQ(taken(ids),
              "refused: " + home.path().toUtf8()
                  + ": belongs to 54321, and the folder Library in it to 54322: it can't be told "
                    "whose home it is");
}

TEST_F(HomeOwnerTest, whatIsMadeIsTheOwners)
{
    const QString file = home.preference(u"new.plist"_s);
    const QString folder = home.path() + u"/Library/New";
    EXPECT_EQ(taken([&](const HomeFolder &worked) {
                  LinuxFileStore store(worked);
                  return QByteArray(store.update(file, become("new")).ok()
                                            && LinuxFolderMaker().makeFolder(worked, folder).ok()
                                        ? "made"
                                        : "not made");
              }),
              "made");
    for (const QString &path : {file, folder}) {
        EXPECT_EQ(statusOf(path).st_uid, stranger);
        EXPECT_EQ(statusOf(path).st_gid, stranger);
    }
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(modeOf(folder), 0700U);
}

TEST_F(HomeOwnerTest, whatTheOwnerMayNotChangeStaysAsItIs)
{
    const QString file = home.preference(u"roots.plist"_s);
    writeRaw(file, "root's", 0644);
    EXPECT_EQ(taken([&](const HomeFolder &worked) {
                  const Result<void> changed = LinuxFileStore(worked).update(file, become("new"));
                  return QByteArray(changed ? "changed" : "refused");
              }),
              "refused");
    EXPECT_EQ(readRaw(file), "root's");
}

/// The home lies where only root may pass.
struct HiddenHomeTest : HomeOwnerTest {
    void SetUp() override
    {
        HomeOwnerTest::SetUp();
        if (IsSkipped())
            return;
        ASSERT_TRUE(QFile::rename(home.path(), hidden.path() + u"/anna"));
        ASSERT_EQ(::chmod(qPrintable(hidden.path()), 0700), 0);
        place.path = hidden.path() + u"/anna";
        place.own = false;
    }
    [[nodiscard]] QByteArray told(const Work &work) const
    {
        QByteArray said;
        Worker worker([&](const Worker::Tell &tell) {
            const Result<HomeFolder> worked = workAsOwner(place);
            tell(worked ? work(worked.value()) : worked.error().text.toUtf8());
        });
        const Result<void> done = worker.follow([&](const QByteArray &line) { said = line; });
        return done ? said : done.error().text.toUtf8();
    }

    TemporaryHome hidden;
    HomeFolder place;
};

TEST_F(HiddenHomeTest, isReachedThoughItsOwnerHasNoWayToIt)
{
    const QString file = place.path + u"/Library/Preferences/a.plist";
    EXPECT_EQ(told([&](const HomeFolder &worked) -> QByteArray {
                  LinuxFileStore store(worked);
                  const bool written = store.update(file, become("new")).ok();
                  return QByteArray(written ? store.read(file).value() : "not written")
                      + (::access(qPrintable(place.path), F_OK) == 0 ? " in reach"
                                                                     : " out of reach");
              }),
              "new out of reach");
    EXPECT_EQ(readRaw(file), "new");
}

TEST_F(HiddenHomeTest, itsDatabasesAreOpenedThroughTheHome)
{
    const QString file = place.path + u"/Library/a.sqlite";
    const auto work = [&](const HomeFolder &worked) {
        LinuxFileStore store(worked);
        const Result<FileStore::DatabasePlace> found = store.readyForDatabase(file);
        Result<Sqlite> database =
            found ? Sqlite::open(found.value().path, Sqlite::Access::Create) : found.error();
        const Result<void> made = database
            ? database.value().run(u"CREATE TABLE users (value1 TEXT)"_s, Sqlite::Verb::CreateTable)
            : database.error();
        return made ? QByteArray("made") : made.error().text.toUtf8();
    };
    EXPECT_EQ(told(work), "made");
    EXPECT_EQ(statusOf(file).st_uid, stranger);
    EXPECT_TRUE(Sqlite::open(file, Sqlite::Access::ReadOnly).ok());
}

} // namespace
