#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QSet>

#include <gtest/gtest.h>

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
    const QJsonObject list = varnelctl.run({u"list"_qs, u"--json"_qs}).json();
    EXPECT_EQ(list.value(u"schemaVersion"_qs).toInt(), 1);
    const QJsonArray settings = list.value(u"settings"_qs).toArray();
    QSet<int> ids;
    QSet<QString> names;
    for (const QJsonValue &setting : settings) {
        const QJsonObject object = setting.toObject();
        EXPECT_EQ(object.keys(),
                  (QStringList {u"action"_qs, u"choices"_qs, u"class"_qs, u"file"_qs, u"found"_qs,
                                u"id"_qs, u"keys"_qs, u"keywords"_qs, u"kind"_qs, u"label"_qs,
                                u"location"_qs, u"module"_qs, u"name"_qs, u"restarts"_qs,
                                u"searchText"_qs, u"shortLocation"_qs, u"type"_qs, u"value"_qs}));
        ids.insert(object.value(u"id"_qs).toInt());
        names.insert(object.value(u"name"_qs).toString());
    }
    EXPECT_EQ(settings.size(), 50);
    EXPECT_EQ(ids.size(), 50);
    EXPECT_EQ(names.size(), 50);
}

TEST_F(ReadingTest, aGroupIsNamedByTitleShortLocationOrModuleInAnyLetterCase)
{
    for (const char16_t *group : {u"QuickTime Player X", u"quicktime player",
                                  u"QuickTimePlayerModule", u"QUICKTIMEPLAYER"}) {
        const Outcome list = varnelctl.run({u"list"_qs, u"--json"_qs, QString::fromUtf16(group)});
        EXPECT_EQ(list.json().value(u"settings"_qs).toArray().size(), 5);
    }
    const Outcome unknown = varnelctl.run({u"list"_qs, u"Docks"_qs});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_TRUE(unknown.err.contains("'Docks'"));
    EXPECT_TRUE(unknown.err.contains("QuickTime Player X")) << "the groups are named";
}

TEST_F(ReadingTest, aSettingIsNamedByNumberOrShortNameInAnyLetterCase)
{
    const QByteArray byNumber = varnelctl.run({u"show"_qs, u"1004"_qs, u"--json"_qs}).out;
    EXPECT_EQ(varnelctl.run({u"show"_qs, u"dock-size"_qs, u"--json"_qs}).out, byNumber);
    EXPECT_EQ(varnelctl.run({u"show"_qs, u"Dock-SIZE"_qs, u"--json"_qs}).out, byNumber);
    for (const char16_t *unknown : {u"dock", u"9999", u"", u"250", u"-1"}) {
        const Outcome outcome = varnelctl.run({u"show"_qs, u"--"_qs, QString::fromUtf16(unknown)});
        EXPECT_EQ(outcome.status, 2) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains("unknown setting"));
    }
}

TEST_F(ReadingTest, anUnknownNameIsAnsweredWithTheOnesThatAreMeant)
{
    EXPECT_TRUE(varnelctl.run({u"get"_qs, u"dock-"_qs}).err.contains("dock-size"));
}

TEST_F(ReadingTest, getPrintsTheExchangedValueAndItsWordsBehindATabulator)
{
    installSamples(home, u"binary"_qs);
    EXPECT_EQ(varnelctl.run({u"get"_qs, u"1008"_qs}).out, "0\tGenie effect\n");
    EXPECT_EQ(varnelctl.run({u"get"_qs, u"1004"_qs}).out, "48\t48 pixels\n");
    EXPECT_EQ(varnelctl.run({u"get"_qs, u"1200"_qs}).out, "1;1;0;0\tReading List, Top Sites\n");
    EXPECT_EQ(varnelctl.run({u"get"_qs, u"1400"_qs}).out, "-1\tuse default value\n");
}

TEST_F(ReadingTest, aSettingThatIsNotStoredIsAnsweredWithItsDefault)
{
    const Outcome get = varnelctl.run({u"get"_qs, u"1203"_qs});
    EXPECT_EQ(get.status, 0);
    EXPECT_EQ(get.out, "-1\tuse default value\n");
    const QJsonObject json = varnelctl.run({u"get"_qs, u"1203"_qs, u"--json"_qs}).json();
    EXPECT_FALSE(json.value(u"found"_qs).toBool());
    EXPECT_EQ(json.value(u"action"_qs).toString(),
              u"Set maximum number of items in main history menu to -1");
}

TEST_F(ReadingTest, aSearchThatFindsNothingEndsWithOne)
{
    const Outcome nothing = varnelctl.run({u"search"_qs, u"automatically"_qs, u"--json"_qs});
    EXPECT_EQ(nothing.status, 1);
    EXPECT_TRUE(nothing.json().value(u"results"_qs).toArray().isEmpty());
    EXPECT_FALSE(nothing.err.isEmpty());
    EXPECT_EQ(varnelctl.run({u"search"_qs, u"reading list"_qs}).status, 1);
}

TEST_F(ReadingTest, aSearchInCapitalsFindsTheSameAsOneInSmallLetters)
{
    const Outcome small = varnelctl.run({u"search"_qs, u"lock size"_qs});
    EXPECT_EQ(small.status, 0);
    EXPECT_EQ(small.out, varnelctl.run({u"search"_qs, u"LOCK SIZE"_qs}).out);
    EXPECT_TRUE(small.out.contains("lock-dock-size"));
}

TEST_F(ReadingTest, commandsThatReadMakeNothing)
{
    TemporaryHome empty;
    QDir(empty.path() + u"/Library").removeRecursively();
    Varnelctl there(empty);
    for (const QStringList &command :
         {QStringList {u"list"_qs}, QStringList {u"show"_qs, u"1200"_qs},
          QStringList {u"get"_qs, u"1302"_qs}, QStringList {u"search"_qs, u"dock"_qs},
          QStringList {u"list"_qs, u"--new-home"_qs, u"--home"_qs, empty.path()}})
        EXPECT_EQ(there.run(command).status, 0) << command.join(u' ').toStdString();
    EXPECT_TRUE(snapshot(empty.path()).isEmpty());
}

TEST_F(ReadingTest, aFolderWithoutLibraryIsNoHome)
{
    TemporaryHome empty;
    QDir(empty.path() + u"/Library").removeRecursively();
    for (const QString &folder :
         {empty.path(), QString(empty.path() + u"/nowhere"), u"/dev/null"_qs}) {
        for (const QStringList &command :
             {QStringList {u"list"_qs}, QStringList {u"get"_qs, u"1004"_qs},
              QStringList {u"search"_qs, u"dock"_qs}, QStringList {u"set"_qs, u"1004=48"_qs}}) {
            const Outcome outcome = varnelctl.run(command + QStringList {u"--home"_qs, folder});
            EXPECT_EQ(outcome.status, 3) << command.join(u' ').toStdString();
            EXPECT_TRUE(outcome.err.contains(folder.toUtf8())) << outcome.err.toStdString();
            EXPECT_TRUE(outcome.out.isEmpty());
        }
    }
    EXPECT_TRUE(snapshot(empty.path()).isEmpty());
}

TEST_F(ReadingTest, anotherHomeIsReadWhereItIsNamed)
{
    installSamples(home, u"xml"_qs);
    TemporaryHome own;
    EXPECT_EQ(Varnelctl(own).run({u"get"_qs, u"1004"_qs, u"--home"_qs, home.path()}).out,
              "48\t48 pixels\n");
    Varnelctl beside(own);
    const QString relative = QDir(QDir::currentPath()).relativeFilePath(home.path());
    EXPECT_EQ(beside.run({u"get"_qs, u"1004"_qs, u"--home"_qs, QString(relative + u'/')}).out,
              "48\t48 pixels\n");
}

TEST_F(ReadingTest, aFileThatCannotBeLoadedIsNamed)
{
    writeFile(home.preference(u"com.apple.dock.plist"_qs), "<plist><dict><key>tilesize</key>");
    const Outcome get = varnelctl.run({u"get"_qs, u"1004"_qs});
    EXPECT_EQ(get.status, 3);
    EXPECT_EQ(get.out, "") << "what it holds is not known";
    EXPECT_TRUE(get.err.contains("com.apple.dock.plist")) << get.err.toStdString();

    const Outcome list = varnelctl.run({u"list"_qs, u"--json"_qs});
    EXPECT_EQ(list.status, 4) << "the others were read";
    EXPECT_EQ(list.json().value(u"settings"_qs).toArray().size(), 50);
    EXPECT_EQ(list.err.count("com.apple.dock.plist"), 1) << list.err.toStdString();
}

TEST_F(ReadingTest, logLinesAreShownOnlyWhenAskedFor)
{
    EXPECT_TRUE(varnelctl.run({u"get"_qs, u"1204"_qs}).err.isEmpty());
    const Outcome verbose = varnelctl.run({u"get"_qs, u"1204"_qs, u"--verbose"_qs});
    EXPECT_EQ(verbose.out, varnelctl.run({u"get"_qs, u"1204"_qs}).out);
    EXPECT_EQ(verbose.err, "varnel.settings: Value Not Found\n");
}

TEST_F(ReadingTest, controlCharactersOfAStoredTextDoNotReachThePeoplesTables)
{
    writeFile(home.preference(u"com.apple.screencapture.plist"_qs),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
              "<key>name</key><string>a\xc2\x9b"
              "31mb\nc</string></dict></plist>");
    EXPECT_TRUE(varnelctl.run({u"list"_qs}).out.contains("a\\u009b31mb\\nc\n"));
    EXPECT_EQ(varnelctl.run({u"get"_qs, u"1400"_qs}).out,
              "a\xc2\x9b"
              "31mb\nc\n")
        << "to a file or a pipe, the text as it is";
}

} // namespace
