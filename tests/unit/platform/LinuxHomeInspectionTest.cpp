#include "platform/linux/LinuxHomeInspection.h"

#include "platform/linux/TemporaryFile.h"
#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

using Entry = HomeInspection::Entry;

struct LinuxHomeInspectionTest : testing::Test {
    /// In a folder of the shape of /proc.
    void putProcess(int id, int parent, const QByteArray &environment)
    {
        const QString process = processes.path() + u'/' + QString::number(id);
        QDir().mkpath(process);
        const QByteArray number = QByteArray::number(id);
        writeRaw(process + u"/stat",
                 number + " (pro gram) S " + QByteArray::number(parent)
                     + " 0 0 0 0 0 0 0 0 0 0 0 0 0 20 0 1 0 0\n");
        writeRaw(process + u"/environ", environment);
    }
    [[nodiscard]] QList<HomeInspection::Process> running() const
    {
        return LinuxHomeInspection(home, processes.path()).processes();
    }

    TemporaryHome folder;
    TemporaryHome processes;
    const HomeFolder home = folder.home();
    const LinuxHomeInspection inspection {home};
    const QString preferences = folder.path() + u"/Library/Preferences";
};

} // namespace

TEST_F(LinuxHomeInspectionTest, tellsWhoseAnEntryIsItsModeAndSize)
{
    writeRaw(preferences + u"/b", "four", 0640);
    linkTo(u"b"_s, preferences + u"/a");
    const Result<QList<Entry>> entries = inspection.list(preferences);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries.value().size(), 2);
    const Entry &link = entries.value().first();
    const Entry &file = entries.value().last();
    EXPECT_EQ(link.kind, Entry::Kind::Link);
    EXPECT_EQ(file.kind, Entry::Kind::File);
    EXPECT_EQ(file.name, u"b");
    EXPECT_EQ(file.size, 4);
    EXPECT_EQ(file.mode, u"0640");
    EXPECT_EQ(file.owner, inspection.owner());
    EXPECT_TRUE(file.isHomeOwners && file.letsOwnerIn && inspection.hasOwnersRights());
    EXPECT_EQ(inspection.look(preferences + u"/a").value().kind, Entry::Kind::File);
    EXPECT_EQ(inspection.look(preferences + u"/none").error().code, ErrorCode::NotFound);
    EXPECT_EQ(inspection.list(preferences + u"/b").error().code, ErrorCode::NotFound);
    EXPECT_EQ(inspection.look(folder.path()).value().kind, Entry::Kind::Folder);
}

TEST_F(LinuxHomeInspectionTest, aModeKeepsItsOwnerOutUnlessThatIsTheAdministrator)
{
    const QString file = preferences + u"/file";
    writeRaw(file, {}, 0444);
    ASSERT_EQ(::chmod(qPrintable(preferences), 0600), 0);
    EXPECT_EQ(inspection.look(preferences).value().letsOwnerIn, ::geteuid() == 0);
    ASSERT_EQ(::chmod(qPrintable(preferences), 0700), 0);
    EXPECT_EQ(inspection.look(file).value().letsOwnerIn, ::geteuid() == 0);
}

TEST_F(LinuxHomeInspectionTest, theOwnerIsThatOfTheHomeOrOfTheLibraryInTheAdministrators)
{
    VARNEL_NEEDS_ROOT();
    giveAll(folder.path() + u"/Library", stranger, stranger);
    EXPECT_EQ(LinuxHomeInspection(home).owner(), QString::number(stranger));
    EXPECT_FALSE(LinuxHomeInspection(home).hasOwnersRights());
    EXPECT_FALSE(LinuxHomeInspection(home).look(folder.path()).value().isHomeOwners);
    ASSERT_EQ(::chmod(qPrintable(preferences), 0600), 0);
    EXPECT_FALSE(LinuxHomeInspection(home).look(preferences).value().letsOwnerIn);
    giveAll(folder.path(), stranger + 1, stranger);
    EXPECT_EQ(LinuxHomeInspection(home).owner(), QString::number(stranger + 1));
}

TEST_F(LinuxHomeInspectionTest, onlyTheTemporaryFileOfADeadRunIsLeftBehind)
{
    writeRaw(preferences + u"/.dead.plist.varnel-1-0123456789abcdef", {});
    writeRaw(preferences + u"/.other.plist.varnel-1-0123", {});
    const FileDescriptor opened(
        ::open(qPrintable(preferences), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    TemporaryFile living(opened, "living.plist");
    ASSERT_EQ(living.create(), 0);
    QStringList left;
    const Result<QList<Entry>> entries = inspection.list(preferences);
    ASSERT_TRUE(entries);
    EXPECT_EQ(entries.value().size(), 3);
    for (const Entry &entry : entries.value())
        if (entry.isLeftBehind)
            left += entry.name;
    EXPECT_EQ(left, QStringList(u".dead.plist.varnel-1-0123456789abcdef"_s));
}

TEST_F(LinuxHomeInspectionTest, processesAreThoseWithTheHomeAsTheirs)
{
    const QByteArray path = QFile::encodeName(folder.path());
    const QString link = processes.path() + u"/link";
    linkTo(folder.path(), link);
    putProcess(40, 1, "LANG=C" + QByteArray(1, '\0') + "HOME=" + path + '\0');
    putProcess(30, 1, "HOME=" + QFile::encodeName(link) + '\0');
    putProcess(31, 1, "HOME=" + path + "/elsewhere" + '\0');
    putProcess(32, 1, "LANG=C" + QByteArray(1, '\0'));
    const QString name = u"pro gram"_s;
    EXPECT_EQ(running(), (QList<HomeInspection::Process> {{30, name}, {40, name}}));
}

TEST_F(LinuxHomeInspectionTest, thisProcessAndThoseThatStartedItDoNotCount)
{
    const QByteArray environment = "HOME=" + QFile::encodeName(folder.path()) + '\0';
    constexpr int shell = 30;
    putProcess(shell, 1, environment);
    putProcess(int(::getpid()), shell, environment);
    EXPECT_EQ(running(), QList<HomeInspection::Process>());
}

TEST_F(LinuxHomeInspectionTest, aDatabaseIsLockedWhileOneOfTheLibrarysBytesIs)
{
    const QString database = preferences + u"/base.sqlite";
    EXPECT_FALSE(inspection.isLocked(database));
    writeRaw(database, {});
    const FileDescriptor writer(::open(qPrintable(database), O_RDWR | O_CLOEXEC));
    const auto lock = [&](short type, off_t byte) {
        struct flock range { };
        range.l_type = type;
        range.l_whence = SEEK_SET;
        range.l_start = byte;
        range.l_len = 1;
        EXPECT_EQ(::fcntl(writer.get(), F_OFD_SETLK, &range), 0);
    };
    constexpr off_t pending = 0x40000000;
    constexpr off_t reserved = pending + 1;
    constexpr off_t lastOfReaders = pending + 511;
    lock(F_WRLCK, pending - 1);
    lock(F_WRLCK, lastOfReaders + 1);
    EXPECT_FALSE(inspection.isLocked(database));
    for (const off_t byte : {pending, reserved, lastOfReaders})
        for (const int type : {F_RDLCK, F_WRLCK}) {
            lock(short(type), byte);
            EXPECT_TRUE(inspection.isLocked(database)) << byte;
            lock(F_UNLCK, byte);
            EXPECT_FALSE(inspection.isLocked(database)) << byte;
        }
    ASSERT_EQ(::mkfifo(qPrintable(QString(preferences + u"/pipe.sqlite")), 0600), 0);
    EXPECT_FALSE(inspection.isLocked(preferences + u"/pipe.sqlite"));
}

TEST_F(LinuxHomeInspectionTest, onlyAFolderCanBeEntered)
{
    writeRaw(preferences + u"/file", {});
    EXPECT_TRUE(inspection.checkEntry(home.path));
    EXPECT_TRUE(inspection.checkEntry(preferences));
    EXPECT_FALSE(inspection.checkEntry(preferences + u"/file"));
    const Result<void> none = inspection.checkEntry(preferences + u"/none");
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error().code, ErrorCode::NotFound);
}
