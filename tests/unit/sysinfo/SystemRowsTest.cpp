#include "sysinfo/SystemRows.h"
#include "support/FakeFileReader.h"
#include "support/FakeSystemFacts.h"

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

QStringList lines(const InfoRows &rows)
{
    QStringList texts;
    for (const InfoRow &row : rows)
        texts.append(row.name + u": " + row.value);
    return texts;
}

QByteArray versionFile(const QByteArray &version)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
           "<key>ProductVersion</key><string>"
        + version
        + "</string><key>ProductBuildVersion</key><string>11G63</string>"
          "<key>ProductCopyright</key><string>1983-2012</string></dict></plist>";
}

QByteArray words(std::initializer_list<std::pair<int, std::uint32_t>> values)
{
    QByteArray block(356, '\0');
    for (const auto &[offset, value] : values)
        std::memcpy(block.data() + offset, &value, sizeof value);
    return block;
}

} // namespace

TEST(CodeName, VersionsWithTwoDotsHaveOne)
{
    EXPECT_EQ(codeName(QStringLiteral("10.7.5")), QStringLiteral("Mac OS X Lion"));
    EXPECT_EQ(codeName(QStringLiteral("10.6.8")), QStringLiteral("Mac OS X"));
    EXPECT_EQ(codeName(QStringLiteral("10.10.1")), QStringLiteral("Mac OS X"));
}

TEST(CodeName, AVersionWithOneDotOrNoneHasNone)
{
    EXPECT_EQ(codeName(QStringLiteral("10.7")), std::nullopt);
    EXPECT_EQ(codeName(QStringLiteral("10")), std::nullopt);
    EXPECT_EQ(codeName(QString()), std::nullopt);
}

TEST(CodeName, TheMinorVersionIsTheOneCharacterBeforeTheSecondDot)
{
    EXPECT_EQ(codeName(QStringLiteral("10.17.2")), QStringLiteral("Mac OS X Lion"));
    EXPECT_EQ(codeName(QStringLiteral("11.7.1")), QStringLiteral(" Lion"));
    EXPECT_EQ(codeName(QStringLiteral("12.1.0")), QString(QStringLiteral("")));
    EXPECT_EQ(codeName(QStringLiteral("10..1")), QStringLiteral("Mac OS X"));
}

TEST(MacOSXRows, StandInTheirOrder)
{
    FakeFileReader files;
    files.files[QStringLiteral("/mnt/System/Library/CoreServices/SystemVersion.plist")] =
        versionFile("10.7.5");
    FakeSystemFacts facts;
    facts.temporary = QStringLiteral("/tmp");
    const InfoRows rows = macOSXRows(readSystemVersion(files, QStringLiteral("/mnt")), facts,
                                     {QStringLiteral("/Users/ann")});
    EXPECT_EQ(
        lines(rows),
        (QStringList {
            QStringLiteral("Code Name: Mac OS X Lion"), QStringLiteral("Version Number: 10.7.5"),
            QStringLiteral("Build Number: 11G63"), QStringLiteral("Copyright: 1983-2012"),
            QStringLiteral("User Name: ann"), QStringLiteral("Full User Name: Ann Example"),
            QStringLiteral("Home Directory: /Users/ann"),
            QStringLiteral("Temporary Directory: /tmp")}));
}

TEST(MacOSXRows, NumbersOfTheVersionFileArePrintedAsNumbers)
{
    FakeFileReader files;
    files.files[QStringLiteral("/System/Library/CoreServices/SystemVersion.plist")] =
        "<plist version=\"1.0\"><dict><key>ProductVersion</key><integer>10</integer>"
        "<key>ProductBuildVersion</key><real>11.5</real>"
        "<key>ProductCopyright</key><true/></dict></plist>";
    const SystemVersion version = readSystemVersion(files, QStringLiteral("/"));
    EXPECT_EQ(
        lines(macOSXRows(version, FakeSystemFacts(), {QStringLiteral("/Users/ann")})).first(3),
        (QStringList {QStringLiteral("Version Number: 10"), QStringLiteral("Build Number: 11.5"),
                      QStringLiteral("Copyright: 1")}));
}

TEST(MacOSXRows, WithoutAVersionFileShowNullAndNoCodeName)
{
    const FakeFileReader none;
    FakeSystemFacts facts;
    facts.fullUser = QString();
    const InfoRows rows = macOSXRows(readSystemVersion(none, QStringLiteral("/")), facts,
                                     {QStringLiteral("/Users/ann")});
    EXPECT_EQ(
        lines(rows),
        (QStringList {QStringLiteral("Version Number: (null)"),
                      QStringLiteral("Build Number: (null)"), QStringLiteral("Copyright: (null)"),
                      QStringLiteral("User Name: ann"), QStringLiteral("Full User Name: (null)"),
                      QStringLiteral("Home Directory: /Users/ann")}));
}

TEST(MacOSXRows, OfAnotherMachinesHomeNameItsFolderAndTheAccountWhoseHomeItIs)
{
    FakeSystemFacts facts;
    const HomeFolder home {QStringLiteral("/mnt/Users/ben"), false};
    const auto users = [&] { return lines(macOSXRows({}, facts, home)).mid(3, 2); };
    EXPECT_EQ(users(),
              (QStringList {QStringLiteral("User Name: ben"),
                            QStringLiteral("Full User Name: Ann Example")}));
    facts.accountHome = home.path;
    facts.accountName = QStringLiteral("Ben Example");
    EXPECT_EQ(users(),
              (QStringList {QStringLiteral("User Name: ben"),
                            QStringLiteral("Full User Name: Ben Example")}));
}

TEST(SystemVersion, ThatIsNotToldSaysWhyAndWhatToDo)
{
    FakeFileReader files;
    const QString root = QStringLiteral("/mnt");
    const QString file = QStringLiteral("/mnt/System/Library/CoreServices/SystemVersion.plist");
    const auto why = [&](const QString &folder) {
        return readSystemVersion(files, folder).whyNone.toStdString();
    };
    const std::string advice =
        ". Name the folder at which the system's disk is mounted with --system-root.";
    const std::string unknown = "The system's version is not known: ";
    EXPECT_EQ(why(QString()), unknown + "the home does not lie at DISK/Users/NAME" + advice);
    EXPECT_EQ(why(root), unknown + file.toStdString() + advice);
    files.files[file] = "no property list";
    EXPECT_TRUE(why(root).starts_with(unknown + file.toStdString() + ": ")) << why(root);
    files.files[file] = "<plist version=\"1.0\"><dict/></plist>";
    EXPECT_EQ(why(root), unknown + file.toStdString() + ": it names no version" + advice);
    files.files[file] = versionFile("10.7.5");
    EXPECT_TRUE(readSystemVersion(files, root).whyNone.isNull());
}

TEST(MemoryRows, SixteenGibibytesShowAs16384Megabytes)
{
    EXPECT_EQ(megabytes(17'179'869'184U), QStringLiteral("16384 MB"));
}

TEST(MemoryRows, AreShiftedAsUnsignedAndPrintedAsSigned32Bits)
{
    EXPECT_EQ(megabytes(1048575), QStringLiteral("0 MB"));
    EXPECT_EQ(megabytes(std::uint64_t {0x80000000U} << 20), QStringLiteral("-2147483648 MB"));
    EXPECT_EQ(megabytes(~std::uint64_t {0}), QStringLiteral("-1 MB"));
}

TEST(MemoryRows, MultiplyPagesIn64Bits)
{
    MemoryFacts facts;
    facts.totalBytes = 17'179'869'184U;
    facts.pageSize = 4096;
    facts.wired = 2'097'152;
    facts.active = 256;
    facts.inactive = 255;
    facts.free = 0;
    EXPECT_EQ(lines(memoryRows(facts)),
              (QStringList {QStringLiteral("Total Physical Memory: 16384 MB"),
                            QStringLiteral("Wired: disabled for paging out: 8192 MB"),
                            QStringLiteral("Active: recently referenced: 1 MB"),
                            QStringLiteral("Inactive: recently not referenced: 0 MB"),
                            QStringLiteral("Free: fully available for allocation: 0 MB")}));
}

TEST(NetworkRows, TheTransmissionCountersCoverTheInternetOnes)
{
    FakeSystemFacts facts;
    facts.blocks["net.inet.ip.stats"] = words({{0, 1}, {60, 2}, {100, 3}});
    facts.blocks["net.inet.tcp.stats"] = words({{0, 11}, {60, 4'000'000'000U}, {100, 33}});
    EXPECT_EQ(lines(networkRows(facts)),
              (QStringList {QStringLiteral("IP packets received: 11"),
                            QStringLiteral("IP packets generated here: -294967296"),
                            QStringLiteral("TCP connection attempts: 11"),
                            QStringLiteral("TCP total packets sent: -294967296"),
                            QStringLiteral("TCP total packets received: 33")}));
    EXPECT_EQ(facts.asked,
              (QStringList {QStringLiteral("net.inet.ip.stats 116"),
                            QStringLiteral("net.inet.tcp.stats 356")}));
}

TEST(NetworkRows, AFailedReadingLeavesWhatTheBufferHeld)
{
    FakeSystemFacts facts;
    EXPECT_EQ(networkRows(facts)[0].value, QStringLiteral("0"));
    facts.blocks["net.inet.ip.stats"] = words({{0, 7}, {60, 8}});
    EXPECT_EQ(networkRows(facts)[2].value, QStringLiteral("7"));
    EXPECT_EQ(networkRows(facts)[4].value, QStringLiteral("0"));
}
