#include "Opened.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

Value valueOf(const QByteArray &element)
{
    return opened(xmlWith("\t<key>k</key>\n\t" + element + "\n")).value({u"k"_s});
}

bool refuses(const QByteArray &element)
{
    return isUnloadable(xmlWith("\t<key>k</key>\n\t" + element + "\n"));
}

qint64 integerOf(const QByteArray &text)
{
    const Value value = valueOf("<integer>" + text + "</integer>");
    EXPECT_EQ(value.kind, Kind::Integer);
    return value.integer;
}

double realOf(const QByteArray &text)
{
    const Value value = valueOf("<real>" + text + "</real>");
    EXPECT_EQ(value.kind, Kind::Real);
    return value.real;
}

} // namespace

TEST(XmlLookUp, ReadsIntegersDecimalAndHexadecimal)
{
    EXPECT_EQ(integerOf("0"), 0);
    EXPECT_EQ(integerOf("-12"), -12);
    EXPECT_EQ(integerOf("+7"), 7);
    EXPECT_EQ(integerOf(" \n42\t"), 42);
    EXPECT_EQ(integerOf("0x1F"), 31);
    EXPECT_EQ(integerOf("-0Xff"), -255);
    EXPECT_EQ(integerOf("9223372036854775807"), std::numeric_limits<qint64>::max());
    EXPECT_EQ(integerOf("-9223372036854775808"), std::numeric_limits<qint64>::min());
}

TEST(XmlLookUp, CutsWiderIntegersToTheLowSixtyFourBits)
{
    EXPECT_EQ(integerOf("18446744073709551615"), -1);
    EXPECT_EQ(integerOf("18446744073709551621"), 5);
    EXPECT_EQ(integerOf("0x1230000000000000042"), 0x42);
}

TEST(XmlLookUp, ReadsRealsWithAPointExponentOrName)
{
    EXPECT_EQ(realOf("1.5"), 1.5);
    EXPECT_EQ(realOf("-0.1"), -0.1);
    EXPECT_EQ(realOf("+2"), 2.0);
    EXPECT_EQ(realOf(".5"), 0.5);
    EXPECT_EQ(realOf("5."), 5.0);
    EXPECT_EQ(realOf("1.25E-3"), 0.00125);
    EXPECT_EQ(realOf("6.02214076e+23"), 6.02214076e23);
    EXPECT_EQ(realOf("1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(realOf("1e-999"), 0.0);
    EXPECT_EQ(realOf("1" + QByteArray(400, '0')), std::numeric_limits<double>::infinity());
    EXPECT_EQ(realOf("1" + QByteArray(400, '0') + "e-400"), 1.0);
    EXPECT_EQ(realOf("-1e99999999999999999999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(realOf("-infinity"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(realOf("INF"), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(realOf("nan")));
}

TEST(XmlLookUp, RefusesNumbersThatNoReaderReads)
{
    for (const char *text : {"", " ", "abc", "1 2", "0x", "--1", "1.5", "1e3", "12x"})
        EXPECT_TRUE(refuses(QByteArray("<integer>") + text + "</integer>")) << text;
    for (const char *text : {"", "abc", "1,5", "1.5.5", "1e", ".", "e5", "0x10"})
        EXPECT_TRUE(refuses(QByteArray("<real>") + text + "</real>")) << text;
}

TEST(XmlLookUp, ReadsStringsWithEntitiesReferencesAndCdata)
{
    EXPECT_EQ(valueOf("<string>a&lt;b&gt;&amp;&apos;&quot;</string>").string, u"a<b>&'\""_s);
    EXPECT_EQ(valueOf("<string>&#65;&#x1F600;&#13;</string>").string, u"A\U0001f600\r"_s);
    EXPECT_EQ(valueOf("<string>x<![CDATA[<a>&amp;]]>y</string>").string, u"x<a>&amp;y"_s);
    EXPECT_EQ(valueOf("<string>one<!-- no -->two</string>").string, u"onetwo"_s);
    EXPECT_EQ(valueOf("<string>  \r\n </string>").string, u"  \n "_s);
    EXPECT_EQ(valueOf("<string/>").string, QString());
    EXPECT_EQ(valueOf("<string/>").kind, Kind::String);
    EXPECT_EQ(valueOf("<string>\xef\xbb\xbfx</string>").string, u"\ufeffx"_s);
}

TEST(XmlLookUp, TellsTheOtherKinds)
{
    EXPECT_TRUE(valueOf("<true/>").boolean);
    EXPECT_EQ(valueOf("<true></true>").kind, Kind::Boolean);
    EXPECT_FALSE(valueOf("<false/>").boolean);
    EXPECT_EQ(valueOf("<dict/>").kind, Kind::Dictionary);
    EXPECT_EQ(valueOf("<data>AAEC</data>").kind, Kind::Data);
    EXPECT_EQ(valueOf("<date>2011-07-20T12:00:00Z</date>").kind, Kind::Other);
    EXPECT_EQ(valueOf("<array/>").kind, Kind::StringArray);
    EXPECT_EQ(valueOf("<array> <string>a</string><string/></array>").strings,
              QStringList({u"a"_s, QString()}));
    const Value mixed =
        valueOf("<array><string>a</string><array><string>b</string></array></array>");
    EXPECT_EQ(mixed.kind, Kind::Array);
    EXPECT_EQ(mixed.strings, QStringList(u"a"_s));
}

TEST(XmlLookUp, ReadsTheBytesOfData)
{
    EXPECT_EQ(valueOf("<data>\n\tAA\n\tEC\n</data>").data, QByteArray("\0\1\2", 3));
    EXPECT_EQ(valueOf("<data/>").data, QByteArray());
    EXPECT_EQ(valueOf("<data>AA<!-- x -->EC</data>").data.size(), 3);
    EXPECT_EQ(valueOf("<array><data>AAEC</data></array>").data, QByteArray());
}

TEST(XmlLookUp, FindsKeysHoweverTheyAreWritten)
{
    const auto list = opened(xmlWith("<key>a&amp;b</key><integer>1</integer>"
                                     "<key><![CDATA[<c>]]></key><integer>2</integer>"
                                     "<key >d<!-- --></key><!-- x --><integer>3</integer>"
                                     "<key/><integer>4</integer>"
                                     "<key>gr\xc3\xb6\xc3\x9f"
                                     "e</key><integer>5</integer>"));
    EXPECT_EQ(list.value({u"a&b"_s}).integer, 1);
    EXPECT_EQ(list.value({u"<c>"_s}).integer, 2);
    EXPECT_EQ(list.value({u"d"_s}).integer, 3);
    EXPECT_EQ(list.value({QString()}).integer, 4);
    EXPECT_EQ(list.value({u"größe"_s}).integer, 5);
    EXPECT_EQ(list.value({QString(QChar(0xd800))}).kind, Kind::Missing);
    EXPECT_EQ(list.value({u"?"_s}).kind, Kind::Missing);
}

TEST(XmlLookUp, FollowsAPathOfDictionaries)
{
    const auto list = opened(xmlWith(
        "<key>k</key><integer>1</integer><key>outer</key><dict><key>k</key><dict><key>k</key>"
        "<string>deep</string></dict><key>z</key><true/></dict><key>z</key><false/>"));
    EXPECT_EQ(list.format(), Format::Xml);
    EXPECT_EQ(list.value({}).kind, Kind::Dictionary);
    EXPECT_EQ(list.value({u"outer"_s, u"k"_s, u"k"_s}).string, u"deep"_s);
    EXPECT_TRUE(list.value({u"outer"_s, u"z"_s}).boolean);
    EXPECT_EQ(list.value({u"outer"_s, u"y"_s}).kind, Kind::Missing);
    EXPECT_EQ(list.value({u"k"_s, u"k"_s}).kind, Kind::Missing);
}

TEST(XmlLookUp, TakesTheLastOfSeveralEntriesWithOneKey)
{
    EXPECT_EQ(opened(xmlWith("<key>k</key><integer>1</integer><key>k</key><integer>2</integer>"))
                  .value({u"k"_s})
                  .integer,
              2);
}

TEST(XmlLookUp, ToleratesAMissingWrapper)
{
    EXPECT_TRUE(opened("<dict><key>k</key><true/></dict>").value({u"k"_s}).boolean);
}
