#include "profiles/ConfigurationProfile.h"
#include "profiles/DefaultsScript.h"
#include "settings/Catalogue.h"
#include "unit/plist/Referees.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

SettingChange setting(int id, const SettingValue &value)
{
    return {findSetting(id), {}, value};
}

/// The script's commands, without its first three lines and its last.
QStringList commands(const Profile &profile)
{
    QStringList lines = QString::fromUtf8(defaultsScript(profile).bytes).split(u'\n');
    EXPECT_EQ(lines.takeFirst(), u"#!/bin/sh");
    return lines.mid(2, lines.size() - 4);
}

QByteArray configuration(const Profile &profile, const std::optional<QDateTime> &onceSince)
{
    const Result<Translation> translation = configurationProfile(profile, onceSince);
    EXPECT_TRUE(translation);
    return translation ? translation.value().bytes : QByteArray();
}

} // namespace

TEST(DefaultsScript, everyKindOfValueHasItsOwnType)
{
    EXPECT_EQ(commands({{setting(1004, {48}), setting(1008, {1}), setting(1009, {0})}}),
              (QStringList {u"defaults write com.apple.dock tilesize -int 48 || failed=1"_s,
                            u"defaults write com.apple.dock mineffect -string scale || failed=1"_s,
                            u"defaults write com.apple.dock autohide -bool true || failed=1"_s,
                            u"killall Dock 2>/dev/null || :"_s,
                            u"killall SystemUIServer 2>/dev/null || :"_s}));
    EXPECT_EQ(commands({{setting(1300, {2})}}),
              QStringList {u"defaults write NSGlobalDomain AppleShowScrollBars -string Always"
                           u" || failed=1"_s})
        << "no application takes it up by a restart";
    EXPECT_EQ(commands({{setting(1004, {-1})}}).first(),
              u"defaults delete com.apple.dock tilesize 2>/dev/null || :");
    EXPECT_EQ(
        commands({{setting(1602, {0})}}).mid(0, 2),
        (QStringList {
            u"defaults write com.apple.iTunes hide-library-playlist -bool false || failed=1"_s,
            u"defaults write com.apple.iTunes show-library-playlist -bool true || failed=1"_s}));
}

TEST(DefaultsScript, whatNeverMakesAFileAsksFirst)
{
    EXPECT_EQ(commands({{setting(1200, {0, u"1;0;0;1"_s})}}).first(),
              u"! defaults read com.apple.Safari >/dev/null 2>&1 || defaults write "
              u"com.apple.Safari ProxiesInBookmarksBar -array -string 'Reading List' "
              u"-string Bonjour || failed=1");
    EXPECT_EQ(commands({{setting(1204, {1})}}).first(),
              u"! defaults read com.apple.Safari "
              u"'NSToolbar Configuration BrowserWindowToolbarIdentifier' >/dev/null 2>&1 || "
              u"defaults write com.apple.Safari "
              u"'NSToolbar Configuration BrowserWindowToolbarIdentifier' -dict-add "
              u"'TB Display Mode' -int 2 || failed=1");
}

TEST(DefaultsScript, whatTheToolHasNoWordsForIsAComment)
{
    const Translation script = defaultsScript(
        {{setting(1204, {2}), setting(1302, {1}), setting(1400, {0, QString(QChar(u'\0'))})}});
    EXPECT_EQ(script.leftOut,
              (QStringList {u"toolbar-text: 'defaults' takes no key out of a dictionary"_s,
                            u"screenshot-prefix: its text can't stand in a command"_s}));
    for (const QString &line : script.leftOut)
        EXPECT_TRUE(script.bytes.contains(QString(u"\n# " + line + u'\n').toUtf8()));
    EXPECT_TRUE(script.bytes.contains("\nchflags nohidden \"$HOME/Library\" || failed=1\n"));
}

TEST(ConfigurationProfileTest, theSameSettingsGetTheSameIdentifiers)
{
    const Profile one {{setting(1004, {48})}};
    const Profile other {{setting(1004, {64})}};
    const auto epoch = QDateTime::fromSecsSinceEpoch(0).toUTC();
    EXPECT_EQ(configuration(one, {}), configuration(one, {}));
    const auto uuid = [](const QByteArray &bytes) {
        return readByLibplist(bytes)->value("PayloadUUID");
    };
    EXPECT_EQ(uuid(configuration(one, epoch)), uuid(configuration(one, epoch.addDays(1))));
    EXPECT_NE(uuid(configuration(one, {})), uuid(configuration(other, {})));
    EXPECT_NE(uuid(configuration(one, {})), uuid(configuration(one, epoch)));
}

TEST(ConfigurationProfileTest, anIndependentReaderFindsAPayloadForEachDomain)
{
    const QByteArray bytes = configuration({{setting(1004, {48}), setting(1009, {1}),
                                             setting(1300, {2}), setting(1400, {0, u"<a&b>"_s})}},
                                           QDateTime::fromSecsSinceEpoch(978307200 + 60).toUTC());
    const auto root = readByLibplist(bytes);
    ASSERT_TRUE(root) << bytes.toStdString();
    EXPECT_EQ(root->value("PayloadType"), "string Configuration");
    EXPECT_EQ(root->value("PayloadVersion"), "int 1");
    const QByteArray content = root->value("PayloadContent");
    EXPECT_EQ(content.count("PayloadType=string com.apple.ManagedClient.preferences"), 3);
    for (const char *domain : {".GlobalPreferences={Set-Once=[{mcx_data_timestamp=date 60 0,"
                               "mcx_preference_settings={AppleShowScrollBars=string Always,},},],}",
                               "com.apple.dock={Set-Once=[{mcx_data_timestamp=date 60 0,"
                               "mcx_preference_settings={autohide=false,tilesize=int 48,},},],}",
                               "com.apple.screencapture={Set-Once=[{mcx_data_timestamp=date 60 0,"
                               "mcx_preference_settings={name=string <a&b>,},},],}"})
        EXPECT_TRUE(content.contains(domain)) << content.toStdString();
    EXPECT_TRUE(readByLibplist(configuration({}, {}))->value("PayloadContent") == "[]");
}

TEST(ConfigurationProfileTest, whatNoPayloadCanDoIsLeftOut)
{
    const Result<Translation> translation = configurationProfile(
        {{setting(1204, {0}), setting(1302, {1}), setting(1004, {-1}), setting(1009, {0})}}, {});
    ASSERT_TRUE(translation);
    EXPECT_EQ(
        translation.value().leftOut,
        (QStringList {u"toolbar-text: a configuration profile would replace the whole "
                      u"dictionary that it stands in"_s,
                      u"library-folder: no preference, so no configuration profile holds it"_s,
                      u"dock-size: a configuration profile takes no key out"_s}));
    EXPECT_FALSE(configurationProfile({{setting(1400, {0, QString(QChar(1))})}}, {}));
}
