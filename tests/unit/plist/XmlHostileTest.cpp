#include "Opened.h"

#include "plist/XmlScan.h"

#include <QHash>

#include <random>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

void tryAll(const QByteArray &bytes)
{
    auto opened = PropertyList::open(bytes);
    if (!opened)
        return;
    PropertyList list = std::move(opened).value();
    (void)list.value({u"a"_s, u"b"_s});
    if (list.set({u"a"_s}, u"new"_s)) {
        EXPECT_EQ(list.value({u"a"_s}).string, u"new"_s);
    } else {
        EXPECT_EQ(list.bytes(), bytes);
    }
}

QByteArray repeated(const char *text, int times)
{
    return QByteArray(text).repeated(times);
}

} // namespace

TEST(XmlHostile, RefusesWhatIsNoPropertyList)
{
    for (const char *text : {"",
                             " ",
                             "text",
                             "<",
                             "<plist/>",
                             "<plist></plist>",
                             "<plist><true/></plist>",
                             "<array/>",
                             "<html/>",
                             "<plist><dict/><dict/></plist>",
                             "<plist><plist><dict/></plist></plist>",
                             "<dict/><dict/>",
                             "<dict>",
                             "<dict></plist>",
                             "<dict>text</dict>",
                             "<dict><key>k</key></dict>",
                             "<dict><true/></dict>",
                             "<dict><key>a</key><key>b</key></dict>",
                             "<dict><key>a</key><true/><true/></dict>",
                             "<dict><key>a</key><string>x<b/></string></dict>",
                             "<dict><key>a</key><array><key>b</key></array></dict>",
                             "<dict><key>a</key><array>text</array></dict>",
                             "<dict><key>a</key><true>x</true></dict>",
                             "<dict><key>a</key><set/></dict>",
                             "<dict><key>a</key><plist/></dict>",
                             "<key>a</key>",
                             "<plist>text<dict/></plist>",
                             "<Dict/>",
                             "<x:dict/>",
                             "<plist><dict/></plist>trailing",
                             "<dict><key>a</key><string>&none;</string></dict>"})
        EXPECT_TRUE(isUnloadable(text)) << text;
}

TEST(XmlHostile, RefusesDeclarationsOfEntitiesAndAttributes)
{
    const auto withSubset = [](const QByteArray &subset, const QByteArray &text) -> QByteArray {
        return "<!DOCTYPE plist [" + subset + "]><dict><key>k</key><string>" + text
            + "</string></dict>";
    };
    EXPECT_TRUE(isUnloadable(withSubset("<!ENTITY a \"x\">", "y")));
    EXPECT_TRUE(isUnloadable(withSubset("<!ENTITY a \"x\">", "&a;")));
    EXPECT_TRUE(isUnloadable(withSubset("<!ENTITY a SYSTEM \"file:///etc/passwd\">", "&a;")));
    EXPECT_TRUE(isUnloadable(withSubset("<!ENTITY % a SYSTEM \"http://example.org/\"> %a;", "y")));
    EXPECT_TRUE(isUnloadable(withSubset("%a;", "&b;")));
    QByteArray laughs = "<!ENTITY l0 \"ha\">";
    for (int i = 1; i < 30; ++i) {
        const QByteArray last = "&l" + QByteArray::number(i - 1) + ';';
        laughs += "<!ENTITY l" + QByteArray::number(i) + " \"" + last.repeated(10) + "\">";
    }
    EXPECT_TRUE(isUnloadable(withSubset(laughs, "&l29;")));
    // With an outer subset unread, a parser may pass over an entity that it does not know.
    EXPECT_TRUE(isUnloadable("<!DOCTYPE plist SYSTEM \"x.dtd\"><dict><key>k</key>"
                             "<string>&a;</string></dict>"));
    EXPECT_TRUE(isUnloadable(withSubset("<!ATTLIST key a CDATA 'x'>", "y")));
    EXPECT_EQ(opened(withSubset("<!ELEMENT key (#PCDATA)>", "y")).value({u"k"_s}).string, u"y"_s);
}

TEST(XmlHostile, HandlesAMillionLevelsOfNesting)
{
    const int depth = 1000000;
    const QByteArray arrays =
        xmlWith("<key>k</key>" + repeated("<array>", depth) + repeated("</array>", depth));
    PropertyList list = opened(arrays);
    EXPECT_EQ(list.value({u"k"_s}).kind, Kind::Array);
    ASSERT_TRUE(list.set({u"k"_s}, true).ok());
    EXPECT_EQ(list.bytes(), xmlWith("<key>k</key><true/>"));
    EXPECT_TRUE(isUnloadable(xmlWith("<key>k</key>" + repeated("<array>", depth))));
}

TEST(XmlHostile, ReadsALongCommentStringOrTagInTimeThatGrowsWithItsLength)
{
    // Sixteen megabytes in small pieces, each read again from the start, would take minutes.
    const QByteArray filler(16 << 20, 'x');
    EXPECT_TRUE(
        opened(xmlWith("<!--" + filler + "--><key>k</key><true/>")).value({u"k"_s}).boolean);
    EXPECT_TRUE(
        opened(xmlWith("<key a=\"" + filler + "\">k</key><true/>")).value({u"k"_s}).boolean);
    EXPECT_EQ(opened(xmlWith("<key>k</key><string>" + filler + "</string>"))
                  .value({u"k"_s})
                  .string.size(),
              filler.size());
}

TEST(XmlHostile, EveryTruncationIsRefused)
{
    const QByteArray whole =
        xmlWith("<key>a</key><dict><key>b</key><string>&lt;<![CDATA[x]]></string></dict>")
            .trimmed();
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_TRUE(isUnloadable(whole.first(length))) << length;
    tryAll(whole);
}

TEST(XmlHostile, RandomDamageNeverBreaksTheProgram)
{
    std::mt19937 random(20110715);
    const QByteArray whole = xmlWith(
        "<key>a</key><dict><key>b</key><string>&lt;<![CDATA[x]]></string></dict><key>c</key><array>"
        "<integer>5</integer><real>1.5</real><true/></array><!-- c --><key>d</key><dict/>");
    const char letters[] = "<>&;/![]-\"= \n\t\0x\xc3\xff";
    for (int round = 0; round < 3000; ++round) {
        QByteArray changed = whole;
        for (unsigned i = 0; i < 1 + random() % 3; ++i) {
            const auto at =
                static_cast<qsizetype>(random() % static_cast<unsigned>(changed.size()));
            const char letter = letters[random() % (sizeof letters - 1)];
            if (random() % 2)
                changed[at] = letter;
            else
                changed.remove(at, 1 + static_cast<qsizetype>(random() % 8));
        }
        tryAll(changed);
    }
}

TEST(XmlHostile, KeysWithOneHashAreToldApart)
{
    QHash<quint16, QByteArray> known;
    QByteArray one;
    QByteArray other;
    for (int i = 0; one.isEmpty(); ++i) {
        other = "key" + QByteArray::number(i);
        one = known.value(hashOfKey(other));
        known.insert(hashOfKey(other), other);
    }
    const auto list = opened(xmlWith("<key>" + one + "</key><integer>1</integer><key>" + other
                                     + "</key><integer>2</integer>"));
    EXPECT_EQ(list.value({QString::fromLatin1(one)}).integer, 1);
    EXPECT_EQ(list.value({QString::fromLatin1(other)}).integer, 2);
    EXPECT_EQ(
        opened(xmlWith("<key>" + other + "</key><true/>")).value({QString::fromLatin1(one)}).kind,
        Kind::Missing);
}
