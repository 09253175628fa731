#include "sysinfo/SystemRows.h"

#include "base/Literals.h"
#include "base/Text.h"
#include "platform/FileReader.h"
#include "plist/PropertyList.h"

#include <array>
#include <cstring>
#include <iterator>

namespace varnel {

namespace {

InfoRow row(const QString &name, const QString &value)
{
    return {name, orNull(value)};
}

SystemVersion unknownVersion(const QString &why)
{
    SystemVersion version;
    version.whyNone = u"The system's version is not known: "_s + why
        + u". Name the folder at which the system's disk is mounted with --system-root.";
    return version;
}

/// A home of another machine says itself whose it is.
InfoRows userRows(const SystemFacts &facts, const HomeFolder &home)
{
    const bool isAnothers = !home.own && !home.path.isEmpty();
    const std::optional<QString> fullName =
        isAnothers ? facts.fullNameFor(home) : std::optional<QString>();
    return {row(u"User Name"_s, isAnothers ? home.name() : facts.userName()),
            row(u"Full User Name"_s, fullName ? *fullName : facts.fullUserName())};
}

} // namespace

SystemVersion readSystemVersion(const FileReader &files, const QString &systemRoot)
{
    if (systemRoot.isNull())
        return unknownVersion(u"the home does not lie at DISK/Users/NAME"_s);
    const QString folder = systemRoot.endsWith(u'/') ? systemRoot : systemRoot + u'/';
    const QString file = folder + u"System/Library/CoreServices/SystemVersion.plist";
    Result<QByteArray> bytes = files.read(file);
    if (!bytes)
        return unknownVersion(bytes.error().text);
    const Result<plist::PropertyList> list = plist::PropertyList::open(std::move(bytes).value());
    if (!list)
        return unknownVersion(file + u": " + list.error().text);
    SystemVersion version {list.value().text({u"ProductVersion"_s}),
                           list.value().text({u"ProductBuildVersion"_s}),
                           list.value().text({u"ProductCopyright"_s})};
    if (version.productVersion.isNull())
        version.whyNone = unknownVersion(file + u": it names no version").whyNone;
    return version;
}

std::optional<QString> codeName(const QString &productVersion)
{
    const qsizetype first = productVersion.indexOf(u'.');
    const qsizetype second = first < 0 ? -1 : productVersion.indexOf(u'.', first + 1);
    if (second < 0)
        return std::nullopt;
    QString name = QStringLiteral("");
    if (QStringView(productVersion).left(first) == u"10")
        name += u"Mac OS X";
    if (productVersion[second - 1] == u'7')
        name += u" Lion";
    return name;
}

InfoRows macOSXRows(const SystemVersion &version, const SystemFacts &facts, const HomeFolder &home)
{
    InfoRows rows;
    if (const std::optional<QString> name = codeName(version.productVersion))
        rows += row(QStringLiteral("Code Name"), *name);
    rows += row(QStringLiteral("Version Number"), version.productVersion);
    rows += row(QStringLiteral("Build Number"), version.buildVersion);
    rows += row(QStringLiteral("Copyright"), version.copyright);
    rows += userRows(facts, home);
    rows += row(QStringLiteral("Home Directory"), home.path);
    if (const QString folder = facts.temporaryDirectory(); !folder.isNull())
        rows += row(QStringLiteral("Temporary Directory"), folder);
    return rows;
}

QString megabytes(std::uint64_t bytes)
{
    return fillIn(u"%d MB", {QString::number(static_cast<std::int32_t>(bytes >> 20))});
}

InfoRows memoryRows(const MemoryFacts &facts)
{
    const auto pages = [&](std::uint64_t count) { return megabytes(count * facts.pageSize); };
    return {row(QStringLiteral("Total Physical Memory"), megabytes(facts.totalBytes)),
            row(QStringLiteral("Wired: disabled for paging out"), pages(facts.wired)),
            row(QStringLiteral("Active: recently referenced"), pages(facts.active)),
            row(QStringLiteral("Inactive: recently not referenced"), pages(facts.inactive)),
            row(QStringLiteral("Free: fully available for allocation"), pages(facts.free))};
}

InfoRows networkRows(const SystemFacts &facts)
{
    constexpr std::size_t ipLength = 116;
    constexpr std::size_t tcpLength = 356;
    std::array<std::byte, 1024> buffer {};
    const std::span<std::byte> block(buffer);
    // A block that can't be read leaves the words of the one before it; the rows stand all the
    // same.
    (void)facts.sysctlbyname("net.inet.ip.stats", block.first(ipLength));
    (void)facts.sysctlbyname("net.inet.tcp.stats", block.first(tcpLength));

    const auto word = [&](std::size_t offset) {
        std::int32_t value = 0;
        std::memcpy(&value, buffer.data() + offset, sizeof value);
        return QString::number(value);
    };
    constexpr std::size_t connectionAttempts = 0;
    constexpr std::size_t packetsSent = 60;
    constexpr std::size_t packetsReceived = 100;
    return {row(QStringLiteral("IP packets received"), word(connectionAttempts)),
            row(QStringLiteral("IP packets generated here"), word(packetsSent)),
            row(QStringLiteral("TCP connection attempts"), word(connectionAttempts)),
            row(QStringLiteral("TCP total packets sent"), word(packetsSent)),
            row(QStringLiteral("TCP total packets received"), word(packetsReceived))};
}

} // namespace varnel
