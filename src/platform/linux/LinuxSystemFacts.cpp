#include "platform/linux/LinuxSystemFacts.h"

#include "platform/linux/ProcText.h"

#include <QDir>
#include <QFileInfo>

#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include <pwd.h>
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

QString passwdField(char *passwd::*field)
{
    std::vector<char> buffer(16384);
    passwd entry {};
    passwd *found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0
        || found == nullptr)
        return {};
    return QString::fromLocal8Bit(entry.*field);
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
    return passwdField(&passwd::pw_name);
}

QString LinuxSystemFacts::fullUserName() const
{
    const QString fields = passwdField(&passwd::pw_gecos);
    // The first of the comma-separated fields is the name; the others are rooms and telephones.
    return fields.left(fields.indexOf(u','));
}

QString LinuxSystemFacts::temporaryDirectory() const
{
    const QString folder = QDir::tempPath();
    return QFileInfo(folder).isDir() ? folder : QString();
}

} // namespace varnel
