#include "cli/ProgressLine.h"
#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

#include <gtest/gtest.h>

#include <utmpx.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

class HomesTest : public Test {
protected:
    /// A home folder beneath the test's own.
    QString make(const QString &name) const
    {
        const QString path = home.path() + u'/' + name;
        QDir().mkpath(path + u"/Library/Preferences");
        return path;
    }
    [[nodiscard]] Outcome setIn(const QStringList &homes, QStringList arguments = {}) const
    {
        arguments = QStringList {u"set"_s, u"dock-size=40"_s} + arguments;
        for (const QString &each : homes)
            arguments += {u"--home"_s, each};
        return varnelctl.run(arguments);
    }
    [[nodiscard]] QByteArray dockSize(const QString &path) const
    {
        return varnelctl.run({u"get"_s, u"dock-size"_s, u"--home"_s, path}).out;
    }
    [[nodiscard]] static QStringList backups(const QString &path)
    {
        return QDir(path + u"/Library/Application Support/Varnel/Backup").entryList(QDir::Files);
    }
    /// The list as a file for --homes-from.
    [[nodiscard]] QString list(const QByteArray &bytes) const
    {
        const QString path = home.path() + u"/homes.txt";
        writeFile(path, bytes);
        return path;
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
    const QByteArray changed = "40\t40 pixels\n";
    const QByteArray untouched = "-1\tuse default value\n";
};

TEST_F(HomesTest, eachHomeIsOneSaveWithABackupFileOfItsOwn)
{
    const QString anna = make(u"anna"_s);
    const QString bert = make(u"bert"_s);
    const Outcome outcome = setIn({anna, bert});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    for (const QString &each : {anna, bert}) {
        EXPECT_EQ(dockSize(each), changed);
        EXPECT_EQ(backups(each), QStringList(u"quillet1.sqlite"_s));
    }
    EXPECT_EQ(dockSize(home.path()), untouched);
    QByteArray out = outcome.out;
    const QByteArray part = "HOME/NAME:\nChanged\n"
                            "  1004  dock-size  40 pixels  was: use default value\n\nOld values: "
                            "HOME/NAME/Library/Application Support/Varnel/Backup/quillet1.sqlite\n"
                            "To be restarted: Dock\n";
    EXPECT_EQ(out.replace(home.path().toUtf8(), "HOME").toStdString(),
              QByteArray(part).replace("NAME", "anna").toStdString() + '\n'
                  + QByteArray(part).replace("NAME", "bert").toStdString());
}

TEST_F(HomesTest, theJsonHasAnObjectForEachHomeInTheOrderNamed)
{
    const QString anna = make(u"anna"_s);
    const QString none = home.path() + u"/none";
    const QString bert = make(u"bert"_s);
    const Outcome outcome = setIn({bert, none, anna}, {u"--json"_s});
    EXPECT_EQ(outcome.status, 4);
    const QJsonArray homes = outcome.json().value(u"homes"_s).toArray();
    ASSERT_EQ(homes.size(), 3);
    EXPECT_EQ(homes[0].toObject().value(u"home"_s).toString(), bert);
    EXPECT_EQ(homes[0].toObject().value(u"status"_s).toInt(-1), 0);
    EXPECT_EQ(homes[0].toObject().value(u"changed"_s).toArray().size(), 1);
    EXPECT_FALSE(homes[0].toObject().contains(u"messages"_s));
    EXPECT_EQ(homes[1].toObject().value(u"home"_s).toString(), none);
    EXPECT_EQ(homes[1].toObject().value(u"status"_s).toInt(-1), 3);
    EXPECT_EQ(homes[1].toObject().value(u"messages"_s).toArray().size(), 1);
    EXPECT_EQ(homes[2].toObject().value(u"home"_s).toString(), anna);
    EXPECT_EQ(dockSize(anna), changed);
    EXPECT_TRUE(outcome.err.startsWith(QByteArray("varnelctl: ").append(none.toUtf8())))
        << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.contains("1 of 3 homes")) << outcome.err.toStdString();
}

TEST_F(HomesTest, twoHundredHomesAreDoneAndTheBrokenOneIsNamed)
{
    QByteArray lines;
    QStringList homes;
    for (int i = 0; i < 200; ++i) {
        homes.append(make(u"user "_s + QString::number(i)));
        lines += homes.last().toUtf8() + '\n';
    }
    const QString broken = homes[77] + u"/Library/Preferences/com.apple.dock.plist";
    writeFile(broken, "not a property list");
    const Outcome outcome =
        varnelctl.run({u"set"_s, u"dock-size=40"_s, u"--homes-from"_s, list(lines), u"--json"_s});
    EXPECT_EQ(outcome.status, 4);
    EXPECT_EQ(fileBytes(broken), "not a property list");
    const QJsonArray results = outcome.json().value(u"homes"_s).toArray();
    ASSERT_EQ(results.size(), 200);
    for (int i = 0; i < 200; ++i) {
        const QJsonObject result = results[i].toObject();
        EXPECT_EQ(result.value(u"home"_s).toString(), homes[i]);
        EXPECT_EQ(result.value(u"status"_s).toInt(-1), i == 77 ? 4 : 0);
        EXPECT_EQ(result.value(u"changed"_s).toArray().size(), i == 77 ? 0 : 1);
        EXPECT_EQ(QFileInfo(homes[i] + u"/Library/Preferences/com.apple.dock.plist").size() > 19,
                  i != 77);
    }
}

TEST_F(HomesTest, theListMayComeFromStandardInput)
{
    const QString anna = make(u"anna"_s);
    const QString bert = make(u"bert"_s);
    const Outcome outcome =
        varnelctl.shell(u"printf '%s\\n\\n%s' '"_s + anna + u"' '" + bert
                        + u"' | \"$varnelctl\" set dock-size=40 --homes-from -");
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(dockSize(anna), changed);
    EXPECT_EQ(dockSize(bert), changed);
}

TEST_F(HomesTest, listAndProfileMayBePipesAndAreReadToTheirEnds)
{
    const QString anna = make(u"anna"_s);
    const Outcome outcome = varnelctl.shell(
        u"cd \"$HOME\"; mkfifo list profile; echo \"$HOME/anna\" >list & "
        "\"$varnelctl\" export --format json --all >saved; cat saved >profile & "
        "\"$varnelctl\" set dock-size=40 --homes-from list && \"$varnelctl\" diff profile"_s);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(dockSize(anna), changed);
}

TEST_F(HomesTest, aListOfAnotherSystemsLinesNamesTheSameFolders)
{
    const QString anna = make(u"anna"_s);
    const QString odd = make(u"bert\r"_s);
    const Outcome outcome =
        varnelctl.run({u"set"_s, u"dock-size=40"_s, u"--homes-from"_s,
                       list(anna.toUtf8() + "\r\n\r\n" + odd.toUtf8() + "\r\n")});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(dockSize(anna), changed);
    EXPECT_EQ(dockSize(odd), changed) << "one carriage return ends the line, the other is a name's";
}

TEST_F(HomesTest, theRootFolderIsNamedAsItWasTyped)
{
    if (QFileInfo(u"/Library"_s).isDir())
        GTEST_SKIP() << "this machine has a folder /Library";
    const Outcome outcome = varnelctl.run({u"list"_s, u"--home"_s, u"/"_s});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(outcome.err.startsWith("varnelctl: /: no folder Library"))
        << outcome.err.toStdString();
}

TEST_F(HomesTest, profilesOfSeveralHomesComeInOneObjectOrNotAtAll)
{
    const QStringList both {u"--home"_s, make(u"anna"_s), u"--home"_s, make(u"bert"_s)};
    for (const QString &format : {u"json"_s, u"plist"_s, u"defaults"_s, u"mobileconfig"_s}) {
        const Outcome outcome =
            varnelctl.run(QStringList {u"export"_s, u"--format"_s, format} + both);
        EXPECT_EQ(outcome.status, 2) << qPrintable(format);
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.err.contains("--json")) << outcome.err.toStdString();
    }
    const Outcome outcome = varnelctl.run(QStringList {u"export"_s, u"--json"_s} + both);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"homes"_s).toArray().size(), 2);
}

TEST_F(HomesTest, anEmptyListIsNoHomeAndNeverOnesOwn)
{
    const QMap<QString, QString> before = snapshot(home.path() + u"/Library");
    for (const QByteArray &bytes : {QByteArray(), QByteArray("\n\n")}) {
        const Outcome outcome = varnelctl.run(
            {u"set"_s, u"dock-size=40"_s, u"--json"_s, u"--homes-from"_s, list(bytes)});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.json().value(u"homes"_s), QJsonValue(QJsonArray()));
    }
    EXPECT_EQ(snapshot(home.path() + u"/Library"), before);
}

TEST_F(HomesTest, aListThatCannotBeReadWritesNothingAnywhere)
{
    const QString anna = make(u"anna"_s);
    const QMap<QString, QString> before = snapshot(anna);
    const QStringList set {u"set"_s, u"dock-size=40"_s, u"--home"_s, anna, u"--homes-from"_s};
    EXPECT_EQ(varnelctl.run(set + QStringList(home.path() + u"/no such list")).status, 3);
    EXPECT_EQ(varnelctl.run(set + QStringList(home.path())).status, 3);
    EXPECT_EQ(varnelctl.run(set + QStringList(list(anna.toUtf8() + "\n\xff\n"))).status, 2);
    const Outcome parted =
        varnelctl.run(set + QStringList(list(anna.toUtf8() + QByteArray(1, '\0'))));
    EXPECT_EQ(parted.status, 2);
    EXPECT_TRUE(parted.err.contains("homes.txt: holds a NUL character"))
        << parted.err.toStdString();
    EXPECT_EQ(snapshot(anna), before);
}

TEST_F(HomesTest, aListWithoutEndIsRefusedBeforeItFillsTheMemory)
{
#ifdef __SANITIZE_ADDRESS__
    const QString limit; // the sanitizer lays out terabytes
#else
    const QString limit = u"ulimit -d 400000; "_s;
#endif
    const QString anna = make(u"anna"_s);
    const QMap<QString, QString> before = snapshot(anna);
    for (const QString &list : {u"--homes-from /dev/zero"_s, u"--homes-from - </dev/zero"_s}) {
        const Outcome outcome = varnelctl.shell(
            limit + u"exec \"$varnelctl\" set dock-size=40 --home '"_s + anna + u"' " + list);
        EXPECT_EQ(outcome.status, 2) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains(": over 16 MiB")) << outcome.err.toStdString();
    }
    EXPECT_EQ(snapshot(anna), before);
}

TEST_F(HomesTest, aListOfSixteenMebibytesIsTakenAndOneByteMoreIsNot)
{
    const QByteArray anna = make(u"anna"_s).toUtf8();
    constexpr qsizetype most = 16 * 1024 * 1024;
    const QByteArray full = QByteArray(most - anna.size(), '\n') + anna;
    const QStringList set {u"list"_s, u"--json"_s, u"--homes-from"_s};
    const Outcome taken = varnelctl.run(set + QStringList(list(full)));
    EXPECT_EQ(taken.status, 0) << taken.err.toStdString();
    EXPECT_EQ(taken.json().value(u"homes"_s).toArray().size(), 1);
    EXPECT_EQ(varnelctl.run(set + QStringList(list('\n' + full))).status, 2);
}

TEST_F(HomesTest, aHomeNamedTwiceIsOneSave)
{
    const QString anna = make(u"anna"_s);
    const QString link = home.path() + u"/link";
    ASSERT_TRUE(QFile::link(anna, link));
    const Outcome outcome = setIn({anna, link, anna + u'/'}, {u"--json"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.json().value(u"homes"_s).toArray().size(), 1);
    EXPECT_EQ(backups(anna), QStringList(u"quillet1.sqlite"_s));
}

TEST_F(HomesTest, whatAllHomesAnswerIsTheAnswer)
{
    const QStringList both {u"--home"_s, make(u"anna"_s), u"--home"_s, make(u"bert"_s)};
    EXPECT_EQ(varnelctl.run(QStringList {u"search"_s, u"reading list"_s} + both).status, 1);
    EXPECT_EQ(varnelctl
                  .run({u"list"_s, u"--home"_s, home.path() + u"/x"_s, u"--home"_s,
                        home.path() + u"/y"_s})
                  .status,
              3);
}

TEST_F(HomesTest, aSlipInAValueWritesInNoHome)
{
    const QString anna = make(u"anna"_s);
    const QString bert = make(u"bert"_s);
    const QMap<QString, QString> before = snapshot(home.path());
    EXPECT_EQ(varnelctl
                  .run({u"set"_s, u"dock-size=40"_s, u"1008=sideways"_s, u"--home"_s, anna,
                        u"--home"_s, bert})
                  .status,
              2);
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(HomesTest, anOptionFromAnEmptyVariableTakesNoOtherOptionWithIt)
{
    const QString anna = make(u"anna"_s);
    EXPECT_EQ(setIn({anna}).status, 0);
    const QMap<QString, QString> before = snapshot(home.path());
    for (const QString &option : {u"--home="_s, u"--homes-from="_s, u"--group="_s}) {
        const Outcome outcome =
            varnelctl.run({u"reset"_s, u"dock-size"_s, option, u"--dry-run"_s, u"--home"_s, anna});
        EXPECT_EQ(outcome.status, 2) << option.toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
    }
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(HomesTest, aHomeThatFailsIsNamedOnceAndHasNoHeading)
{
    const QString none = home.path() + u"/none";
    const QString anna = make(u"anna"_s);
    const Outcome outcome = setIn({none, anna});
    EXPECT_EQ(outcome.status, 4);
    EXPECT_EQ(outcome.err.count(none.toUtf8()), 1) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.startsWith(anna.toUtf8().append(':'))) << outcome.out.toStdString();
}

TEST_F(HomesTest, commandsThatAreNotAboutHomesTakeNoList)
{
    const Outcome outcome = varnelctl.run({u"system"_s, u"--homes-from"_s, list("/x\n")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.out.isEmpty());
}

/// A log-in record that says root has a session.
QByteArray recordOfRoot()
{
    utmpx entry {};
    entry.ut_type = USER_PROCESS;
    qstrncpy(entry.ut_user, "root", sizeof entry.ut_user);
    return {reinterpret_cast<const char *>(&entry), sizeof entry};
}

TEST_F(HomesTest, aHomeWhoseUserIsLoggedInIsWarnedOfOnce)
{
    if (varnelctl.shell(u"unshare -m true && [ \"$(id -u)\" = 0 ]"_s).status != 0)
        GTEST_SKIP() << "no right to make a mount namespace with a log-in record of its own";
    const QString anna = make(u"anna"_s);
    const QString record = home.path() + u"/record";
    writeFile(record, recordOfRoot());
    const auto run = [&](const QString &command) {
        return varnelctl.shell(u"touch /run/utmp; unshare -m sh -c 'mount --bind \"$1\" /run/utmp; "
                               u"\"$varnelctl\" "_s
                               + command + u" --home \"$2\"' sh '" + record + u"' '" + anna
                               + u'\'');
    };
    const QByteArray warning = "varnelctl: root has a session on this machine";
    EXPECT_EQ(run(u"set dock-size=40 --dry-run"_s).err.count(warning), 1) << "as the work itself";
    EXPECT_EQ(run(u"set dock-size=40 minimize-effect=1"_s).err.count(warning), 1);
    EXPECT_EQ(run(u"set dock-size=40"_s).err.count(warning), 0) << "nothing was written";
    EXPECT_EQ(run(u"get dock-size"_s).err.count(warning), 0);
}

TEST(ProgressLineTest, aLineStandsOnlyOnceTheWorkTakesLong)
{
    QByteArray shown;
    qint64 now = 0;
    {
        varnel::cli::ProgressLine line(
            200, [&](const QByteArray &bytes) { shown += bytes; }, [&] { return now; });
        now = 999;
        line.show(1);
        line.clear();
        EXPECT_EQ(shown, "");
        now = 1000;
        line.show(12);
        EXPECT_EQ(shown, "\r\033[K12 of 200 homes");
        now = 1050;
        line.show(13);
        EXPECT_EQ(shown, "\r\033[K12 of 200 homes") << "drawing is not the work";
        now = 1100;
        line.show(14);
        EXPECT_EQ(shown, "\r\033[K12 of 200 homes\r\033[K14 of 200 homes");
    }
    EXPECT_TRUE(shown.endsWith("homes\r\033[K"));
}

} // namespace
