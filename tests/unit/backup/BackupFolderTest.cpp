#include "backup/BackupFolder.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QFile>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <algorithm>

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

} // namespace

TEST(BackupFolder, ListsEveryFileWithTheExtensionWhateverItsName)
{
    const TemporaryHome home;
    for (const char *name : {"quillet1.sqlite", "other.sqlite", ".hidden.sqlite", "a.b.sqlite"})
        touch(home.path() + u'/' + QString::fromLatin1(name));
    for (const char *name : {"quillet2.SQLITE", ".sqlite", "sqlite", "a.sqlite.bak", "b.sqlite "})
        touch(home.path() + u'/' + QString::fromLatin1(name));
    QDir(home.path()).mkdir(QStringLiteral("folder.sqlite"));
    QStringList listed = names(listBackups(home.path()));
    std::sort(listed.begin(), listed.end());
    EXPECT_EQ(listed,
              (QStringList {QStringLiteral(".hidden.sqlite"), QStringLiteral("a.b.sqlite"),
                            QStringLiteral("folder.sqlite"), QStringLiteral("other.sqlite"),
                            QStringLiteral("quillet1.sqlite")}));
}

TEST(BackupFolder, AMissingFolderIsAnEmptyList)
{
    const TemporaryHome home;
    EXPECT_TRUE(listBackups(home.path() + u"/none").isEmpty());
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

TEST(BackupFolder, TheDateIsThatOfTheFile)
{
    const TemporaryHome home;
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-2);
    touch(home.path() + u"/a.sqlite");
    const QList<BackupEntry> entries = listBackups(home.path());
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].createdDate.timeSpec(), Qt::UTC);
    EXPECT_GE(entries[0].createdDate, before);
    EXPECT_LE(entries[0].createdDate, QDateTime::currentDateTimeUtc().addSecs(2));
}
