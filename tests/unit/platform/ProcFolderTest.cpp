#include "platform/linux/LinuxProcessManager.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/LinuxSystemFacts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <vector>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace varnel;

namespace {

/// A folder in the shape of /proc.
class ProcFolderTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        // No display: what is visible is told by the files alone.
        qunsetenv("DISPLAY");
        qunsetenv("WAYLAND_DISPLAY");
    }

    void put(const QString &name, const QByteArray &bytes)
    {
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    void putProcess(int id, const QString &executable, const QByteArray &environment = {},
                    int priority = 20)
    {
        const QString start = QString::number(id) + u'/';
        put(start + u"stat",
            QByteArray::number(id) + " (x y) S 1 1 1 0 -1 4194304 1 0 0 0 0 0 0 0 "
                + QByteArray::number(priority) + " 0 1 0 9 0 0\n");
        put(start + u"environ", environment);
        QFile::link(executable, folder.filePath(start + u"exe"));
    }

    static QByteArray launchedBy(const QByteArray &entry, int id)
    {
        return QByteArray("A=b") + '\0' + "GIO_LAUNCHED_DESKTOP_FILE=" + entry + '\0'
            + "GIO_LAUNCHED_DESKTOP_FILE_PID=" + QByteArray::number(id) + '\0';
    }

    [[nodiscard]] LinuxProcessManager manager() const
    {
        LinuxProcessManager manager(folder.path());
        manager.refresh();
        return manager;
    }

    QTemporaryDir folder;
};

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

TEST_F(ProcFolderTest, TheTableHoldsIdAndPriorityOfEachProcessAtTheirOffsets)
{
    putProcess(10, text("/bin/a"), {}, 20);
    putProcess(9, text("/bin/b"), {}, -100);
    put(text("meminfo"), "");
    const LinuxProcessTable table(folder.path());
    std::size_t length = 0;
    ASSERT_EQ(table.sysctl(nullptr, 0, nullptr, &length), 0);
    EXPECT_GE(length, 2 * ProcessRecord::size);
    std::vector<std::byte> records(length);
    ASSERT_EQ(table.sysctl(nullptr, 0, records.data(), &length), 0);
    ASSERT_EQ(length, 2U * 648U);
    std::array<std::int32_t, 2> ids {};
    std::memcpy(&ids[0], records.data() + 40, 4);
    std::memcpy(&ids[1], records.data() + 648 + 40, 4);
    EXPECT_EQ(ids, (std::array<std::int32_t, 2> {9, 10}));
    EXPECT_EQ(static_cast<std::int8_t>(records[242]), -100);
    EXPECT_EQ(static_cast<std::int8_t>(records[648 + 242]), 20);
}

TEST_F(ProcFolderTest, ATableThatGrewBeyondTheBufferSaysSo)
{
    putProcess(10, text("/bin/a"));
    const LinuxProcessTable table(folder.path());
    std::array<std::byte, 600> small {};
    std::size_t length = small.size();
    errno = 0;
    EXPECT_EQ(table.sysctl(nullptr, 0, small.data(), &length), -1);
    EXPECT_EQ(errno, ENOMEM);
}

TEST_F(ProcFolderTest, WithoutProcessesTheTableCannotBeRead)
{
    const LinuxProcessTable table(folder.path());
    std::size_t length = 0;
    EXPECT_EQ(table.sysctl(nullptr, 0, nullptr, &length), -1);
    EXPECT_NE(errno, 0);
}

TEST_F(ProcFolderTest, TheBundleIsTheNearestEnclosingAppFolder)
{
    putProcess(1, text("/A/Outer.app/Contents/Helpers/In.app/Contents/MacOS/in"));
    putProcess(2, text("/A/Clock.app/Contents/MacOS/clock"), launchedBy("/x/clock.desktop", 2));
    putProcess(3, text("/home/ann/.app/tool"));
    putProcess(4, text("/usr/bin/tool.app"));
    const LinuxProcessManager processes = manager();
    EXPECT_EQ(processes.bundleLocation(1), text("/A/Outer.app/Contents/Helpers/In.app"));
    EXPECT_EQ(processes.processName(1), text("in"));
    EXPECT_EQ(processes.bundleLocation(2), text("/A/Clock.app"));
    EXPECT_EQ(processes.bundleLocation(3), text("/home/ann/.app/tool"));
    EXPECT_EQ(processes.bundleLocation(4), text("/usr/bin/tool.app"));
}

TEST_F(ProcFolderTest, AProgramStartedFromADesktopEntryIsThatEntryByItsName)
{
    put(text("clock.desktop"), "[Desktop Entry]\nType=Application\nName=The Clock\n");
    const QByteArray entry = QFile::encodeName(folder.filePath(text("clock.desktop")));
    putProcess(5, text("/usr/bin/clock"), launchedBy(entry, 5));
    putProcess(6, text("/usr/bin/child"), launchedBy(entry, 5));
    putProcess(7, text("/usr/bin/other"), launchedBy("/none.desktop", 7));
    const LinuxProcessManager processes = manager();
    EXPECT_EQ(processes.bundleLocation(5), QFile::decodeName(entry));
    EXPECT_EQ(processes.processName(5), text("The Clock"));
    EXPECT_TRUE(processes.isVisible(5));
    EXPECT_EQ(processes.bundleLocation(6), text("/usr/bin/child")) << "it only inherited the words";
    EXPECT_FALSE(processes.isVisible(6));
    EXPECT_EQ(processes.bundleLocation(7), text("/none.desktop"));
    EXPECT_EQ(processes.processName(7), text("other")) << "the entry is gone";
}

TEST_F(ProcFolderTest, AnEntryThatIsAFifoIsNotWaitedFor)
{
    const QByteArray entry = QFile::encodeName(folder.filePath(text("fifo.desktop")));
    ASSERT_EQ(::mkfifo(entry.constData(), 0600), 0);
    putProcess(5, text("/usr/bin/clock"), launchedBy(entry, 5));
    EXPECT_EQ(manager().processName(5), text("clock"));
}

TEST_F(ProcFolderTest, AReplacedProgramKeepsItsPath)
{
    putProcess(8, text("/usr/bin/replaced (deleted)"));
    put(text("kept (deleted)"), "");
    putProcess(9, folder.filePath(text("kept (deleted)")));
    const LinuxProcessManager processes = manager();
    EXPECT_EQ(processes.bundleLocation(8), text("/usr/bin/replaced"));
    EXPECT_EQ(processes.bundleLocation(9), folder.filePath(text("kept (deleted)")));
}

TEST_F(ProcFolderTest, AKernelThreadOrAnothersProcessBelongsToNoApplication)
{
    put(text("2/stat"), "2 (kthreadd) S 0 0 0 0 -1 2129984 0 0 0 0 0 0 0 0 20 0 1 0 9 0 0\n");
    const LinuxProcessManager processes = manager();
    EXPECT_EQ(processes.bundleLocation(2), std::nullopt);
    EXPECT_EQ(processes.processName(2), std::nullopt);
    EXPECT_FALSE(processes.isVisible(2));
}

TEST_F(ProcFolderTest, MemoryIsCountedInPages)
{
    const auto size = std::uint64_t(::sysconf(_SC_PAGESIZE));
    put(text("meminfo"),
        "MemTotal:       16777216 kB\nMemFree:         1024 kB\nActive:          2048 kB\n"
        "Inactive:        4096 kB\nUnevictable:       64 kB\nMlocked:           64 kB\n"
        "SReclaimable:    9999 kB\nSUnreclaim:       256 kB\nKernelStack:      128 kB\n"
        "PageTables:        64 kB\n");
    const std::optional<MemoryFacts> facts = LinuxSystemFacts(folder.path()).memory();
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->totalBytes, 17'179'869'184U);
    EXPECT_EQ(facts->pageSize, size);
    EXPECT_EQ(facts->free * size, 1024U * 1024U);
    EXPECT_EQ(facts->active * size, 2048U * 1024U);
    EXPECT_EQ(facts->inactive * size, 4096U * 1024U);
    EXPECT_EQ(facts->wired * size, 512U * 1024U);
}

TEST_F(ProcFolderTest, WithoutMemoryLinesThereAreNoStatistics)
{
    EXPECT_EQ(LinuxSystemFacts(folder.path()).memory(), std::nullopt);
    put(text("meminfo"), "MemFree: 12 kB\n");
    EXPECT_EQ(LinuxSystemFacts(folder.path()).memory(), std::nullopt);
}

TEST_F(ProcFolderTest, CountersStandAtTheirOffsetsAndAllElseIsZero)
{
    put(text("net/snmp"),
        "Ip: Forwarding InReceives OutRequests\nIp: 1 5 6\n"
        "Tcp: RtoAlgorithm ActiveOpens InSegs OutSegs\nTcp: 1 7 4294967297 8\n");
    const LinuxSystemFacts facts(folder.path());
    std::array<std::byte, 356> block {};
    block.fill(std::byte {0xEE});
    ASSERT_TRUE(facts.sysctlbyname("net.inet.tcp.stats", block).ok());
    std::array<std::int32_t, 89> words {};
    std::memcpy(words.data(), block.data(), block.size());
    std::array<std::int32_t, 89> expected {};
    expected[0] = 7;
    expected[60 / 4] = 8;
    expected[100 / 4] = 1; // a counter of 32 bits begins again
    EXPECT_EQ(words, expected);

    std::array<std::byte, 116> ip {};
    ASSERT_TRUE(facts.sysctlbyname("net.inet.ip.stats", ip).ok());
    std::memcpy(words.data(), ip.data(), ip.size());
    EXPECT_EQ(words[0], 5);
    EXPECT_EQ(words[15], 6);
}

TEST_F(ProcFolderTest, CountersThatCannotBeReadLeaveTheBuffer)
{
    const LinuxSystemFacts facts(folder.path());
    std::array<std::byte, 356> block {};
    block.fill(std::byte {0xEE});
    EXPECT_FALSE(facts.sysctlbyname("net.inet.tcp.stats", block).ok());
    EXPECT_FALSE(facts.sysctlbyname("net.inet.udp.stats", block).ok());
    EXPECT_EQ(block[0], std::byte {0xEE});
}

TEST_F(ProcFolderTest, TheUserIsTheOneWhoRunsTheProgram)
{
    const LinuxSystemFacts facts;
    EXPECT_FALSE(facts.userName().isEmpty());
    EXPECT_FALSE(facts.fullUserName().isNull());
    EXPECT_FALSE(facts.fullUserName().contains(u','));
}

TEST_F(ProcFolderTest, AHomeHasTheFullNameOfTheAccountWhoseHomeItIs)
{
    const LinuxSystemFacts facts;
    const passwd *account = ::getpwuid(::getuid());
    if (account == nullptr || !QFileInfo(QFile::decodeName(account->pw_dir)).isDir())
        GTEST_SKIP() << "needs an account with a home";
    const QString path = QFileInfo(QFile::decodeName(account->pw_dir)).canonicalFilePath();
    EXPECT_EQ(facts.fullNameFor({path, false}), facts.fullUserName());
    EXPECT_EQ(facts.fullNameFor({folder.path(), false}), std::nullopt);
}

TEST_F(ProcFolderTest, ATemporaryFolderThatIsNoneIsNotTold)
{
    qputenv("TMPDIR", QFile::encodeName(folder.path()));
    EXPECT_EQ(LinuxSystemFacts().temporaryDirectory(), folder.path());
    qputenv("TMPDIR", QFile::encodeName(folder.filePath(text("none"))));
    EXPECT_TRUE(LinuxSystemFacts().temporaryDirectory().isNull());
}

TEST_F(ProcFolderTest, ASignalThatCannotBeSentFailsWithItsReason)
{
    LinuxProcessManager processes = manager();
    EXPECT_EQ(processes.kill(::getpid(), 0), 0);
    errno = 0;
    EXPECT_EQ(processes.kill(0x7FFFFFFF, 0), -1);
    EXPECT_EQ(errno, ESRCH);
}
