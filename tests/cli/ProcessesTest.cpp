#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

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
        environment.insert(u"GIO_LAUNCHED_DESKTOP_FILE"_qs, entry());
        writeFile(entry(), "[Desktop Entry]\nType=Application\nName=A Clock\nExec=clock\n");
        application.setProcessEnvironment(environment);
        application.start(
            u"/bin/sh"_qs,
            {u"-c"_qs, u"GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec sh -c 'echo up; read line'"_qs});
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
        const Outcome list = varnelctl.run({u"processes"_qs, u"list"_qs, u"--json"_qs});
        EXPECT_LE(list.status, 1) << list.err.toStdString();
        for (const QJsonValue process : list.json().value(u"processes"_qs).toArray())
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
              (QStringList {u"bundleLocation"_qs, u"icon"_qs, u"priority"_qs, u"process"_qs,
                            u"processId"_qs}));
    EXPECT_EQ(process[u"process"_qs].toString(), u"A Clock");
    EXPECT_EQ(process[u"processId"_qs].toInt(), application.processId());
    EXPECT_TRUE(process[u"priority"_qs].isDouble());
    EXPECT_EQ(process[u"icon"_qs].toString(),
              QString(entry() + u"/Contents/Resources/(null).icns"));
    const Outcome text = varnelctl.run({u"processes"_qs});
    EXPECT_EQ(text.status, 0);
    EXPECT_TRUE(text.out.contains("A Clock")) << text.out.toStdString();
    // Other applications may come and go between the two.
    const Outcome longForm = varnelctl.run({u"processes"_qs, u"list"_qs});
    EXPECT_EQ(longForm.status, 0);
    EXPECT_TRUE(longForm.out.contains("A Clock")) << longForm.out.toStdString();
}

TEST_F(ProcessesTest, terminatingEndsItAndTellsWhichItWas)
{
    const Outcome outcome = varnelctl.run({u"processes"_qs, u"terminate"_qs, id(), u"--json"_qs});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"terminated"_qs)[u"bundleLocation"].toString(), entry());
    ASSERT_TRUE(application.waitForFinished(60000));
    EXPECT_EQ(application.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(application.exitCode(), 15) << "the signal";
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(ProcessesTest, whatIsToldOfTheEndedProcessStaysAsItIs)
{
    // The priority is the one that the tests themselves run with.
    static const QRegularExpression priority(u"A Clock  -?\\d+"_qs);
    const Outcome text = varnelctl.run({u"processes"_qs, u"terminate"_qs, id()});
    QString told = QString::fromUtf8(text.out);
    told.replace(id(), u"ID"_qs).replace(priority, u"A Clock  PRIORITY"_qs);
    expectGolden(u"processes-terminate.txt"_qs, told.toUtf8(), home);
}

TEST_F(ProcessesTest, theJsonOfTheEndedProcessStaysAsItIs)
{
    static const QRegularExpression priority(u"\"priority\": -?\\d+"_qs);
    const Outcome json = varnelctl.run({u"processes"_qs, u"terminate"_qs, id(), u"--json"_qs});
    QString told = QString::fromUtf8(json.out);
    told.replace(id(), u"ID"_qs).replace(priority, u"\"priority\": PRIORITY"_qs);
    expectGolden(u"processes-terminate.json"_qs, told.toUtf8(), home);
}

TEST_F(ProcessesTest, theResultOfTheSignalIsLogged)
{
    const Outcome outcome =
        varnelctl.run({u"processes"_qs, u"terminate"_qs, id(), u"--verbose"_qs});
    EXPECT_TRUE(outcome.err.endsWith("varnel.sysinfo: 0\n")) << outcome.err.toStdString();
}

TEST_F(ProcessesTest, aProcessThatIsNotListedIsLeftAlone)
{
    QProcess other;
    other.start(u"/bin/sh"_qs, {u"-c"_qs, u"echo up; read line"_qs});
    ASSERT_TRUE(other.waitForReadyRead(60000));
    for (const QString &command : {u"terminate"_qs, u"reveal"_qs}) {
        const Outcome outcome =
            varnelctl.run({u"processes"_qs, command, QString::number(other.processId())});
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
    varnelctl.environment.insert(u"PATH"_qs,
                                 home.path() + u"/bin:" + varnelctl.environment.value(u"PATH"_qs));
    const Outcome outcome = varnelctl.run({u"processes"_qs, u"reveal"_qs, id(), u"--json"_qs});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.isEmpty()) << outcome.err.toStdString();
    EXPECT_EQ(outcome.json().value(u"revealed"_qs)[u"processId"].toInt(), application.processId());
    EXPECT_EQ(application.state(), QProcess::Running);
}

TEST_F(ProcessesTest, wrongUsagePrintsNoData)
{
    for (const QStringList &wrong :
         {QStringList {u"terminate"_qs}, QStringList {u"terminate"_qs, u"clock"_qs},
          QStringList {u"terminate"_qs, id(), id()}, QStringList {u"reveal"_qs, u"12x"_qs},
          QStringList {id()}, QStringList {u"list"_qs, id()}}) {
        const Outcome outcome = varnelctl.run(QStringList {u"processes"_qs} + wrong);
        EXPECT_EQ(outcome.status, 2) << wrong.join(u' ').toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
    }
    EXPECT_EQ(application.state(), QProcess::Running);
}

TEST_F(ProcessesTest, theWindowLibrariesAreNotLoadedByOtherCommands)
{
    varnelctl.environment.insert(u"LD_DEBUG"_qs, u"libs"_qs);
    EXPECT_FALSE(varnelctl.run({u"get"_qs, u"1300"_qs}).err.contains("libxcb"));
    EXPECT_FALSE(varnelctl.run({u"processes"_qs}).err.contains("libxcb")) << "there is no display";
}

} // namespace
