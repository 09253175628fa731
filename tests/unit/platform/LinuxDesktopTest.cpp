#include "platform/linux/LinuxDesktop.h"

#include "platform/linux/LinuxTerminal.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace varnel;
using namespace varnel::test;

namespace {

/// Stand-ins for the desktop's programs, first on PATH. Each writes its name and its arguments, one
/// a line, then a blank line, into a pipe that the test reads to the end: so the test waits for
/// children that nobody else waits for, without asking a clock.
class LinuxDesktopTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        ASSERT_EQ(::mkfifo(QFile::encodeName(pipe()).constData(), 0600), 0);
        qputenv("PATH", QByteArray(QFile::encodeName(folder.path()) + ':' + qgetenv("PATH")));
        qputenv("CALLS", QFile::encodeName(pipe()));
    }

    void putProgram(const char *name, int status)
    {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n{ printf '%s\\n' \"${0##*/}\" \"$@\"; echo; } >\"$CALLS\"\nexit "
                   + QByteArray::number(status) + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// What the stand-ins were called with from the start of the work to the end of the last child.
    template <typename Work> std::string callsOf(const Work &work)
    {
        // The children inherit the writing end: when the last has gone, reading comes to an end.
        const int writing = ::open(QFile::encodeName(pipe()).constData(), O_RDWR);
        const int reading = ::open(QFile::encodeName(pipe()).constData(), O_RDONLY | O_CLOEXEC);
        work();
        ::close(writing);
        QByteArray all;
        QByteArray buffer(4096, '\0');
        for (ssize_t got = 1; got > 0;) {
            got = ::read(reading, buffer.data(), size_t(buffer.size()));
            all.append(buffer.left(std::max<ssize_t>(got, 0)));
        }
        ::close(reading);
        return all.toStdString();
    }

    [[nodiscard]] QString pipe() const { return folder.filePath(QStringLiteral("calls")); }

    static std::string showItems(const std::string &address)
    {
        return "gdbus\ncall\n--session\n--timeout\n10\n--dest\norg.freedesktop.FileManager1\n"
               "--object-path\n/org/freedesktop/FileManager1\n"
               "--method\norg.freedesktop.FileManager1.ShowItems\n['"
            + address + "']\n\n\n";
    }

    static void reveal(const QString &path)
    {
        LinuxDesktop desktop {HomeFolder {}};
        desktop.launch(QStringLiteral("/usr/bin/open"), path, {QStringLiteral("-R"), path});
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(LinuxDesktopTest, RevealingAsksTheFileManagerToShowTheItem)
{
    putProgram("gdbus", 0);
    putProgram("xdg-open", 0);
    EXPECT_EQ(callsOf([] { reveal(QStringLiteral("/Applications/Mail.app")); }),
              showItems("file:///Applications/Mail.app"));
}

TEST_F(LinuxDesktopTest, WithoutSuchAFileManagerTheFolderAroundTheItemIsOpened)
{
    putProgram("gdbus", 1);
    putProgram("xdg-open", 0);
    EXPECT_EQ(callsOf([] { reveal(QStringLiteral("/Appli cations/Mail.app")); }),
              showItems("file:///Appli%20cations/Mail.app") + "xdg-open\n/Appli cations\n\n");
}

TEST_F(LinuxDesktopTest, NoNameOfAnItemIsTakenForAnythingButAName)
{
    putProgram("gdbus", 1);
    putProgram("xdg-open", 0);
    const QString path = QString::fromUtf8("/x/it's \"$(id)\" `id` 100% [a], \\ é.app");
    EXPECT_EQ(callsOf([&] { reveal(path); }),
              showItems("file:///x/it%27s%20%22$(id)%22%20%60id%60%20100%25%20[a],%20%5C%20"
                        "%C3%A9.app")
                  + "xdg-open\n/x\n\n");
}

TEST_F(LinuxDesktopTest, AnAddressGoesToTheDesktopsHandler)
{
    putProgram("xdg-open", 0);
    LinuxDesktop desktop {HomeFolder {}};
    EXPECT_EQ(callsOf([&] { desktop.openUrl(QStringLiteral("https://example.org/a?b=c&d")); }),
              "xdg-open\nhttps://example.org/a?b=c&d\n\n");
}

TEST_F(LinuxDesktopTest, AnyOtherRequestIsStartedAsItStandsInItsFolder)
{
    LinuxDesktop desktop {HomeFolder {}};
    EXPECT_EQ(callsOf([&] {
                  desktop.launch(QStringLiteral("/bin/sh"), folder.path(),
                                 {QStringLiteral("-c"),
                                  QStringLiteral("{ pwd -P; echo \"$1\"; } >\"$CALLS\""),
                                  QStringLiteral("sh"), QStringLiteral("-R")});
              }),
              QDir(folder.path()).canonicalPath().toStdString() + "\n-R\n");
}

TEST_F(LinuxDesktopTest, AProgramIsEndedBySignalsThatThisProcessTakesNoNoticeOf)
{
    LinuxTerminal::prepareStreams();
    LinuxDesktop desktop {HomeFolder {}};
    for (const QString &signal : {QStringLiteral("PIPE"), QStringLiteral("XFSZ")}) {
        EXPECT_EQ(callsOf([&] {
                      desktop.launch(QStringLiteral("/bin/sh"), {},
                                     {QStringLiteral("-c"),
                                      u"echo before >\"$CALLS\"; kill -" + signal
                                          + u" $$; echo after >\"$CALLS\""});
                  }),
                  "before\n");
    }
}

TEST_F(LinuxDesktopTest, WhatCannotBeStartedIsLogged)
{
    const LogCapture log;
    LinuxDesktop desktop {HomeFolder {}};
    desktop.launch(QStringLiteral("/no/such/program"), {}, {});
    desktop.launch(QStringLiteral("/bin/sh"), QStringLiteral("/no/such/folder"), {});
    EXPECT_EQ(log.texts(),
              (QStringList {QStringLiteral("/no/such/program: No such file or directory"),
                            QStringLiteral("/bin/sh: No such file or directory")}));
}

TEST_F(LinuxDesktopTest, InSomebodyElsesHomeProgramsHaveTheOwnersRights)
{
    VARNEL_NEEDS_ROOT();
    QTemporaryDir home;
    ASSERT_EQ(::chown(qPrintable(home.path()), stranger, stranger), 0);
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0711), 0);
    ASSERT_EQ(::chmod(qPrintable(pipe()), 0666), 0);
    LinuxDesktop desktop {HomeFolder {home.path(), true}};
    desktop.launch(
        QStringLiteral("/bin/sh"), QStringLiteral("/"),
        {QStringLiteral("-c"), QStringLiteral("id -u >\"$1\""), QStringLiteral("sh"), pipe()});
    // It inherits no open file: reading begins when it has opened the pipe, and ends with it.
    EXPECT_EQ(readRaw(pipe()), "54321\n");
}
