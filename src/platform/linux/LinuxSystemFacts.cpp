#include "platform/linux/LinuxSystemFacts.h"

#include "platform/linux/PathWalk.h"
#include "platform/linux/ProcText.h"
#include "platform/linux/UserDatabase.h"

#include <QDir>
#include <QFileInfo>

#include <array>
#include <cstring>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace varnel {

namespace {

/// Where a counter of a /proc/net/snmp line goes in a block.
struct Word {
    std::size_t offset;
    const char *counter;
};

struct Block {
    const char *name;
    const char *protocol;
    std::array<Word, 3> words;
};

// The offsets are those of the block's own system; all other words of a block stay zero.
constexpr std::array<Block, 2> blocks {{
    {"net.inet.ip.stats", "Ip", {{{0, "InReceives"}, {60, "OutRequests"}, {100, "OutNoRoutes"}}}},
    {"net.inet.tcp.stats", "Tcp", {{{0, "ActiveOpens"}, {60, "OutSegs"}, {100, "InSegs"}}}},
}};

/// Null for a user without an account.
QString fieldOfUser(QByteArray UserEntry::*field)
{
    const std::optional<UserEntry> entry = userEntry(::getuid());
    return entry ? QString::fromLocal8Bit((*entry).*field) : QString();
}

bool isFolder(const QByteArray &path, const struct stat &folder)
{
    struct stat status { };
    return ::stat(path.constData(), &status) == 0 && sameFile(status, folder);
}

} // namespace

LinuxSystemFacts::LinuxSystemFacts(QString procFolder) : procFolder(std::move(procFolder)) { }

std::optional<MemoryFacts> LinuxSystemFacts::memory() const
{
    const QHash<QByteArray, quint64> kilobytes = readMemInfo(procFolder + u"/meminfo");
    const long pageSize = ::sysconf(_SC_PAGESIZE);
    if (!kilobytes.contains("MemTotal") || pageSize <= 0)
        return std::nullopt;
    const auto size = static_cast<std::uint64_t>(pageSize);
    const auto pages = [&](const char *line) { return kilobytes.value(line) * 1024 / size; };

    MemoryFacts facts;
    facts.totalBytes = kilobytes.value("MemTotal") * 1024;
    facts.pageSize = size;
    // Wired is what can't be paged out: the kernel's own (SUnreclaim, KernelStack, PageTables) and
    // what programs have locked (Unevictable, which includes Mlocked).
    facts.wired =
        pages("SUnreclaim") + pages("KernelStack") + pages("PageTables") + pages("Unevictable");
    facts.active = pages("Active");
    facts.inactive = pages("Inactive");
    facts.free = pages("MemFree");
    return facts;
}

Result<void> LinuxSystemFacts::sysctlbyname(const char *name, std::span<std::byte> buffer) const
{
    for (const Block &block : blocks) {
        if (std::strcmp(block.name, name) != 0)
            continue;
        const QHash<QByteArray, qint64> counters =
            readSnmpLine(procFolder + u"/net/snmp", block.protocol);
        if (counters.isEmpty())
            return Error {ErrorCode::Failed, procFolder + u"/net/snmp: no such counters"};
        std::memset(buffer.data(), 0, buffer.size());
        for (const Word &word : block.words) {
            const auto value = static_cast<std::uint32_t>(counters.value(word.counter));
            if (word.offset + sizeof value <= buffer.size())
                std::memcpy(buffer.data() + word.offset, &value, sizeof value);
        }
        return {};
    }
    return Error {ErrorCode::NotFound, QString::fromLatin1(name)};
}

QString LinuxSystemFacts::userName() const
{
    return fieldOfUser(&UserEntry::name);
}

QString LinuxSystemFacts::fullUserName() const
{
    return fieldOfUser(&UserEntry::fullName);
}

std::optional<QString> LinuxSystemFacts::fullNameFor(const HomeFolder &home) const
{
    const FileDescriptor opened = openHome(home);
    struct stat folder { };
    if (!opened || ::fstat(opened.get(), &folder) != 0)
        return std::nullopt;
    const std::optional<UserEntry> entry = userEntry(home.asOwner() ? ::geteuid() : folder.st_uid);
    // A number alone says nothing: another machine gives it to somebody else.
    if (!entry || !isFolder(entry->home, folder))
        return std::nullopt;
    return QString::fromLocal8Bit(entry->fullName);
}

QString LinuxSystemFacts::temporaryDirectory() const
{
    const QString folder = QDir::tempPath();
    return QFileInfo(folder).isDir() ? folder : QString();
}

} // namespace varnel
