#include "loginitems/ItemPath.h"

#include "base/Literals.h"
#include "plist/PropertyList.h"
#include "support/FileFacts.h"

#include <gtest/gtest.h>

#include <QtEndian>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

// Every byte as the public description of the formats has it, none from a program that writes them.

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

/// "/Applications/A.app" on the system's own volume: path without a slash at its start, mount point
/// "/".
const char *const version2 =
    "00000000 00b6 0002" // application's code, size 182, version
    "0001" // a folder
    "02484400000000000000000000000000000000000000000000000000" // "HD", 28 bytes
    "c6f8a9d0 482b 0000" // volume's date, "H+", fixed disk
    "0000221b" // the folder's number
    "05412e617070" // "A.app", 64 bytes
    "0000000000000000000000000000000000000000000000000000000000"
    "0000000000000000000000000000000000000000000000000000000000"
    "0000c822 c6f8a9d0 00000000 00000000" // number, date, creator, type
    "ffff ffff 00000000 0000 00000000000000000000" // levels, attributes, file system, reserved
    "0012 0012 4170706c69636174696f6e732f412e617070" // tag 18, "Applications/A.app"
    "0013 0001 2f00" // tag 19, "/", and a byte to an even length
    "ffff 0000"; // the end

/// "/A.app" on "/Volumes/X".
const char *const version3 =
    "00000000 0056 0003" // size 86
    "0001 0000c6f8a9d00000 482b0000 0005" // kind, volume's date, "H+", ejectable
    "0000221b 0000c822 0000c6f8a9d00000 00000000" // numbers, date, attributes
    "0000000000000000000000000000" // reserved, 14 bytes
    "0012 0006 2f412e617070" // tag 18, "/A.app"
    "0013 000a 2f566f6c756d65732f58" // tag 19, "/Volumes/X"
    "ffff 0000";

/// ["Applications", "A.app"] on "/". Offsets count from the header's end.
QByteArray wholeBook()
{
    return hex(
        "626f6f6b a0000000 00000410 30000000" // "book", size 160, version, header of 48 bytes
        "0000000000000000000000000000000000000000000000000000000000000000"
        "44000000" // the table of contents is at 68
        "0c000000 01010000 4170706c69636174696f6e73" // 4: "Applications"
        "05000000 01010000 412e617070 000000" // 24: "A.app"
        "08000000 01060000 04000000 18000000" // 40: both names
        "01000000 01010000 2f 000000" // 56: "/"
        "24000000 feffffff 01000000 00000000 02000000" // 68: table 1, none after it, 2 entries
        "04100000 28000000 00000000" // target path: at 40
        "02200000 38000000 00000000"); // volume path: at 56
}

} // namespace

TEST(ItemPath, AliasRecordsOfBothVersionsSayAPathBeneathTheirVolume)
{
    EXPECT_EQ(pathOfAlias(hex(version2)), u"/Applications/A.app"_s);
    EXPECT_EQ(pathOfAlias(hex(version3)), u"/Volumes/X/A.app"_s);
}

TEST(ItemPath, AnAliasThatIsCutOrOfAnotherVersionSaysNoPath)
{
    for (const char *digits : {version2, version3}) {
        const QByteArray whole = hex(digits);
        ASSERT_TRUE(pathOfAlias(whole));
        for (qsizetype length = 0; length < whole.size(); ++length)
            EXPECT_FALSE(pathOfAlias(whole.first(length))) << length;
        QByteArray other = whole;
        other[7] = 4;
        EXPECT_FALSE(pathOfAlias(other));
        EXPECT_EQ(pathOfAlias(whole + "behind it"), pathOfAlias(whole));
    }
}

TEST(ItemPath, AnAliasNeedsThePathAndTheMountPoint)
{
    for (const int at : {58, 68}) {
        QByteArray other = hex(version3);
        other[at] = 0x7f;
        EXPECT_FALSE(pathOfAlias(other)) << at;
    }
    QByteArray broken = hex(version3);
    broken[63] = '\xff';
    EXPECT_FALSE(pathOfAlias(broken)) << "no UTF-8";
    broken[63] = '\0';
    EXPECT_FALSE(pathOfAlias(broken));
}

TEST(ItemPath, ABookmarkSaysAPathOfNames)
{
    EXPECT_EQ(pathOfBookmark(wholeBook()), u"/Applications/A.app"_s);
    for (qsizetype length = 0; length < wholeBook().size(); ++length)
        EXPECT_FALSE(pathOfBookmark(wholeBook().first(length))) << length;
}

TEST(ItemPath, ABookmarkThatNamesAPieceOverAndOverSaysNoPath)
{
    // A name of 1 KiB, named 200,000 times.
    constexpr quint32 times = 200000;
    constexpr quint32 nameSize = 1024;
    const auto number = [](quint32 value) {
        QByteArray bytes(4, '\0');
        qToLittleEndian(value, bytes.data());
        return bytes;
    };
    QByteArray names;
    for (quint32 i = 0; i < times; ++i)
        names += number(4);
    const QByteArray records = number(nameSize) + number(0x0101) + QByteArray(nameSize, 'a')
        + number(quint32(names.size())) + number(0x0601) + names;
    const QByteArray body = number(quint32(4 + records.size())) + records + number(12 + 12)
        + number(0xfffffffe) + number(1) + number(0) + number(1) + number(0x1004)
        + number(4 + 8 + nameSize) + number(0);
    const QByteArray bookmark = "book" + number(quint32(48 + body.size())) + number(0) + number(48)
        + QByteArray(32, '\0') + body;
    EXPECT_FALSE(pathOfBookmark(bookmark));
}

TEST(ItemPath, AFileUrlSaysItsPathWithoutTheSlashAtItsEnd)
{
    EXPECT_EQ(pathOfFileUrl("file://localhost/A%20b.app/"), u"/A b.app"_s);
    EXPECT_EQ(pathOfFileUrl("file:///A.app"), u"/A.app"_s);
    EXPECT_EQ(pathOfFileUrl("FILE:/A.app"), u"/A.app"_s);
    EXPECT_EQ(pathOfFileUrl("file:///"), u"/"_s);
    EXPECT_EQ(pathOfFileUrl("file:///U%CC%88.app/"), u"/U\u0308.app"_s) << "not normalized";
    for (const char *url : {"", "file:", "file://", "file://server/A.app", "http:///A.app",
                            "/A.app", "file:///a%00b", "file:///%FF", "file:///.file/id=1.2/"})
        EXPECT_FALSE(pathOfFileUrl(url)) << url;
    EXPECT_FALSE(pathOfFileUrl("file:///" + QByteArray(5000, 'a')));
}

TEST(ItemPath, ABindingHasItsUrlAmongOtherBytes)
{
    const QByteArray url = "file:///A.app/";
    EXPECT_EQ(pathOfBinding("dnib" + QByteArray("\x0e\0\0\0", 4) + url + "Q\0\0\0rest"),
              u"/A.app"_s)
        << "as long as the number before it says";
    EXPECT_EQ(pathOfBinding("dnib" + QByteArray("\0\0\0\x0e", 4) + url + "Q"), u"/A.app"_s);
    EXPECT_EQ(pathOfBinding(url), u"/A.app"_s);
    EXPECT_EQ(pathOfBinding("x" + url + QByteArray("\0y", 2)), u"/A.app"_s);
    EXPECT_FALSE(pathOfBinding("dnib"));
    EXPECT_FALSE(pathOfBinding({}));
}

TEST(ItemPath, EveryItemOfTheSampleListsSaysThePathItWasMadeOf)
{
    const QString folder = QStringLiteral(TEST_DATA "/loginitems/");
    int seen = 0;
    for (const QString &name : {u"leopard"_s, u"snow-leopard"_s, u"sierra"_s})
        for (const QString &format : {u"-xml.plist"_s, u"-binary.plist"_s}) {
            const auto list = plist::PropertyList::open(readRaw(folder + name + format));
            ASSERT_TRUE(list);
            QString lines;
            for (const plist::Object &item :
                 list.value().elements({u"SessionItems"_s, u"CustomListItems"_s})) {
                const std::optional<QString> path = pathOfItem(item);
                if (!path)
                    continue;
                const QString label = item.value({u"Name"_s}).string;
                lines +=
                    (label.isEmpty() ? path->section(u'/', -1) : label) + u'\t' + *path + u'\n';
                ++seen;
            }
            EXPECT_EQ(lines, QString::fromUtf8(readRaw(folder + name + u".txt")))
                << qPrintable(name);
        }
    EXPECT_EQ(seen, 2 * (3 + 6 + 6));
}
