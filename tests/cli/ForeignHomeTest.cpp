#include "cli/Varnelctl.h"
#include "support/FileFacts.h"
#include "support/PlantedLinks.h"

#include <QDir>
#include <QDirIterator>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

const QString dock = u"com.apple.dock.plist"_s;
const QByteArray entry =
    "[Desktop Entry]\nType=Application\nName=Mail\nExec=/Applications/Mail.app/Mail\n";
const QString mail = u"/Applications/Mail.app"_s;

/// An administrator's run on a user's home, which the user may have prepared for it.
class ForeignHomeTest : public Test {
protected:
    void SetUp() override
    {
        VARNEL_NEEDS_ROOT();
        // With the sanitizers: the search for leaks traces the process, and one that became the
        // owner lets nobody. It takes a second to find that out.
        varnelctl.environment.insert(u"ASAN_OPTIONS"_s,
                                     qEnvironmentVariable("ASAN_OPTIONS") + u":detect_leaks=0");
        installSamples(home, u"binary"_s);
        QDir().mkpath(autostart);
        writeFile(autostart + u"/mail.desktop", entry);
        giveAll(home.path(), stranger, stranger);
        links.emplace(vault, home);
    }

    [[nodiscard]] Outcome run(const QStringList &words) const
    {
        return varnelctl.run(QStringList {u"--verbose"_s} + words
                             + QStringList {u"--home"_s, home.path()});
    }
    /// Every command that reads or writes; what they print, all together.
    [[nodiscard]] QByteArray runEverything() const
    {
        QByteArray said;
        for (const QStringList &words : {QStringList {u"get"_s, u"dock-size"_s},
                                         {u"list"_s, u"--json"_s},
                                         {u"set"_s, u"dock-size=64"_s, u"screenshot-prefix=shot"_s},
                                         {u"set"_s, u"dock-size=-1"_s},
                                         {u"set"_s, u"library-folder=0"_s},
                                         {u"login-items"_s, u"list"_s},
                                         {u"login-items"_s, u"disable"_s, mail},
                                         {u"login-items"_s, u"enable"_s, mail},
                                         {u"login-items"_s, u"remove"_s, mail},
                                         {u"login-items"_s, u"add"_s, u"/Applications/Clock.app"_s},
                                         {u"backups"_s, u"list"_s},
                                         {u"backups"_s, u"show"_s, u"quillet1.sqlite"_s},
                                         {u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s},
                                         {u"backups"_s, u"delete"_s, u"quillet2.sqlite"_s}}) {
            const Outcome outcome = run(words);
            EXPECT_TRUE(outcome.status == 0 || outcome.status == 1 || outcome.status == 3
                        || outcome.status == 4)
                << outcome.status << ' ' << qPrintable(words.join(u' '));
            said += outcome.out + outcome.err;
        }
        return said;
    }

    TemporaryHome vault;
    TemporaryHome home;
    QString support = home.path() + u"/Library/Application Support/Varnel/";
    QString autostart = home.path() + u"/.config/autostart";
    std::optional<PlantedLinks> links;
    Varnelctl varnelctl {vault};
};

TEST_F(ForeignHomeTest, candidatesAreLookedForWithTheOwnersRights)
{
    const QString backups = home.path() + u"/Library/Application Support/Varnel/Backup";
    const QStringList words {u"completion"_s, u"--index"_s, u"5"_s,       u"--"_s,  u"varnelctl"_s,
                             u"--home"_s,     home.path(),  u"backups"_s, u"show"_s};
    TemporaryHome roots;
    writeFile(roots.path() + u"/secret.sqlite", "");
    ASSERT_TRUE(QFile::setPermissions(roots.path(),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QDir().mkpath(backups);
    writeFile(backups + u"/mine.sqlite", "");
    giveAll(home.path(), stranger, stranger);
    EXPECT_TRUE(varnelctl.run(words).out.startsWith("word\tmine.sqlite\t"));

    ASSERT_TRUE(QDir(backups).removeRecursively());
    ASSERT_TRUE(QFile::link(roots.path(), backups));
    const Outcome outcome = varnelctl.run(words);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(QByteArray(outcome.out + outcome.err), "");
}

TEST_F(ForeignHomeTest, ownerModeAttributesAndListsAreKept)
{
    const QString file = home.preference(dock);
    ASSERT_EQ(::chmod(qPrintable(file), 0640), 0);
    const bool attributes = setAttribute(file, "user.varnel.test", "kept");
    const bool lists = !QStandardPaths::findExecutable(u"setfacl"_s).isEmpty()
        && varnelctl.shell(u"setfacl -m u:12345:r '"_s + file + u'\'').status == 0;
    const auto list = attributeOf(file, "system.posix_acl_access");
    const struct stat before = statusOf(file);

    const Outcome outcome = run({u"set"_s, u"dock-size=64"_s, u"screenshot-prefix=shot"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const struct stat after = statusOf(file);
    EXPECT_NE(before.st_ino, after.st_ino) << "the file was replaced";
    EXPECT_EQ(before.st_uid, after.st_uid);
    EXPECT_EQ(before.st_gid, after.st_gid);
    EXPECT_EQ(before.st_mode, after.st_mode);
    if (attributes) {
        EXPECT_EQ(attributeOf(file, "user.varnel.test"), QByteArray("kept"));
    }
    if (lists) {
        EXPECT_EQ(attributeOf(file, "system.posix_acl_access"), list);
    }
    if (!attributes || !lists)
        GTEST_SKIP() << "needs extended attributes and access control lists for all of it";
}

TEST_F(ForeignHomeTest, whateverIsMadeBelongsToTheHomesOwner)
{
    static_cast<void>(runEverything());
    QDirIterator walk(home.path(),
                      QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    int looked = 0;
    while (walk.hasNext()) {
        const struct stat status = statusOf(walk.next());
        EXPECT_EQ(status.st_uid, stranger) << qPrintable(walk.filePath());
        EXPECT_EQ(status.st_gid, stranger) << qPrintable(walk.filePath());
        ++looked;
    }
    EXPECT_GT(looked, 10);
    EXPECT_TRUE(QFileInfo::exists(support + u"RemovedLoginItems"));
    EXPECT_TRUE(QFileInfo::exists(support + u"disableLoginItems.sqlite"));
}

TEST_F(ForeignHomeTest, aLinkedBackupFolderIsNotLookedInto)
{
    links->plant({"", u"/Library/Application Support/Varnel/Backup", u"Varnel/Backup"});
    for (const QStringList &words : {QStringList {u"list"_s},
                                     {u"list"_s, u"--json"_s},
                                     {u"show"_s, u"quillet1.sqlite"_s},
                                     {u"restore"_s, u"quillet1.sqlite"_s},
                                     {u"delete"_s, u"quillet1.sqlite"_s},
                                     {u"delete"_s, u"noSuchName.sqlite"_s}}) {
        const Outcome outcome = run(QStringList {u"backups"_s} + words);
        EXPECT_EQ(outcome.status, 3) << qPrintable(words.join(u' '));
        // The owner, as whom the work is done, may not go there.
        EXPECT_TRUE(outcome.err.contains(": Permission denied\n")) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.toStdString();
    }
}

class PlantedLink : public ForeignHomeTest, public WithParamInterface<Plant> { };

TEST_P(PlantedLink, comesToNothing)
{
    links->plant(GetParam());
    const auto before = snapshot(vault.path());
    const struct stat shadow = statusOf(u"/etc/shadow"_s);
    const QByteArray said = runEverything();
    EXPECT_EQ(snapshot(vault.path()), before);
    const struct stat now = statusOf(u"/etc/shadow"_s);
    EXPECT_TRUE(shadow.st_ino == now.st_ino && shadow.st_mtim.tv_sec == now.st_mtim.tv_sec);
    PlantedLinks::expectNoneIn(said);
}

INSTANTIATE_TEST_SUITE_P(Cli, PlantedLink, ValuesIn(plants),
                         [](const auto &one) { return std::string(one.param.test); });

} // namespace
