#include "backup/BackupFolder.h"
#include "backup/BackupWriter.h"
#include "base/Literals.h"
#include "platform/linux/LinuxFileStore.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QFile>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <algorithm>

#include <unistd.h>

using namespace varnel;
using namespace varnel::test;

namespace {

void touch(const QString &path)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

QStringList names(const QList<BackupEntry> &entries)
{
    QStringList list;
    for (const BackupEntry &entry : entries)
        list.append(entry.name);
    return list;
}

BackupEntry entry(const char *name, int second)
{
    return {QString::fromLatin1(name),
            QDateTime(QDate(2026, 1, 2), QTime(3, 4, second), QTimeZone::utc())};
}

/// The folder is that of the home itself.
struct BackupFolderTest : testing::Test {
    [[nodiscard]] QString at(const QString &name) const { return home.path() + u'/' + name; }

    TemporaryHome home;
    LinuxFileStore store {home.home()};
    BackupFolder folder {home.path() + u'/', store};
    LogCapture log;
};

/// Somebody else's home, with a way to a backup file of root's.
struct ForeignBackupFolder : BackupFolderTest {
    void SetUp() override
    {
        VARNEL_NEEDS_ROOT();
        LinuxFileStore outside(vault.home());
        ASSERT_TRUE(BackupWriter(secret, outside).addDataToBackupFile({1004, 77, u""_s}));
    }
    [[nodiscard]] QStringList logged() const { return log.texts(u"varnel.io"_s); }

    TemporaryHome vault;
    QString secret = vault.path() + u"/secret.sqlite";
};

} // namespace

TEST_F(BackupFolderTest, ListsEveryFileWithTheExtensionWhateverItsName)
{
    for (const char *name : {"quillet1.sqlite", "other.sqlite", ".hidden.sqlite", "a.b.sqlite"})
        touch(home.path() + u'/' + QString::fromLatin1(name));
    for (const char *name : {"quillet2.SQLITE", ".sqlite", "sqlite", "a.sqlite.bak", "b.sqlite "})
        touch(home.path() + u'/' + QString::fromLatin1(name));
    QDir(home.path()).mkdir(QStringLiteral("folder.sqlite"));
    QStringList listed = names(folder.list().value());
    std::sort(listed.begin(), listed.end());
    EXPECT_EQ(listed,
              (QStringList {QStringLiteral(".hidden.sqlite"), QStringLiteral("a.b.sqlite"),
                            QStringLiteral("folder.sqlite"), QStringLiteral("other.sqlite"),
                            QStringLiteral("quillet1.sqlite")}));
}

TEST_F(BackupFolderTest, AMissingFolderIsAnEmptyList)
{
    const BackupFolder none(home.path() + u"/none/", store);
    const Result<QList<BackupEntry>> listed = none.list();
    ASSERT_TRUE(listed);
    EXPECT_TRUE(listed.value().isEmpty());
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST(BackupFolder, ATrueFlagSortsAscendingDespiteItsName)
{
    QList<BackupEntry> entries {entry("quillet2.sqlite", 1), entry("Quillet10.sqlite", 3),
                                entry("a.sqlite", 2)};
    sortByName(entries, true);
    EXPECT_EQ(names(entries),
              (QStringList {QStringLiteral("a.sqlite"), QStringLiteral("Quillet10.sqlite"),
                            QStringLiteral("quillet2.sqlite")}));
    sortByName(entries, false);
    EXPECT_EQ(names(entries).first(), QStringLiteral("quillet2.sqlite"));
    sortByDate(entries, true);
    EXPECT_EQ(names(entries).first(), QStringLiteral("quillet2.sqlite"));
    sortByDate(entries, false);
    EXPECT_EQ(names(entries).first(), QStringLiteral("Quillet10.sqlite"));
}

TEST(BackupFolder, TellsTheCreationDateInUniversalTime)
{
    EXPECT_EQ(creationText(entry("a", 5).createdDate), QStringLiteral("2026-01-02 03:04:05 +0000"));
}

TEST_F(BackupFolderTest, TheDateIsThatOfTheFile)
{
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-2);
    touch(home.path() + u"/a.sqlite");
    const QList<BackupEntry> entries = folder.list().value();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].createdDate.timeSpec(), Qt::UTC);
    EXPECT_GE(entries[0].createdDate, before);
    EXPECT_LE(entries[0].createdDate, QDateTime::currentDateTimeUtc().addSecs(2));
}

TEST_F(BackupFolderTest, OfALinkTheDateIsThatOfItsTarget)
{
    touch(at(u"a.sqlite"_s));
    linkTo(u"a.sqlite"_s, at(u"link.sqlite"_s));
    linkTo(u"nowhere"_s, at(u"none.sqlite"_s));
    QList<BackupEntry> entries = folder.list().value();
    sortByName(entries, true);
    ASSERT_EQ(names(entries), (QStringList {u"a.sqlite"_s, u"link.sqlite"_s, u"none.sqlite"_s}));
    EXPECT_EQ(entries[0].createdDate, entries[1].createdDate);
    EXPECT_FALSE(entries[2].createdDate.isValid());
}

TEST_F(BackupFolderTest, OnesOwnFolderMayBeALink)
{
    const TemporaryHome elsewhere;
    touch(elsewhere.path() + u"/a.sqlite");
    linkTo(elsewhere.path(), at(u"Backup"_s));
    BackupFolder linked(at(u"Backup/"_s), store);
    EXPECT_EQ(names(linked.list().value()), QStringList {u"a.sqlite"_s});
    EXPECT_EQ(linked.find(u"a.sqlite"_s).value(), linked.pathOf(u"a.sqlite"_s));
    EXPECT_TRUE(linked.remove(linked.pathOf(u"a.sqlite"_s)));
    EXPECT_FALSE(QFile::exists(elsewhere.path() + u"/a.sqlite"));
}

TEST_F(BackupFolderTest, OnlyWhatIsListedIsFound)
{
    touch(at(u"a.sqlite"_s));
    touch(at(u"notes.txt"_s));
    linkTo(u"loop.sqlite"_s, at(u"loop.sqlite"_s));
    EXPECT_TRUE(folder.find(u"a.sqlite"_s));
    EXPECT_TRUE(folder.find(u"loop.sqlite"_s)) << "it can be deleted";
    for (const QString &name : {u"notes.txt"_s, u"b.sqlite"_s, u".."_s}) {
        const Result<QString> found = folder.find(name);
        ASSERT_FALSE(found) << qPrintable(name);
        EXPECT_EQ(found.error().code, ErrorCode::NotFound);
    }
    EXPECT_TRUE(folder.remove(at(u"loop.sqlite"_s)));
    EXPECT_TRUE(folder.remove(at(u"loop.sqlite"_s))) << "what is gone is no error";
}

TEST_F(BackupFolderTest, WhatIsNoFileIsNotDeletedAndSaidOnce)
{
    QDir(home.path()).mkdir(u"folder.sqlite"_s);
    touch(at(u"folder.sqlite-journal"_s));
    EXPECT_FALSE(folder.remove(at(u"folder.sqlite"_s)));
    EXPECT_TRUE(QFile::exists(at(u"folder.sqlite-journal"_s)));
    EXPECT_EQ(log.texts(u"varnel.io"_s).size(), 1);
}

TEST_F(BackupFolderTest, AFailureToReadAFileIsLoggedOnce)
{
    touch(at(u"words.sqlite"_s));
    for (const QString &name : {u"words.sqlite"_s, u"none.sqlite"_s}) {
        const qsizetype before = log.texts().size();
        const Result<QList<BackupRow>> rows = folder.read(at(name));
        ASSERT_FALSE(rows);
        EXPECT_EQ(log.texts().mid(before), QStringList {rows.error().text});
    }
}

TEST_F(ForeignBackupFolder, ALinkedFolderIsRefusedByEachOperation)
{
    linkTo(vault.path(), at(u"Backup"_s));
    giveAll(home.path(), stranger, stranger);
    BackupFolder linked(at(u"Backup/"_s), store);
    const QString file = linked.pathOf(u"secret.sqlite"_s);
    const auto why = [](const auto &result) { return result ? u"done"_s : result.error().text; };
    const QString ofFile = file + u": a link leads out of the home";
    EXPECT_EQ(why(linked.list()), linked.path() + u": a link leads out of the home");
    EXPECT_EQ(why(linked.find(u"secret.sqlite"_s)), ofFile);
    EXPECT_EQ(why(linked.read(file)), ofFile);
    EXPECT_EQ(why(linked.remove(file)), ofFile);
    EXPECT_FALSE(linked.exists(file));
    EXPECT_TRUE(QFile::exists(secret));
    EXPECT_EQ(logged().size(), 4);
}

TEST_F(ForeignBackupFolder, ALinkedFileIsListedWithoutADateAndRefused)
{
    linkTo(secret, at(u"a.sqlite"_s));
    giveAll(home.path(), stranger, stranger);
    const QList<BackupEntry> entries = folder.list().value();
    ASSERT_EQ(names(entries), QStringList {u"a.sqlite"_s});
    EXPECT_FALSE(entries[0].createdDate.isValid());
    EXPECT_FALSE(folder.find(u"a.sqlite"_s));
    EXPECT_FALSE(folder.read(at(u"a.sqlite"_s)));
    EXPECT_FALSE(folder.remove(at(u"a.sqlite"_s)));
    EXPECT_TRUE(QFile::exists(secret));
}
