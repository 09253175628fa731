#include "platform/linux/LinuxHome.h"

#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

struct LinuxHomeTest : testing::Test {
    TemporaryHome home;
    QString canonical = QDir(home.path()).canonicalPath();
};

TEST_F(LinuxHomeTest, OnesOwnHomeIsWhereTheSessionSays)
{
    qputenv("HOME", QByteArray(home.path().toUtf8() + "///"));
    const Result<HomeFolder> own = ownHome();
    ASSERT_TRUE(own.ok());
    EXPECT_EQ(own.value().path, home.path());
    EXPECT_TRUE(own.value().own);
}

TEST_F(LinuxHomeTest, OnesOwnHomeKeepsThePathThatPeopleKnow)
{
    const QString alias = home.path() + u"/alias";
    linkTo(home.path(), alias);
    qputenv("HOME", alias.toUtf8());
    EXPECT_EQ(ownHome().value().path, alias);
}

TEST_F(LinuxHomeTest, WithoutAUsefulVariableTheUserDatabaseKnows)
{
    const passwd *entry = ::getpwuid(::getuid());
    if (entry == nullptr || !QFileInfo(QFile::decodeName(entry->pw_dir)).isDir())
        GTEST_SKIP() << "needs a user with a home in the user database";
    const QByteArray registered = entry->pw_dir;
    qunsetenv("HOME");
    EXPECT_EQ(ownHome().value().path, QFile::decodeName(registered));
    qputenv("HOME", "");
    EXPECT_EQ(ownHome().value().path, QFile::decodeName(registered));
}

TEST_F(LinuxHomeTest, ARelativeVariableIsRefusedAndNoOtherHomeTaken)
{
    qputenv("HOME", QDir::current().relativeFilePath(home.path()).toUtf8());
    ASSERT_FALSE(ownHome().ok());
    EXPECT_EQ(ownHome().error().code, ErrorCode::Invalid);
    EXPECT_TRUE(ownHome().error().text.endsWith(u": not an absolute path"));
}

/// A folder whose name is not UTF-8, which the toolkit could not delete.
struct UnnamableFolder {
    explicit UnnamableFolder(const QByteArray &path) : path(path)
    {
        EXPECT_EQ(::mkdir(path.constData(), 0755), 0);
    }
    UnnamableFolder(const UnnamableFolder &) = delete;
    UnnamableFolder &operator=(const UnnamableFolder &) = delete;
    ~UnnamableFolder() { EXPECT_EQ(::rmdir(path.constData()), 0); }
    QByteArray path;
};

TEST_F(LinuxHomeTest, AFolderThatTextCannotNameIsRefusedThoughTheTextNamesAnother)
{
    const QByteArray here = home.path().toUtf8();
    ASSERT_TRUE(QDir(home.path()).mkdir(u"a\ufffd"_s));
    const UnnamableFolder folder(here + "/a\xff");
    const QByteArray link = here + "/link";
    ASSERT_EQ(::symlink(folder.path.constData(), link.constData()), 0);
    qputenv("HOME", folder.path);
    for (const Result<HomeFolder> &taken : {ownHome(), namedHome(home.path() + u"/link")}) {
        ASSERT_FALSE(taken.ok());
        EXPECT_EQ(taken.error().code, ErrorCode::Invalid);
        EXPECT_TRUE(taken.error().text.contains(u"/a\\xff: its name is not UTF-8 text"))
            << qPrintable(taken.error().text);
    }
    EXPECT_TRUE(namedHome(home.path() + u"/a\ufffd").ok());
}

TEST_F(LinuxHomeTest, AHomeThatIsMissingIsTold)
{
    qputenv("HOME", (home.path() + u"/gone").toUtf8());
    ASSERT_FALSE(ownHome().ok());
    EXPECT_EQ(ownHome().error().code, ErrorCode::NotFound);
    EXPECT_TRUE(ownHome().error().text.startsWith(home.path() + u"/gone"));
}

TEST_F(LinuxHomeTest, TheRootFolderAsAHomeHasNoSlashAtItsEnd)
{
    qputenv("HOME", "/");
    EXPECT_EQ(ownHome().value().path, QString());
    EXPECT_EQ(ownHome().value().preferencesDirectory(), QStringLiteral("/Library/Preferences"));
}

TEST_F(LinuxHomeTest, ANamedFolderIsMadeAbsoluteAndItsSlashesAreCut)
{
    const Result<HomeFolder> named = namedHome(home.path() + u"//");
    ASSERT_TRUE(named.ok());
    EXPECT_EQ(named.value().path, canonical);
    EXPECT_FALSE(named.value().own);
    const QString relative = QDir::current().relativeFilePath(home.path());
    ASSERT_FALSE(relative.startsWith(u'/'));
    EXPECT_EQ(namedHome(relative + u"/./Library/..").value().path, canonical);
}

TEST_F(LinuxHomeTest, ANamedLinkMeansTheFolderThatItLeadsTo)
{
    linkTo(home.path(), home.path() + u"/alias");
    EXPECT_EQ(namedHome(home.path() + u"/alias/").value().path, canonical);
}

TEST_F(LinuxHomeTest, ANameThatMeansNoFolderIsTold)
{
    writeRaw(home.path() + u"/file", "x");
    const Result<HomeFolder> missing = namedHome(home.path() + u"/gone");
    ASSERT_FALSE(missing.ok());
    EXPECT_EQ(missing.error().code, ErrorCode::NotFound);
    EXPECT_TRUE(missing.error().text.startsWith(home.path() + u"/gone: "));
    const Result<HomeFolder> file = namedHome(home.path() + u"/file");
    ASSERT_FALSE(file.ok());
    EXPECT_EQ(file.error().code, ErrorCode::Invalid);
    EXPECT_TRUE(file.error().text.startsWith(home.path() + u"/file: "));
    EXPECT_EQ(namedHome(QString()).error().code, ErrorCode::Invalid);
    EXPECT_EQ(namedHome(home.path() + QChar(QChar::Null)).error().code, ErrorCode::Invalid);
}

} // namespace
