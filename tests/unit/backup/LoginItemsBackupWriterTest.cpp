#include "backup/LoginItemsBackupWriter.h"

#include "backup/BackupReader.h"
#include "backup/BackupWriter.h"
#include "platform/linux/LinuxFileStore.h"
#include "settings/PendingChanges.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace Qt::Literals::StringLiterals;

namespace {

class LoginItemsBackup : public testing::Test {
protected:
    /// "path action flag" of each login-item row, the number alone of any other.
    QStringList rows() const
    {
        QStringList lines;
        const Result<QList<BackupRow>> all = readBackupRows(path);
        if (!all)
            return lines;
        for (const BackupRow &row : all.value())
            lines.append(row.isLoginItem()
                             ? row.loginItemPath() + u' ' + QString::number(row.loginItemAction())
                                 + u' ' + QString::number(row.enabledFlag())
                             : QString::number(row.id));
        return lines;
    }

    TemporaryHome home;
    QString path = home.path() + u"/quillet1.sqlite";
    LinuxFileStore store {home.home()};
    LoginItemsBackupWriter writer {path, store};
};

} // namespace

TEST_F(LoginItemsBackup, NothingWrittenMakesNoFile)
{
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(LoginItemsBackup, ARowHoldsTheInverseOfItsAction)
{
    for (const int action : {0, 1, 2, 3, 4})
        EXPECT_TRUE(writer.addDataToBackupFile(action, u"/A/"_s + QString::number(action),
                                               action == 1 ? 1 : 0));
    EXPECT_EQ(
        rows(),
        (QStringList {u"/A/0 1 0"_s, u"/A/1 0 1"_s, u"/A/2 3 0"_s, u"/A/3 2 0"_s, u"/A/4 1 0"_s}));
}

TEST_F(LoginItemsBackup, TheFirstRowOfAPathWins)
{
    EXPECT_TRUE(writer.addDataToBackupFile(1, u"/A/Mail.app"_s, 1));
    EXPECT_TRUE(writer.addDataToBackupFile(0, u"/A/Mail.app"_s, 0));
    EXPECT_EQ(rows(), QStringList {u"/A/Mail.app 0 1"_s});
}

TEST_F(LoginItemsBackup, ASettingsRowWithTheSameTextDoesNotInterfere)
{
    EXPECT_TRUE(BackupWriter(path, store).addDataToBackupFile({1009, 2, {}}));
    EXPECT_TRUE(writer.addDataToBackupFile(0, u"2"_s, 0));
    EXPECT_TRUE(BackupWriter(path, store).addDataToBackupFile({1010, 2, {}}));
    EXPECT_EQ(rows(), (QStringList {u"1009"_s, u"2 1 0"_s, u"1010"_s}));
}

TEST_F(LoginItemsBackup, ANewRowIsLoggedStepByStepAndAKnownOneEndsAtItsFinding)
{
    const QString opened = u"Opened sqlite database at "_s + path;
    const QString named = u"addDataToBackupFile (LoginItemsView): "_s + path;
    const QString table = u"Create the SQL query for creating a table"_s;
    const QString search =
        u"searchQuery (LoginItemsView): SELECT * FROM users WHERE id=250 AND value1='/A/M.app'"_s;
    {
        const LogCapture log;
        EXPECT_TRUE(writer.addDataToBackupFile(3, u"/A/M.app"_s, 0));
        EXPECT_EQ(
            log.texts(u"varnel.backup"_s),
            (QStringList {
                named, opened, table, search, u"Data found1!"_s,
                u"query (LoginItemsView): INSERT INTO users VALUES('250','/A/M.app', '2', '0')"_s,
                u"Create the SQL query for inserting data"_s}));
    }
    const LogCapture log;
    EXPECT_TRUE(writer.addDataToBackupFile(3, u"/A/M.app"_s, 0));
    EXPECT_EQ(log.texts(u"varnel.backup"_s),
              (QStringList {named, opened, table, search, u"Data found1!"_s, u"Data found2!"_s}));
}

TEST_F(LoginItemsBackup, AnApostropheFailsTheInsertionWithALoggedError)
{
    const LogCapture log;
    EXPECT_FALSE(writer.addDataToBackupFile(1, u"/A/Ann's.app"_s, 1).ok());
    const QStringList texts = log.texts(u"varnel.backup"_s);
    EXPECT_EQ(texts.last(),
              u"Failed to create the SQL query for inserting data with error: "
              "near \"s\": syntax error"_s);
    EXPECT_FALSE(texts.contains(u"Data found1!"_s)) << "the search can't be prepared either";
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(LoginItemsBackup, AFileThatCannotBeOpenedIsSilentInTheBackupsLog)
{
    const LogCapture log;
    LoginItemsBackupWriter lost(home.path() + u"/none/quillet1.sqlite", store);
    EXPECT_FALSE(lost.addDataToBackupFile(1, u"/A/M.app"_s, 1).ok());
    EXPECT_EQ(log.texts(u"varnel.backup"_s).size(), 1) << "its own name, and nothing more";
}
