#include "loginitems/LoginItemsAccess.h"

#include "base/Logging.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFileStore.h"
#include "support/FakeSessionLoginItems.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString mail = u"/A/Mail.app"_s;

struct FakeKeeper : InverseKeeper {
    Result<void> addDataToBackupFile(int actionId, const QString &path, int enabledFlag) override
    {
        varnelLog(lcLoginItems,
                  u"backup: " + QString::number(actionId) + u' ' + path + u' '
                      + QString::number(enabledFlag));
        if (failure)
            return *failure;
        return {};
    }
    std::optional<Error> failure;
};

class LoginItemsAccessTest : public testing::Test {
protected:
    /// The steps that a change takes, without the store's searches.
    QStringList steps(int action, bool enabled, bool backup, const QString &path = mail)
    {
        const LogCapture log;
        outcome = access.writeData(action, path, enabled, backup);
        QStringList all = log.texts(u"varnel.loginitems"_s);
        all.removeIf([](const QString &text) {
            return text.startsWith(u"searchQuery") || text.startsWith(u"Opened");
        });
        return all;
    }
    QStringList lines(LoginItemsAccess::Reading reading = LoginItemsAccess::Reading::Clean)
    {
        QStringList lines;
        for (const LoginItemRow &row : access.readData(reading))
            lines.append((row.enabled ? u"on "_s : u"off "_s) + row.name + u' ' + row.path);
        return lines;
    }

    QTemporaryDir folder;
    LinuxFileStore files {{folder.path(), false}};
    LinuxFileReader reader;
    FakeSessionLoginItems session;
    DisabledItemsStore store {folder.path() + u'/', files};
    FakeKeeper keeper;
    LoginItemsAccess access {session, store, keeper, reader};
    Result<void> outcome;
};

const QString insertQuery =
    u"query (addDisabledLoginItemsData): INSERT INTO users VALUES('/A/Mail.app')"_s;
const QString deleteQuery =
    u"query (deleteDisabledLoginItemsData): DELETE FROM users WHERE value1='/A/Mail.app'"_s;

} // namespace

TEST_F(LoginItemsAccessTest, AddingAnItemThatIsOffPutsItIntoTheStore)
{
    EXPECT_EQ(steps(0, false, true), (QStringList {u"backup: 0 /A/Mail.app 0"_s, insertQuery}));
    EXPECT_EQ(lines(), QStringList {u"off Mail.app /A/Mail.app"_s});
}

TEST_F(LoginItemsAccessTest, AddingAnItemThatIsOnPutsItIntoTheSessionsList)
{
    EXPECT_EQ(steps(0, true, true),
              (QStringList {u"backup: 0 /A/Mail.app 0"_s, u"session: insert /A/Mail.app"_s}));
    EXPECT_EQ(lines(), QStringList {u"on Mail.app /A/Mail.app"_s});
}

TEST_F(LoginItemsAccessTest, RemovingAnItemThatIsOnTouchesTheSessionsListOnly)
{
    session.items = {{u"Mail"_s, mail, {}}};
    EXPECT_EQ(steps(1, true, true),
              (QStringList {u"backup: 1 /A/Mail.app 1"_s, u"session: remove /A/Mail.app"_s}));
}

TEST_F(LoginItemsAccessTest, RemovingAnItemThatIsOffTouchesTheStoreOnly)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(mail, {}));
    EXPECT_EQ(steps(1, false, true), (QStringList {u"backup: 1 /A/Mail.app 0"_s, deleteQuery}));
    EXPECT_TRUE(lines().isEmpty());
}

TEST_F(LoginItemsAccessTest, EnablingInsertsIntoTheListThenDeletesFromTheStore)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(mail, {}));
    EXPECT_EQ(steps(2, true, true),
              (QStringList {u"backup: 2 /A/Mail.app 0"_s, u"session: insert /A/Mail.app"_s,
                            deleteQuery}));
}

TEST_F(LoginItemsAccessTest, DisablingStoresThenRemovesFromTheList)
{
    session.items = {{u"Mail"_s, mail, {}}};
    EXPECT_EQ(steps(3, true, true),
              (QStringList {u"backup: 3 /A/Mail.app 0"_s, insertQuery,
                            u"session: remove /A/Mail.app"_s}));
}

TEST_F(LoginItemsAccessTest, WithoutItsFlagNothingIsKeptFirst)
{
    EXPECT_EQ(steps(0, true, false), QStringList {u"session: insert /A/Mail.app"_s});
}

TEST_F(LoginItemsAccessTest, WhereNothingWasEverStoredNothingHasToLeaveTheStore)
{
    EXPECT_EQ(steps(1, false, false).mid(1),
              QStringList {u"Failed to create the SQL query for deleting data with error: "
                           "no such table: users"_s});
    EXPECT_TRUE(outcome.ok());
    EXPECT_FALSE(steps(2, true, false).isEmpty());
    EXPECT_TRUE(outcome.ok());
    EXPECT_EQ(lines(), QStringList {u"on Mail.app /A/Mail.app"_s});
}

TEST_F(LoginItemsAccessTest, OtherActionNumbersDoNothing)
{
    for (const int action : {4, 5, 250, -1}) {
        EXPECT_TRUE(steps(action, true, true).isEmpty());
        EXPECT_TRUE(outcome.ok());
    }
}

TEST_F(LoginItemsAccessTest, AFailedBackupStopsNoChangeAndIsTold)
{
    keeper.failure = Error {ErrorCode::Failed, u"no room"_s};
    EXPECT_TRUE(steps(0, true, true).contains(u"session: insert /A/Mail.app"_s));
    ASSERT_FALSE(outcome.ok());
    EXPECT_EQ(outcome.error().text, u"no room"_s);
}

TEST_F(LoginItemsAccessTest, WhereStoringFailsDisablingStillRemoves)
{
    const QString apostrophe = u"/A/Ann's.app"_s;
    session.items = {{u"Ann's"_s, apostrophe, {}}};
    const QStringList all = steps(3, true, false, apostrophe);
    EXPECT_EQ(all.last(), u"session: remove /A/Ann's.app"_s);
    EXPECT_TRUE(all[all.size() - 2].startsWith(
        u"Failed to create the SQL query for inserting data with error: "_s));
    EXPECT_FALSE(outcome.ok());
    EXPECT_TRUE(session.items.isEmpty());
}

TEST_F(LoginItemsAccessTest, WhereInsertingFailsTheItemStaysInTheStoreAndTheFailureIsToldOnce)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(mail, {}));
    session.failure = Error {ErrorCode::NotPermitted, u"list.desktop: Permission denied"_s};
    const LogCapture log;
    const Result<void> enabled = access.writeData(2, mail, true, false);
    ASSERT_FALSE(enabled.ok());
    EXPECT_EQ(enabled.error().text, session.failure->text);
    EXPECT_FALSE(log.texts(u"varnel.loginitems"_s).contains(deleteQuery));
    EXPECT_EQ(log.texts(u"varnel.io"_s), QStringList {u"list.desktop: Permission denied"_s});
    session.failure.reset();
    EXPECT_EQ(lines(), QStringList {u"off Mail.app /A/Mail.app"_s});
}

TEST_F(LoginItemsAccessTest, WhatIsNotInTheListAfterItWasAddedStaysInTheStoreAndIsToldOnce)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(mail, {}));
    session.hidesWhatIsInserted = true;
    const LogCapture log;
    const Result<void> enabled = access.writeData(2, mail, true, false);
    ASSERT_FALSE(enabled.ok());
    EXPECT_FALSE(log.texts(u"varnel.loginitems"_s).contains(deleteQuery));
    EXPECT_EQ(log.texts(u"varnel.io"_s), QStringList {mail + u": " + enabled.error().text});
    EXPECT_EQ(lines(), QStringList {u"off Mail.app /A/Mail.app"_s});
}

TEST_F(LoginItemsAccessTest, WhatIsInTheListLeavesTheStoreThoughItsPlaceCouldNotBeChanged)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(mail, {}));
    session.items = {{u"Mail"_s, mail, {}}};
    session.insertFailure = Error {ErrorCode::Failed, u"no order"_s};
    EXPECT_TRUE(steps(2, true, false).contains(deleteQuery));
    EXPECT_FALSE(outcome.ok());
}

TEST_F(LoginItemsAccessTest, EnabledItemsComeFirstThenTheStoresOwnNames)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(u"/A/Clock.app"_s, {}));
    session.items = {{u"Electronic Mail"_s, mail, {}}};
    EXPECT_EQ(lines(),
              (QStringList {u"on Electronic Mail /A/Mail.app"_s, u"off Clock.app /A/Clock.app"_s}));
}

TEST_F(LoginItemsAccessTest, WhatStandsInBothIsShownOnceAsEnabledAndLeavesTheStore)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(mail, {}));
    session.items = {{u"Mail"_s, mail, {}}};
    EXPECT_EQ(lines(LoginItemsAccess::Reading::LookOnly), QStringList {u"on Mail /A/Mail.app"_s});
    EXPECT_EQ(lines(), QStringList {u"on Mail /A/Mail.app"_s});
    session.items.clear();
    EXPECT_TRUE(lines().isEmpty()) << "only the second reading was to clean up";
}

TEST_F(LoginItemsAccessTest, LookingOnlyLeavesTheStoreAsItIs)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(mail, {}));
    session.items = {{u"Mail"_s, mail, {}}};
    (void)lines(LoginItemsAccess::Reading::LookOnly);
    session.items.clear();
    EXPECT_EQ(lines(), QStringList {u"off Mail.app /A/Mail.app"_s});
}

TEST_F(LoginItemsAccessTest, AListThatCannotBeHadLeavesTheStoresRows)
{
    EXPECT_TRUE(store.addDisabledLoginItemsData(mail, {}));
    session.failure = Error {ErrorCode::Failed, u"no list"_s};
    EXPECT_EQ(lines(), QStringList {u"off Mail.app /A/Mail.app"_s});
}

TEST_F(LoginItemsAccessTest, ABundlesIconIsTheOneThatItsInfoNames)
{
    const QString bundle = folder.path() + u"/Mail.app"_s;
    QDir().mkpath(bundle + u"/Contents/Resources");
    EXPECT_EQ(access.newRow(bundle).icon, bundle + u"/Contents/Resources/(null).icns");
    writeRaw(bundle + u"/Contents/Info.plist",
             "<plist version=\"1.0\"><dict><key>CFBundleIconFile</key><integer>7</integer>"
             "</dict></plist>");
    EXPECT_EQ(access.newRow(bundle).icon, bundle + u"/Contents/Resources/7.icns");
    writeRaw(bundle + u"/Contents/Info.plist",
             "<plist version=\"1.0\"><dict><key>CFBundleIconFile</key><string>Letter</string>"
             "</dict></plist>");
    EXPECT_EQ(access.newRow(bundle).icon, bundle + u"/Contents/Resources/Letter.icns");
    writeRaw(bundle + u"/Contents/Resources/Letter", "x");
    EXPECT_EQ(access.newRow(bundle).icon, bundle + u"/Contents/Resources/Letter");

    EXPECT_TRUE(store.addDisabledLoginItemsData(bundle, {}));
    EXPECT_EQ(access.readData().first().icon, bundle + u"/Contents/Resources/Letter")
        << "a disabled row";
    session.items = {{u"Mail"_s, bundle, {}}};
    EXPECT_EQ(access.readData().first().icon, bundle + u"/Contents/Resources/Letter")
        << "an enabled row whose entry names none";
    session.items = {{u"Mail"_s, bundle, u"mail-app"_s}};
    EXPECT_EQ(access.readData().first().icon, u"mail-app"_s) << "the entry's own goes first";
}

TEST_F(LoginItemsAccessTest, ADesktopEntrysIconIsWhatTheSessionSays)
{
    session.icons = {{u"/apps/clock.desktop"_s, u"clock"_s}};
    EXPECT_EQ(access.newRow(u"/apps/clock.desktop"_s),
              (LoginItemRow {u"clock.desktop"_s, u"/apps/clock.desktop"_s, true, u"clock"_s}));
}
