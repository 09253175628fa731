#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

/// Without a display, an application is what a desktop entry started: so a process that a launcher
/// would have started is listed, and nothing else of this machine need be.
class ProcessesTest : public Test {
protected:
    void SetUp() override
    {
        // The shell takes its own id into the environment, as the desktop's launcher does.
        QProcessEnvironment environment = varnelctl.environment;
        environment.insert(u"GIO_LAUNCHED_DESKTOP_FILE"_s, entry());
        writeFile(entry(), "[Desktop Entry]\nType=Application\nName=A Clock\nExec=clock\n");
        application.setProcessEnvironment(environment);
        application.start(
            u"/bin/sh"_s,
            {u"-c"_s, u"GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec sh -c 'echo up; read line'"_s});
        ASSERT_TRUE(application.waitForReadyRead(60000));
    }

    void TearDown() override
    {
        application.closeWriteChannel();
        application.waitForFinished(60000);
    }

    [[nodiscard]] QString entry() const { return home.path() + u"/clock.desktop"; }
    [[nodiscard]] QString id() const { return QString::number(application.processId()); }

    [[nodiscard]] QJsonObject listed() const
    {
        const Outcome list = varnelctl.run({u"processes"_s, u"list"_s, u"--json"_s});
        EXPECT_LE(list.status, 1) << list.err.toStdString();
        for (const QJsonValue process : list.json().value(u"processes"_s).toArray())
            if (process[u"bundleLocation"].toString() == entry())
                return process.toObject();
        return {};
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
    QProcess application;
};

TEST_F(ProcessesTest, aRunningApplicationIsListed)
{
    const QJsonObject process = listed();
    EXPECT_EQ(process.keys(),
              (QStringList {u"bundleLocation"_s, u"icon"_s, u"priority"_s, u"process"_s,
                            u"processId"_s}));
    EXPECT_EQ(process[u"process"_s].toString(), u"A Clock");
    EXPECT_EQ(process[u"processId"_s].toInt(), application.processId());
    EXPECT_TRUE(process[u"priority"_s].isDouble());
    EXPECT_EQ(process[u"icon"_s].toString(), QString(entry() + u"/Contents/Resources/(null).icns"));
    const Outcome text = varnelctl.run({u"processes"_s});
    EXPECT_EQ(text.status, 0);
    EXPECT_TRUE(text.out.contains("A Clock")) << text.out.toStdString();
    // Other applications may come and go between the two.
    const Outcome longForm = varnelctl.run({u"processes"_s, u"list"_s});
    EXPECT_EQ(longForm.status, 0);
    EXPECT_TRUE(longForm.out.contains("A Clock")) << longForm.out.toStdString();
}

TEST_F(ProcessesTest, terminatingEndsItAndTellsWhichItWas)
{
    const Outcome outcome = varnelctl.run({u"processes"_s, u"terminate"_s, id(), u"--json"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"terminated"_s)[u"bundleLocation"].toString(), entry());
    ASSERT_TRUE(application.waitForFinished(60000));
    EXPECT_EQ(application.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(application.exitCode(), 15) << "the signal";
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(ProcessesTest, whatIsToldOfTheEndedProcessStaysAsItIs)
{
    // The priority is the one that the tests themselves run with.
    static const QRegularExpression priority(u"A Clock  -?\\d+"_s);
    const Outcome text = varnelctl.run({u"processes"_s, u"terminate"_s, id()});
    QString told = QString::fromUtf8(text.out);
    told.replace(id(), u"ID"_s).replace(priority, u"A Clock  PRIORITY"_s);
    expectGolden(u"processes-terminate.txt"_s, told.toUtf8(), home);
}

TEST_F(ProcessesTest, theJsonOfTheEndedProcessStaysAsItIs)
{
    static const QRegularExpression priority(u"\"priority\": -?\\d+"_s);
    const Outcome json = varnelctl.run({u"processes"_s, u"terminate"_s, id(), u"--json"_s});
    QString told = QString::fromUtf8(json.out);
    told.replace(id(), u"ID"_s).replace(priority, u"\"priority\": PRIORITY"_s);
    expectGolden(u"processes-terminate.json"_s, told.toUtf8(), home);
}

TEST_F(ProcessesTest, theResultOfTheSignalIsLogged)
{
    const Outcome outcome = varnelctl.run({u"processes"_s, u"terminate"_s, id(), u"--verbose"_s});
    EXPECT_TRUE(outcome.err.endsWith("varnel.sysinfo: 0\n")) << outcome.err.toStdString();
}

TEST_F(ProcessesTest, aProcessThatIsNotListedIsLeftAlone)
{
    QProcess other;
    other.start(u"/bin/sh"_s, {u"-c"_s, u"echo up; read line"_s});
    ASSERT_TRUE(other.waitForReadyRead(60000));
    for (const QString &command : {u"terminate"_s, u"reveal"_s}) {
        const Outcome outcome =
            varnelctl.run({u"processes"_s, command, QString::number(other.processId())});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(outcome.out.isEmpty());
    }
    other.write("end\n");
    ASSERT_TRUE(other.waitForFinished(60000));
    EXPECT_EQ(other.exitStatus(), QProcess::NormalExit);
}

TEST_F(ProcessesTest, revealingCallsTheFileManagerAndEndsNothing)
{
    // A file manager that answers at once, first on the path.
    QDir().mkpath(home.path() + u"/bin");
    const QString tool = home.path() + u"/bin/gdbus";
    writeFile(tool, "#!/bin/sh\nexit 0\n");
    QFile(tool).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    varnelctl.environment.insert(u"PATH"_s,
                                 home.path() + u"/bin:" + varnelctl.environment.value(u"PATH"_s));
    const Outcome outcome = varnelctl.run({u"processes"_s, u"reveal"_s, id(), u"--json"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.isEmpty()) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"revealed"_s)[u"processId"].toInt(), application.processId());
    EXPECT_EQ(application.state(), QProcess::Running);
}

TEST_F(ProcessesTest, wrongUsagePrintsNoData)
{
    for (const QStringList &wrong :
         {QStringList {u"terminate"_s}, QStringList {u"terminate"_s, u"clock"_s},
          QStringList {u"terminate"_s, id(), id()}, QStringList {u"reveal"_s, u"12x"_s},
          QStringList {id()}, QStringList {u"list"_s, id()}}) {
        const Outcome outcome = varnelctl.run(QStringList {u"processes"_s} + wrong);
        EXPECT_EQ(outcome.status, 2) << wrong.join(u' ').toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
    }
    EXPECT_EQ(application.state(), QProcess::Running);
}

TEST_F(ProcessesTest, theWindowLibrariesAreNotLoadedByOtherCommands)
{
    varnelctl.environment.insert(u"LD_DEBUG"_s, u"libs"_s);
    EXPECT_FALSE(varnelctl.run({u"get"_s, u"1300"_s}).err.contains("libxcb"));
    EXPECT_FALSE(varnelctl.run({u"processes"_s}).err.contains("libxcb")) << "there is no display";
}

} // namespace
