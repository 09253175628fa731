#include "Opened.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

QByteArray afterSet(const QByteArray &file, const QStringList &path, const NewValue &value)
{
    PropertyList list = opened(file);
    const auto result = list.set(path, value);
    EXPECT_TRUE(result.ok());
    return list.bytes();
}

QByteArray afterRemove(const QByteArray &file, const QStringList &path)
{
    PropertyList list = opened(file);
    EXPECT_TRUE(list.remove(path).ok());
    return list.bytes();
}

/// A file that a careful person keeps by hand.
const char *const handmade = R"(<?xml version='1.0' encoding="utf-8" standalone="no"?>
<!-- mine -->
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<?keep this?>
<plist version="1.0"  >
<dict>
    <!-- first -->
    <key>zebra</key>   <integer>0x10</integer>

    <key>apple</key> <!-- between -->
    <string><![CDATA[<raw>]]>&#x41;</string>
    <key>date</key>
    <date>2011-07-20T12:00:00.125Z</date>
    <key>data</key>
    <data>
      AAEC
    </data>
    <key>nested</key>
    <dict>
        <key>x</key>
        <real>1.50000</real>
    </dict>
    <!-- last -->
</dict>
</plist>
<!-- end -->
)";

} // namespace

TEST(XmlEdit, ReplacesJustTheValue)
{
    const QByteArray before = handmade;
    const auto expected = [&](const char *from, const char *to) {
        return QByteArray(before).replace(from, to);
    };
    EXPECT_EQ(afterSet(before, {u"zebra"_s}, qint64 {-7}),
              expected("<integer>0x10</integer>", "<integer>-7</integer>"));
    EXPECT_EQ(afterSet(before, {u"zebra"_s}, true), expected("<integer>0x10</integer>", "<true/>"));
    EXPECT_EQ(afterSet(before, {u"apple"_s}, u"a<b&c>\r\n\U0001f600"_s),
              expected("<string><![CDATA[<raw>]]>&#x41;</string>",
                       "<string>a&lt;b&amp;c&gt;&#13;\n\xf0\x9f\x98\x80</string>"));
    EXPECT_EQ(afterSet(before, {u"nested"_s, u"x"_s}, u""_s),
              expected("<real>1.50000</real>", "<string></string>"));
    EXPECT_EQ(afterSet(before, {u"data"_s}, false),
              expected("<data>\n      AAEC\n    </data>", "<false/>"));
    EXPECT_EQ(afterSet(before, {u"nested"_s}, QStringList {u"a"_s, u"b"_s}),
              expected("<dict>\n        <key>x</key>\n        <real>1.50000</real>\n    </dict>",
                       "<array>\n        <string>a</string>\n        <string>b</string>\n"
                       "    </array>"));
}

TEST(XmlEdit, AddsAKeyBehindTheOthersInTheirStyle)
{
    EXPECT_EQ(afterSet(handmade, {u"new&"_s}, true),
              QByteArray(handmade).replace(
                  "<!-- last -->\n", "<!-- last -->\n    <key>new&amp;</key>\n    <true/>\n"));
    EXPECT_EQ(afterSet(handmade, {u"nested"_s, u"y"_s}, QStringList {u"s"_s}),
              QByteArray(handmade).replace("1.50000</real>\n",
                                           "1.50000</real>\n        <key>y</key>\n        <array>\n"
                                           "            <string>s</string>\n        </array>\n"));
}

TEST(XmlEdit, KeepsOneLineOneLine)
{
    const QByteArray file = "<plist><dict><key>a</key><true/></dict></plist>";
    EXPECT_EQ(afterSet(file, {u"b"_s}, QStringList {u"x"_s}),
              "<plist><dict><key>a</key><true/><key>b</key><array><string>x</string></array></dict>"
              "</plist>");
    EXPECT_EQ(afterSet("<dict/>", {u"b"_s}, qint64 {1}),
              "<dict><key>b</key><integer>1</integer></dict>");
}

TEST(XmlEdit, LetsAnEmptyDictionaryGrow)
{
    const QByteArray grown = "\n\t<key>k</key>\n\t<true/>\n</dict>";
    const auto file = [](const QByteArray &dictionary) {
        return QByteArray("<plist version=\"1.0\">\n" + dictionary + "\n</plist>\n");
    };
    const NewValue yes = true;
    EXPECT_EQ(afterSet(file("<dict/>"), {u"k"_s}, yes), file("<dict>" + grown));
    EXPECT_EQ(afterSet(file("<dict id='1' />"), {u"k"_s}, yes), file("<dict id='1' >" + grown));
    EXPECT_EQ(afterSet(file("<dict></dict>"), {u"k"_s}, yes), file("<dict>" + grown));
    EXPECT_EQ(afterSet(file("<dict>\n</dict>"), {u"k"_s}, yes), file("<dict>" + grown));
    EXPECT_EQ(afterSet(file("<dict>\n\t<!-- c -->\n</dict>"), {u"k"_s}, yes),
              file("<dict>\n\t<!-- c -->" + grown));
    EXPECT_EQ(afterSet(file("<dict>\n\t<key>in</key>\n\t<dict/>\n</dict>"), {u"in"_s, u"k"_s}, yes),
              file("<dict>\n\t<key>in</key>\n\t<dict>\n\t\t<key>k</key>\n\t\t<true/>\n\t</dict>\n"
                   "</dict>"));
}

TEST(XmlEdit, KeepsTheKindOfLineEnd)
{
    EXPECT_EQ(afterSet("<plist>\r\n<dict/>\r\n</plist>\r\n", {u"k"_s}, true),
              "<plist>\r\n<dict>\r\n\t<key>k</key>\r\n\t<true/>\r\n</dict>\r\n</plist>\r\n");
}

TEST(XmlEdit, RemovesTheKeyWithTheSpaceBeforeIt)
{
    const QByteArray before = handmade;
    EXPECT_EQ(afterRemove(before, {u"zebra"_s}),
              QByteArray(before).replace("\n    <key>zebra</key>   <integer>0x10</integer>", ""));
    EXPECT_EQ(afterRemove(before, {u"apple"_s}),
              QByteArray(before).replace("\n\n    <key>apple</key> <!-- between -->\n    "
                                         "<string><![CDATA[<raw>]]>&#x41;</string>",
                                         ""));
    EXPECT_EQ(
        afterRemove(before, {u"nested"_s, u"x"_s}),
        QByteArray(before).replace("\n        <key>x</key>\n        <real>1.50000</real>", ""));
}

TEST(XmlEdit, AddingAndRemovingGivesBackTheSameBytes)
{
    for (const QStringList &path : {QStringList(u"new"_s), QStringList {u"nested"_s, u"new"_s}}) {
        const QByteArray added = afterSet(handmade, path, QStringList {u"a"_s, u"b"_s});
        EXPECT_NE(added, QByteArray(handmade));
        EXPECT_EQ(afterRemove(added, path), QByteArray(handmade));
    }
    const QByteArray plain = xmlWith("\t<key>k</key>\n\t<string>v</string>\n");
    EXPECT_EQ(afterSet(afterSet(plain, {u"k"_s}, true), {u"k"_s}, u"v"_s), plain);
}

TEST(XmlEdit, LeavesTheBytesWhereTheValueIsAlreadyThere)
{
    PropertyList list = opened(handmade);
    EXPECT_TRUE(list.set({u"zebra"_s}, qint64 {16}).ok());
    EXPECT_TRUE(list.set({u"apple"_s}, u"<raw>A"_s).ok());
    EXPECT_TRUE(list.remove({u"none"_s}).ok());
    EXPECT_TRUE(list.remove({u"zebra"_s, u"none"_s}).ok());
    EXPECT_EQ(list.bytes(), QByteArray(handmade));
}

TEST(XmlEdit, TellsTrueFromOneAndACutIntegerFromTheSame)
{
    EXPECT_EQ(afterSet(xmlWith("<key>k</key><true/>"), {u"k"_s}, qint64 {1}),
              xmlWith("<key>k</key><integer>1</integer>"));
    EXPECT_EQ(afterSet(xmlWith("<key>k</key><integer>1</integer>"), {u"k"_s}, true),
              xmlWith("<key>k</key><true/>"));
    EXPECT_EQ(afterSet(xmlWith("<key>k</key><integer>18446744073709551615</integer>"), {u"k"_s},
                       qint64 {-1}),
              xmlWith("<key>k</key><integer>-1</integer>"));
}

TEST(XmlEdit, RefusesTextThatXmlCannotHoldAndChangesNothing)
{
    const QString bad[] = {QString(QChar(0)), QString(QChar(0xd800)), QString(QChar(0xdc00)),
                           QString(QChar(0xffff)), QString(QChar(0x1b))};
    for (const QString &text : bad) {
        PropertyList list = opened(handmade);
        for (const auto &result :
             {list.set({u"zebra"_s}, text), list.set({u"new"_s}, text),
              list.set({u"new"_s}, QStringList {u"a"_s, text}), list.set({text}, true)}) {
            ASSERT_FALSE(result.ok());
            EXPECT_EQ(result.error().code, ErrorCode::Invalid);
        }
        EXPECT_EQ(list.bytes(), QByteArray(handmade));
    }
}

TEST(XmlEdit, AnswersNotFoundWhenADictionaryOnTheWayIsMissing)
{
    PropertyList list = opened(handmade);
    for (const QStringList &path :
         {QStringList {u"nowhere"_s, u"k"_s}, QStringList {u"zebra"_s, u"k"_s}}) {
        const auto result = list.set(path, true);
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.error().code, ErrorCode::NotFound);
    }
    EXPECT_EQ(list.bytes(), QByteArray(handmade));
}

TEST(XmlEdit, EditsEveryEntryOfAKeyThatStandsTwice)
{
    const QByteArray file =
        xmlWith("<key>k</key><true/><key>m</key><true/><key>k</key><integer>2</integer>");
    EXPECT_EQ(afterSet(file, {u"k"_s}, qint64 {2}),
              xmlWith("<key>k</key><integer>2</integer><key>m</key><true/><key>k</key>"
                      "<integer>2</integer>"));
    EXPECT_EQ(afterRemove(file, {u"k"_s}),
              xmlWith("<key>m</key><true/>").replace("<dict>\n", "<dict>"));
}

TEST(XmlEdit, AnEmptyListCanBeFilled)
{
    PropertyList list = PropertyList::empty();
    EXPECT_EQ(list.format(), Format::Xml);
    ASSERT_TRUE(list.set({u"a"_s}, true).ok());
    ASSERT_TRUE(list.set({u"b"_s}, u"ü"_s).ok());
    ASSERT_TRUE(list.remove({u"a"_s}).ok());
    EXPECT_EQ(list.bytes(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
              "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
              "<plist version=\"1.0\">\n<dict>\n\t<key>b</key>\n\t<string>\xc3\xbc</string>\n"
              "</dict>\n</plist>\n");
}

TEST(XmlEdit, SeveralEditsInARowFindTheirPlaces)
{
    PropertyList list = opened(handmade);
    for (int i = 0; i < 20; ++i) {
        const QString key = u"key %1"_s.arg(i);
        ASSERT_TRUE(list.set({key}, QString(i, u'x')).ok());
        ASSERT_TRUE(list.set({u"zebra"_s}, qint64 {1} << (2 * i)).ok());
    }
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(list.value({u"key %1"_s.arg(i)}).string.size(), i);
}
