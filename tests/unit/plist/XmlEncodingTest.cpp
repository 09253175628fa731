#include "Opened.h"

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
    return u"<?xml version=\"1.0\" encoding=\"%1\"?>\n<plist>\n<dict>\n%2</dict>\n</plist>\n"_qs
        .arg(encoding, entries);
}

const QString before = u"\t<key>größe</key>\n\t<string>wäre\U0001f600</string>\n"_qs;
const QString after = u"\t<key>größe</key>\n\t<string>ÿ€\U0001f601</string>\n"_qs;
const QString added = u"\t<key>né</key>\n\t<integer>5</integer>\n"_qs;

} // namespace

TEST(XmlEncoding, EditsUtf16OfBothOrdersInItself)
{
    for (const bool bigEndian : {true, false}) {
        for (const bool withMark : {true, false}) {
            const auto encode = [&](const QString &entries) {
                const QString name = withMark ? u"UTF-16"_qs
                    : bigEndian               ? u"UTF-16BE"_qs
                                              : u"UTF-16LE"_qs;
                return utf16(document(name, entries), bigEndian, withMark);
            };
            PropertyList list = opened(encode(before));
            EXPECT_EQ(list.value({u"größe"_qs}).string, u"wäre\U0001f600"_qs);
            ASSERT_TRUE(list.set({u"größe"_qs}, u"ÿ€\U0001f601"_qs).ok());
            EXPECT_EQ(list.bytes(), encode(after));
            ASSERT_TRUE(list.set({u"né"_qs}, qint64 {5}).ok());
            EXPECT_EQ(list.bytes(), encode(after + added));
            ASSERT_TRUE(list.remove({u"größe"_qs}).ok());
            EXPECT_EQ(list.bytes(), encode(added));
        }
    }
}

TEST(XmlEncoding, GrowsAnEmptyDictionaryInUtf16)
{
    PropertyList list = opened(utf16(u"<plist>\n<dict/>\n</plist>"_qs, false, true));
    ASSERT_TRUE(list.set({u"k"_qs}, true).ok());
    EXPECT_EQ(
        list.bytes(),
        utf16(u"<plist>\n<dict>\n\t<key>k</key>\n\t<true/>\n</dict>\n</plist>"_qs, false, true));
}

TEST(XmlEncoding, WritesReferencesForWhatLatin1Lacks)
{
    const auto encode = [](const QString &entries) {
        return document(u"ISO-8859-1"_qs, entries).toLatin1();
    };
    PropertyList list =
        opened(encode(u"\t<key>größe</key>\n\t<string>wäre&#128512;</string>\n"_qs));
    EXPECT_EQ(list.value({u"größe"_qs}).string, u"wäre\U0001f600"_qs);
    ASSERT_TRUE(list.set({u"größe"_qs}, u"ÿ€\U0001f601\u0085"_qs).ok());
    EXPECT_EQ(list.bytes(),
              encode(u"\t<key>größe</key>\n\t<string>ÿ&#8364;&#128513;&#133;</string>\n"_qs));
    EXPECT_EQ(list.value({u"größe"_qs}).string, u"ÿ€\U0001f601\u0085"_qs);
    ASSERT_TRUE(list.set({u"€"_qs}, true).ok());
    EXPECT_TRUE(list.value({u"€"_qs}).boolean);
}

TEST(XmlEncoding, WritesReferencesForWhatAsciiLacks)
{
    const auto encode = [](const QString &entries) {
        return document(u"us-ascii"_qs, entries).toLatin1();
    };
    PropertyList list = opened(encode(QString()));
    ASSERT_TRUE(list.set({u"k"_qs}, u"é"_qs).ok());
    EXPECT_EQ(list.bytes(), encode(u"\t<key>k</key>\n\t<string>&#233;</string>\n"_qs));
}

TEST(XmlEncoding, KeepsAByteOrderMark)
{
    const QByteArray mark = "\xef\xbb\xbf";
    PropertyList list = opened(mark + document(u"UTF-8"_qs, before).toUtf8());
    ASSERT_TRUE(list.set({u"größe"_qs}, u"ÿ€\U0001f601"_qs).ok());
    EXPECT_EQ(list.bytes(), mark + document(u"UTF-8"_qs, after).toUtf8());
}

TEST(XmlEncoding, RefusesEncodingsItDoesNotKnowAndBytesThatAreNone)
{
    EXPECT_TRUE(isUnloadable(document(u"windows-1252"_qs, {}).toLatin1()));
    EXPECT_TRUE(isUnloadable(document(u"EBCDIC-CP-US"_qs, {}).toLatin1()));
    EXPECT_TRUE(isUnloadable(document(u"UTF-16"_qs, {}).toLatin1()));
    EXPECT_TRUE(isUnloadable(document(u"UTF-8"_qs, before).toLatin1()));
    EXPECT_TRUE(isUnloadable(document(u"US-ASCII"_qs, before).toLatin1()));
    EXPECT_TRUE(isUnloadable(xmlWith("<key>k</key><string>\xc0\x80</string>")));
    EXPECT_TRUE(isUnloadable(xmlWith("<key>k</key><string>\xed\xa0\x80</string>")));
}

TEST(XmlEncoding, RefusesLoneSurrogatesInUtf16)
{
    for (const bool bigEndian : {true, false}) {
        for (const QString &text : {QString(QChar(0xd800)), QString(QChar(0xdc00)),
                                    QString(QString(QChar(0xdc00)) + QChar(0xd800))}) {
            const QString entries = u"<key>k</key><string>%1x</string>"_qs.arg(text);
            EXPECT_TRUE(isUnloadable(utf16(document(u"UTF-16"_qs, entries), bigEndian, true)));
        }
    }
}
