#include "desktop/DesktopSession.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxProcessManager.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/X11ClientList.h"
#include "sysinfo/ProcessActions.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>

using namespace varnel;
using namespace varnel::test;

namespace {

class RunningApplicationsTest : public DesktopSession {
protected:
    /// A program of its own that has windows.
    QString putProgram(const QString &name)
    {
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        EXPECT_TRUE(QFile::copy(QStringLiteral(DESKTOP_WINDOW), path));
        return path;
    }

    QProcess &startWithWindows(const QString &program, int windows)
    {
        return startProgram(program, {QString::number(windows)});
    }

    QList<ProcessRow> list() { return getBSDProcesses(table, manager, files); }

    /// The listed ids of the test's own programs, by what is behind the folder's name.
    QStringList listed()
    {
        QStringList lines;
        const QString start = QDir(folder.path()).canonicalPath() + u'/';
        for (const ProcessRow &row : list())
            if (row.bundleLocation.startsWith(start))
                lines +=
                    row.bundleLocation.mid(start.size()) + u' ' + QString::number(row.processId);
        lines.sort();
        return lines;
    }

    static QString line(const char *location, qint64 id)
    {
        return QString::fromLatin1(location) + u' ' + QString::number(id);
    }

    QTemporaryDir folder;
    LinuxProcessTable table;
    LinuxProcessManager manager;
    LinuxFileReader files;
};

} // namespace

TEST_F(RunningApplicationsTest, ProgramsWithWindowsAreListedOnceEach)
{
    startWindowManager();
    QProcess &one = startWithWindows(putProgram(QStringLiteral("one")), 2);
    QProcess &two = startWithWindows(putProgram(QStringLiteral("two")), 1);
    EXPECT_EQ(listed(), (QStringList {line("one", one.processId()), line("two", two.processId())}));
}

TEST_F(RunningApplicationsTest, TwoProcessesOfABundleAreListedOnceWithTheLargerId)
{
    startWindowManager();
    const QString program = putProgram(QStringLiteral("Clock.app/Contents/MacOS/Clock"));
    QProcess &first = startWithWindows(program, 1);
    QProcess &second = startWithWindows(program, 1);
    EXPECT_EQ(listed(),
              QStringList {line("Clock.app", std::max(first.processId(), second.processId()))});
}

TEST_F(RunningApplicationsTest, AProgramWithoutAWindowIsNotListed)
{
    startWindowManager();
    startWithWindows(putProgram(QStringLiteral("hidden")), 0);
    QProcess &shown = startWithWindows(putProgram(QStringLiteral("shown")), 1);
    EXPECT_EQ(listed(), QStringList {line("shown", shown.processId())});
}

TEST_F(RunningApplicationsTest, AWindowOfAnotherMachineSaysNothingAboutTheProcessesHere)
{
    startWindowManager();
    startProgram(putProgram(QStringLiteral("remote")),
                 {QStringLiteral("1"), QStringLiteral("elsewhere.example.org")});
    QProcess &unnamed =
        startProgram(putProgram(QStringLiteral("unnamed")), {QStringLiteral("1"), QString()});
    EXPECT_EQ(listed(), QStringList {line("unnamed", unnamed.processId())});
}

TEST_F(RunningApplicationsTest, TheServerKnowsTheProcessWhateverAProgramWritesOnItsWindow)
{
    startWindowManager();
    const QStringList silent {QStringLiteral("1"), QString(), QStringLiteral("0")};
    QProcess &one = startProgram(putProgram(QStringLiteral("one")), silent);
    QProcess &hidden = startWithWindows(putProgram(QStringLiteral("hidden")), 0);
    const QStringList lying {QStringLiteral("1"), QString(), QString::number(hidden.processId())};
    QProcess &two = startProgram(putProgram(QStringLiteral("two")), lying);
    EXPECT_EQ(listed(), (QStringList {line("one", one.processId()), line("two", two.processId())}));
}

TEST_F(RunningApplicationsTest, TerminatingOneEndsIt)
{
    startWindowManager();
    QProcess &one = startWithWindows(putProgram(QStringLiteral("one")), 1);
    QProcess &two = startWithWindows(putProgram(QStringLiteral("two")), 1);
    for (const ProcessRow &row : list()) {
        if (row.processId == one.processId()) {
            EXPECT_TRUE(killProcess(row, manager).ok());
        }
    }
    ASSERT_TRUE(one.waitForFinished(60000));
    EXPECT_EQ(one.exitCode(), 15) << "the signal";
    EXPECT_EQ(listed(), QStringList {line("two", two.processId())});
}

TEST_F(RunningApplicationsTest, TheTerminalProgramListsAndTerminatesThemToo)
{
    startWindowManager();
    QProcess &one = startWithWindows(putProgram(QStringLiteral("one")), 1);
    const QString id = QString::number(one.processId());
    QProcess varnelctl;
    varnelctl.start(
        QStringLiteral(VARNELCTL),
        {QStringLiteral("processes"), QStringLiteral("terminate"), id, QStringLiteral("--json")});
    ASSERT_TRUE(varnelctl.waitForFinished(60000));
    EXPECT_EQ(varnelctl.exitCode(), 0) << varnelctl.readAllStandardError().toStdString();
    const QJsonObject json = QJsonDocument::fromJson(varnelctl.readAllStandardOutput()).object();
    EXPECT_EQ(json[QStringLiteral("terminated")][u"processId"].toInt(), one.processId());
    ASSERT_TRUE(one.waitForFinished(60000));
    EXPECT_EQ(one.exitCode(), 15);
}

TEST_F(RunningApplicationsTest, WithoutAWindowManagerThereIsNoListOfWindows)
{
    EXPECT_EQ(windowOwners(), std::nullopt);
    startWindowManager();
    EXPECT_EQ(windowOwners(), QSet<int>());
}

TEST_F(RunningApplicationsTest, WithoutADisplayThereIsNoListOfWindows)
{
    startWindowManager();
    qunsetenv("DISPLAY");
    EXPECT_EQ(windowOwners(), std::nullopt);
    qputenv("DISPLAY", "nowhere:77");
    EXPECT_EQ(windowOwners(), std::nullopt);
}

TEST_F(RunningApplicationsTest, InAWaylandSessionDesktopEntriesCountBesideTheWindows)
{
    startWindowManager();
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    QProcess &old = startWithWindows(putProgram(QStringLiteral("old")), 1);
    qputenv("GIO_LAUNCHED_DESKTOP_FILE", "/none.desktop");
    QProcess started;
    started.start(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"),
         QStringLiteral("GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec sh -c 'echo up; read x'")});
    ASSERT_TRUE(started.waitForReadyRead(60000));
    manager.refresh();
    EXPECT_TRUE(manager.isVisible(int(old.processId())));
    EXPECT_TRUE(manager.isVisible(int(started.processId())));
    qunsetenv("WAYLAND_DISPLAY");
    manager.refresh();
    EXPECT_FALSE(manager.isVisible(int(started.processId()))) << "it has no window";
    started.closeWriteChannel();
    ASSERT_TRUE(started.waitForFinished(60000));
}
