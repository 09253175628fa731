#include "desktop/DesktopSession.h"
#include "support/FileFacts.h"
#include "support/PlistReferee.h"
#include "support/TemporaryHome.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace varnel;
using namespace varnel::test;

namespace {

constexpr int skipped = 77;
constexpr int patience = 300000; // milliseconds; only a failure takes so long

class ScreenReaderTest : public DesktopSession {
protected:
    /// Runs one of the scripts beside this file over a session bus of its own; `before` is what
    /// starts it.
    void run(const QStringList &before, const QStringList &script)
    {
        const QString bus = QStandardPaths::findExecutable(QStringLiteral("dbus-run-session"));
        const QString python = QStringLiteral("/usr/bin/python3"); // the one that packages are for
        if (bus.isEmpty() || !QFileInfo::exists(python))
            GTEST_SKIP() << "no session bus, or no Python";
        const QTemporaryDir session; // with a short path, as sockets need
        QProcess driver;
        driver.setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), session.path());
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), session.path());
        environment.insert(QStringLiteral("PYTHONDONTWRITEBYTECODE"), QStringLiteral("1"));
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        // With the sanitizers: events of the X server that the toolkit still has at the end are not
        // freed. Our own leaks are looked for where there is no X server.
        environment.insert(QStringLiteral("ASAN_OPTIONS"),
                           qEnvironmentVariable("ASAN_OPTIONS")
                               + QStringLiteral(":detect_leaks=0"));
        driver.setProcessEnvironment(environment);
        const QStringList line = before
            + QStringList {bus, QStringLiteral("--"), python,
                           QStringLiteral(DESKTOP_TESTS "/") + script.first()}
            + script.mid(1);
        driver.start(line.first(), line.mid(1));
        ASSERT_TRUE(driver.waitForFinished(patience)) << driver.readAll().toStdString();
        if (driver.exitCode() == skipped)
            GTEST_SKIP() << driver.readAll().toStdString();
        EXPECT_EQ(driver.exitCode(), 0) << driver.readAll().toStdString();
    }

    /// Drives the program, which takes the place of "$@" in the line for the shell.
    void drive(const QStringList &script, const QString &line)
    {
        run({},
            script
                + QStringList {QStringLiteral("/bin/sh"), QStringLiteral("-c"), line,
                               QStringLiteral("sh"), QStringLiteral(VARNEL),
                               QStringLiteral("--home"), home.path()});
    }

    void changeASetting(const QString &line)
    {
        startWindowManager();
        drive({QStringLiteral("drive_window.py")}, line);
        if (IsSkipped())
            return;
        EXPECT_EQ(PlistReferee::read(home.preference(QStringLiteral("com.apple.dock.plist"))),
                  QStringLiteral("{'autohide': True, 'tilesize': 64}"));
    }
    /// In a start of its own.
    void changeALoginItem(const QString &step, const QString &name)
    {
        drive({QStringLiteral("drive_login_items.py"), step, name}, QStringLiteral("exec \"$@\""));
    }

    const TemporaryHome home;
};

} // namespace

/// The script knows names and roles, and nothing of the program.
TEST_F(ScreenReaderTest, ASettingIsChangedAndSavedOverTheAccessibilityBus)
{
    changeASetting(QStringLiteral("exec \"$@\""));
}

TEST_F(ScreenReaderTest, ASettingIsSavedThoughNobodyReadsTheLogAnyMore)
{
    changeASetting(QStringLiteral("log=$XDG_RUNTIME_DIR/log; mkfifo \"$log\"; exec 3<>\"$log\"; "
                                  "exec \"$@\" 2>\"$log\" 3<&-"));
}

TEST_F(ScreenReaderTest, ASettingIsSavedThoughNoBackupFileFitsTheLimitOnFiles)
{
    changeASetting(QStringLiteral("ulimit -f 1; exec \"$@\""));
}

/// Each step in a start of its own.
TEST_F(ScreenReaderTest, AnItemOfAMacAccountIsSwitchedOffAndOnTakenOutAndRestored)
{
    const QString list = home.preference(QStringLiteral("com.apple.loginitems.plist"));
    writeRaw(list, readRaw(QStringLiteral(TEST_DATA "/loginitems/sierra-binary.plist")));
    const QByteArray first = readRaw(list);
    const auto items = [&] {
        return PlistReferee::elements(
            list, {QStringLiteral("SessionItems"), QStringLiteral("CustomListItems")});
    };
    const QStringList all = items();
    QStringList others = all;
    const QString agent = others.takeFirst();
    startWindowManager();

    changeALoginItem(QStringLiteral("switch"), QStringLiteral("Agent"));
    if (IsSkipped())
        return;
    EXPECT_EQ(items(), others);
    changeALoginItem(QStringLiteral("switch"), QStringLiteral("Agent.app"));
    EXPECT_EQ(items(), others + QStringList {agent});
    changeALoginItem(QStringLiteral("remove"), QStringLiteral("Agent"));
    EXPECT_EQ(items(), others);
    for (const char16_t *backup : {u"quillet3.sqlite", u"quillet2.sqlite", u"quillet1.sqlite"})
        changeALoginItem(QStringLiteral("restore"), QString::fromUtf16(backup));
    EXPECT_EQ(readRaw(list), first);
}

/// Every way to fail and every success: what is said is compared with what stands on the disk, by
/// programs that are not ours.
TEST_F(ScreenReaderTest, TheWindowSaysWhatHappenedAndItIsTrue)
{
    const QString unshare = QStandardPaths::findExecutable(QStringLiteral("unshare"));
    QProcess trial;
    trial.start(unshare, {QStringLiteral("--mount"), QStringLiteral("true")});
    if (unshare.isEmpty() || !trial.waitForFinished() || trial.exitCode() != 0)
        GTEST_SKIP() << "no mount namespaces here";
    startWindowManager();
    run({unshare, QStringLiteral("--mount")},
        {QStringLiteral("drive_messages.py"), QStringLiteral(VARNEL), home.path()});
}
