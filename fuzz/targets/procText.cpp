// What the kernel tells in /proc: any bytes, and lines put together from what they should then say.

#include "platform/linux/ProcText.h"
#include "harness/Folder.h"
#include "harness/Input.h"
#include "harness/Require.h"
#include "platform/linux/LinuxProcessManager.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/LinuxSystemFacts.h"

#include <array>
#include <vector>

using namespace varnel;
using namespace varnel::fuzz;

namespace {

void checkStat(Input &input)
{
    const auto id = static_cast<int>(input.number(4));
    const auto parent = static_cast<int>(input.number(4));
    const auto priority = static_cast<int>(input.number(4));
    const QByteArray command = input.rest();
    QByteArray line = QByteArray::number(id) + " (" + command + ") S " + QByteArray::number(parent);
    for (int field = 5; field < 18; ++field)
        line += " 0";
    line += ' ' + QByteArray::number(priority) + " 20 0\n";
    const std::optional<ProcStat> stat = parseProcStat(line);
    require(stat.has_value(), "a stat line is read whatever the command's name");
    require(stat->processId == id && stat->parentId == parent && stat->priority == priority
                && stat->command == command,
            "a stat line is read as it was written");
}

void checkMemInfo(Input &input)
{
    const quint64 free = input.number(8);
    const QByteArray text = input.rest() + "\nVarnelFree:   " + QByteArray::number(free) + " kB\n";
    require(parseMemInfo(text).value("VarnelFree") == free, "a line is read whatever stands above");
}

void checkSnmp(Input &input)
{
    const auto count = static_cast<qint64>(input.number(8));
    const QByteArray text =
        "Varnel: A B\nVarnel: 1 " + QByteArray::number(count) + '\n' + input.rest();
    require(parseSnmp(text, "Varnel").value("B") == count,
            "a counter is read whatever stands below");
}

/// The files themselves, in a folder like /proc with one process.
void checkFolder(const QByteArray &bytes)
{
    static const Folder proc;
    for (const char *name : {"meminfo", "net/snmp", "1/stat", "1/environ", "1/cmdline"})
        proc.write(QString::fromLatin1(name), bytes);
    const LinuxSystemFacts facts(proc.path());
    (void)facts.memory();
    std::array<std::byte, 64> block {};
    (void)facts.sysctlbyname("net.inet.ip.stats", block);
    (void)facts.sysctlbyname("net.inet.tcp.stats", std::span(block).first(4));

    const LinuxProcessTable table(proc.path());
    std::size_t length = 0;
    require(table.sysctl(nullptr, 0, nullptr, &length) == 0, "the table has a length");
    std::vector<std::byte> records(length);
    require(table.sysctl(nullptr, 0, records.data(), &length) == 0 && length == ProcessRecord::size,
            "the table has the one process");

    LinuxProcessManager manager(proc.path());
    (void)manager.bundleLocation(1);
    (void)manager.processName(1);
    (void)manager.isVisible(1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    switch (input.below(4)) {
    case 0:
        checkStat(input);
        break;
    case 1:
        checkMemInfo(input);
        break;
    case 2:
        checkSnmp(input);
        break;
    default:
        checkFolder(input.rest());
        break;
    }
    return 0;
}
