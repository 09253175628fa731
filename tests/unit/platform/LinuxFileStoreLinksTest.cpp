#include "StoreFixture.h"

#include <QDir>

using namespace varnel;
using namespace varnel::test;

namespace {

/// Links in one's own home.
struct LinuxFileStoreLinks : StoreFixture {
    QString outside = home.path() + u"-outside";
    QString target = outside + u"/real.plist";

    void SetUp() override { ASSERT_TRUE(QDir().mkpath(outside)); }
    void TearDown() override { QDir(outside).removeRecursively(); }
};

TEST_F(LinuxFileStoreLinks, TheTargetIsReplacedAndTheLinkStays)
{
    writeRaw(target, "old", 0640);
    linkTo(target, path);
    EXPECT_EQ(store.read(path).value(), "old");
    ASSERT_TRUE(update("new"));
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(readRaw(target), "new");
    EXPECT_EQ(modeOf(target), 0640U);
    EXPECT_EQ(entriesOf(folder).size(), 1);
    EXPECT_EQ(entriesOf(outside).size(), 1);
}

TEST_F(LinuxFileStoreLinks, LinksToLinksAndLinkedFoldersAreFollowed)
{
    writeRaw(target, "old");
    linkTo(outside, home.path() + u"/Shared");
    linkTo(QStringLiteral("../../Shared/./real.plist"), home.preference(QStringLiteral("b.plist")));
    linkTo(QStringLiteral("b.plist"), path);
    EXPECT_EQ(store.read(path).value(), "old");
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(readRaw(target), "new");
}

TEST_F(LinuxFileStoreLinks, ARelativeLinkMayClimbOutOfOnesOwnHome)
{
    writeRaw(target, "old");
    linkTo(QStringLiteral("../../../") + QFileInfo(outside).fileName() + u"/real.plist", path);
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(readRaw(target), "new");
}

TEST_F(LinuxFileStoreLinks, ADanglingLinkReadsAsMissingAndIsFilledWhereItLeads)
{
    linkTo(target, path);
    EXPECT_FALSE(store.exists(path));
    EXPECT_EQ(readError(path), ErrorCode::NotFound);
    ASSERT_TRUE(update("new"));
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(readRaw(target), "new");
    EXPECT_EQ(modeOf(target), 0600U);
}

TEST_F(LinuxFileStoreLinks, ADanglingLinkIntoAMissingFolderFails)
{
    linkTo(outside + u"/No/real.plist", path);
    EXPECT_EQ(updateError(path), ErrorCode::NotFound);
    EXPECT_EQ(entriesOf(outside), QStringList());
}

TEST_F(LinuxFileStoreLinks, ALinkLoopFailsAndIsLogged)
{
    linkTo(QStringLiteral("b.plist"), path);
    linkTo(QStringLiteral("a.plist"), home.preference(QStringLiteral("b.plist")));
    EXPECT_FALSE(store.exists(path));
    EXPECT_EQ(readError(path), ErrorCode::Failed);
    EXPECT_TRUE(loggedOnce(path));
    EXPECT_EQ(updateError(path), ErrorCode::Failed);
    EXPECT_EQ(entriesOf(folder).size(), 2);
}

TEST_F(LinuxFileStoreLinks, ALinkToAFolderIsNoFile)
{
    for (const QString &there :
         {outside, QStringLiteral("."), QStringLiteral("/"), QStringLiteral("../Preferences/..")}) {
        linkTo(there, path);
        EXPECT_TRUE(store.exists(path));
        EXPECT_EQ(readError(path), ErrorCode::NotAFile);
        EXPECT_EQ(updateError(path), ErrorCode::NotAFile);
        ASSERT_TRUE(QFile::remove(path));
    }
}

/// Links in somebody else's home, followed by root.
struct LinuxFileStoreForeignLinks : ForeignHome {
    QString outside = home.path() + u"-outside";
    QString secret = outside + u"/secret";

    void SetUp() override
    {
        VARNEL_NEEDS_ROOT();
        ASSERT_TRUE(QDir().mkpath(outside));
        writeRaw(secret, "secret", 0600);
    }
    void TearDown() override { QDir(outside).removeRecursively(); }

    /// Neither read nor written, and told.
    void expectRefused(const QString &file)
    {
        handOver();
        EXPECT_FALSE(store.exists(file));
        EXPECT_EQ(readError(file), ErrorCode::NotPermitted);
        EXPECT_TRUE(loggedOnce(file));
        bool asked = false;
        const Result<void> result = store.update(file, [&](const std::optional<QByteArray> &) {
            asked = true;
            return std::optional(QByteArray("changed"));
        });
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.error().code, ErrorCode::NotPermitted);
        EXPECT_FALSE(asked);
        EXPECT_EQ(readRaw(secret), "secret");
        EXPECT_EQ(entriesOf(outside), QStringList {QStringLiteral("secret")});
    }
};

TEST_F(LinuxFileStoreForeignLinks, ALinkInsideTheHomeIsFollowed)
{
    writeRaw(home.path() + u"/real.plist", "old");
    linkTo(QStringLiteral("../../real.plist"), path);
    handOver();
    EXPECT_EQ(store.read(path).value(), "old");
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(readRaw(home.path() + u"/real.plist"), "new");
    EXPECT_TRUE(QFileInfo(path).isSymLink());
}

TEST_F(LinuxFileStoreForeignLinks, AnAbsoluteLinkIntoTheHomeIsFollowed)
{
    writeRaw(home.path() + u"/real.plist", "old");
    linkTo(home.path() + u"/real.plist", path);
    handOver();
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(readRaw(home.path() + u"/real.plist"), "new");
}

TEST_F(LinuxFileStoreForeignLinks, ALinkThatClimbsOutIsRefused)
{
    linkTo(QStringLiteral("../../../") + QFileInfo(outside).fileName() + u"/secret", path);
    expectRefused(path);
}

TEST_F(LinuxFileStoreForeignLinks, AnAbsoluteLinkOutIsRefused)
{
    linkTo(secret, path);
    expectRefused(path);
}

TEST_F(LinuxFileStoreForeignLinks, AnAbsoluteLinkThatOnlyBeginsLikeTheHomeIsRefused)
{
    linkTo(home.path() + u"/../" + QFileInfo(outside).fileName() + u"/secret", path);
    expectRefused(path);
}

TEST_F(LinuxFileStoreForeignLinks, ALinkedFolderOutsideIsRefused)
{
    linkTo(outside, home.path() + u"/Library/Elsewhere");
    expectRefused(home.path() + u"/Library/Elsewhere/secret");
}

TEST_F(LinuxFileStoreForeignLinks, ADanglingLinkOutMakesNothing)
{
    linkTo(outside + u"/new", path);
    expectRefused(path);
}

TEST_F(LinuxFileStoreForeignLinks, APathThatClimbsOutIsRefused)
{
    expectRefused(home.path() + u"/../" + QFileInfo(outside).fileName() + u"/secret");
}

TEST_F(LinuxFileStoreForeignLinks, APathThatStartsElsewhereIsRefused)
{
    expectRefused(secret);
}

TEST_F(LinuxFileStoreForeignLinks, LookingAtALinkOutTellsNothingOfWhatStandsThere)
{
    linkTo(secret, path);
    linkTo(outside + u"/none", home.preference(QStringLiteral("b.plist")));
    linkTo(outside, home.path() + u"/Library/Elsewhere");
    handOver();
    for (const QString &way : QStringList {
             path, home.preference(QStringLiteral("b.plist")), home.path() + u"/Library/Elsewhere",
             home.path() + u"/Library/Elsewhere/secret", home.path() + u"/Library/Elsewhere/none"})
        EXPECT_EQ(store.look(way).value(), FileStore::Standing::Outside) << qPrintable(way);
    EXPECT_EQ(store.look(folder).value(), FileStore::Standing::Something);
    EXPECT_EQ(store.look(folder + u"/c.plist").value(), FileStore::Standing::Nothing);
    EXPECT_TRUE(logged().isEmpty());
}

TEST_F(LinuxFileStoreForeignLinks, ALinkedFolderIsNeitherListedNorDeletedFrom)
{
    linkTo(outside, home.path() + u"/Library/Elsewhere");
    handOver();
    EXPECT_EQ(store.list(home.path() + u"/Library/Elsewhere").error().code,
              ErrorCode::NotPermitted);
    EXPECT_EQ(store.names(home.path() + u"/Library/Elsewhere").error().code,
              ErrorCode::NotPermitted);
    EXPECT_FALSE(store.remove(home.path() + u"/Library/Elsewhere/secret"));
    EXPECT_EQ(logged().size(), 2);
    EXPECT_EQ(readRaw(secret), "secret");
    EXPECT_TRUE(store.remove(home.path() + u"/Library/Elsewhere")) << "the link itself";
    EXPECT_EQ(readRaw(secret), "secret");
}

TEST(LinuxFileStoreSomebodysHome, ALinkOutIsRefusedWithoutPrivilegesToo)
{
    // A folder of the machine's own stands in for the home, where this user is not its owner.
    const QString link = QStringLiteral("/etc/os-release");
    if (::geteuid() == 0 || !QFileInfo(link).symLinkTarget().startsWith(QStringLiteral("/usr/")))
        GTEST_SKIP() << "needs a plain user and a link in a folder of the system";
    const LogCapture log;
    const LinuxFileStore store({QStringLiteral("/etc"), false});
    const Result<QByteArray> result = store.read(link);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, ErrorCode::NotPermitted);
    EXPECT_TRUE(store.read(QStringLiteral("/etc/passwd")).ok());
}

TEST_F(LinuxFileStoreForeignLinks, AHomeThatIsItselfReachedThroughALinkIsTheHome)
{
    handOver();
    const QString alias = home.path() + u"-alias";
    linkTo(home.path(), alias);
    LinuxFileStore aliased({alias, false});
    EXPECT_TRUE(aliased.update(alias + u"/Library/Preferences/a.plist", become("new")).ok());
    EXPECT_EQ(readRaw(path), "new");
    ASSERT_TRUE(QFile::remove(alias));
}

} // namespace
