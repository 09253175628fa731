#include "Opened.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

QByteArray utf16(const QString &text, bool bigEndian, bool withMark)
{
    QByteArray bytes;
    const auto append = [&](char16_t unit) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xff);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    };
    if (withMark)
        append(0xfeff);
    for (const QChar c : text)
        append(c.unicode());
    return bytes;
}

QString document(const QString &encoding, const QString &entries)
{
    return u"<?xml version=\"1.0\" encoding=\"%1\"?>\n<plist>\n<dict>\n%2</dict>\n</plist>\n"_s.arg(
        encoding, entries);
}

const QString before = u"\t<key>größe</key>\n\t<string>wäre\U0001f600</string>\n"_s;
const QString after = u"\t<key>größe</key>\n\t<string>ÿ€\U0001f601</string>\n"_s;
const QString added = u"\t<key>né</key>\n\t<integer>5</integer>\n"_s;

} // namespace

TEST(XmlEncoding, EditsUtf16OfBothOrdersInItself)
{
    for (const bool bigEndian : {true, false}) {
        for (const bool withMark : {true, false}) {
            const auto encode = [&](const QString &entries) {
                const QString name = withMark ? u"UTF-16"_s
                    : bigEndian               ? u"UTF-16BE"_s
                                              : u"UTF-16LE"_s;
                return utf16(document(name, entries), bigEndian, withMark);
            };
            PropertyList list = opened(encode(before));
            EXPECT_EQ(list.value({u"größe"_s}).string, u"wäre\U0001f600"_s);
            ASSERT_TRUE(list.set({u"größe"_s}, u"ÿ€\U0001f601"_s).ok());
            EXPECT_EQ(list.bytes(), encode(after));
            ASSERT_TRUE(list.set({u"né"_s}, qint64 {5}).ok());
            EXPECT_EQ(list.bytes(), encode(after + added));
            ASSERT_TRUE(list.remove({u"größe"_s}).ok());
            EXPECT_EQ(list.bytes(), encode(added));
        }
    }
}

TEST(XmlEncoding, GrowsAnEmptyDictionaryInUtf16)
{
    PropertyList list = opened(utf16(u"<plist>\n<dict/>\n</plist>"_s, false, true));
    ASSERT_TRUE(list.set({u"k"_s}, true).ok());
    EXPECT_EQ(
        list.bytes(),
        utf16(u"<plist>\n<dict>\n\t<key>k</key>\n\t<true/>\n</dict>\n</plist>"_s, false, true));
}

TEST(XmlEncoding, WritesReferencesForWhatLatin1Lacks)
{
    const auto encode = [](const QString &entries) {
        return document(u"ISO-8859-1"_s, entries).toLatin1();
    };
    PropertyList list = opened(encode(u"\t<key>größe</key>\n\t<string>wäre&#128512;</string>\n"_s));
    EXPECT_EQ(list.value({u"größe"_s}).string, u"wäre\U0001f600"_s);
    ASSERT_TRUE(list.set({u"größe"_s}, u"ÿ€\U0001f601\u0085"_s).ok());
    EXPECT_EQ(list.bytes(),
              encode(u"\t<key>größe</key>\n\t<string>ÿ&#8364;&#128513;&#133;</string>\n"_s));
    EXPECT_EQ(list.value({u"größe"_s}).string, u"ÿ€\U0001f601\u0085"_s);
    ASSERT_TRUE(list.set({u"€"_s}, true).ok());
    EXPECT_TRUE(list.value({u"€"_s}).boolean);
}

TEST(XmlEncoding, WritesReferencesForWhatAsciiLacks)
{
    const auto encode = [](const QString &entries) {
        return document(u"us-ascii"_s, entries).toLatin1();
    };
    PropertyList list = opened(encode(QString()));
    ASSERT_TRUE(list.set({u"k"_s}, u"é"_s).ok());
    EXPECT_EQ(list.bytes(), encode(u"\t<key>k</key>\n\t<string>&#233;</string>\n"_s));
}

TEST(XmlEncoding, KeepsAByteOrderMark)
{
    const QByteArray mark = "\xef\xbb\xbf";
    PropertyList list = opened(mark + document(u"UTF-8"_s, before).toUtf8());
    ASSERT_TRUE(list.set({u"größe"_s}, u"ÿ€\U0001f601"_s).ok());
    EXPECT_EQ(list.bytes(), mark + document(u"UTF-8"_s, after).toUtf8());
}

TEST(XmlEncoding, RefusesEncodingsItDoesNotKnowAndBytesThatAreNone)
{
    EXPECT_TRUE(isUnloadable(document(u"windows-1252"_s, {}).toLatin1()));
    EXPECT_TRUE(isUnloadable(document(u"EBCDIC-CP-US"_s, {}).toLatin1()));
    EXPECT_TRUE(isUnloadable(document(u"UTF-16"_s, {}).toLatin1()));
    EXPECT_TRUE(isUnloadable(document(u"UTF-8"_s, before).toLatin1()));
    EXPECT_TRUE(isUnloadable(document(u"US-ASCII"_s, before).toLatin1()));
    EXPECT_TRUE(isUnloadable(xmlWith("<key>k</key><string>\xc0\x80</string>")));
    EXPECT_TRUE(isUnloadable(xmlWith("<key>k</key><string>\xed\xa0\x80</string>")));
}

TEST(XmlEncoding, RefusesLoneSurrogatesInUtf16)
{
    for (const bool bigEndian : {true, false}) {
        for (const QString &text : {QString(QChar(0xd800)), QString(QChar(0xdc00)),
                                    QString(QString(QChar(0xdc00)) + QChar(0xd800))}) {
            const QString entries = u"<key>k</key><string>%1x</string>"_s.arg(text);
            EXPECT_TRUE(isUnloadable(utf16(document(u"UTF-16"_s, entries), bigEndian, true)));
        }
    }
}
