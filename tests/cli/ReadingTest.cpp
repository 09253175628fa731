#include "base/Containers.h"
#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace testing;

namespace {

class ReadingTest : public Test {
protected:
    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(ReadingTest, allFiftySettingsAreListedOnceWithEveryField)
{
    const QJsonObject list = varnelctl.run({u"list"_s, u"--json"_s}).json();
    EXPECT_EQ(list.value(u"schemaVersion"_s).toInt(), 1);
    const QJsonArray settings = list.value(u"settings"_s).toArray();
    QSet<int> ids;
    QSet<QString> names;
    for (const QJsonValue &setting : settings) {
        const QJsonObject object = setting.toObject();
        EXPECT_EQ(object.keys(),
                  (QStringList {u"action"_s, u"choices"_s, u"class"_s, u"file"_s, u"found"_s,
                                u"id"_s, u"keys"_s, u"keywords"_s, u"kind"_s, u"label"_s,
                                u"location"_s, u"module"_s, u"name"_s, u"path"_s, u"restarts"_s,
                                u"searchText"_s, u"shortLocation"_s, u"type"_s, u"value"_s}));
        ids.insert(object.value(u"id"_s).toInt());
        names.insert(object.value(u"name"_s).toString());
    }
    EXPECT_EQ(settings.size(), 50);
    EXPECT_EQ(ids.size(), 50);
    EXPECT_EQ(names.size(), 50);
}

TEST_F(ReadingTest, aSettingsFileIsToldAndWhatStandsBesideIt)
{
    const QString known = home.preference(u"com.apple.Mail.plist"_s);
    const QString own = home.preference(u"com.apple.mail.plist"_s);
    writeFile(known, "<plist version=\"1.0\"><dict/></plist>");
    const auto path = [this](const QString &command) {
        return varnelctl.run({command, u"1500"_s, u"--json"_s}).json().value(u"path"_s).toString();
    };
    const auto sheet = [this] {
        return QString::fromUtf8(varnelctl.run({u"show"_s, u"1500"_s}).out);
    };
    EXPECT_EQ(path(u"show"_s), known);
    EXPECT_FALSE(sheet().contains(u"not read"_s));
    writeFile(own, fileBytes(known));
    EXPECT_EQ(path(u"get"_s), own);
    EXPECT_TRUE(sheet().contains(u"  second file   "_s + known + u", not read: "));
    EXPECT_TRUE(sheet().contains(u"  path          "_s + own + u'\n'));
    const QString folder = containerPreferences(home.home(), u"com.apple.mail"_s);
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_EQ(path(u"show"_s), folder + u"/com.apple.mail.plist");
    for (const QString &dead : {known, own})
        EXPECT_TRUE(sheet().contains(u"  dead file     "_s + dead + u", not read: "));
    EXPECT_EQ(varnelctl.run({u"show"_s, u"1302"_s, u"--json"_s}).json().value(u"path"_s).toString(),
              home.path() + u"/Library");
}

TEST_F(ReadingTest, aSaveThatMakesAFileInAContainerTellsWhatItDoesNotTakeOver)
{
    const QString dead = home.preference(u"com.apple.mail.plist"_s);
    writeFile(dead, "<plist version=\"1.0\"><dict/></plist>");
    ASSERT_TRUE(QDir().mkpath(containerPreferences(home.home(), u"com.apple.mail"_s)));
    const QByteArray told = dead.toUtf8() + ": not taken over: its application has a container";
    EXPECT_TRUE(varnelctl.run({u"set"_s, u"1500=0"_s, u"--dry-run"_s}).err.contains(told));
    const Outcome first = varnelctl.run({u"set"_s, u"1500=0"_s, u"--verbose"_s});
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.err.count(told), 2) << "as a message and as a line of the log";
    EXPECT_FALSE(varnelctl.run({u"set"_s, u"1500=1"_s}).err.contains(told))
        << "now there is one in the container";
    EXPECT_EQ(fileBytes(dead), "<plist version=\"1.0\"><dict/></plist>");
}

TEST_F(ReadingTest, aGroupIsNamedByTitleShortLocationOrModuleInAnyLetterCase)
{
    for (const char16_t *group : {u"QuickTime Player X", u"quicktime player",
                                  u"QuickTimePlayerModule", u"QUICKTIMEPLAYER"}) {
        const Outcome list = varnelctl.run({u"list"_s, u"--json"_s, QString::fromUtf16(group)});
        EXPECT_EQ(list.json().value(u"settings"_s).toArray().size(), 5);
    }
    const Outcome unknown = varnelctl.run({u"list"_s, u"Docks"_s});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_TRUE(unknown.err.contains("'Docks'"));
    EXPECT_TRUE(unknown.err.contains("QuickTime Player X")) << "the groups are named";
}

TEST_F(ReadingTest, aSettingIsNamedByNumberOrShortNameInAnyLetterCase)
{
    const QByteArray byNumber = varnelctl.run({u"show"_s, u"1004"_s, u"--json"_s}).out;
    EXPECT_EQ(varnelctl.run({u"show"_s, u"dock-size"_s, u"--json"_s}).out, byNumber);
    EXPECT_EQ(varnelctl.run({u"show"_s, u"Dock-SIZE"_s, u"--json"_s}).out, byNumber);
    for (const char16_t *unknown : {u"dock", u"9999", u"", u"250", u"-1"}) {
        const Outcome outcome = varnelctl.run({u"show"_s, u"--"_s, QString::fromUtf16(unknown)});
        EXPECT_EQ(outcome.status, 2) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains("unknown setting"));
    }
}

TEST_F(ReadingTest, anUnknownNameIsAnsweredWithTheOnesThatAreMeant)
{
    EXPECT_TRUE(varnelctl.run({u"get"_s, u"dock-"_s}).err.contains("dock-size"));
}

TEST_F(ReadingTest, getPrintsTheExchangedValueAndItsWordsBehindATabulator)
{
    installSamples(home, u"binary"_s);
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1008"_s}).out, "0\tGenie effect\n");
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1004"_s}).out, "48\t48 pixels\n");
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1200"_s}).out, "1;1;0;0\tReading List, Top Sites\n");
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1400"_s}).out, "-1\tuse default value\n");
}

TEST_F(ReadingTest, aSettingThatIsNotStoredIsAnsweredWithItsDefault)
{
    const Outcome get = varnelctl.run({u"get"_s, u"1203"_s});
    EXPECT_EQ(get.status, 0);
    EXPECT_EQ(get.out, "-1\tuse default value\n");
    const QJsonObject json = varnelctl.run({u"get"_s, u"1203"_s, u"--json"_s}).json();
    EXPECT_FALSE(json.value(u"found"_s).toBool());
    EXPECT_EQ(json.value(u"action"_s).toString(),
              u"Set maximum number of items in main history menu to -1");
}

TEST_F(ReadingTest, whatIsNoTextIsShownInItsTextFormWithANote)
{
    writeFile(home.preference(u"com.apple.screencapture.plist"_s),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
              "<key>name</key><integer>5</integer>"
              "<key>location</key><data>SGVsbG8=</data></dict></plist>");
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1400"_s}).out, "5\tnot a text\n");
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1403"_s}).out, "<48656c6c 6f>\tnot a text\n");
    EXPECT_TRUE(varnelctl.run({u"list"_s}).out.contains("<48656c6c 6f> (not a text)\n"));
    EXPECT_TRUE(varnelctl.run({u"show"_s, u"1400"_s}).out.contains("yes, not a text\n"));
    const QJsonObject json = varnelctl.run({u"show"_s, u"1400"_s, u"--json"_s}).json();
    EXPECT_EQ(json.value(u"value"_s).toString(), u"5");
    EXPECT_EQ(json.value(u"note"_s).toString(), u"not a text");
    EXPECT_TRUE(json.value(u"found"_s).toBool());
    EXPECT_FALSE(varnelctl.run({u"show"_s, u"1300"_s, u"--json"_s}).json().contains(u"note"_s));
}

TEST_F(ReadingTest, aSearchThatFindsNothingEndsWithOne)
{
    const Outcome nothing = varnelctl.run({u"search"_s, u"automatically"_s, u"--json"_s});
    EXPECT_EQ(nothing.status, 1);
    EXPECT_TRUE(nothing.json().value(u"results"_s).toArray().isEmpty());
    EXPECT_FALSE(nothing.err.isEmpty());
    EXPECT_EQ(varnelctl.run({u"search"_s, u"reading list"_s}).status, 1);
    const Outcome label = varnelctl.run({u"search"_s, u"hide the dock"_s});
    EXPECT_EQ(label.status, 1);
    EXPECT_EQ(label.out, QByteArray());
    EXPECT_TRUE(label.err.contains("on its page it is called: Hide the Dock ("))
        << label.err.data();
}

TEST_F(ReadingTest, aSearchInCapitalsFindsTheSameAsOneInSmallLetters)
{
    const Outcome small = varnelctl.run({u"search"_s, u"lock size"_s});
    EXPECT_EQ(small.status, 0);
    EXPECT_EQ(small.out, varnelctl.run({u"search"_s, u"LOCK SIZE"_s}).out);
    EXPECT_TRUE(small.out.contains("lock-dock-size"));
}

TEST_F(ReadingTest, commandsThatReadMakeNothing)
{
    TemporaryHome empty;
    QDir(empty.path() + u"/Library").removeRecursively();
    Varnelctl there(empty);
    for (const QStringList &command :
         {QStringList {u"list"_s}, QStringList {u"show"_s, u"1200"_s},
          QStringList {u"get"_s, u"1302"_s}, QStringList {u"search"_s, u"dock"_s},
          QStringList {u"list"_s, u"--new-home"_s, u"--home"_s, empty.path()}})
        EXPECT_EQ(there.run(command).status, 0) << command.join(u' ').toStdString();
    EXPECT_TRUE(snapshot(empty.path()).isEmpty());
}

TEST_F(ReadingTest, aFolderWithoutLibraryIsNoHome)
{
    TemporaryHome empty;
    QDir(empty.path() + u"/Library").removeRecursively();
    for (const QString &folder :
         {empty.path(), QString(empty.path() + u"/nowhere"), u"/dev/null"_s}) {
        for (const QStringList &command :
             {QStringList {u"list"_s}, QStringList {u"get"_s, u"1004"_s},
              QStringList {u"search"_s, u"dock"_s}, QStringList {u"set"_s, u"1004=48"_s}}) {
            const Outcome outcome = varnelctl.run(command + QStringList {u"--home"_s, folder});
            EXPECT_EQ(outcome.status, 3) << command.join(u' ').toStdString();
            EXPECT_TRUE(outcome.err.contains(folder.toUtf8())) << outcome.err.toStdString();
            EXPECT_TRUE(outcome.out.isEmpty());
        }
    }
    EXPECT_TRUE(snapshot(empty.path()).isEmpty());
}

TEST_F(ReadingTest, anotherHomeIsReadWhereItIsNamed)
{
    installSamples(home, u"xml"_s);
    TemporaryHome own;
    EXPECT_EQ(Varnelctl(own).run({u"get"_s, u"1004"_s, u"--home"_s, home.path()}).out,
              "48\t48 pixels\n");
    Varnelctl beside(own);
    const QString relative = QDir(QDir::currentPath()).relativeFilePath(home.path());
    EXPECT_EQ(beside.run({u"get"_s, u"1004"_s, u"--home"_s, QString(relative + u'/')}).out,
              "48\t48 pixels\n");
}

TEST_F(ReadingTest, aFileThatCannotBeLoadedIsNamed)
{
    writeFile(home.preference(u"com.apple.dock.plist"_s), "<plist><dict><key>tilesize</key>");
    const Outcome get = varnelctl.run({u"get"_s, u"1004"_s});
    EXPECT_EQ(get.status, 3);
    EXPECT_EQ(get.out, "") << "what it holds is not known";
    EXPECT_TRUE(get.err.contains("com.apple.dock.plist")) << get.err.toStdString();

    const Outcome list = varnelctl.run({u"list"_s, u"--json"_s});
    EXPECT_EQ(list.status, 4) << "the others were read";
    EXPECT_EQ(list.json().value(u"settings"_s).toArray().size(), 50);
    EXPECT_EQ(list.err.count("com.apple.dock.plist"), 1) << list.err.toStdString();
}

TEST_F(ReadingTest, logLinesAreShownOnlyWhenAskedFor)
{
    EXPECT_TRUE(varnelctl.run({u"get"_s, u"1204"_s}).err.isEmpty());
    const Outcome verbose = varnelctl.run({u"get"_s, u"1204"_s, u"--verbose"_s});
    EXPECT_EQ(verbose.out, varnelctl.run({u"get"_s, u"1204"_s}).out);
    EXPECT_EQ(verbose.err, "varnel.settings: Value Not Found\n");
}

TEST_F(ReadingTest, controlCharactersOfAStoredTextDoNotReachThePeoplesTables)
{
    writeFile(home.preference(u"com.apple.screencapture.plist"_s),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
              "<key>name</key><string>a\xc2\x9b"
              "31mb\nc</string></dict></plist>");
    EXPECT_TRUE(varnelctl.run({u"list"_s}).out.contains("a\\u009b31mb\\nc\n"));
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1400"_s}).out,
              "a\xc2\x9b"
              "31mb\nc\n")
        << "to a file or a pipe, the text as it is";
}

TEST_F(ReadingTest, controlCharactersOfAStoredTextDoNotReachJson)
{
    const QString stored = u"a\u009b31m\u007f\u202e\u200f\u2067b"_s;
    writeFile(home.preference(u"com.apple.screencapture.plist"_s),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
              "<key>name</key><string>"
                  + stored.toUtf8() + "</string></dict></plist>");
    writeFile(home.path() + u"/profile",
              R"({"schemaVersion": 1, "settings": {"screenshot-prefix": "x"}})");
    const QByteArray escaped = R"(a\u009b31m\u007f\u202e\u200f\u2067b)";
    for (const QStringList &words : {QStringList {u"get"_s, u"1400"_s, u"--json"_s},
                                     {u"show"_s, u"1400"_s, u"--json"_s},
                                     {u"list"_s, u"--json"_s},
                                     {u"list"_s, u"--json"_s, u"--home"_s, home.path()},
                                     {u"export"_s},
                                     {u"export"_s, u"--json"_s},
                                     {u"set"_s, u"1400=y"_s, u"--dry-run"_s, u"--json"_s},
                                     {u"diff"_s, home.path() + u"/profile", u"--json"_s}}) {
        const Outcome outcome = varnelctl.run(words);
        EXPECT_TRUE(outcome.out.contains(escaped))
            << qPrintable(words.join(u' ')) << outcome.out.toStdString();
        EXPECT_FALSE(outcome.out.contains("\xc2\x9b")) << qPrintable(words.join(u' '));
        EXPECT_FALSE(outcome.json().isEmpty());
    }
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1400"_s, u"--json"_s}).json().value(u"value"_s), stored);
}

} // namespace
