// Whole objects put under a key: where they came from, and from the other format.
#include "BinaryBuilder.h"
#include "BinaryDump.h"
#include "Opened.h"

#include <limits>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

const QString key = QStringLiteral("k");

/// Takes the key out and puts it back to its place.
QByteArray removedAndPutBack(const QByteArray &file, const QStringList &path)
{
    PropertyList list = opened(file);
    const auto object = list.object(path);
    const auto place = list.place(path);
    EXPECT_TRUE(object && place) << file.constData();
    EXPECT_TRUE(list.remove(path).ok());
    EXPECT_NE(list.bytes(), file);
    EXPECT_TRUE(list.put(path, *object, place).ok()) << file.constData();
    return list.bytes();
}

QByteArray changedAndPutBack(const QByteArray &file, const QStringList &path)
{
    PropertyList list = opened(file);
    const Object object = *list.object(path);
    EXPECT_TRUE(list.set(path, u"another value"_s).ok());
    EXPECT_TRUE(list.put(path, object).ok()) << file.constData();
    return list.bytes();
}

QByteArray utf16(const QString &text)
{
    QByteArray bytes("\xff\xfe", 2);
    for (const QChar c : text) {
        bytes += static_cast<char>(c.unicode() & 0xff);
        bytes += static_cast<char>(c.unicode() >> 8);
    }
    return bytes;
}

Object ofMarkup(const QByteArray &markup)
{
    return Object::fromBytes(markup).value();
}

template <typename Make> Object ofBinary(Make make)
{
    BinaryBuilder b;
    const auto root = make(b);
    return Object::fromBytes(b.build(root)).value();
}

PropertyList emptyBinary()
{
    BinaryBuilder b;
    return opened(b.build(b.dictionary({})));
}

struct Pair {
    const char *markup;
    Object object;
};

/// The same objects in both formats.
std::vector<Pair> pairs()
{
    using B = BinaryBuilder;
    return {
        {"<true/>", ofBinary([](B &b) { return b.boolean(true); })},
        {"<false/>", ofBinary([](B &b) { return b.boolean(false); })},
        {"<integer>200</integer>", ofBinary([](B &b) { return b.integer(1, 200); })},
        {"<integer>40000</integer>", ofBinary([](B &b) { return b.integer(2, 40000); })},
        {"<integer>4000000000</integer>", ofBinary([](B &b) { return b.integer(4, 4000000000); })},
        {"<integer>9223372036854775807</integer>",
         ofBinary([](B &b) { return b.integer(8, ~quint64 {0} >> 1); })},
        {"<integer>-9223372036854775808</integer>",
         ofBinary([](B &b) { return b.integer(8, quint64 {1} << 63); })},
        {"<integer>18446744073709551615</integer>",
         ofBinary([](B &b) { return b.wideInteger(0, ~quint64 {0}); })},
        {"<real>0.1</real>", ofBinary([](B &b) { return b.real(0.1); })},
        {"<real>44</real>", ofBinary([](B &b) { return b.real(44); })},
        {"<real>-0</real>", ofBinary([](B &b) { return b.real(-0.0); })},
        {"<real>+infinity</real>",
         ofBinary([](B &b) { return b.real(std::numeric_limits<double>::infinity()); })},
        {"<date>2011-07-20T12:00:01Z</date>", ofBinary([](B &b) { return b.date(332856001); })},
        {"<date>0001-01-01T00:00:00Z</date>", ofBinary([](B &b) { return b.date(-63113904000); })},
        {"<date>9999-12-31T23:59:59Z</date>", ofBinary([](B &b) { return b.date(252423993599); })},
        {"<string></string>", ofBinary([](B &b) { return b.ascii({}); })},
        {"<string>a&lt;&amp;&gt;\n&#13;</string>",
         ofBinary([](B &b) { return b.ascii("a<&>\n\r"); })},
        {"<string>\xf0\x9f\x98\x80</string>",
         ofBinary([](B &b) { return b.utf16(QStringLiteral("\U0001f600")); })},
        {"<data>AAEC</data>", ofBinary([](B &b) { return b.data(QByteArray::fromHex("000102")); })},
        {"<data></data>", ofBinary([](B &b) { return b.data({}); })},
        {"<dict><key>CF$UID</key><integer>7</integer></dict>",
         ofBinary([](B &b) { return b.uid(1, 7); })},
        {"<array/>", ofBinary([](B &b) { return b.array({}); })},
        {"<dict/>", ofBinary([](B &b) { return b.dictionary({}); })},
        {"<array>\n\t\t<true/>\n\t\t<array>\n\t\t\t<string>x</string>\n\t\t</array>\n\t</array>",
         ofBinary([](B &b) {
             const auto inner = b.array({b.ascii("x")});
             return b.array({b.boolean(true), inner});
         })},
        {"<dict>\n\t\t<key>b&amp;</key>\n\t\t<true/>\n\t\t<key>a</key>\n\t\t<dict/>\n\t</dict>",
         ofBinary([](B &b) {
             return b.dictionaryOf({{"b&", b.boolean(true)}, {"a", b.dictionary({})}});
         })},
    };
}

} // namespace

TEST(ObjectPut, ConvertsEachTypeFromBinaryToXml)
{
    for (const Pair &pair : pairs()) {
        PropertyList list = opened(xmlWith("\t<key>a</key>\n\t<true/>\n"));
        ASSERT_TRUE(list.put({key}, pair.object).ok()) << pair.markup;
        EXPECT_EQ(list.bytes(),
                  xmlWith("\t<key>a</key>\n\t<true/>\n\t<key>k</key>\n\t" + QByteArray(pair.markup)
                          + "\n"));
        EXPECT_TRUE(list.object({key})->saysTheSameAs(pair.object)) << pair.markup;
    }
}

TEST(ObjectPut, ConvertsEachTypeFromXmlToBinary)
{
    for (const Pair &pair : pairs()) {
        PropertyList list = emptyBinary();
        ASSERT_TRUE(list.put({key}, ofMarkup(pair.markup)).ok()) << pair.markup;
        EXPECT_EQ(*list.object({key}), pair.object) << pair.markup;
    }
}

TEST(ObjectPut, MovesWithinAFormatByteForByte)
{
    for (const Pair &pair : pairs()) {
        PropertyList binary = emptyBinary();
        ASSERT_TRUE(binary.put({key}, pair.object).ok());
        EXPECT_EQ(*binary.object({key}), pair.object) << pair.markup;
        PropertyList xml = opened("<dict/>");
        ASSERT_TRUE(xml.put({key}, ofMarkup(pair.markup)).ok());
        EXPECT_EQ(xml.bytes(), "<dict><key>k</key>" + QByteArray(pair.markup) + "</dict>");
    }
    // Widths, and what has no type in this program.
    using B = BinaryBuilder;
    for (const Object &odd : {
             ofBinary([](B &b) { return b.integer(8, 1); }),
             ofBinary([](B &b) { return b.shortReal(0.1F); }),
             ofBinary([](B &b) { return b.wideInteger(7, 7); }),
             ofBinary([](B &b) { return b.raw(QByteArray(1, '\0')); }),
             ofBinary([](B &b) { return b.set({b.uid(5, 1)}); }),
             ofBinary([](B &b) { return b.container(0xb, {b.date(0.5)}); }),
             ofBinary([](B &b) { return b.utf16(QString(QChar(0xd800))); }),
         }) {
        PropertyList list = emptyBinary();
        ASSERT_TRUE(list.put({key}, odd).ok());
        EXPECT_EQ(*list.object({key}), odd);
    }
}

TEST(ObjectPut, LeavesTheListAsItWasWhereItsFormatCannotHoldTheObject)
{
    using B = BinaryBuilder;
    for (const Object &odd : {
             ofBinary([](B &b) { return b.raw(QByteArray(1, '\0')); }),
             ofBinary([](B &b) { return b.set({}); }),
             ofBinary([](B &b) { return b.container(0xb, {}); }),
             ofBinary([](B &b) { return b.wideInteger(1, 0); }),
             ofBinary([](B &b) { return b.date(0.5); }),
             ofBinary([](B &b) { return b.date(1e12); }),
             ofBinary([](B &b) { return b.ascii(QByteArray("a\0b", 3)); }),
             ofBinary([](B &b) { return b.utf16(QString(QChar(0xd800))); }),
             ofBinary([](B &b) { return b.uid(8, quint64 {1} << 32); }),
             ofBinary([](B &b) {
                 return b.dictionaryOf({{"CF$UID", b.integer(1, 7)}});
             }),
             ofBinary([](B &b) {
                 return b.dictionaryOf({{"\x01", b.integer(1, 7)}});
             }),
             ofBinary([](B &b) { return b.array({b.raw(QByteArray(1, '\0'))}); }),
         }) {
        PropertyList list = opened(xmlWith("<key>k</key><true/>"));
        const QByteArray before = list.bytes();
        EXPECT_EQ(list.put({key}, odd).error().code, ErrorCode::Invalid);
        EXPECT_EQ(list.put({u"new"_s}, odd).error().code, ErrorCode::Invalid);
        EXPECT_EQ(list.bytes(), before);
    }
    for (const char *markup :
         {"<integer>0x100000000000000000000000000000000</integer>", "<date>soon</date>",
          "<date>2011-02-29T00:00:00Z</date>", "<date>2011-02-28T24:00:00Z</date>",
          "<data>AAE</data>", "<data>?</data>", "<array><date/></array>"}) {
        PropertyList list = emptyBinary();
        const QByteArray before = list.bytes();
        EXPECT_EQ(list.put({key}, ofMarkup(markup)).error().code, ErrorCode::Invalid) << markup;
        EXPECT_EQ(list.bytes(), before);
    }
}

TEST(ObjectPut, LeavesTheBytesWhereTheSameObjectStandsAlready)
{
    for (const Pair &pair : pairs()) {
        PropertyList xml = opened(xmlWith("<key>k</key>" + QByteArray(pair.markup)));
        PropertyList binary = emptyBinary();
        ASSERT_TRUE(binary.put({key}, pair.object).ok());
        for (PropertyList *list : {&xml, &binary}) {
            const QByteArray before = list->bytes();
            ASSERT_TRUE(list->put({key}, pair.object).ok());
            ASSERT_TRUE(list->put({key}, ofMarkup(pair.markup)).ok());
            EXPECT_EQ(list->bytes(), before) << pair.markup;
        }
    }
    // The same in other words is not the same text.
    PropertyList xml = opened("<dict><key>k</key><string>&#65;</string></dict>");
    ASSERT_TRUE(xml.put({key}, ofMarkup("<string>A</string>")).ok());
    EXPECT_EQ(xml.bytes(), "<dict><key>k</key><string>A</string></dict>");
    // From the other format nothing is said in other words.
    PropertyList half = opened("<dict><key>k</key><real> 0.50</real></dict>");
    ASSERT_TRUE(half.put({key}, ofBinary([](BinaryBuilder &b) { return b.shortReal(0.5F); })).ok());
    EXPECT_EQ(half.bytes(), "<dict><key>k</key><real> 0.50</real></dict>");
    PropertyList wide = emptyBinary();
    const Object one = ofBinary([](BinaryBuilder &b) { return b.integer(8, 1); });
    ASSERT_TRUE(wide.put({key}, one).ok());
    ASSERT_TRUE(wide.put({key}, ofMarkup("<integer>1</integer>")).ok());
    EXPECT_EQ(*wide.object({key}), one);
    // Another order of keys is another order.
    BinaryBuilder b;
    PropertyList binary = opened(b.build(
        b.dictionaryOf({{"k", b.dictionaryOf({{"a", b.boolean(true)}, {"b", b.boolean(true)}})}})));
    ASSERT_TRUE(
        binary.put({key}, ofMarkup("<dict><key>b</key><true/><key>a</key><true/></dict>")).ok());
    EXPECT_EQ(*binary.keys({key}), (QStringList {u"b"_s, u"a"_s}));
}

TEST(ObjectPut, GivesBackTheBytesOfOrdinaryXmlFiles)
{
    const QByteArray tabs =
        "\t<key>a</key>\n\t<true/>\n\t<key>b</key>\n\t<dict>\n\t\t<key>x</key>\n"
        "\t\t<data>\n\t\tAAEC\n\t\t</data>\n\t</dict>\n\t<key>c</key>\n"
        "\t<string>&#65;<![CDATA[<]]></string>\n";
    const QByteArray file = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC "
                            "\"-//Apple//DTD PLIST 1.0//EN\" "
                            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                            "<plist version=\"1.0\">\n<dict>\n"
        + tabs + "</dict>\n</plist>\n";
    QList<QByteArray> files {
        file,
        QByteArray(file).replace("\t", "  "),
        QByteArray(file).replace("\n", "\r\n"),
        QByteArray(file).replace("\t", "").replace("\n", ""),
        QByteArray(file).replace("</key>\n\t<", "</key><"),
        QByteArray(file).replace("</key>\n\t<", "</key> <!-- of the key --> <"),
        QByteArray(file).replace("\t<key>", "\t<!-- before --><?pi?>\n\n\t<key>"),
        QByteArray(file)
            .replace("\t<key>", "\t<!-- one --><key >")
            .replace("<dict>", "<dict id='1'>"),
        utf16(QString::fromUtf8(file)
                  .replace(u"UTF-8"_s, u"UTF-16"_s)
                  .replace(u"<true/>"_s, u"<string>é€</string>"_s)),
        QByteArray(file).replace("UTF-8", "ISO-8859-1").replace("<true/>", "<string>\xe9</string>"),
    };
    for (const QByteArray &shape : files) {
        for (const QStringList &path :
             {QStringList {u"a"_s}, {u"b"_s}, {u"c"_s}, {u"b"_s, u"x"_s}}) {
            EXPECT_EQ(removedAndPutBack(shape, path), shape);
            EXPECT_EQ(changedAndPutBack(shape, path), shape);
        }
    }
}

TEST(ObjectPut, TranscodesWhatComesFromAnotherEncoding)
{
    const QByteArray latin = "<?xml version='1.0' encoding='ISO-8859-1'?><dict><key>k</key>"
                             "<string>\xe9&amp;</string></dict>";
    const Object object = *opened(latin).object({key});
    EXPECT_EQ(object.toBytes(), "<string>\xc3\xa9&amp;</string>");
    PropertyList wide = opened(utf16(u"<dict/>"_s));
    ASSERT_TRUE(wide.put({key}, object).ok());
    EXPECT_EQ(wide.bytes(), utf16(u"<dict><key>k</key><string>é&amp;</string></dict>"_s));
    // What the encoding lacks becomes a reference, and where that would be read as it stands, the
    // object is written anew.
    PropertyList narrow = opened(latin);
    ASSERT_TRUE(narrow.put({key}, ofMarkup("<string>\xe2\x82\xac</string>")).ok());
    EXPECT_TRUE(narrow.bytes().contains("<string>&#8364;</string>"));
    ASSERT_TRUE(narrow.put({key}, ofMarkup("<string><![CDATA[<\xe2\x82\xac]]></string>")).ok());
    EXPECT_TRUE(narrow.bytes().contains("<string>&lt;&#8364;</string>"));
    EXPECT_EQ(narrow.value({key}).string, u"<€");
}

TEST(ObjectPut, FindsThePlaceInAnEditedFile)
{
    const QByteArray file = xmlWith("\t<key>a</key>\n\t<true/>\n\t<key>b</key>\n\t<false/>\n"
                                    "\t<key>c</key>\n\t<integer>3</integer>\n");
    const PropertyList old = opened(file);
    const Object object = *old.object({u"b"_s});
    const auto place = old.place({u"b"_s});
    EXPECT_EQ(place->after, u"a"_s);
    EXPECT_FALSE(old.place({u"a"_s})->after);
    EXPECT_FALSE(old.place({u"absent"_s}));
    const auto keysAfter = [&](PropertyList list) {
        EXPECT_TRUE(list.remove({u"b"_s}).ok());
        EXPECT_TRUE(list.put({u"b"_s}, object, place).ok());
        return *list.keys({});
    };
    EXPECT_EQ(keysAfter(opened(file)), (QStringList {u"a"_s, u"b"_s, u"c"_s}));
    PropertyList without = opened(file);
    ASSERT_TRUE(without.remove({u"a"_s}).ok());
    EXPECT_EQ(keysAfter(without.copy()), (QStringList {u"c"_s, u"b"_s}));
    // Put back first, it is before all others, also new ones.
    ASSERT_TRUE(without.put({u"a"_s}, *old.object({u"a"_s}), old.place({u"a"_s})).ok());
    EXPECT_EQ(without.bytes(), file);
    // Without a place it comes last; the binary form has the same places.
    BinaryBuilder b;
    PropertyList binary = opened(b.build(
        b.dictionaryOf({{"a", b.boolean(true)}, {"b", b.boolean(false)}, {"c", b.integer(1, 3)}})));
    EXPECT_EQ(binary.place({u"b"_s})->after, u"a"_s);
    EXPECT_EQ(keysAfter(binary.copy()), (QStringList {u"a"_s, u"b"_s, u"c"_s}));
    ASSERT_TRUE(binary.remove({u"b"_s}).ok());
    PropertyList last = binary.copy();
    ASSERT_TRUE(last.put({u"b"_s}, object).ok());
    EXPECT_EQ(*last.keys({}), (QStringList {u"a"_s, u"c"_s, u"b"_s}));
    ASSERT_TRUE(binary.put({u"b"_s}, object, old.place({u"a"_s})).ok());
    EXPECT_EQ(*binary.keys({}), (QStringList {u"b"_s, u"a"_s, u"c"_s}));
}

TEST(ObjectPut, BelievesAPlaceOnlyWhatItCanCheck)
{
    const QByteArray file = xmlWith("\t<key>a</key>\n\t<true/>\n");
    const Object object = ofMarkup("<false/>");
    const QString spelt = u"<key>k</key>"_s;
    for (const Place &odd : {
             Place {u"a"_s, u"<!--"_s, spelt},
             Place {u"a"_s, u"</dict>\n"_s, spelt},
             Place {u"a"_s, u"\n"_s, u"<key>other</key>"_s},
             Place {u"a"_s, u"\n"_s, u"<key>k</key><true/><key>x</key>"_s},
             Place {u"a"_s, u"\n"_s, u"<key>k"_s},
             Place {u"gone"_s, u"\n"_s, {}},
             Place {{}, {}, {}},
         }) {
        PropertyList list = opened(file);
        ASSERT_TRUE(list.put({key}, object, odd).ok());
        EXPECT_EQ(list.value({key}).kind, Kind::Boolean);
        QStringList keys = *list.keys({});
        keys.sort();
        EXPECT_EQ(keys, (QStringList {u"a"_s, key}));
        ASSERT_TRUE(list.remove({key}).ok());
        EXPECT_EQ(list.bytes(), file);
    }
}

TEST(ObjectPut, AnswersNotFoundWhereADictionaryOnTheWayIsMissing)
{
    PropertyList xml = opened(xmlWith("<key>a</key><true/>"));
    PropertyList binary = emptyBinary();
    for (PropertyList *list : {&xml, &binary}) {
        const QByteArray before = list->bytes();
        EXPECT_EQ(list->put({u"a"_s, key}, ofMarkup("<true/>")).error().code, ErrorCode::NotFound);
        EXPECT_EQ(list->put({}, ofMarkup("<dict/>")).error().code, ErrorCode::Invalid);
        EXPECT_EQ(list->bytes(), before);
        EXPECT_FALSE(list->object({u"absent"_s}));
        EXPECT_EQ(list->object({})->type(), ObjectType::Dictionary);
    }
}

TEST(ObjectPut, SetsEveryPlaceOfAKeyThatStandsSeveralTimes)
{
    PropertyList xml = opened("<dict><key>k</key><true/><key>k</key><array/></dict>");
    ASSERT_TRUE(xml.put({key}, ofMarkup("<dict/>")).ok());
    EXPECT_EQ(xml.bytes(), "<dict><key>k</key><dict/><key>k</key><dict/></dict>");
    BinaryBuilder b;
    PropertyList binary =
        opened(b.build(b.dictionaryOf({{"k", b.boolean(true)}, {"k", b.array({})}})));
    ASSERT_TRUE(binary.put({key}, ofMarkup("<array><true/></array>")).ok());
    EXPECT_EQ(binary.keys({})->size(), 2);
    const QByteArray once = binary.bytes();
    ASSERT_TRUE(binary.put({key}, ofMarkup("<array><true/></array>")).ok());
    EXPECT_EQ(binary.bytes(), once);
}

TEST(ObjectPut, GrowsReferencesAndOffsetsWhereItMust)
{
    const Object big = ofBinary([](BinaryBuilder &b) {
        QList<BinaryBuilder::Index> elements;
        for (unsigned i = 0; i < 70000; ++i)
            elements.append(b.integer(4, i));
        return b.array(elements);
    });
    BinaryBuilder b;
    const auto shared = b.array({b.ascii("shared")});
    PropertyList list = opened(b.build(b.dictionaryOf({{"a", shared}, {"b", shared}})));
    const auto before = BinaryDump(list.bytes());
    EXPECT_EQ(before.referenceWidth(), 1U);
    ASSERT_TRUE(list.put({key}, big).ok());
    const BinaryDump after(list.bytes());
    EXPECT_EQ(after.referenceWidth(), 4U);
    EXPECT_EQ(after.objectOf(u"a"_s), after.objectOf(u"b"_s));
    EXPECT_EQ(after.root()[u"a"_s], before.root()[u"a"_s]);
    EXPECT_EQ(*list.object({key}), big);
    // What nothing refers to any more goes.
    ASSERT_TRUE(list.put({key}, ofMarkup("<true/>")).ok());
    EXPECT_LT(list.bytes().size(), 400);
}
