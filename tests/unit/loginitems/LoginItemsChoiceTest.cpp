#include "loginitems/LoginItemsChoice.h"

#include "base/Literals.h"
#include "support/FakeFileReader.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString listFile = u"/Library/Preferences/com.apple.loginitems.plist"_s;

HomeFolder other(const QString &path)
{
    return {path, false};
}

QByteArray system(const QByteArray &version)
{
    return "<plist version=\"1.0\"><dict><key>ProductVersion</key><string>" + version
        + "</string></dict></plist>";
}

} // namespace

TEST(LoginItemsChoice, OnesOwnHomeHasTheSessionsList)
{
    FakeFileReader files;
    EXPECT_EQ(usualList({u"/home/anna"_s, true}, files), LoginItemsList::Session);
    files.files[u"/home/anna"_s + listFile] = "";
    EXPECT_EQ(usualList({u"/home/anna"_s, true}, files), LoginItemsList::Session);
}

TEST(LoginItemsChoice, AnotherHomeHasTheAccountsUnlessItOnlyHasEntriesOfASession)
{
    FakeFileReader files;
    const QString home = u"/mnt/mac/Users/anna"_s;
    EXPECT_EQ(usualList(other(home), files), LoginItemsList::Account);
    files.files[home + u"/.config/autostart"] = "";
    EXPECT_EQ(usualList(other(home), files), LoginItemsList::Session);
    files.files[home + listFile] = "";
    EXPECT_EQ(usualList(other(home), files), LoginItemsList::Account);
}

TEST(LoginItemsChoice, TheDiskOfAHomeIsWhatItsFolderOfUsersIsIn)
{
    EXPECT_EQ(diskOf(other(u"/mnt/mac/Users/anna"_s)), u"/mnt/mac");
    EXPECT_EQ(diskOf(other(u"/Users/anna"_s)), u"");
    EXPECT_FALSE(diskOf(other(u"/Users/anna"_s)).isNull());
    EXPECT_TRUE(diskOf(other(u"/home/anna"_s)).isNull());
    EXPECT_TRUE(diskOf(other(u"/mnt/my.Users/anna"_s)).isNull());
}

TEST(LoginItemsChoice, OfNewerSystemsItIsToldThatTheirListIsNotChanged)
{
    const HomeFolder home = other(u"/mnt/mac/Users/anna"_s);
    const QString version = u"/mnt/mac/System/Library/CoreServices/SystemVersion.plist"_s;
    FakeFileReader files;
    FakeFileReader disk;
    EXPECT_TRUE(newerListSentence(home, files, disk).isNull());
    for (const QByteArray older : {"10.5.8", "10.12.6", "", "no version"}) {
        disk.files[version] = system(older);
        EXPECT_TRUE(newerListSentence(home, files, disk).isNull()) << older.constData();
    }
    for (const QByteArray newer : {"10.13", "10.15.7", "11.2", "14.0"}) {
        disk.files[version] = system(newer);
        EXPECT_TRUE(newerListSentence(home, files, disk).contains(u"Varnel does not change"))
            << newer.constData();
    }
    disk.files.clear();
    files.files[home.path
                + u"/Library/Application Support/com.apple.backgroundtaskmanagementagent/"
                  "backgrounditems.btm"] = "";
    EXPECT_FALSE(newerListSentence(home, files, disk).isNull());
}
