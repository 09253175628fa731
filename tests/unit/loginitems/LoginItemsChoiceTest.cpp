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

TEST(LoginItemsChoice, OfNewerSystemsItIsToldThatTheirListIsNotChanged)
{
    const HomeFolder home = other(u"/mnt/mac/Users/anna"_s);
    FakeFileReader files;
    for (const QString &older : {QString(), u"10.5.8"_s, u"10.12.6"_s, u""_s, u"no version"_s})
        EXPECT_TRUE(newerListSentence(home, files, older).isNull()) << qPrintable(older);
    for (const QString &newer : {u"10.13"_s, u"10.15.7"_s, u"11.2"_s, u"14.0"_s})
        EXPECT_TRUE(newerListSentence(home, files, newer).contains(u"Varnel does not change"))
            << qPrintable(newer);
    files.files[home.path
                + u"/Library/Application Support/com.apple.backgroundtaskmanagementagent/"
                  "backgrounditems.btm"] = "";
    EXPECT_FALSE(newerListSentence(home, files, {}).isNull());
    EXPECT_FALSE(newerListSentence(home, files, u"10.12.6"_s).isNull());
}
