#include "cli/Varnelctl.h"
#include "support/FileFacts.h"
#include "support/PlistReferee.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

const char *const dock = "com.apple.dock.plist";

class SettingTest : public Test {
protected:
    [[nodiscard]] QString backup(int number = 1) const
    {
        return home.path() + u"/Library/Application Support/Varnel/Backup/quillet"
            + QString::number(number) + u".sqlite";
    }
    /// The rows of a backup file as the database's own tool prints them.
    [[nodiscard]] QByteArray rows(int number = 1) const
    {
        return runProgram(u"sqlite3"_s, {backup(number), u"SELECT * FROM users"_s},
                          varnelctl.environment)
            .out;
    }
    [[nodiscard]] Outcome set(const QStringList &values) const
    {
        return varnelctl.run(QStringList {u"set"_s} + values);
    }
    [[nodiscard]] QByteArray get(const QString &setting) const
    {
        return varnelctl.run({u"get"_s, setting}).out;
    }
    [[nodiscard]] QString dockFile() const { return home.preference(QString::fromUtf8(dock)); }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(SettingTest, aFirstSaveInAFreshHomeKeepsTheOldValueAndWritesTheNewOne)
{
    const Outcome outcome = set({u"minimize-effect=Scale effect"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(get(u"1008"_s), "1\tScale effect\n");
    EXPECT_EQ(rows(), "1008|2||\n");

    const QJsonObject json = outcome.json();
    EXPECT_EQ(
        json.keys(),
        (QStringList {u"backup"_s, u"changed"_s, u"dryRun"_s, u"restart"_s, u"schemaVersion"_s}));
    EXPECT_EQ(json.value(u"backup"_s).toString(), backup());
    EXPECT_EQ(json.value(u"restart"_s).toArray(), QJsonArray({u"Dock"_s}));
    const QJsonArray changed = json.value(u"changed"_s).toArray();
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0].toObject(),
              (QJsonObject {{u"id"_s, 1008},
                            {u"old"_s, 2},
                            {u"new"_s, 1},
                            {u"action"_s, u"Use scale effect when minimizing appliction"_s}}));
}

TEST_F(SettingTest, backupRowsStandInTheOrderGivenAndEveryRunHasItsOwnFile)
{
    installSamples(home, u"binary"_s);
    EXPECT_EQ(set({u"1300=when scrolling"_s, u"1004=64"_s, u"1200=0;0;0;1"_s}).status, 0);
    EXPECT_EQ(rows(), "1300|2||\n1004|48||\n1200|0|1;1;0;0|\n");
    EXPECT_EQ(set({u"1004=72"_s}).status, 0);
    EXPECT_EQ(rows(2), "1004|64||\n");
}

TEST_F(SettingTest, ofSeveralValuesForOneSettingTheLastCountsAndTheFirstPlaceOfItsRow)
{
    installSamples(home, u"binary"_s);
    const Outcome outcome = set({u"1004=64"_s, u"1008=1"_s, u"dock-size=32"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(get(u"1004"_s), "32\t32 pixels\n");
    EXPECT_EQ(rows(), "1004|48||\n1008|0||\n");
    const QJsonArray changed = outcome.json().value(u"changed"_s).toArray();
    ASSERT_EQ(changed.size(), 2);
    EXPECT_EQ(changed[0].toObject().value(u"id"_s).toInt(), 1008);
    EXPECT_EQ(changed[1].toObject().value(u"new"_s).toInt(), 32);
}

TEST_F(SettingTest, whatWouldLeaveTheFileAsItIsGetsNoRow)
{
    installSamples(home, u"xml"_s);
    const Outcome outcome = set({u"1008=genie effect"_s, u"1004=64"_s, u"1003=96"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.json().value(u"changed"_s).toArray().size(), 1);
    EXPECT_EQ(rows(), "1004|48||\n");
}

TEST_F(SettingTest, aChangeOfTheStoredFormAloneIsToldAsOne)
{
    installSamples(home, u"xml"_s);
    writeRaw(dockFile(),
             "<plist version=\"1.0\"><dict><key>tilesize</key><real>48.5</real></dict></plist>\n");
    EXPECT_TRUE(set({u"1004=48"_s}).out.contains("was: 48 pixels, stored in another form\n"));
    EXPECT_TRUE(set({u"1004=64"_s}).out.contains("was: 48 pixels\n"));
}

TEST_F(SettingTest, whatIsNoTextIsKeptInItsTextFormAndComesBackAsWhatItWas)
{
    const QString file = home.preference(u"com.apple.screencapture.plist"_s);
    writeFile(file,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
              "<key>name</key><integer>5</integer>"
              "<key>location</key><data>SGVsbG8=</data></dict></plist>");
    EXPECT_EQ(set({u"1400=shot"_s, u"1403=/tmp"_s}).status, 0);
    EXPECT_EQ(rows(), "1400|0|5|\n1403|0|<48656c6c 6f>|\n");
    EXPECT_EQ(varnelctl.run({u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s}).status, 0);
    EXPECT_EQ(PlistReferee::read(file), u"{'location': b'Hello', 'name': 5}"_s);
    EXPECT_EQ(get(u"1400"_s), "5\tnot a text\n");
}

TEST_F(SettingTest, whatIsNoTextIsWrittenOnlyByWhoSetsIt)
{
    const QString file = home.preference(u"com.apple.screencapture.plist"_s);
    writeFile(file,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
              "<key>name</key><integer>5</integer></dict></plist>");
    const QString profile = home.path() + u"/profile.json";
    writeFile(profile, varnelctl.run({u"export"_s}).out);
    EXPECT_EQ(varnelctl.run({u"diff"_s, profile}).status, 0);
    EXPECT_EQ(varnelctl.run({u"apply"_s, profile}).out, "Nothing to change.\n");
    EXPECT_EQ(set({u"1402=png"_s}).status, 0);
    EXPECT_EQ(PlistReferee::read(file), u"{'name': 5, 'type': 'png'}"_s);
    EXPECT_TRUE(set({u"1400=5"_s}).out.contains("was: 5, stored in another form"));
    EXPECT_EQ(PlistReferee::read(file), u"{'name': '5', 'type': 'png'}"_s);
}

TEST_F(SettingTest, whenNothingChangesNothingIsMade)
{
    installSamples(home, u"xml"_s);
    const auto before = snapshot(home.path());
    const Outcome text = set({u"1008=0"_s, u"1005=bottom"_s, u"1300=2"_s});
    EXPECT_EQ(text.status, 0);
    EXPECT_FALSE(text.out.isEmpty()) << "says so";
    const Outcome json = set({u"1008=0"_s, u"1601=-1"_s, u"1204=no"_s, u"--json"_s});
    EXPECT_EQ(json.status, 0);
    EXPECT_TRUE(json.json().value(u"backup"_s).isNull());
    EXPECT_TRUE(json.json().value(u"changed"_s).toArray().isEmpty());
    EXPECT_TRUE(json.json().value(u"restart"_s).toArray().isEmpty());
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(SettingTest, twoSettingsOfOneKeyAreWrittenOneAfterTheOther)
{
    EXPECT_EQ(set({u"1603=disable"_s}).status, 0);
    EXPECT_EQ(set({u"1600=yes"_s, u"1603=disable"_s}).status, 0);
    EXPECT_EQ(get(u"1603"_s), "1\tdisable\n") << "the last to be written wins";
    EXPECT_EQ(set({u"1603=disable"_s, u"1600=yes"_s}).status, 0);
    EXPECT_EQ(get(u"1603"_s), "0\tenable\n");
}

TEST_F(SettingTest, valuesAreTakenAsIndexNumberLabelOrDefault)
{
    const QList<QStringList> good {
        {u"1008=1"_s, u"1\tScale effect\n"_s},
        {u"1008=GENIE effect"_s, u"0\tGenie effect\n"_s},
        {u"1008=-1"_s, u"2\tuse default value\n"_s},
        {u"1008=0"_s, u"0\tGenie effect\n"_s},
        {u"1008=default"_s, u"2\tuse default value\n"_s},
        {u"1007=minimize windows into their application icon"_s,
         u"0\tminimize windows into their application icon \n"_s},
        {u"1007=create a new icon for each minimized window "_s,
         u"1\tcreate a new icon for each minimized window \n"_s},
        {u"1205=yes"_s, u"0\tyes\n"_s},
        {u"1205=-1"_s, u"1\tno (default)\n"_s},
        {u"1004=16"_s, u"16\t16 pixels\n"_s},
        {u"1004=128"_s, u"128\t128 pixels\n"_s},
        {u"1004=-1"_s, u"-1\tuse default value\n"_s},
        {u"1203=0"_s, u"0\t0 items\n"_s},
        {u"1203=Default"_s, u"-1\tuse default value\n"_s},
        {u"1400=default"_s, u"default\n"_s},
        {u"1400="_s, u"\n"_s},
        {u"1400= a=b '' "_s, u" a=b '' \n"_s},
        {u"1200=bonjour,Reading list"_s, u"1;0;0;1\tReading List, Bonjour\n"_s},
        {u"1200=none"_s, u"0;0;0;0\tnone\n"_s},
        {u"1200=default"_s, u"-1\tuse default value\n"_s},
        {u"1302=shown"_s, u"1\tshown\n"_s},
        {u"1302=-1"_s, u"0\thidden\n"_s},
    };
    installSample(home, u"binary"_s, u"com.apple.Safari.plist"_s);
    for (const QStringList &pair : good) {
        const Outcome outcome = set({pair[0]});
        EXPECT_TRUE(outcome.status == 0 || outcome.status == 4)
            << pair[0].toStdString() << outcome.err.toStdString();
        EXPECT_EQ(get(pair[0].left(4)), pair[1].toUtf8()) << pair[0].toStdString();
    }
}

TEST_F(SettingTest, aValueOutOfItsKindEndsWithTwoAndNothingAtAllIsWritten)
{
    installSamples(home, u"binary"_s);
    const auto before = snapshot(home.path());
    for (const char16_t *bad : {u"1008=3",
                                u"1008=-2",
                                u"1008=",
                                u"1008=genie",
                                u"1008= 1",
                                u"1008=+1",
                                u"1008=1.0",
                                u"1008=99999999999999999999",
                                u"1004=15",
                                u"1004=129",
                                u"1004=48px",
                                u"1004=4 8",
                                u"1004=\u0664\u0668",
                                u"1004=",
                                u"1203=1000",
                                u"1200=1;0;0",
                                u"1200=1;0;0;2",
                                u"1200=",
                                u"1200=1;0;0;1;0",
                                u"1200=yes",
                                u"1200=Bonjour,",
                                u"1200=Bonjour;Top Sites",
                                u"1301=Enabled",
                                u"1004",
                                u"=1",
                                u"nosuch=1"}) {
        const Outcome outcome = set({u"1009=yes"_s, QString::fromUtf16(bad), u"1010=0"_s});
        EXPECT_EQ(outcome.status, 2) << QString::fromUtf16(bad).toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_FALSE(outcome.err.isEmpty());
    }
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(SettingTest, aFileThatCannotBeLoadedStaysByteForByteAndTheStatusIsFour)
{
    const QByteArray broken = "bplist00 is not one";
    writeFile(dockFile(), broken);
    const Outcome outcome = set({u"1004=64"_s, u"1101=yes"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 4);
    EXPECT_TRUE(outcome.err.contains(dockFile().toUtf8())) << outcome.err.toStdString();
    EXPECT_EQ(fileBytes(dockFile()), broken);
    EXPECT_EQ(get(u"1101"_s), "0\tyes\n") << "the rest is done";
    EXPECT_EQ(rows(), "1004|-1||\n1101|2||\n");
    EXPECT_EQ(outcome.json().value(u"changed"_s).toArray().size(), 1);
    EXPECT_EQ(outcome.json().value(u"restart"_s).toArray(), QJsonArray({u"Dock"_s, u"Finder"_s}));
    ASSERT_EQ(outcome.json().value(u"failures"_s).toArray().size(), 1);

    EXPECT_EQ(set({u"1004=-1"_s}).status, 4) << "a removal is no better";
    EXPECT_EQ(fileBytes(dockFile()), broken);
}

TEST_F(SettingTest, anOldTextWithAnApostropheHasNoRowButTheSaveGoesOn)
{
    EXPECT_EQ(set({u"1400=Anna's"_s}).status, 0);
    const Outcome outcome = set({u"1400=shot"_s});
    EXPECT_EQ(outcome.status, 4);
    EXPECT_TRUE(outcome.err.contains("screenshot-prefix")) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.contains("a text with an apostrophe")) << outcome.err.toStdString();
    EXPECT_EQ(get(u"1400"_s), "shot\n");
    EXPECT_EQ(rows(2), "");
    EXPECT_FALSE(outcome.out.contains("Old values")) << "there is none in the file";
}

TEST_F(SettingTest, aBackupFileIsToldWhereOneOldValueOfTwoIsInIt)
{
    EXPECT_EQ(set({u"1400=Anna's"_s}).status, 0);
    const Outcome outcome = set({u"1400=shot"_s, u"1004=64"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 4);
    EXPECT_TRUE(outcome.json().value(u"backup"_s).toString().endsWith(u"/quillet2.sqlite"));
}

TEST_F(SettingTest, foldersOfANamedHomeAreMadeOnlyWithinItsLibraryUnlessItIsNew)
{
    TemporaryHome other;
    QDir(other.path() + u"/Library/Preferences").removeRecursively();
    QDir(other.path() + u"/Library/Application Support").removeRecursively();
    EXPECT_EQ(set({u"1004=64"_s, u"--home"_s, other.path()}).status, 0);
    EXPECT_TRUE(QFileInfo::exists(other.preference(QString::fromUtf8(dock))));
    EXPECT_FALSE(QFileInfo::exists(dockFile())) << "one's own home is left alone";

    TemporaryHome fresh;
    QDir(fresh.path() + u"/Library").removeRecursively();
    EXPECT_EQ(set({u"1004=64"_s, u"--home"_s, fresh.path()}).status, 3);
    EXPECT_FALSE(QFileInfo::exists(fresh.path() + u"/Library"));
    EXPECT_EQ(set({u"1004=64"_s, u"--home"_s, fresh.path(), u"--new-home"_s}).status, 0);
    EXPECT_TRUE(QFileInfo::exists(fresh.preference(QString::fromUtf8(dock))));
}

TEST_F(SettingTest, onesOwnHomeGetsItsStandardFolders)
{
    QDir(home.path() + u"/Library").removeRecursively();
    EXPECT_EQ(set({u"1004=64"_s}).status, 0);
    EXPECT_EQ(get(u"1004"_s), "64\t64 pixels\n");
    EXPECT_EQ(rows(), "1004|-1||\n");
}

TEST_F(SettingTest, aFolderInTheFilesPlaceIsRefusedBeforeAnythingIsWritten)
{
    QDir().mkpath(dockFile());
    const auto before = snapshot(home.path());
    const Outcome outcome = set({u"1101=yes"_s, u"1004=64"_s});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(outcome.err.contains(dockFile().toUtf8())) << outcome.err.toStdString();
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(SettingTest, whenNothingCanBeWrittenTheStatusIsThreeAndTheFileStandsAsItWas)
{
    installSample(home, u"binary"_s, QString::fromUtf8(dock));
    const QByteArray before = fileBytes(dockFile());
    const Outcome outcome = varnelctl.shell(u"ulimit -f 0; \"$varnelctl\" set 1004=64 --json"_s);
    EXPECT_EQ(outcome.status, 3) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.contains(dockFile().toUtf8())) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.json().value(u"changed"_s).toArray().isEmpty());
    EXPECT_EQ(fileBytes(dockFile()), before);
    EXPECT_EQ(
        QDir(home.path() + u"/Library/Preferences").entryList(QDir::Files | QDir::Hidden).size(), 1)
        << "no other file is left";
}

TEST_F(SettingTest, whenTheBackupFileCannotBeWrittenTheSaveGoesOnAndTheStatusIsFour)
{
    // Room for a small preference file, but for no database.
    const Outcome outcome = varnelctl.shell(u"ulimit -f 2; \"$varnelctl\" set 1004=64"_s);
    EXPECT_EQ(outcome.status, 4) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.contains("dock-size: ")) << outcome.err.toStdString();
    EXPECT_FALSE(outcome.out.contains("Old values")) << outcome.out.toStdString();
    EXPECT_EQ(get(u"1004"_s), "64\t64 pixels\n");
    const Outcome json = varnelctl.shell(u"ulimit -f 2; \"$varnelctl\" set 1004=65 --json"_s);
    EXPECT_EQ(json.status, 4) << json.err.toStdString();
    EXPECT_TRUE(json.json().value(u"backup"_s).isNull()) << json.out.toStdString();
}

TEST_F(SettingTest, settingsThatNeverCreateAFileChangeNothingWhereThereIsNone)
{
    const Outcome outcome = set({u"1204=yes"_s, u"1200=1;0;0;0"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.json().value(u"backup"_s).isNull());
    EXPECT_FALSE(QFileInfo::exists(home.preference(u"com.apple.Safari.plist"_s)));
    const QByteArray why = ": not there to be changed; its application has to make it first\n";
    EXPECT_EQ(outcome.err,
              QByteArray("varnelctl: toolbar-text")
                  .append(why)
                  .append("varnelctl: bookmarks-bar")
                  .append(why));
}

TEST_F(SettingTest, theLogTellsTheSaveStepByStepWhenAskedFor)
{
    EXPECT_TRUE(set({u"1004=64"_s}).err.isEmpty());
    const Outcome verbose = set({u"1004=65"_s, u"--verbose"_s});
    const qsizetype name =
        verbose.err.indexOf(QByteArray("varnel.shell: Backup File Name: " + backup(2).toUtf8()));
    const qsizetype row = verbose.err.indexOf("addDataToBackupFile (Quillet): ");
    EXPECT_GE(name, 0) << verbose.err.toStdString();
    EXPECT_GT(row, name);
}

} // namespace
