#include "cli/Varnelctl.h"
#include "support/FileFacts.h"

#include <QDir>
#include <QJsonArray>

#include <gtest/gtest.h>

#include <functional>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

const QString dock = u"com.apple.dock.plist"_s;

[[nodiscard]] bool says(const Outcome &outcome, const QByteArray &text)
{
    return outcome.err.contains(text);
}

struct Places {
    QString home;
    QString folder = home + u"/Library/Preferences";
    QString file = folder + u'/' + dock;
    QString outside; ///< a folder beside the home
};

/// Something odd where a preference file is expected.
struct Oddity {
    const char *test;
    std::function<void(const Places &)> make;
    int get; ///< exit status of reading a setting of the file
    int set; ///< exit status of changing it
    bool needsTwoUsers = false;
};

void PrintTo(const Oddity &oddity, std::ostream *out)
{
    *out << oddity.test;
}

void hide(const Places &places)
{
    QFile::rename(places.file, places.outside + u"/moved.plist");
}

const Oddity oddities[] {
    {"folder", [](const Places &at) { hide(at), QDir().mkpath(at.file); }, 3, 3},
    {"fifo", [](const Places &at) { hide(at), ::mkfifo(qPrintable(at.file), 0600); }, 3, 3},
    {"deviceThatNeverEnds",
     [](const Places &at) {
         hide(at);
         linkTo(u"/dev/zero"_s, at.file);
     },
     3, 3},
    {"terminal",
     [](const Places &at) {
         hide(at);
         linkTo(u"/dev/tty"_s, at.file);
     },
     3, 3},
    {"linkLoop",
     [](const Places &at) {
         hide(at);
         linkTo(dock, at.file);
     },
     3, 3},
    {"danglingLink",
     [](const Places &at) {
         hide(at);
         linkTo(at.outside + u"/not-there.plist", at.file);
     },
     0, 0},
    {"danglingLinkIntoNoFolder",
     [](const Places &at) {
         hide(at);
         linkTo(at.outside + u"/no folder/not-there.plist", at.file);
     },
     0, 3},
    {"linkOutOfOnesOwnHome",
     [](const Places &at) {
         hide(at);
         linkTo(at.outside + u"/moved.plist", at.file);
     },
     0, 0},
    {"emptyFile", [](const Places &at) { writeRaw(at.file, {}); }, 3, 4},
    {"readOnlyFile", [](const Places &at) { ::chmod(qPrintable(at.file), 0444); }, 0, 3, true},
    {"fileWithoutAnyRight", [](const Places &at) { ::chmod(qPrintable(at.file), 0); }, 3, 3, true},
    {"readOnlyFolder", [](const Places &at) { ::chmod(qPrintable(at.folder), 0555); }, 0, 3, true},
    {"folderThatMayNotBeSearched", [](const Places &at) { ::chmod(qPrintable(at.folder), 0600); },
     3, 3, true},
    {"somebodyElsesFile",
     [](const Places &at) {
         ::chmod(qPrintable(at.file), 0666);
         EXPECT_EQ(::chown(qPrintable(at.file), 0, 0), 0);
     },
     0, 3, true},
    {"somebodyElsesFolder",
     [](const Places &at) {
         ::chmod(qPrintable(at.folder), 0755);
         EXPECT_EQ(::chown(qPrintable(at.folder), 0, 0), 0);
     },
     0, 3, true},
};

class OddPlaces : public TestWithParam<Oddity> {
protected:
    void SetUp() override
    {
        installSamples(home, u"binary"_s);
        if (!GetParam().needsTwoUsers)
            return;
        VARNEL_NEEDS_ROOT();
        giveAll(home.path(), stranger, stranger);
        if (!varnelctl.canRunAs(stranger))
            GTEST_SKIP() << "needs setpriv and a build folder that other users may enter";
    }
    [[nodiscard]] Outcome run(QStringList words) const
    {
        words.prepend(u"--verbose"_s);
        return GetParam().needsTwoUsers ? varnelctl.runAs(stranger, words) : varnelctl.run(words);
    }
    void expectTold(const Outcome &outcome) const
    {
        if (outcome.status == 0)
            return;
        const QByteArray file = places.file.toUtf8();
        EXPECT_TRUE(says(outcome, "varnel.io: " + file)) << outcome.err.toStdString();
        EXPECT_TRUE(says(outcome, "varnelctl: ")) << outcome.err.toStdString();
    }
    /// Everything of the home but what saving adds for itself.
    [[nodiscard]] QMap<QString, QString> preferences() const
    {
        return snapshot(places.home + u"/Library/Preferences");
    }

    TemporaryHome home;
    TemporaryHome other;
    Places places {.home = home.path(), .outside = other.path()};
    Varnelctl varnelctl {home};
};

TEST_P(OddPlaces, isReadOrRefusedToldAndNeverWaitedFor)
{
    GetParam().make(places);
    const auto before = preferences();
    const Outcome outcome = run({u"get"_s, u"dock-size"_s});
    EXPECT_EQ(outcome.status, GetParam().get) << outcome.err.toStdString();
    expectTold(outcome);
    EXPECT_EQ(preferences(), before);
}

TEST_P(OddPlaces, isChangedOrLeftAsItIsAndTold)
{
    GetParam().make(places);
    const auto before = preferences();
    const Outcome outcome = run({u"set"_s, u"dock-size=64"_s});
    EXPECT_EQ(outcome.status, GetParam().set) << outcome.err.toStdString();
    expectTold(outcome);
    if (outcome.status != 0)
        EXPECT_EQ(preferences(), before);
    else
        EXPECT_EQ(run({u"get"_s, u"dock-size"_s}).out, "64\t64 pixels\n");
}

INSTANTIATE_TEST_SUITE_P(Cli, OddPlaces, ValuesIn(oddities),
                         [](const auto &one) { return std::string(one.param.test); });

/// The same of the program's own files.
struct OddOwnFiles : Test {
    OddOwnFiles()
    {
        installSamples(home, u"binary"_s);
        varnelctl.environment.insert(u"XDG_CONFIG_DIRS"_s, home.path() + u"/none");
        varnelctl.environment.insert(u"XDG_DATA_DIRS"_s, home.path() + u"/none");
        QDir().mkpath(support);
        QDir().mkpath(autostart);
    }
    [[nodiscard]] Outcome run(QStringList words) const
    {
        words.prepend(u"--verbose"_s);
        return varnelctl.run(words);
    }

    TemporaryHome home;
    QString support = home.path() + u"/Library/Application Support/Varnel";
    QString autostart = home.path() + u"/.config/autostart";
    Varnelctl varnelctl {home};
};

TEST_F(OddOwnFiles, aPipeInTheBackupFoldersPlaceKeepsNoSaveFromGoingOn)
{
    ASSERT_EQ(::mkfifo(qPrintable(support + u"/Backup"), 0600), 0);
    const Outcome outcome = run({u"set"_s, u"dock-size=64"_s});
    EXPECT_EQ(outcome.status, 4);
    EXPECT_TRUE(says(outcome, "varnel.io: " + support.toUtf8() + "/Backup/quillet1.sqlite"))
        << outcome.err.toStdString();
    EXPECT_TRUE(says(outcome, "varnelctl: dock-size: the old value is not in"))
        << outcome.err.toStdString();
    EXPECT_EQ(run({u"get"_s, u"dock-size"_s}).out, "64\t64 pixels\n");
}

TEST_F(OddOwnFiles, aPipeInABackupFilesPlaceIsRefusedAtOnce)
{
    ASSERT_TRUE(QDir().mkpath(support + u"/Backup"));
    ASSERT_EQ(::mkfifo(qPrintable(support + u"/Backup/quillet1.sqlite"), 0600), 0);
    for (const QString &verb : {u"show"_s, u"restore"_s}) {
        const Outcome outcome = run({u"backups"_s, verb, u"quillet1.sqlite"_s});
        EXPECT_EQ(outcome.status, 3) << qPrintable(verb);
        EXPECT_TRUE(says(outcome, "varnel.io: " + support.toUtf8() + "/Backup/quillet1"))
            << outcome.err.toStdString();
    }
    EXPECT_EQ(run({u"set"_s, u"dock-size=64"_s}).status, 0) << "the next name is free";
}

TEST_F(OddOwnFiles, aPipeInTheStoresPlaceIsRefusedAtOnceAndTold)
{
    const QString store = support + u"/disableLoginItems.sqlite";
    ASSERT_EQ(::mkfifo(qPrintable(store), 0600), 0);
    const QByteArray line = "disableLoginItems.sqlite: not a regular file";
    const Outcome list = run({u"login-items"_s, u"list"_s});
    EXPECT_EQ(list.status, 0);
    EXPECT_TRUE(says(list, line)) << list.err.toStdString();
    const Outcome added = run({u"login-items"_s, u"add"_s, u"/Applications/Mail.app"_s});
    EXPECT_EQ(added.status, 3) << added.err.toStdString();
    EXPECT_TRUE(says(added, line)) << added.err.toStdString();
}

TEST_F(OddOwnFiles, aPipeAmongTheSessionsEntriesHoldsNobodyUp)
{
    ASSERT_EQ(::mkfifo(qPrintable(autostart + u"/a.desktop"), 0600), 0);
    writeFile(autostart + u"/mail.desktop",
              "[Desktop Entry]\nType=Application\nName=Mail\nExec=/Applications/Mail.app/Mail\n");
    const Outcome list = run({u"login-items"_s, u"list"_s});
    EXPECT_EQ(list.status, 0);
    EXPECT_TRUE(list.out.contains("/Applications/Mail.app")) << list.out.toStdString();
    EXPECT_TRUE(says(list, "varnel.io: " + autostart.toUtf8() + "/a.desktop"))
        << list.err.toStdString();
    EXPECT_EQ(run({u"login-items"_s, u"disable"_s, u"/Applications/Mail.app"_s}).status, 0);
}

TEST_F(OddOwnFiles, anEntryWhoseNameIsNotUtf8IsLeftOutAndTold)
{
    const Outcome outcome = varnelctl.shell(
        uR"sh(a="$HOME/.config/autostart"; mkdir -p "$a"; f="$a/$(printf 'b\377.desktop')"; )sh"
        uR"sh(printf '[Desktop Entry]\nType=Application\nName=b\nExec=/opt/b\n' >"$f"; )sh"
        uR"sh("$varnelctl" --verbose login-items list; status=$?; rm "$f"; exit $status)sh"_s);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(
        says(outcome,
             "varnel.io: " + home.path().toUtf8() + "/.config/autostart/b\\xff.desktop: left out"))
        << outcome.err.toStdString();
}

TEST_F(OddOwnFiles, aFileOfTwoHundredMegabytesIsReadAndChanged)
{
    QFile big(home.preference(dock));
    ASSERT_TRUE(big.open(QIODevice::WriteOnly));
    big.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>\n"
              "<key>tilesize</key><integer>48</integer>\n<key>much</key><string>");
    const QByteArray block(1 << 20, 'x');
    for (int megabyte = 0; megabyte < 200; ++megabyte)
        ASSERT_EQ(big.write(block), block.size());
    big.write("</string></dict></plist>\n");
    big.close();
    const qint64 size = big.size();
    EXPECT_EQ(run({u"get"_s, u"dock-size"_s}).out, "48\t48 pixels\n");
    const Outcome outcome = run({u"set"_s, u"dock-size=64"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    ASSERT_TRUE(big.open(QIODevice::ReadOnly));
    EXPECT_EQ(big.size(), size);
    constexpr qint64 beginning = 200;
    EXPECT_TRUE(big.read(beginning).contains("<integer>64</integer>"));
}

/// A file system of 256 kB over the home, filled up to the free bytes; it is gone with the shell.
/// The dock's file before stands beside the home. What can't be mounted is told by a status of its
/// own.
QString onAFullDisk(int freeBytes, const QString &line)
{
    return u"exec unshare --mount --propagation private sh -c '"
           "cp -r \"$HOME/Library\" \"$HOME/../$$.copy\" && "
           "mount -t tmpfs -o size=256k none \"$HOME\" 2>/dev/null || { rm -r "
           "\"$HOME/../$$.copy\"; "
           "exit 77; }; "
           "mv \"$HOME/../$$.copy\" \"$HOME/Library\"; "
           "cp \"$HOME/Library/Preferences/com.apple.dock.plist\" \"$HOME/before\"; "
           "dd if=/dev/zero of=\"$HOME/filler\" bs=4k 2>/dev/null; truncate -s -"_s
        + QString::number(freeBytes)
        // Times are told in steps of some milliseconds, and the program may be as quick.
        + u" \"$HOME/filler\"; find \"$HOME\" -exec touch -d @1000000000 {} +; " + line + u'\'';
}

[[nodiscard]] bool couldNotMount(const Outcome &outcome)
{
    return outcome.status == 77 || says(outcome, "unshare");
}

TEST_F(OddOwnFiles, onAFullDiskTheFileStandsAsItWasAndTheBackupFileStaysEmpty)
{
    const Outcome outcome = varnelctl.shell(onAFullDisk(
        0,
        u"\"$varnelctl\" --verbose set dock-size=64; status=$?; "
        "cmp \"$HOME/before\" \"$HOME/Library/Preferences/com.apple.dock.plist\" >&2 || exit 78; "
        "cd \"$HOME\"; find Library -newer filler -type f -printf \"%p %s\\n\"; exit $status"_s));
    if (couldNotMount(outcome))
        GTEST_SKIP() << "needs the right to mount; Faults.save.errors has the injected form";
    EXPECT_EQ(outcome.status, 3) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, "Library/Application Support/Varnel/Backup/quillet1.sqlite 0\n");
    EXPECT_TRUE(says(outcome, "varnel.io: " + home.preference(dock).toUtf8()))
        << outcome.err.toStdString();
}

TEST_F(OddOwnFiles, withRoomForTheFileAndNoneForARowItIsChangedAndNoBackupFileTold)
{
    const Outcome outcome =
        varnelctl.shell(onAFullDisk(8192,
                                    u"\"$varnelctl\" set dock-size=64 --json; status=$?; "
                                    "\"$varnelctl\" get dock-size >&2; exit $status"_s));
    if (couldNotMount(outcome))
        GTEST_SKIP() << "needs the right to mount; Faults.save.errors has the injected form";
    EXPECT_EQ(outcome.status, 4) << outcome.err.toStdString();
    EXPECT_TRUE(says(outcome, "64\t64 pixels\n")) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.json().value(u"backup"_s).isNull()) << outcome.out.toStdString();
    EXPECT_EQ(outcome.json().value(u"failures"_s).toArray().size(), 1);
}

} // namespace
