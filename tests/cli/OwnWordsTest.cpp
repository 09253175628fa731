#include "cli/OwnWords.h"
#include "base/Containers.h"
#include "cli/PreferenceDomain.h"
#include "cli/Varnelctl.h"
#include "settings/Catalogue.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace testing;

namespace {

/// Command lines in the shape of the Mac's own preferences tool.
class OwnWordsTest : public Test {
protected:
    OwnWordsTest() { installSamples(home, u"binary"_s); }

    /// Words with blanks between; a "_" stands for a blank in a word.
    [[nodiscard]] Outcome run(const QString &line) const
    {
        QStringList words = line.split(u' ');
        words.replaceInStrings(u"_"_s, u" "_s);
        return varnelctl.run(words);
    }
    [[nodiscard]] QByteArray stored(const QString &key) const { return run(u"read " + key).out; }
    [[nodiscard]] QString dock() const { return home.preference(u"com.apple.dock.plist"_s); }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(OwnWordsTest, readingPrintsWhatStandsInTheFile)
{
    EXPECT_EQ(run(u"get com.apple.dock tilesize"_s).out, "48\n");
    EXPECT_EQ(run(u"read com.apple.dock autohide"_s).out, "0\n");
    EXPECT_EQ(run(u"read com.apple.dock mineffect"_s).out, "genie\n");
    EXPECT_EQ(run(u"read com.apple.Safari ProxiesInBookmarksBar"_s).out,
              "(\n    \"Reading List\",\n    \"Top Sites\"\n)\n");
    EXPECT_EQ(run(u"set 1200=bonjour"_s).status, 0);
    EXPECT_EQ(stored(u"com.apple.Safari ProxiesInBookmarksBar"_s), "(\n    Bonjour\n)\n");
    EXPECT_EQ(run(u"set 1200=none"_s).status, 0);
    EXPECT_EQ(stored(u"com.apple.Safari ProxiesInBookmarksBar"_s), "(\n)\n");
}

TEST_F(OwnWordsTest, aKeyThatIsNotThereIsANegativeAnswerWithoutData)
{
    const Outcome missing = run(u"read com.apple.dock no-glass"_s);
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_EQ(missing.err, "varnelctl: no-glass: not stored\n");
    const Outcome json = run(u"read com.apple.dock no-glass --json"_s);
    EXPECT_EQ(json.status, 1);
    EXPECT_TRUE(json.json().value(u"stored"_s).isNull());
    EXPECT_EQ(run(u"read com.apple.Mail PreferPlainText"_s).status, 1) << "no file at all";
}

TEST_F(OwnWordsTest, aFileOrAValueThatCannotBeReadIsAFailure)
{
    writeFile(dock(), "no property list");
    EXPECT_EQ(run(u"read com.apple.dock tilesize"_s).status, 3);
    writeFile(dock(),
              "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>tilesize</key><dict/>"
              "<key>largesize</key><real>64.5</real></dict></plist>");
    EXPECT_EQ(run(u"read com.apple.dock tilesize"_s).status, 3);
    EXPECT_EQ(run(u"read com.apple.dock largesize"_s).out, "64.5\n");
}

TEST_F(OwnWordsTest, aDomainIsAFilesNameOrItsPathInAnyLetterCase)
{
    for (const QString &domain : {u"com.apple.dock"_s, u"com.apple.dock.plist"_s,
                                  u"COM.Apple.Dock"_s, dock(), dock().chopped(6)})
        EXPECT_EQ(varnelctl.run({u"read"_s, domain, u"tilesize"_s}).out, "48\n")
            << domain.toStdString();
    for (const char16_t *domain : {u"NSGlobalDomain", u"-g", u"-globalDomain",
                                   u"Apple_Global_Domain", u".GlobalPreferences"})
        EXPECT_EQ(stored(QString::fromUtf16(domain) + u" AppleShowScrollBars"), "Always\n");
}

TEST_F(OwnWordsTest, aPathMeansTheHomeThatItLeadsTo)
{
    TemporaryHome other;
    const QString path = other.path() + u"/Library/Preferences/com.apple.dock";
    const auto own = snapshot(home.path());
    EXPECT_EQ(varnelctl.run({u"write"_s, path, u"tilesize"_s, u"-int"_s, u"64"_s}).status, 0);
    EXPECT_EQ(snapshot(home.path()), own);
    EXPECT_EQ(varnelctl.run({u"read"_s, path, u"tilesize"_s}).out, "64\n");
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1004"_s, u"--home"_s, other.path()}).out,
              "64\t64 pixels\n");
    EXPECT_EQ(varnelctl.run({u"read"_s, path, u"tilesize"_s, u"--home"_s, other.path()}).status, 2);
    EXPECT_EQ(varnelctl.run({u"read"_s, home.path() + u"/com.apple.dock"_s, u"tilesize"_s}).status,
              2)
        << "not in a home's preferences";
}

TEST_F(OwnWordsTest, aDomainIsTheFileThatItsApplicationReadsByWhateverPathItIsNamed)
{
    const QString dead = home.preference(u"com.apple.mail.plist"_s);
    writeFile(dead, "<plist version=\"1.0\"><dict/></plist>");
    EXPECT_EQ(run(u"write com.apple.Mail PreferPlainText -bool true"_s).status, 0);
    EXPECT_EQ(varnelctl.run({u"read"_s, dead, u"PreferPlainText"_s}).out, "1\n");
    EXPECT_FALSE(QFile::exists(home.preference(u"com.apple.Mail.plist"_s)));

    const QByteArray before = fileBytes(dead);
    const QString folder = containerPreferences(home.home(), u"com.apple.mail"_s);
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString path = folder + u"/com.apple.mail";
    EXPECT_EQ(varnelctl.run({u"read"_s, path, u"PreferPlainText"_s}).status, 1) << "not taken over";
    EXPECT_EQ(varnelctl.run({u"write"_s, path, u"PreferPlainText"_s, u"0"_s}).status, 0);
    EXPECT_EQ(stored(u"com.apple.mail PreferPlainText"_s), "0\n");
    EXPECT_EQ(varnelctl.run({u"read"_s, dead, u"PreferPlainText"_s}).out, "0\n");
    EXPECT_EQ(fileBytes(dead), before);
    EXPECT_TRUE(QFile::exists(path + u".plist"));
    EXPECT_EQ(
        varnelctl.run({u"read"_s, path, u"PreferPlainText"_s, u"--home"_s, home.path()}).status, 2)
        << "the home is named twice";
}

TEST_F(OwnWordsTest, aValueIsMappedOntoTheChoiceThatStoresIt)
{
    const QList<QStringList> good {
        {u"com.apple.dock autohide"_s, u"-bool true"_s, u"1"_s},
        {u"com.apple.dock autohide"_s, u"-bool NO"_s, u"0"_s},
        {u"com.apple.dock autohide"_s, u"-boolean 1"_s, u"1"_s},
        {u"com.apple.dock autohide"_s, u"-int 0"_s, u"0"_s},
        {u"com.apple.dock autohide"_s, u"yes"_s, u"1"_s},
        {u"com.apple.dock autohide"_s, u"false"_s, u"0"_s},
        {u"com.apple.dock mineffect"_s, u"-string scale"_s, u"scale"_s},
        {u"com.apple.dock mineffect"_s, u"genie"_s, u"genie"_s},
        {u"com.apple.dock tilesize"_s, u"-int 64"_s, u"64"_s},
        {u"com.apple.dock tilesize"_s, u"-float 32.0"_s, u"32"_s},
        {u"com.apple.dock tilesize"_s, u"40"_s, u"40"_s},
        {u"com.apple.Safari IncludeDevelopMenu"_s, u"-bool false"_s, u"0"_s},
        {u"com.apple.Safari IncludeDebugMenu"_s, u"-bool true"_s, u"1"_s},
        {u"com.apple.iTunes show-library-playlist"_s, u"-bool true"_s, u"1"_s},
        {u"com.apple.iTunes show-library-playlist"_s, u"-bool false"_s, u"0"_s},
        {u"com.apple.iTunes hide-library-playlist"_s, u"-bool false"_s, u"0"_s},
        {u"com.apple.screencapture name"_s, u"-string a=b_c"_s, u"a=b c"_s},
        {u"com.apple.screencapture name"_s, u"-string -5"_s, u"-5"_s},
        {u"com.apple.screencapture location"_s, u"/tmp/shots"_s, u"/tmp/shots"_s},
        {u"NSGlobalDomain ApplePressAndHoldEnabled"_s, u"-bool true"_s, u"1"_s},
    };
    for (const QStringList &each : good) {
        const Outcome outcome = run(u"write " + each[0] + u' ' + each[1]);
        EXPECT_EQ(outcome.status, 0) << each.join(u' ').toStdString() << outcome.err.toStdString();
        EXPECT_EQ(stored(each[0]), QByteArray(each[2].toUtf8() + '\n'))
            << each.join(u' ').toStdString();
    }
    EXPECT_EQ(stored(u"com.apple.iTunes show-library-playlist"_s), "1\n") << "the pair's other key";
    EXPECT_EQ(stored(u"com.apple.Safari IncludeInternalDebugMenu"_s), "1\n");
}

/// Type and value as one would type what a choice stores; empty for the removal of the key.
QByteArrayList typed(const varnel::StoredValue &stored)
{
    struct ToWords {
        QByteArrayList operator()(std::monostate) const { return {}; }
        QByteArrayList operator()(bool flag) const { return {"-bool", flag ? "true" : "false"}; }
        QByteArrayList operator()(int number) const { return {"-int", QByteArray::number(number)}; }
        QByteArrayList operator()(const QString &text) const { return {"-string", text.toUtf8()}; }
    };
    return std::visit(ToWords {}, stored);
}

TEST(OwnWordsOfCatalogueTest, everyChoiceOfEverySettingIsFoundByWhatItStores)
{
    const varnel::cli::Commands commands = varnel::cli::makeCommands();
    int found = 0;
    for (const varnel::SettingRow &row : varnel::catalogue()) {
        if (row.keys.isEmpty() || row.mechanism == varnel::Mechanism::NestedChoice)
            continue;
        const varnel::cli::PreferenceDomain domain {row.file, {}};
        const auto answering = domain.settingWithKey(row.keys.first());
        ASSERT_TRUE(answering.ok()) << row.id;
        EXPECT_LE(answering.value()->id, row.id);
        EXPECT_EQ(answering.value()->file, row.file);
        for (int index = 0; index < row.choices.size(); ++index) {
            const QByteArrayList value = typed(row.choices[index].writes);
            if (value.isEmpty())
                continue;
            const auto words =
                varnel::cli::inOwnWords(QByteArrayList {"varnelctl", "set", domain.name().toUtf8(),
                                                        row.keys.first().toUtf8()}
                                            + value,
                                        commands);
            ASSERT_TRUE(words.ok()) << row.id << words.error().text.toStdString();
            EXPECT_EQ(words.value().last().toStdString(),
                      std::to_string(answering.value()->id) + '=' + std::to_string(index));
            ++found;
        }
    }
    EXPECT_GT(found, 80) << "of fifty settings, most with two choices";
}

TEST_F(OwnWordsTest, anArrayIsTheWordsThatFollow)
{
    const Outcome outcome =
        run(u"set com.apple.Safari ProxiesInBookmarksBar -array bonjour Top_Sites --json"_s);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"changed"_s)[0][u"id"], 1200);
    EXPECT_EQ(run(u"get 1200"_s).out, "0;1;0;1\tTop Sites, Bonjour\n");
    EXPECT_EQ(run(u"set com.apple.Safari ProxiesInBookmarksBar -array"_s).status, 0);
    EXPECT_EQ(run(u"get 1200"_s).out, "0;0;0;0\tnone\n");
}

TEST_F(OwnWordsTest, oneSaveWithItsBackupLikeAnyOtherAndOfTwoSettingsTheLowerNumber)
{
    const Outcome outcome =
        run(u"--json write com.apple.iTunes --verbose allow-half-stars -bool true"_s);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"changed"_s)[0][u"id"], 1600);
    EXPECT_TRUE(outcome.json().value(u"backup"_s).toString().endsWith(u"quillet1.sqlite"));
    EXPECT_TRUE(outcome.err.contains("addDataToBackupFile"));
}

TEST_F(OwnWordsTest, deletingTakesTheKeyOut)
{
    EXPECT_EQ(run(u"delete com.apple.dock tilesize"_s).status, 0);
    EXPECT_EQ(run(u"read com.apple.dock tilesize"_s).status, 1);
    EXPECT_EQ(run(u"delete -g AppleShowScrollBars"_s).status, 0);
    EXPECT_EQ(run(u"read -g AppleShowScrollBars"_s).status, 1);
    EXPECT_EQ(run(u"delete dock-size autohide"_s).status, 0) << "two settings";
}

TEST_F(OwnWordsTest, whatNoSettingStoresIsRefusedInWordsAndNothingIsWritten)
{
    const auto before = snapshot(home.path());
    const QList<QStringList> bad {
        {u"write com.apple.dock mineffect -string suck"_s, u"genie (Genie effect)"_s},
        {u"write com.apple.dock autohide -string yes"_s, u"true (yes), false (no)"_s},
        {u"write com.apple.dock autohide -bool maybe"_s, u"true (yes)"_s},
        {u"write com.apple.dock autohide -int 2"_s, u"true (yes)"_s},
        {u"write com.apple.iTunes show-library-playlist x"_s, u"true (yes), false (no)"_s},
        {u"write com.apple.dock tilesize -int -1"_s, u"from 16 to 128"_s},
        {u"write com.apple.dock tilesize -int 15"_s, u"from 16 to 128"_s},
        {u"write com.apple.dock tilesize -float 48.5"_s, u"from 16 to 128"_s},
        {u"write com.apple.dock tilesize -bool true"_s, u"from 16 to 128"_s},
        {u"write com.apple.dock tilesize -string 48"_s, u"integer"_s},
        {u"write com.apple.dock tilesize 48 49"_s, u"one value"_s},
        {u"write com.apple.dock tilesize -array 48"_s, u"integer"_s},
        {u"write com.apple.dock tilesize -data 48"_s, u"'-data'"_s},
        {u"write com.apple.dock tilesize -int"_s, u"a value is missing after -int"_s},
        {u"write com.apple.dock tilesize"_s, u"a value is missing after tilesize"_s},
        {u"write com.apple.screencapture name -string -1"_s, u"default"_s},
        {u"write com.apple.screencapture name -int 5"_s, u"-string"_s},
        {u"write com.apple.Safari ProxiesInBookmarksBar -array News"_s, u"Reading List"_s},
        {u"write com.apple.Safari ProxiesInBookmarksBar Bonjour"_s, u"-array"_s},
        {u"write com.apple.Safari TB_Display_Mode -int 2"_s, u"toolbar-text"_s},
        {u"write com.apple.dock nosuch 1"_s, u"tilesize"_s},
        {u"read com.apple.dock Tilesize"_s, u"tilesize"_s},
        {u"read com.apple.dock"_s, u"a key is missing"_s},
        {u"read com.apple.dock tilesize autohide"_s, u"not understood: autohide"_s},
        {u"read com.example.none key"_s, u"NSGlobalDomain"_s},
        {u"read None key"_s, u"NSGlobalDomain"_s},
        {u"write None key 1"_s, u"NSGlobalDomain"_s},
        {u"set autohide yes"_s, u"as in autohide=yes"_s},
        {u"set 1004 48"_s, u"as in 1004=48"_s},
        {u"get autohide dock-size"_s, u"'get' takes one"_s},
        {u"delete com.apple.dock"_s, u"a key is missing"_s},
        {u"delete com.example.none key"_s, u"NSGlobalDomain"_s},
        {u"read -currentHost com.apple.dock tilesize"_s, u"-currentHost"_s},
        {u"read com.apple.dock tilesize --home"_s, u"--home"_s},
        {u"-- read com.apple.dock tilesize"_s, u"not understood"_s},
        {u"get 1004 --key largesize"_s, u"'largesize'"_s},
        {u"get 1302 --key x"_s, u"'x'"_s},
    };
    for (const QStringList &each : bad) {
        const Outcome outcome = run(each[0]);
        EXPECT_EQ(outcome.status, 2) << each[0].toStdString();
        EXPECT_EQ(outcome.out, "") << each[0].toStdString();
        EXPECT_TRUE(outcome.err.contains(each[1].toUtf8())) << outcome.err.toStdString();
    }
    EXPECT_EQ(
        varnelctl.shell(u"\"$varnelctl\" write com.apple.screencapture name $(printf '\\377')"_s)
            .status,
        2);
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(OwnWordsTest, theOwnShapesStayWhatTheyAre)
{
    EXPECT_EQ(run(u"set 1403=/tmp/a.b 1004=64"_s).status, 0);
    EXPECT_EQ(run(u"get 1403"_s).out, "/tmp/a.b\n");
    EXPECT_EQ(run(u"get 1204 --key TB_Display_Mode"_s).out, "2\n") << "inside a dictionary";
    EXPECT_EQ(run(u"write com.apple.dock --help"_s).status, 0);
    EXPECT_EQ(run(u"write com.apple.screencapture name -- --odd"_s).status, 0);
    EXPECT_EQ(run(u"get 1400"_s).out, "--odd\n");
}

} // namespace
