// The settings that are more than one key with one value for each choice.

#include "support/LogCapture.h"
#include "support/PlistReferee.h"
#include "support/SettingsHome.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString safari = QStringLiteral("com.apple.Safari.plist");
const QString iTunes = QStringLiteral("com.apple.iTunes.plist");
const QString mail = QStringLiteral("com.apple.Mail.plist");
const QString screenCapture = QStringLiteral("com.apple.screencapture.plist");
const QString settingsLog = QStringLiteral("varnel.settings");

const QString toolbar =
    QStringLiteral("<key>NSToolbar Configuration BrowserWindowToolbarIdentifier</key>");

SettingValue text(QStringView value)
{
    return {0, value.toString()};
}

class SpecialSettings : public testing::Test {
protected:
    int index(int id) const { return home.read(id).value.number; }
    QString string(int id) const { return home.read(id).value.text; }
    QString printed(const QString &file) const { return PlistReferee::read(home.path(file)); }

    SettingsHome home;
};

/// Those whose outcome an independent reader tells.
class SpecialSettingsOnDisk : public SpecialSettings {
protected:
    void SetUp() override
    {
        if (!PlistReferee::isHere())
            GTEST_SKIP() << "no python3";
    }
};

} // namespace

TEST_F(SpecialSettings, ADebugMenuOfOnlyTheOtherKeyShowsTheDefault)
{
    home.put(safari, u"<key>IncludeDebugMenu</key><integer>1</integer>"_s);
    EXPECT_EQ(index(1201), 2);
    home.put(safari, u"<key>IncludeInternalDebugMenu</key><true/>"_s);
    EXPECT_EQ(index(1201), 0);
}

TEST_F(SpecialSettingsOnDisk, TheDebugMenuWritesAndRemovesBothOfItsKeys)
{
    ASSERT_TRUE(home.write(1201, {0}).ok());
    EXPECT_EQ(printed(safari), u"{'IncludeDebugMenu': 1, 'IncludeInternalDebugMenu': 1}"_s);
    ASSERT_TRUE(home.write(1201, {2}).ok());
    EXPECT_EQ(printed(safari), u"{}"_s);
}

TEST_F(SpecialSettings, TheDefaultOfTheDebugMenuMakesNoFile)
{
    ASSERT_TRUE(home.write(1201, {2}).ok());
    ASSERT_TRUE(home.write(1602, {2}).ok());
    EXPECT_FALSE(home.has(safari));
    EXPECT_FALSE(home.has(iTunes));
}

TEST_F(SpecialSettings, TheLibraryPlaylistIsReadFromBothOfItsKeys)
{
    const auto indexOf = [this](const QString &hide, const QString &show) {
        QString entries;
        if (!hide.isEmpty())
            entries += u"<key>hide-library-playlist</key>"_s + hide;
        if (!show.isEmpty())
            entries += u"<key>show-library-playlist</key>"_s + show;
        home.put(iTunes, entries);
        return index(1602);
    };
    const QString one = u"<integer>1</integer>"_s;
    const QString zero = u"<false/>"_s;
    const QString five = u"<integer>5</integer>"_s;
    EXPECT_EQ(indexOf(one, one), 0) << "both set shows yes";
    EXPECT_EQ(indexOf(one, zero), 1);
    EXPECT_EQ(indexOf(zero, one), 0);
    EXPECT_EQ(indexOf(zero, zero), 0);
    EXPECT_EQ(indexOf(five, five), 1) << "non-zero, and not 1";
    EXPECT_EQ(indexOf(one, u""_s), 2) << "only one of the keys is there";
    EXPECT_EQ(indexOf(u""_s, zero), 2);
    EXPECT_EQ(indexOf(u""_s, u""_s), 2);
    EXPECT_EQ(indexOf(u"<array/>"_s, one), 2);
}

TEST_F(SpecialSettings, ToolbarTextShowsTheDefaultForOneAndForWhateverIsMissing)
{
    const auto indexOf = [this](const QString &inner) {
        home.put(safari, toolbar + u"<dict>"_s + inner + u"</dict>"_s);
        return index(1204);
    };
    EXPECT_EQ(indexOf(u"<key>TB Display Mode</key><integer>0</integer>"_s), 0);
    EXPECT_EQ(indexOf(u"<key>TB Display Mode</key><integer>2</integer>"_s), 1);
    EXPECT_EQ(indexOf(u"<key>TB Display Mode</key><integer>1</integer>"_s), 2);
    EXPECT_EQ(indexOf(u""_s), 2);
    home.put(safari, toolbar + u"<string>x</string>"_s);
    EXPECT_EQ(index(1204), 2);
}

TEST_F(SpecialSettings, ReadingToolbarTextLogsWhetherTheDictionaryIsThere)
{
    const LogCapture log;
    (void)home.read(1204);
    home.put(safari, toolbar + u"<dict/>"_s);
    (void)home.read(1204);
    EXPECT_EQ(log.texts(settingsLog), (QStringList {u"Value Not Found"_s, u"Value Found"_s}));
}

TEST_F(SpecialSettings, WhatWasSeenLastIsToldWithoutALogLineAndNotReadAgain)
{
    const auto put = [this](const QString &mode) {
        home.put(safari,
                 toolbar + u"<dict><key>TB Display Mode</key><integer>"_s + mode
                     + u"</integer></dict>"_s);
    };
    const auto seen = [this] { return home.access.lastSeen(*findSetting(1204)).value.number; };
    put(u"0"_s);
    EXPECT_EQ(index(1204), 0);
    const LogCapture log;
    put(u"2"_s);
    EXPECT_EQ(seen(), 0);
    ASSERT_TRUE(home.write(1204, {2}).ok());
    EXPECT_EQ(seen(), 2);
    EXPECT_EQ(log.texts(settingsLog), QStringList());
}

TEST_F(SpecialSettings, WhatWasSeenLastFollowsEveryWriteAsFarAsItWasMade)
{
    const auto seen = [this](int id) { return home.access.lastSeen(*findSetting(id)).value; };
    (void)home.read(1204);
    ASSERT_TRUE(home.write(1204, {0}).ok());
    EXPECT_EQ(seen(1204), SettingValue {2}) << "there is no dictionary to write into";
    (void)home.read(1603);
    ASSERT_TRUE(home.write(1600, {1}).ok());
    EXPECT_EQ(seen(1603), SettingValue {1}) << "of one key with the other";
    (void)home.read(1004);
    ASSERT_TRUE(home.write(1004, {-7}).ok());
    EXPECT_EQ(seen(1004), SettingValue {-1});
    EXPECT_EQ(seen(1003), SettingValue {-1}) << "never read before";
}

TEST_F(SpecialSettingsOnDisk, SavingNoOverADisplayModeOfOneStoresTwo)
{
    home.put(safari, toolbar + u"<dict><key>TB Display Mode</key><integer>1</integer></dict>"_s);
    ASSERT_TRUE(home.write(1204, {1}).ok());
    EXPECT_EQ(
        printed(safari),
        u"{'NSToolbar Configuration BrowserWindowToolbarIdentifier': {'TB Display Mode': 2}}"_s);
}

TEST_F(SpecialSettings, ToolbarTextMakesNeitherItsFileNorItsDictionary)
{
    ASSERT_TRUE(home.write(1204, {0}).ok());
    EXPECT_FALSE(home.has(safari));
    home.put(safari, u"<key>other</key><true/>"_s);
    const QByteArray before = home.bytes(safari);
    ASSERT_TRUE(home.write(1204, {0}).ok());
    ASSERT_TRUE(home.write(1204, {2}).ok());
    EXPECT_EQ(home.bytes(safari), before);
    EXPECT_EQ(home.flags, RestartFlags(RestartFlag::Safari)) << "raised whatever was written";
}

TEST_F(SpecialSettingsOnDisk, ASnapshotPolicyOfOneShowsNoAndSavingThatRemovesTheKey)
{
    home.put(safari, u"<key>DebugSnapshotsUpdatePolicy</key><integer>1</integer>"_s);
    EXPECT_EQ(index(1205), 1);
    ASSERT_TRUE(home.write(1205, {1}).ok());
    EXPECT_EQ(printed(safari), u"{}"_s);
    ASSERT_TRUE(home.write(1205, {0}).ok());
    EXPECT_EQ(printed(safari), u"{'DebugSnapshotsUpdatePolicy': 2}"_s);
}

TEST_F(SpecialSettings, AnIndexOfSevenOfAYesNoSettingHasTheDefaultSentence)
{
    EXPECT_EQ(actionString(*findSetting(1100), {7}),
              u"Use default value on the Quit Finder menu visibility"_s);
    EXPECT_EQ(actionString(*findSetting(1205), {7}),
              u"Use default value on caching Top Sites and History thumbnail images"_s);
}

TEST_F(SpecialSettingsOnDisk, AYesNoSettingThatHoldsFiveShowsTheDefaultAndSavingThatRemovesIt)
{
    home.put(u"com.apple.dock.plist"_s, u"<key>autohide</key><integer>5</integer>"_s);
    EXPECT_EQ(index(1009), 2);
    ASSERT_TRUE(home.write(1009, {2}).ok());
    EXPECT_EQ(printed(u"com.apple.dock.plist"_s), u"{}"_s);
}

TEST_F(SpecialSettings, ScrollBarsTakeAlwaysInAnyLetterCase)
{
    for (const auto &stored : {u"Always"_s, u"ALWAYS"_s, u"always"_s}) {
        home.put(u".GlobalPreferences.plist"_s,
                 u"<key>AppleShowScrollBars</key><string>"_s + stored + u"</string>"_s);
        EXPECT_EQ(index(1300), 2);
    }
}

TEST_F(SpecialSettings, TheFileFormatTakesOnlySmallLetters)
{
    const auto indexOf = [this](const QString &stored) {
        home.put(screenCapture, u"<key>type</key><string>"_s + stored + u"</string>"_s);
        return index(1402);
    };
    EXPECT_EQ(indexOf(u"png"_s), 4);
    EXPECT_EQ(indexOf(u"PNG"_s), 7);
    home.put(screenCapture, u""_s);
    EXPECT_EQ(index(1402), 7);
}

TEST_F(SpecialSettingsOnDisk, TheKeysOfInlineAttachmentsAndPlainTextAreCrossed)
{
    ASSERT_TRUE(home.write(1504, {0}).ok());
    EXPECT_EQ(printed(mail), u"{'PreferPlainText': 1}"_s);
    ASSERT_TRUE(home.write(1502, {0}).ok());
    EXPECT_EQ(printed(mail), u"{'DisableInlineAttachmentViewing': 0, 'PreferPlainText': 1}"_s);
}

TEST_F(SpecialSettings, ChangingSongPreviewsChangesHalfStarsToo)
{
    ASSERT_TRUE(home.write(1600, {1}).ok());
    EXPECT_EQ(index(1603), 1);
    ASSERT_TRUE(home.write(1603, {0}).ok());
    EXPECT_EQ(index(1600), 0);
}

TEST_F(SpecialSettings, GeneralAndScreenCaptureSettingsAskForNoRestart)
{
    for (const int id : {1300, 1301, 1302, 1303, 1304, 1400, 1401, 1402, 1403})
        (void)home.write(id, {0, u"text"_s}); // the folder's flag can't be kept everywhere
    EXPECT_EQ(home.flags, RestartFlags());
    EXPECT_TRUE(home.has(screenCapture));
}

TEST_F(SpecialSettings, NumbersReadAsTheyStandAndMinusOneWhenMissing)
{
    EXPECT_EQ(home.read(1004).value, SettingValue {-1});
    EXPECT_FALSE(home.read(1004).found);
    home.put(u"com.apple.dock.plist"_s,
             u"<key>tilesize</key><real>500.9</real><key>largesize</key><integer>0</integer>"_s);
    EXPECT_EQ(home.read(1004).value, SettingValue {500});
    EXPECT_EQ(home.read(1003).value, SettingValue {0});
    EXPECT_TRUE(home.read(1003).found);
    EXPECT_EQ(index(1203), -1) << "although 18 is shown";
}

TEST_F(SpecialSettingsOnDisk, ANegativeNumberRemovesAndZeroIsWritten)
{
    ASSERT_TRUE(home.write(1203, {0}).ok());
    EXPECT_EQ(printed(safari), u"{'RecentHistoryMenuItemsLimit': 0}"_s);
    ASSERT_TRUE(home.write(1203, {-7}).ok());
    EXPECT_EQ(printed(safari), u"{}"_s);
}

TEST_F(SpecialSettings, TheSentenceOfTheHistoryMenuIsFilledWithMinusOneForTheDefault)
{
    EXPECT_EQ(actionString(*findSetting(1203), {-1}),
              u"Set maximum number of items in main history menu to -1"_s);
}

TEST_F(SpecialSettings, TheSentenceOfAnIconSizeKeepsItsPlaceholder)
{
    EXPECT_EQ(actionString(*findSetting(1004), {48}), u"Set icon size on the Dock to %s"_s);
    EXPECT_EQ(actionString(*findSetting(1003), {-2}), u"set icon magnification size to %s"_s);
}

TEST_F(SpecialSettings, TextsReadAsTheyStandAndMinusOneWhenMissing)
{
    EXPECT_EQ(home.read(1400).value, text(u"-1"));
    home.put(screenCapture, u"<key>name</key><string> a &amp; %1 </string>"_s);
    EXPECT_EQ(home.read(1400).value, text(u" a & %1 "));
    home.put(screenCapture, u"<key>name</key><string></string>"_s);
    EXPECT_EQ(home.read(1400).value, text(u""));
    EXPECT_TRUE(home.read(1400).found);
}

TEST_F(SpecialSettings, WhatIsNoTextReadsInItsTextFormAndSaysSo)
{
    const auto read = [this](const QString &form) {
        home.put(screenCapture, u"<key>location</key>"_s + form);
        const SettingReading reading = home.read(1403);
        EXPECT_TRUE(reading.found) << form.toStdString();
        EXPECT_TRUE(reading.notText) << form.toStdString();
        return reading.value;
    };
    EXPECT_EQ(read(u"<integer>-42</integer>"_s), text(u"-42"));
    EXPECT_EQ(read(u"<real>0.5</real>"_s), text(u"0.5"));
    EXPECT_EQ(read(u"<true/>"_s), text(u"1"));
    EXPECT_EQ(read(u"<false/>"_s), text(u"0"));
    EXPECT_EQ(read(u"<data>\nSGVs\tbG8=\n</data>"_s), text(u"<48656c6c 6f>"));
    EXPECT_EQ(read(u"<data></data>"_s), text(u"<>"));
    EXPECT_EQ(read(u"<array><string>a b</string><string>c</string></array>"_s),
              text(u"(\n    \"a b\",\n    c\n)"));
    const QString large = u"<data>"_s + QString(100000, u'A') + u"</data>";
    for (const QString &form : {u"<array><integer>1</integer></array>"_s, u"<dict/>"_s, large,
                                u"<date>2011-07-20T12:00:00Z</date>"_s})
        EXPECT_EQ(read(form), text(u"(no text form)")) << form.toStdString();
}

TEST_F(SpecialSettings, ATextOrNothingIsNoCaseForThat)
{
    EXPECT_FALSE(home.read(1400).notText);
    home.put(screenCapture, u"<key>name</key><string>5</string>"_s);
    EXPECT_FALSE(home.read(1400).notText);
    home.put(screenCapture, u"<key>type</key><integer>5</integer>"_s);
    EXPECT_FALSE(home.read(1402).notText) << "a choice that is none reads as the default";
}

TEST_F(SpecialSettingsOnDisk, TheTextFormOfWhatIsNoTextIsAnEditOfItsOwn)
{
    home.put(screenCapture, u"<key>name</key><integer>5</integer>"_s);
    ASSERT_TRUE(home.write(1400, home.read(1400).value).ok());
    EXPECT_EQ(printed(screenCapture), u"{'name': '5'}"_s);
    EXPECT_FALSE(home.access.lastSeen(*findSetting(1400)).notText);
}

TEST_F(SpecialSettingsOnDisk, AnEmptyTextIsWrittenAndMinusOneRemoves)
{
    ASSERT_TRUE(home.write(1403, text(u"")).ok());
    EXPECT_EQ(printed(screenCapture), u"{'location': ''}"_s);
    ASSERT_TRUE(home.write(1403, text(u"-1")).ok());
    EXPECT_EQ(printed(screenCapture), u"{}"_s);
    ASSERT_TRUE(home.write(1403, text(u" -1")).ok());
    EXPECT_EQ(printed(screenCapture), u"{'location': ' -1'}"_s);
}

TEST_F(SpecialSettings, ATextInASentenceIsNeverFilledInAgain)
{
    EXPECT_EQ(actionString(*findSetting(1400), text(u"%1 %@ %s")),
              u"Add %1 %@ %s prefix to a newly created screenshot file name"_s);
    EXPECT_EQ(actionString(*findSetting(1403), {0, QString()}),
              u"Save newly created screenshot files to (null)"_s);
}

TEST_F(SpecialSettings, TheBookmarksBarReadsItsNamesInAnyOrderAndLetterCase)
{
    const auto read = [this](const QString &elements) {
        home.put(safari, u"<key>ProxiesInBookmarksBar</key><array>"_s + elements + u"</array>"_s);
        return string(1200);
    };
    EXPECT_EQ(read(u"<string>bonjour</string><string>READING LIST</string>"_s), u"1;0;0;1"_s);
    EXPECT_EQ(read(u"<string>Top Sites</string><string>Something</string>"_s), u"0;1;0;0"_s);
    EXPECT_EQ(read(u"<integer>1</integer><string>Address Book</string>"_s), u"0;0;1;0"_s);
    EXPECT_EQ(read(u""_s), u"0;0;0;0"_s);
}

TEST_F(SpecialSettings, TheBookmarksBarWithoutAnArrayReadsAsTheDefault)
{
    EXPECT_EQ(string(1200), u"-1"_s);
    home.put(safari, u"<key>ProxiesInBookmarksBar</key><string>Bonjour</string>"_s);
    EXPECT_EQ(string(1200), u"-1"_s);
    EXPECT_FALSE(home.read(1200).found);
}

TEST_F(SpecialSettingsOnDisk, ReadingListAndBonjourOnWritesTheirTwoNames)
{
    home.put(safari, u""_s);
    ASSERT_TRUE(home.write(1200, text(u"1;0;0;1")).ok());
    EXPECT_EQ(printed(safari), u"{'ProxiesInBookmarksBar': ['Reading List', 'Bonjour']}"_s);
    EXPECT_EQ(actionString(*findSetting(1200), text(u"1;0;0;1")),
              u"Show Reading List, Bonjour on Safari's Bookmarks bar"_s);
}

TEST_F(SpecialSettingsOnDisk, AllFourOffWritesAnEmptyArrayAndNamesNothing)
{
    home.put(safari, u""_s);
    ASSERT_TRUE(home.write(1200, text(u"0;0;0;0")).ok());
    EXPECT_EQ(printed(safari), u"{'ProxiesInBookmarksBar': []}"_s);
    EXPECT_EQ(actionString(*findSetting(1200), text(u"0;0;0;0")),
              u"Show  on Safari's Bookmarks bar"_s);
}

TEST_F(SpecialSettings, TheBookmarksBarMakesNoFileButAsksForTheRestart)
{
    ASSERT_TRUE(home.write(1200, text(u"1;1;1;1")).ok());
    EXPECT_FALSE(home.has(safari));
    EXPECT_EQ(home.flags, RestartFlags(RestartFlag::Safari));
}

TEST_F(SpecialSettingsOnDisk, TheDefaultOfTheBookmarksBarRemovesTheKeyAndAsksForNoRestart)
{
    home.put(safari, u"<key>ProxiesInBookmarksBar</key><array/><key>k</key><true/>"_s);
    ASSERT_TRUE(home.write(1200, text(u"-1")).ok());
    EXPECT_EQ(printed(safari), u"{'k': True}"_s);
    EXPECT_EQ(home.flags, RestartFlags());
}

TEST_F(SpecialSettings, TheBookmarksBarLogsItsValueItsRemovalAndItsSentence)
{
    const LogCapture log;
    ASSERT_TRUE(home.write(1200, text(u"1;0;0;1")).ok());
    ASSERT_TRUE(home.write(1200, text(u"-1")).ok());
    (void)actionString(*findSetting(1200), text(u"0;1;0;0"));
    (void)actionString(*findSetting(1200), text(u"-1"));
    (void)actionSentence(*findSetting(1200), text(u"0;1;0;0"));
    EXPECT_EQ(log.texts(settingsLog),
              (QStringList {u"value: 1;0;0;1"_s, u"value: -1"_s, u"delete ProxiesInBookmarksBar"_s,
                            u"barStr= Show Top Sites on Safari's Bookmarks bar"_s}));
}

TEST_F(SpecialSettings, ABookmarksBarTextOfAnotherShapeShowsOnlyWhatIsAOneInItsPlace)
{
    EXPECT_EQ(actionString(*findSetting(1200), text(u"1;2")),
              u"Show Reading List on Safari's Bookmarks bar"_s);
    EXPECT_EQ(actionString(*findSetting(1200), text(u"")), u"Show  on Safari's Bookmarks bar"_s);
    EXPECT_EQ(actionString(*findSetting(1200), text(u"0;0;0;1;1;1")),
              u"Show Bonjour on Safari's Bookmarks bar"_s);
}
