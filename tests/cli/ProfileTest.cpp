#include "cli/Varnelctl.h"
#include "settings/Catalogue.h"
#include "support/PlistReferee.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace testing;

namespace {

const QStringList preferenceFiles {
    u".GlobalPreferences.plist"_s,      u"com.apple.dock.plist"_s,
    u"com.apple.finder.plist"_s,        u"com.apple.Safari.plist"_s,
    u"com.apple.Mail.plist"_s,          u"com.apple.iTunes.plist"_s,
    u"com.apple.TimeMachine.plist"_s,   u"com.apple.QuickTimePlayerX.plist"_s,
    u"com.apple.screencapture.plist"_s, u"com.apple.desktopservices.plist"_s};

/// The n-th value of a setting as `set` takes it; of one that has fewer, its last.
QString assignment(const SettingRow &row, int which)
{
    QStringList values;
    if (row.kind == ValueKind::Choice)
        for (int index = 0; index < row.choices.size(); ++index)
            values.append(QString::number(index));
    else if (row.kind == ValueKind::Number)
        values = {QString::number(row.minimum), QString::number(row.maximum), u"-1"_s};
    else if (row.mechanism == Mechanism::BarItems)
        values = {u"1;0;1;0"_s, u"0;0;0;0"_s, u"-1"_s};
    else
        values = {u"it's \"$HOME\" `id`\\n 画像"_s, u""_s, u"-1"_s};
    return QString::number(row.id) + u'=' + values[std::min<qsizetype>(which, values.size() - 1)];
}

class ProfileTest : public Test {
protected:
    ProfileTest()
    {
        for (const TemporaryHome *each : {&home, &other})
            installSample(*each, u"xml"_s, u"com.apple.Safari.plist"_s);
        varnelctl.environment.insert(u"CLI_TESTS"_s, QStringLiteral(CLI_TESTS));
    }

    /// Gives every setting of the first home its n-th value.
    void setAll(int which) const
    {
        QStringList arguments {u"set"_s};
        for (const SettingRow &row : catalogue())
            // Stored under the key of a setting before it.
            if (row.id != 1603)
                arguments.append(assignment(row, which));
        const Outcome outcome = varnelctl.run(arguments);
        // The texts that come first hold an apostrophe, for which a backup file has no row.
        ASSERT_EQ(outcome.status, which == 1 ? 4 : 0) << outcome.err.toStdString();
    }

    [[nodiscard]] QString profile(const QByteArray &bytes) const
    {
        const QString path = home.path() + u"/profile";
        writeFile(path, bytes);
        return path;
    }

    [[nodiscard]] QByteArray exported(const QStringList &options = {}) const
    {
        const Outcome outcome = varnelctl.run(QStringList {u"export"_s} + options);
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        return outcome.out;
    }

    [[nodiscard]] Outcome inOther(const QString &command, const QString &path) const
    {
        return varnelctl.run({command, path, u"--home"_s, other.path()});
    }

    /// Whether an independent reader finds the same in the files of both homes.
    void expectTheSame(int which) const
    {
        QStringList paths;
        for (const TemporaryHome *each : {&home, &other})
            for (const QString &name : preferenceFiles)
                paths.append(each->preference(name));
        const QStringList content = PlistReferee::read(paths);
        const qsizetype half = content.size() / 2;
        EXPECT_EQ(content.mid(0, half), content.mid(half)) << which;
    }

    [[nodiscard]] QStringList backups() const
    {
        return QDir(home.path() + u"/Library/Application Support/Varnel/Backup")
            .entryList(QDir::Files);
    }

    TemporaryHome home;
    TemporaryHome other;
    Varnelctl varnelctl {home};
};

TEST_F(ProfileTest, whatOneHomeExportsMakesAnotherTheSame)
{
    for (int which = 0; which < 3; ++which) {
        setAll(which);
        for (const char16_t *format : {u"json", u"plist"}) {
            const QString path =
                profile(exported({u"--all"_s, u"--format"_s, QString::fromUtf16(format)}));
            EXPECT_NE(inOther(u"apply"_s, path).status, 2);
            EXPECT_EQ(inOther(u"diff"_s, path).out, "Nothing differs.\n");
            expectTheSame(which);
            // Off again, so that the next format has everything to do.
            EXPECT_EQ(
                inOther(u"apply"_s, profile(R"({"schemaVersion": 1, "settings": {"1004": 99}})"))
                    .status,
                0);
        }
    }
}

TEST_F(ProfileTest, onlyWhatIsNotAtItsDefaultIsExportedUnlessAllIsAskedFor)
{
    EXPECT_EQ(varnelctl.run({u"set"_s, u"1004=64"_s, u"1302=hidden"_s, u"1009=no"_s}).status, 0);
    const QJsonObject dock = varnelctl.run({u"export"_s, u"--group"_s, u"dock"_s}).json();
    EXPECT_EQ(dock,
              (QJsonObject {
                  {u"schemaVersion"_s, 1},
                  {u"settings"_s, QJsonObject {{u"dock-size"_s, 64}, {u"autohide"_s, u"no"_s}}}}));
    const auto names = [&](const QStringList &options) {
        return varnelctl.run(QStringList {u"export"_s, u"--json"_s} + options)
            .json()
            .value(u"settings"_s)
            .toObject()
            .keys();
    };
    EXPECT_FALSE(names({}).contains(u"library-folder"_s)) << "hidden is its default";
    EXPECT_EQ(names({u"--all"_s}).size(), 50);
    EXPECT_EQ(names({u"--all"_s, u"--group"_s, u"Time Machine"_s}), QStringList {u"new-disks"_s});
}

TEST_F(ProfileTest, applyingTwiceChangesOnceAndSaysSo)
{
    const QString path =
        profile(R"({"schemaVersion": 1, "settings": {"dock-size": 64, "1008": "Scale effect"}})");
    const QJsonObject first = varnelctl.run({u"apply"_s, path, u"--json"_s}).json();
    EXPECT_EQ(first.value(u"changed"_s).toArray().size(), 2);
    EXPECT_EQ(backups(), QStringList {u"quillet1.sqlite"_s});

    const auto before = snapshot(home.path());
    const Outcome second = varnelctl.run({u"apply"_s, path});
    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(second.out, "Nothing to change.\n");
    const Outcome third = varnelctl.run({u"apply"_s, path, u"--json"_s});
    EXPECT_EQ(third.status, 0);
    EXPECT_TRUE(third.json().value(u"changed"_s).toArray().isEmpty());
    EXPECT_TRUE(third.json().value(u"backup"_s).isNull());
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(ProfileTest, aDryRunTellsTheSameAndTouchesNothing)
{
    const QString path = profile(R"({"schemaVersion": 1, "settings": {"dock-size": 64}})");
    const auto before = snapshot(home.path());
    const QJsonObject dry = varnelctl.run({u"apply"_s, path, u"--dry-run"_s, u"--json"_s}).json();
    EXPECT_EQ(snapshot(home.path()), before);
    const QJsonObject real = varnelctl.run({u"apply"_s, path, u"--json"_s}).json();
    EXPECT_EQ(dry.value(u"changed"_s), real.value(u"changed"_s));
    EXPECT_EQ(dry.value(u"changed"_s).toArray().size(), 1);
    EXPECT_TRUE(dry.value(u"dryRun"_s).toBool());
}

TEST_F(ProfileTest, aValueThatIsStoredInAnotherFormIsLeftAsItIs)
{
    const QString file = home.preference(u"com.apple.dock.plist"_s);
    PlistReferee::write(file, u"{'autohide': 1, 'tilesize': '48'}"_s, PlistReferee::Format::Xml);
    const QByteArray before = fileBytes(file);
    const QString path =
        profile(R"({"schemaVersion": 1, "settings": {"1009": "yes", "1004": 48}})");
    EXPECT_EQ(varnelctl.run({u"diff"_s, path}).status, 0);
    EXPECT_EQ(varnelctl.run({u"apply"_s, path}).out, "Nothing to change.\n");
    EXPECT_EQ(fileBytes(file), before);
}

TEST_F(ProfileTest, oneWrongValueAndNothingIsWritten)
{
    const QString path =
        profile(R"({"schemaVersion": 1, "settings": {"1009": "yes", "1004": 300}})");
    const auto before = snapshot(home.path());
    for (const char16_t *command : {u"apply", u"diff"}) {
        const Outcome outcome = varnelctl.run({QString::fromUtf16(command), path});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err.toStdString(),
                  "varnelctl: " + path.toStdString()
                      + ": '300' is no value of dock-size; give a number from 16 to 128, or "
                        "'default'\n");
    }
    EXPECT_EQ(snapshot(home.path()), before);
    EXPECT_EQ(varnelctl.run({u"apply"_s}).status, 2);
}

TEST_F(ProfileTest, aProfileThatCannotBeReadIsAFailure)
{
    const QString missing = home.path() + u"/missing";
    const Outcome outcome = varnelctl.run({u"apply"_s, missing});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(outcome.err.startsWith(QString(u"varnelctl: " + missing + u": ").toUtf8()));
    EXPECT_EQ(varnelctl.run({u"apply"_s, home.path()}).status, 3) << "a folder";
    EXPECT_EQ(varnelctl.shell(u"\"$varnelctl\" apply - <&-"_s).status, 3) << "no input";
    EXPECT_EQ(varnelctl.shell(u"\"$varnelctl\" apply - </dev/zero"_s).status, 2) << "no end";
}

TEST_F(ProfileTest, standardInputIsReadToItsEnd)
{
    const QString line =
        u"(printf '{\"schemaVersion\": 1, \"settings\"'; printf ': {\"1004\": 64}}') "
        u"| \"$varnelctl\" apply - --json"_s;
    const Outcome outcome = varnelctl.shell(line);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"changed"_s).toArray().size(), 1);
    EXPECT_EQ(varnelctl.shell(u"echo nothing | \"$varnelctl\" diff -"_s).err,
              "varnelctl: standard input: neither a JSON object nor a valid property list with a "
              "dictionary\n");
    EXPECT_EQ(varnelctl.shell(u"\"$varnelctl\" export | \"$varnelctl\" diff -"_s).status, 0);
}

TEST_F(ProfileTest, oneProfileGoesToManyHomes)
{
    const QString line =
        u"echo '{\"schemaVersion\": 1, \"settings\": {\"1004\": 64}}' | "
        u"\"$varnelctl\" apply - --json --home '%1' --home '%2'"_s.arg(home.path(), other.path());
    for (const qsizetype changes : {1, 0}) {
        const Outcome outcome = varnelctl.shell(line);
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        const QJsonArray homes = outcome.json().value(u"homes"_s).toArray();
        ASSERT_EQ(homes.size(), 2);
        for (const auto &each : homes)
            EXPECT_EQ(each.toObject().value(u"changed"_s).toArray().size(), changes);
    }
    EXPECT_EQ(varnelctl.shell(u"echo | \"$varnelctl\" apply - --homes-from -"_s).status, 2)
        << "what is read once can't be read twice";
    const QString missing = u"/nonexistent"_s;
    EXPECT_EQ(varnelctl.shell(line + u" --home " + missing).status, 4) << "the rest is done";
}

TEST_F(ProfileTest, aDifferenceIsANegativeAnswer)
{
    EXPECT_EQ(varnelctl.run({u"set"_s, u"1004=48"_s}).status, 0);
    const QString path =
        profile(R"({"schemaVersion": 1, "settings": {"1004": 64, "1009": -1, "1302": "shown"}})");
    const auto before = snapshot(home.path());
    const Outcome outcome = varnelctl.run({u"diff"_s, path, u"--json"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.json(),
              (QJsonObject {{u"schemaVersion"_s, 1},
                            {u"differences"_s,
                             QJsonArray {QJsonObject {{u"id"_s, 1004},
                                                      {u"name"_s, u"dock-size"_s},
                                                      {u"current"_s, 48},
                                                      {u"currentLabel"_s, u"48 pixels"_s},
                                                      {u"wanted"_s, 64},
                                                      {u"wantedLabel"_s, u"64 pixels"_s}}}}}));
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(ProfileTest, whatOnlyItsApplicationMakesIsToldAndNotMade)
{
    const TemporaryHome fresh;
    const QString path = profile(R"({"schemaVersion": 1, "settings": {"1204": "yes"}})");
    const char *const note = "varnelctl: toolbar-text: not there to be changed; its application "
                             "has to make it first\n";
    const Outcome diff = varnelctl.run({u"diff"_s, path, u"--home"_s, fresh.path()});
    EXPECT_EQ(diff.status, 1);
    EXPECT_EQ(diff.err.toStdString(), note);
    const Outcome apply = varnelctl.run({u"apply"_s, path, u"--home"_s, fresh.path()});
    EXPECT_EQ(apply.out, "Nothing to change.\n");
    EXPECT_EQ(apply.err.toStdString(), note);
    EXPECT_FALSE(QFileInfo::exists(fresh.preference(u"com.apple.Safari.plist"_s)));
}

TEST_F(ProfileTest, whatAnotherSettingMakesRoomForIsDoneInTheSameRun)
{
    const TemporaryHome fresh;
    const QString path =
        profile(R"({"schemaVersion": 1, "settings": {"1200": "none", "1201": "yes"}})");
    const QStringList apply {u"apply"_s, path, u"--home"_s, fresh.path()};
    const Outcome first = varnelctl.run(apply);
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.err, "");
    EXPECT_EQ(varnelctl.run(apply).out, "Nothing to change.\n");
    EXPECT_EQ(varnelctl.run({u"diff"_s, path, u"--home"_s, fresh.path()}).status, 0);
}

TEST_F(ProfileTest, twoSettingsOfOneKeyAreDoneByOneWriteWithoutAWord)
{
    const TemporaryHome fresh;
    const QString path =
        profile(R"({"schemaVersion": 1, "settings": {"song-previews": 0, "half-stars": 0}})");
    const Outcome apply = varnelctl.run({u"apply"_s, path, u"--home"_s, fresh.path()});
    EXPECT_EQ(apply.status, 0);
    EXPECT_EQ(apply.err, "");
    EXPECT_EQ(varnelctl.run({u"diff"_s, path, u"--home"_s, fresh.path()}).status, 0);
}

TEST_F(ProfileTest, aFileThatCannotBeLoadedGetsNoBackupFileAtEachRun)
{
    const QString file = home.preference(u"com.apple.dock.plist"_s);
    writeFile(file, "bplist00 is not one");
    const QString path = profile(R"({"schemaVersion": 1, "settings": {"1004": 64}})");
    const auto before = snapshot(home.path());
    const Outcome apply = varnelctl.run({u"apply"_s, path, u"--json"_s});
    EXPECT_EQ(apply.status, 4);
    EXPECT_TRUE(apply.err.contains("dock-size: not written")) << apply.err.toStdString();
    EXPECT_EQ(apply.json().value(u"failures"_s).toArray().size(), 1);
    EXPECT_EQ(apply.json().value(u"backup"_s), QJsonValue());
    EXPECT_TRUE(apply.json().value(u"restart"_s).toArray().isEmpty());
    const auto backups = [](const QMap<QString, QString> &found) {
        return found.keys().filter(u".sqlite"_s);
    };
    EXPECT_EQ(backups(snapshot(home.path())), backups(before));
}

TEST_F(ProfileTest, aFileThatCannotBeReadIsNoDefault)
{
    const QString file = home.preference(u"com.apple.dock.plist"_s);
    writeFile(file, "bplist00 is not one");
    const QString path =
        profile(R"({"schemaVersion": 1, "settings": {"1004": -1, "1101": "yes"}})");
    EXPECT_EQ(varnelctl.run({u"diff"_s, path}).status, 4);
    const Outcome apply = varnelctl.run({u"apply"_s, path});
    EXPECT_EQ(apply.status, 4);
    EXPECT_TRUE(apply.err.contains(file.toUtf8())) << apply.err.toStdString();
    EXPECT_EQ(varnelctl.run({u"get"_s, u"1101"_s}).out, "0\tyes\n") << "the rest is done";
    EXPECT_EQ(fileBytes(file), "bplist00 is not one");
    EXPECT_EQ(varnelctl.run({u"export"_s}).status, 4);
}

TEST_F(ProfileTest, aValueThatNoProfileCanHoldIsToldAndLeftOut)
{
    PlistReferee::write(home.preference(u"com.apple.dock.plist"_s),
                        u"{'tilesize': 300, 'autohide': True}"_s, PlistReferee::Format::Binary);
    PlistReferee::write(home.preference(u"com.apple.screencapture.plist"_s), u"{'name': chr(1)}"_s,
                        PlistReferee::Format::Binary);
    const Outcome json = varnelctl.run({u"export"_s, u"--group"_s, u"Dock"_s});
    EXPECT_EQ(json.status, 4);
    EXPECT_EQ(json.json().value(u"settings"_s).toObject(),
              (QJsonObject {{u"autohide"_s, u"yes"_s}}));
    EXPECT_TRUE(json.err.contains("left out: '300' is no value of dock-size"))
        << json.err.toStdString();
    const QStringList captures {u"export"_s, u"--group"_s, u"Screen Capture"_s};
    EXPECT_EQ(varnelctl.run(captures).status, 0);
    EXPECT_EQ(varnelctl.run(captures + QStringList {u"--format"_s, u"plist"_s}).status, 4);
}

TEST_F(ProfileTest, optionsThatDoNotGoTogetherAreWrongUsage)
{
    for (const QStringList &options :
         {QStringList {u"--format"_s, u"yaml"_s}, QStringList {u"--set-once"_s},
          QStringList {u"--forced"_s, u"--format"_s, u"json"_s},
          QStringList {u"--format"_s, u"mobileconfig"_s, u"--forced"_s, u"--set-once"_s},
          QStringList {u"--format"_s, u"plist"_s, u"--json"_s},
          QStringList {u"--group"_s, u"Nowhere"_s}, QStringList {u"extra"_s}}) {
        const Outcome outcome = varnelctl.run(QStringList {u"export"_s} + options);
        EXPECT_EQ(outcome.status, 2) << options.join(u' ').toStdString();
        EXPECT_EQ(outcome.out, "");
    }
}

TEST_F(ProfileTest, theScriptDoesOnALiveAccountWhatSetDoes)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    const QString script = home.path() + u"/script.sh";
    const QString log = home.path() + u"/log";
    for (int which = 0; which < 3; ++which) {
        setAll(which);
        writeFile(script, exported({u"--all"_s, u"--format"_s, u"defaults"_s}));
        QProcessEnvironment environment = varnelctl.environment;
        environment.insert(u"HOME"_s, other.path());
        environment.insert(u"DEFAULTS_LOG"_s, log);
        writeFile(log, "");
        const Outcome run = runProgram(
            u"/bin/sh"_s, {u"-c"_s, u". \"$CLI_TESTS/defaults_tools.sh\"; . \"$0\""_s, script},
            environment);
        ASSERT_EQ(run.status, 0) << run.err.toStdString();
        EXPECT_EQ(run.err, "");
        const Outcome apply = runProgram(
            u"python3"_s, {QStringLiteral(CLI_TESTS) + u"/apply_defaults.py", u"apply"_s, log},
            environment);
        ASSERT_EQ(apply.status, 0) << apply.err.toStdString();
        EXPECT_TRUE(apply.out.startsWith("Dock\nFinder\nMail\n")) << apply.out.toStdString();
        EXPECT_TRUE(apply.out.endsWith("\nSystemUIServer\n")) << apply.out.toStdString();

        if (which == 2) {
            // No command takes a key out of a dictionary; the script says so.
            EXPECT_EQ(varnelctl.run({u"set"_s, u"1204=-1"_s, u"--home"_s, other.path()}).status, 0);
        }
        expectTheSame(which);
        EXPECT_EQ(varnelctl.run({u"get"_s, u"1302"_s, u"--home"_s, other.path()}).out,
                  varnelctl.run({u"get"_s, u"1302"_s}).out);
    }
}

TEST_F(ProfileTest, theScriptMakesNothingThatSetWouldNotMake)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    EXPECT_EQ(varnelctl.run({u"set"_s, u"1200=1;0;1;0"_s, u"1204=no"_s}).status, 0);
    const TemporaryHome fresh;
    const QString script = home.path() + u"/script.sh";
    const QString log = home.path() + u"/log";
    writeFile(script, exported({u"--group"_s, u"Safari"_s, u"--format"_s, u"defaults"_s}));
    writeFile(log, "");
    QProcessEnvironment environment = varnelctl.environment;
    environment.insert(u"HOME"_s, fresh.path());
    environment.insert(u"DEFAULTS_LOG"_s, log);
    const Outcome run = runProgram(
        u"/bin/sh"_s, {u"-c"_s, u". \"$CLI_TESTS/defaults_tools.sh\"; . \"$0\""_s, script},
        environment);
    EXPECT_EQ(run.status, 0);
    EXPECT_FALSE(fileBytes(log).contains("ProxiesInBookmarksBar"));
    EXPECT_FALSE(fileBytes(log).contains("-dict-add"));
}

TEST_F(ProfileTest, aConfigurationProfileHoldsWhatSetWrites)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    for (int which = 0; which < 2; ++which) {
        const TemporaryHome fresh;
        Varnelctl there(fresh);
        QStringList arguments {u"set"_s};
        for (const SettingRow &row : catalogue())
            if (row.id != 1603)
                arguments.append(assignment(row, which));
        EXPECT_EQ(there.run(arguments).status, 0);
        const Outcome outcome = there.run({u"export"_s, u"--format"_s, u"mobileconfig"_s});
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        const QString path = fresh.path() + u"/profile.mobileconfig";
        writeFile(path, outcome.out);
        const Outcome payloads = runProgram(
            u"python3"_s, {QStringLiteral(CLI_TESTS) + u"/payloads.py", path, fresh.path()},
            there.environment);
        EXPECT_EQ(payloads.status, 0) << payloads.err.toStdString();
        EXPECT_EQ(payloads.out.toStdString(), "10 domains agree\n");
    }
}

} // namespace
