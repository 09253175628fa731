#include "desktop/DesktopSession.h"
#include "support/PlistReferee.h"
#include "support/TemporaryHome.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace varnel;
using namespace varnel::test;

namespace {

constexpr int skipped = 77;
constexpr int patience = 100000; // milliseconds; only a failure takes so long

class ScreenReaderTest : public DesktopSession {
protected:
    /// Drives the program, which takes the place of "$@" in the line for the shell, over a session
    /// bus.
    void drive(const QString &line)
    {
        const QString bus = QStandardPaths::findExecutable(QStringLiteral("dbus-run-session"));
        const QString python = QStringLiteral("/usr/bin/python3"); // the one that packages are for
        if (bus.isEmpty() || !QFileInfo::exists(python))
            GTEST_SKIP() << "no session bus, or no Python";
        startWindowManager();
        const QTemporaryDir session; // with a short path, as sockets need
        QProcess driver;
        driver.setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), session.path());
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), session.path());
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        // With the sanitizers: events of the X server that the toolkit still has at the end are not
        // freed. Our own leaks are looked for where there is no X server.
        environment.insert(QStringLiteral("ASAN_OPTIONS"),
                           qEnvironmentVariable("ASAN_OPTIONS")
                               + QStringLiteral(":detect_leaks=0"));
        driver.setProcessEnvironment(environment);
        driver.start(bus,
                     {QStringLiteral("--"), python, QStringLiteral(DRIVE_WINDOW),
                      QStringLiteral("/bin/sh"), QStringLiteral("-c"), line, QStringLiteral("sh"),
                      QStringLiteral(VARNEL), QStringLiteral("--home"), home.path()});
        ASSERT_TRUE(driver.waitForFinished(patience)) << driver.readAll().toStdString();
        if (driver.exitCode() == skipped)
            GTEST_SKIP() << driver.readAll().toStdString();
        EXPECT_EQ(driver.exitCode(), 0) << driver.readAll().toStdString();
        EXPECT_EQ(PlistReferee::read(home.preference(QStringLiteral("com.apple.dock.plist"))),
                  QStringLiteral("{'autohide': True, 'tilesize': 64}"));
    }

    const TemporaryHome home;
};

} // namespace

/// The script knows names and roles, and nothing of the program.
TEST_F(ScreenReaderTest, ASettingIsChangedAndSavedOverTheAccessibilityBus)
{
    drive(QStringLiteral("exec \"$@\""));
}

TEST_F(ScreenReaderTest, ASettingIsSavedThoughNobodyReadsTheLogAnyMore)
{
    drive(QStringLiteral("log=$XDG_RUNTIME_DIR/log; mkfifo \"$log\"; exec 3<>\"$log\"; "
                         "exec \"$@\" 2>\"$log\" 3<&-"));
}

TEST_F(ScreenReaderTest, ASettingIsSavedThoughNoBackupFileFitsTheLimitOnFiles)
{
    drive(QStringLiteral("ulimit -f 1; exec \"$@\""));
}
