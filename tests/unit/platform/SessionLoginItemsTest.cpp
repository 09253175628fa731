#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/LinuxSessionLoginItems.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <array>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray clockEntry = "# kept as it is\n[Desktop Entry]\nType=Application\nName=Clock\n"
                              "Name[de]=Uhr\nExec=/opt/clock\nActions=New;\nX-Own=a b\n\n"
                              "[Desktop Action New]\nName=New\nExec=/opt/clock --new\n";

class LoginItemsOfSession : public testing::Test {
protected:
    LoginItemsOfSession()
    {
        QDir().mkpath(folders.user);
        for (const QString &folder : folders.system + folders.applications)
            QDir().mkpath(folder);
        QDir().mkpath(support);
    }

    static void write(const QString &file, const QByteArray &bytes)
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    static QByteArray read(const QString &file)
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("(none)");
    }
    void user(const char *name, const QByteArray &bytes) { write(userFile(name), bytes); }
    void system(const char *name, const QByteArray &bytes)
    {
        write(folders.system.first() + u'/' + QString::fromLatin1(name), bytes);
    }
    [[nodiscard]] QString userFile(const char *name) const
    {
        return folders.user + u'/' + QString::fromLatin1(name);
    }
    static QByteArray entry(const QByteArray &exec, const QByteArray &more = {})
    {
        return "[Desktop Entry]\nType=Application\nName=x\nExec=" + exec + '\n' + more;
    }

    LinuxSessionLoginItems list() { return {home.home(), folders, support, store, maker, files}; }
    QStringList paths()
    {
        QStringList all;
        for (const SessionLoginItem &item : list().snapshot().value())
            all.append(item.path);
        return all;
    }

    TemporaryHome home;
    QString support = home.path() + u"/Library/Application Support/Varnel/";
    AutostartFolders folders {home.path() + u"/.config/autostart",
                              {home.path() + u"/xdg/autostart"},
                              {home.path() + u"/share/applications"},
                              {home.path() + u"/bin"},
                              {u"GNOME"_s},
                              true};
    LinuxFileStore store {home.home()};
    LinuxFolderMaker maker;
    LinuxFileReader files;
};

} // namespace

TEST_F(LoginItemsOfSession, UserEntriesStandOverTheSystemsByFileName)
{
    system("b.desktop", entry("/opt/b"));
    system("a.desktop", entry("/opt/a"));
    user("b.desktop", entry("/opt/other"));
    user("not-an-entry.txt", entry("/opt/no"));
    EXPECT_EQ(paths(), (QStringList {u"/opt/a"_s, u"/opt/other"_s}));
}

TEST_F(LoginItemsOfSession, EntriesThatAreOffAreNotInTheList)
{
    system("a.desktop", entry("/opt/a"));
    user("a.desktop", "[Desktop Entry]\nHidden=true\n");
    user("b.desktop", entry("/opt/b", "X-GNOME-Autostart-enabled=false\n"));
    user("c.desktop", entry("/opt/c", "OnlyShowIn=KDE;\n"));
    user("d.desktop", entry("/opt/d", "NotShowIn=GNOME;\n"));
    user("e.desktop", entry("/opt/e", "TryExec=/nowhere/e\n"));
    user("f.desktop", entry("/opt/f", "OnlyShowIn=KDE;GNOME;\nTryExec=/bin/sh\n"));
    EXPECT_EQ(paths(), (QStringList {u"/opt/f"_s}));
}

TEST_F(LoginItemsOfSession, AHomeAtRestHasItsOwnFolderAloneAndAsksNothingOfThisMachine)
{
    folders = autostartFoldersOfHome(home.home());
    user("c.desktop", entry("/opt/c", "OnlyShowIn=KDE;\n"));
    user("e.desktop", entry("/opt/e", "TryExec=/nowhere/e\n"));
    EXPECT_EQ(paths(), (QStringList {u"/opt/c"_s, u"/opt/e"_s}));
}

TEST_F(LoginItemsOfSession, ThePathIsTheBundleTheProgramTheInstalledEntryOrTheEntryItself)
{
    write(folders.applications.first() + u"/copy.desktop", clockEntry);
    user("copy.desktop", clockEntry);
    write(folders.applications.first() + u"/link.desktop", entry("/opt/linked"));
    ASSERT_TRUE(
        QFile::link(folders.applications.first() + u"/link.desktop", userFile("link.desktop")));
    user("bundle.desktop", entry("/Applications/Mail.app/Contents/MacOS/Mail"));
    user("own.desktop", entry("/opt/x", "X-Varnel-Path=/Applications/Own.app\n"));
    user("arguments.desktop", entry("python3 /opt/script"));
    user("unknown.desktop", entry("no-such-program"));
    QDir().mkpath(folders.programs.first());
    write(folders.programs.first() + u"/tool", "#!/bin/sh\n");
    QFile::setPermissions(folders.programs.first() + u"/tool", QFile::ReadOwner | QFile::ExeOwner);
    user("tool.desktop", entry("tool %U"));
    EXPECT_EQ(
        paths(),
        (QStringList {userFile("arguments.desktop"), u"/Applications/Mail.app"_s,
                      folders.applications.first() + u"/copy.desktop",
                      folders.applications.first() + u"/link.desktop", u"/Applications/Own.app"_s,
                      folders.programs.first() + u"/tool", userFile("unknown.desktop")}));
}

TEST_F(LoginItemsOfSession, TwoEntriesNeverShareAPathByAccident)
{
    user("a.desktop", entry("/opt/same"));
    user("b.desktop", entry("/opt/same"));
    EXPECT_EQ(paths(), (QStringList {u"/opt/same"_s, userFile("b.desktop")}));
}

TEST_F(LoginItemsOfSession, APathThatWasWorkedOutGivesWayToOneThatWasWrittenWhereverItStands)
{
    user("a.desktop", entry("/opt/same"));
    user("b.desktop", entry("/opt/x", "X-Varnel-Path=/opt/same\n"));
    EXPECT_EQ(paths(), (QStringList {userFile("a.desktop"), u"/opt/same"_s}));
}

TEST_F(LoginItemsOfSession, APathThatWasWrittenIntoTwoEntriesIsBoths)
{
    user("a.desktop", entry("/opt/x", "X-Varnel-Path=/opt/same\n"));
    user("b.desktop", entry("/opt/y", "X-Varnel-Path=/opt/same\n"));
    EXPECT_EQ(paths(), (QStringList {u"/opt/same"_s, u"/opt/same"_s}));
    EXPECT_TRUE(list().removeEvery(u"/opt/same"_s)) << "every matching item goes";
    EXPECT_TRUE(paths().isEmpty());
    EXPECT_TRUE(list().insertAtEnd(u"/opt/same"_s));
    EXPECT_EQ(paths(), (QStringList {u"/opt/same"_s, u"/opt/same"_s}));
}

TEST_F(LoginItemsOfSession, WhatIsKeptOfARemovedItemCanBeAskedForUntilItIsBack)
{
    user("clock.desktop", clockEntry);
    EXPECT_TRUE(list().keptIn(u"/opt/clock"_s).isNull());
    EXPECT_TRUE(list().removeEvery(u"/opt/clock"_s));
    EXPECT_TRUE(QFile::exists(list().keptIn(u"/opt/clock"_s)));
    EXPECT_TRUE(list().insertAtEnd(u"/opt/clock"_s));
    EXPECT_TRUE(list().keptIn(u"/opt/clock"_s).isNull());
}

TEST_F(LoginItemsOfSession, WhatIsRemovedAndInsertedAgainIsTheSameByteForByte)
{
    user("clock.desktop", clockEntry);
    ASSERT_EQ(::chmod(QFile::encodeName(userFile("clock.desktop")).constData(), 0640), 0);
    EXPECT_TRUE(list().removeEvery(u"/opt/clock"_s));
    EXPECT_TRUE(paths().isEmpty());
    EXPECT_FALSE(QFile::exists(userFile("clock.desktop")));
    EXPECT_TRUE(list().insertAtEnd(u"/opt/clock"_s));
    EXPECT_EQ(read(userFile("clock.desktop")), clockEntry);
    EXPECT_EQ(QFileInfo(userFile("clock.desktop")).permissions() & 0x0fff,
              QFile::Permissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser
                                 | QFile::WriteUser | QFile::ReadGroup)
                  & 0x0fff);
    EXPECT_EQ(paths(), (QStringList {u"/opt/clock"_s}));
}

TEST_F(LoginItemsOfSession, ASystemWideEntryIsHiddenAndTheHidingLifted)
{
    system("clock.desktop", clockEntry);
    EXPECT_TRUE(list().removeEvery(u"/opt/clock"_s));
    EXPECT_TRUE(paths().isEmpty());
    EXPECT_EQ(read(userFile("clock.desktop")), "[Desktop Entry]\nHidden=true\n");
    EXPECT_TRUE(list().insertAtEnd(u"/opt/clock"_s));
    EXPECT_FALSE(QFile::exists(userFile("clock.desktop")));
    EXPECT_EQ(paths(), (QStringList {u"/opt/clock"_s}));
}

TEST_F(LoginItemsOfSession, AUsersEntryOverASystemWideOneComesBackAsTheUsers)
{
    system("clock.desktop", entry("/opt/system"));
    user("clock.desktop", clockEntry);
    EXPECT_TRUE(list().removeEvery(u"/opt/clock"_s));
    EXPECT_TRUE(paths().isEmpty());
    EXPECT_TRUE(list().insertAtEnd(u"/opt/clock"_s));
    EXPECT_EQ(read(userFile("clock.desktop")), clockEntry);
}

TEST_F(LoginItemsOfSession, ALinkComesBackAsTheSameLink)
{
    const QString installed = folders.applications.first() + u"/clock.desktop";
    write(installed, clockEntry);
    ASSERT_TRUE(
        QFile::link(u"../../share/applications/clock.desktop"_s, userFile("clock.desktop")));
    ASSERT_EQ(paths(), (QStringList {installed}));
    EXPECT_TRUE(list().removeEvery(installed));
    EXPECT_FALSE(QFileInfo(userFile("clock.desktop")).isSymLink());
    EXPECT_EQ(read(installed), clockEntry);
    EXPECT_TRUE(list().insertAtEnd(installed));
    std::array<char, 256> text {};
    EXPECT_GT(
        ::readlink(QFile::encodeName(userFile("clock.desktop")).constData(), text.data(), 255), 0);
    EXPECT_STREQ(text.data(), "../../share/applications/clock.desktop");
}

TEST_F(LoginItemsOfSession, SomebodyElsesFileOfTheNameIsNotOverwritten)
{
    user("clock.desktop", clockEntry);
    EXPECT_TRUE(list().removeEvery(u"/opt/clock"_s));
    user("clock.desktop", entry("/opt/another"));
    EXPECT_TRUE(list().insertAtEnd(u"/opt/clock"_s));
    EXPECT_EQ(read(userFile("clock.desktop")), entry("/opt/another"));
    EXPECT_EQ(paths(), (QStringList {u"/opt/another"_s, u"/opt/clock"_s}));
}

TEST_F(LoginItemsOfSession, InsertingPutsAtTheEndAndMovesWhatIsThere)
{
    user("a.desktop", entry("/opt/a"));
    user("z.desktop", entry("/opt/z"));
    EXPECT_TRUE(list().insertAtEnd(u"/Applications/Mail.app"_s));
    EXPECT_EQ(paths(), (QStringList {u"/opt/a"_s, u"/opt/z"_s, u"/Applications/Mail.app"_s}));
    const QByteArray before = read(userFile("a.desktop"));
    EXPECT_TRUE(list().insertAtEnd(u"/opt/a"_s));
    EXPECT_EQ(paths(), (QStringList {u"/opt/z"_s, u"/Applications/Mail.app"_s, u"/opt/a"_s}));
    EXPECT_EQ(read(userFile("a.desktop")), before);
}

TEST_F(LoginItemsOfSession, ADesktopEntryIsInsertedAsACopyThatKeepsItsPath)
{
    const QString installed = folders.applications.first() + u"/clock.desktop";
    write(installed, clockEntry);
    EXPECT_TRUE(list().insertAtEnd(installed));
    EXPECT_EQ(read(userFile("clock.desktop")), clockEntry);
    const QString elsewhere = home.path() + u"/clock.desktop";
    write(elsewhere, clockEntry);
    EXPECT_TRUE(list().insertAtEnd(elsewhere));
    EXPECT_EQ(paths(), (QStringList {installed, elsewhere}));
}

TEST_F(LoginItemsOfSession, AnInsertedApplicationNeverHidesASystemWideEntry)
{
    system("Mail.desktop", entry("/usr/bin/mail"));
    EXPECT_TRUE(list().insertAtEnd(u"/Applications/Mail.app"_s));
    EXPECT_EQ(paths(), (QStringList {u"/usr/bin/mail"_s, u"/Applications/Mail.app"_s}));
}

TEST_F(LoginItemsOfSession, RemovingWhatIsNotThereChangesNothing)
{
    user("a.desktop", entry("/opt/a"));
    EXPECT_TRUE(list().removeEvery(u"/opt/none"_s));
    EXPECT_EQ(paths(), (QStringList {u"/opt/a"_s}));
    EXPECT_EQ(QDir(support).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

TEST_F(LoginItemsOfSession, AKeptRecordNamesPlainFilesOnly)
{
    QDir().mkpath(support + u"RemovedLoginItems");
    KeptLoginItems kept(support + u"RemovedLoginItems/", store);
    EXPECT_TRUE(kept.keep(u"/p"_s,
                          {{u"../../escape.desktop"_s, true, "x", {}, 0644},
                           {u"fine.desktop"_s, true, "y", {}, 04755}}));
    const QList<KeptEntry> entries = kept.entriesOf(u"/p"_s).value();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].fileName, u"fine.desktop"_s);
    EXPECT_EQ(entries[0].mode, 0755U);
}

TEST_F(LoginItemsOfSession, OnlyNamesThatEndInDesktopExactlyAreEntries)
{
    user("Upper.DESKTOP", entry("/opt/upper"));
    user("Mixed.Desktop", entry("/opt/mixed"));
    user("old.desktop~", entry("/opt/old"));
    user("fine.desktop", entry("/opt/fine"));
    system("Upper.DESKTOP", entry("/opt/upper"));
    EXPECT_EQ(paths(), (QStringList {u"/opt/fine"_s}));
}

TEST_F(LoginItemsOfSession, OfTheEntriesOfOneProgramTheFirstByTheBytesOfItsNameHasItsPath)
{
    const QString first = QString::fromUtf8("\xee\x80\x80.desktop"); // U+E000
    const QString second = QString::fromUtf8("\xf0\x90\x80\x80.desktop"); // U+10000
    write(folders.user + u'/' + second, entry("/opt/same"));
    write(folders.user + u'/' + first, entry("/opt/same"));
    user("Z.desktop", entry("/opt/z"));
    user("a.desktop", entry("/opt/z"));
    EXPECT_EQ(paths(),
              (QStringList {u"/opt/z"_s, userFile("a.desktop"), u"/opt/same"_s,
                            folders.user + u'/' + second}));
}

TEST_F(LoginItemsOfSession, ANewEntryOfARemovedOnesProgramGoesByItsOwnFile)
{
    user("clock.desktop", clockEntry);
    EXPECT_TRUE(list().removeEvery(u"/opt/clock"_s));
    user("another.desktop", entry("/opt/clock"));
    EXPECT_EQ(paths(), (QStringList {userFile("another.desktop")}));
    user("clock.desktop", entry("/opt/clock"));
    EXPECT_EQ(paths(), (QStringList {u"/opt/clock"_s, userFile("clock.desktop")}))
        << "nothing is out any more, and the first by name has the path";
}

TEST_F(LoginItemsOfSession, TheOrderHoldsNamesWithLineFeedsAndReadsFilesOfEarlierVersions)
{
    const QStringList names {u"a\nb.desktop"_s, u"b.desktop"_s, u"\"c\\n.desktop"_s, u"d.desktop"_s,
                             u"e\\\n\".desktop"_s};
    for (const QString &name : names)
        write(folders.user + u'/' + name, entry("/opt/" + QByteArray::number(names.indexOf(name))));
    write(support + u"LoginItemsOrder.txt", "b.desktop\n\"c\\n.desktop\n");
    QStringList expected = paths();
    EXPECT_EQ(expected.mid(3), (QStringList {u"/opt/1"_s, u"/opt/2"_s}));
    for (const int number : {3, 0, 4, 0, 1, 2, 4, 3}) {
        const QString path = u"/opt/"_s + QString::number(number);
        EXPECT_TRUE(list().insertAtEnd(path));
        expected.removeOne(path);
        expected.append(path);
        EXPECT_EQ(paths(), expected);
    }
    EXPECT_TRUE(read(support + u"LoginItemsOrder.txt").contains("\nb.desktop\n"))
        << "plain names stand as ever";
    EXPECT_TRUE(list().removeEvery(u"/opt/0"_s));
    expected.removeOne(u"/opt/0"_s);
    EXPECT_EQ(paths(), expected);
}
