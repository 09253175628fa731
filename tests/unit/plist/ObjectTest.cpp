// Objects by themselves: what they tell, what makes two the same, their bytes.
#include "BinaryBuilder.h"
#include "Opened.h"

#include <limits>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

Object xml(const QByteArray &markup)
{
    auto object = Object::fromBytes(markup);
    EXPECT_TRUE(object.ok()) << markup.constData();
    return object ? std::move(object).value() : Object::fromBytes("<true/>").value();
}

Object binary(const BinaryBuilder &b, BinaryBuilder::Index root)
{
    auto object = Object::fromBytes(b.build(root));
    EXPECT_TRUE(object.ok());
    return object ? std::move(object).value() : Object::fromBytes("<true/>").value();
}

template <typename Make> Object binaryOf(Make make)
{
    BinaryBuilder b;
    const auto root = make(b);
    return binary(b, root);
}

bool isRefused(const QByteArray &bytes)
{
    const auto object = Object::fromBytes(bytes);
    return !object && object.error().code == ErrorCode::Unloadable;
}

void expectTold(const Object &object, ObjectType type, const QString &text, qsizetype count = 0)
{
    EXPECT_EQ(object.type(), type) << object.toBytes().constData();
    EXPECT_EQ(object.text(), text) << object.toBytes().constData();
    EXPECT_EQ(object.count(), count) << object.toBytes().constData();
}

/// Nested far deeper than a stack would bear.
constexpr int deep = 50000;

Object deepXml()
{
    return xml(QByteArray("<array>").repeated(deep) + QByteArray("</array>").repeated(deep));
}

/// What would be 2^levels strings if it were written out.
Object doubled(int levels)
{
    return binaryOf([&](BinaryBuilder &b) {
        auto last = b.ascii("x");
        for (int i = 0; i < levels; ++i)
            last = b.array({last, last});
        return last;
    });
}

} // namespace

TEST(Object, TellsTypeTextAndCountInXml)
{
    expectTold(xml("<true/>"), ObjectType::Boolean, u"true"_s);
    expectTold(xml("<false></false>"), ObjectType::Boolean, u"false"_s);
    expectTold(xml("<integer> -0x1F </integer>"), ObjectType::Integer, u"-31"_s);
    expectTold(xml("<integer>18446744073709551615</integer>"), ObjectType::Integer,
               u"18446744073709551615"_s);
    expectTold(xml("<real>44</real>"), ObjectType::Real, u"44.0"_s);
    expectTold(xml("<real>1e300</real>"), ObjectType::Real, u"1e+300"_s);
    expectTold(xml("<real>NaN</real>"), ObjectType::Real, u"nan"_s);
    expectTold(xml("<date>2001-01-01T00:00:00Z</date>"), ObjectType::Date,
               u"2001-01-01T00:00:00Z"_s);
    expectTold(xml("<date>1999-12-31T23:59:59.5Z</date>"), ObjectType::Date,
               u"1999-12-31T23:59:59.5Z"_s);
    expectTold(xml("<date>soon</date>"), ObjectType::Date, u"soon"_s);
    expectTold(xml("<string>a&amp;<![CDATA[<b>]]>\xc3\xa9</string>"), ObjectType::String,
               u"a&<b>é"_s);
    expectTold(xml("<string/>"), ObjectType::String, u""_s);
    EXPECT_FALSE(xml("<string/>").text().isNull());
    expectTold(xml("<data>\n AAEC\n</data>"), ObjectType::Data, {}, 3);
    expectTold(xml("<array><true/><!-- --><dict/></array>"), ObjectType::Array, {}, 2);
    expectTold(xml("<dict id='x'><key>a</key><true/><key>b</key><array/></dict>"),
               ObjectType::Dictionary, {}, 2);
    expectTold(xml("<dict><key>CF$UID</key><integer>7</integer></dict>"), ObjectType::Uid, u"7"_s);
    expectTold(xml("<dict><key>CF$UID</key><integer>-7</integer></dict>"), ObjectType::Dictionary,
               {}, 1);
    EXPECT_EQ(nameOf(ObjectType::OrderedSet), u"ordered set");
}

TEST(Object, TellsTypeTextAndCountInBinaryLists)
{
    using B = BinaryBuilder;
    expectTold(binaryOf([](B &b) { return b.raw(QByteArray(1, '\0')); }), ObjectType::Null, {});
    expectTold(binaryOf([](B &b) { return b.boolean(true); }), ObjectType::Boolean, u"true"_s);
    expectTold(binaryOf([](B &b) { return b.integer(4, 0xffffffff); }), ObjectType::Integer,
               u"4294967295"_s);
    expectTold(binaryOf([](B &b) { return b.integer(8, ~quint64 {0}); }), ObjectType::Integer,
               u"-1"_s);
    expectTold(binaryOf([](B &b) { return b.wideInteger(0, ~quint64 {0}); }), ObjectType::Integer,
               u"18446744073709551615"_s);
    expectTold(binaryOf([](B &b) { return b.wideInteger(quint64 {1} << 63, 0); }),
               ObjectType::Integer, u"-170141183460469231731687303715884105728"_s);
    expectTold(
        binaryOf([](B &b) { return b.wideInteger(54210108624275221, 12919594847110692864U); }),
        ObjectType::Integer, u"1000000000000000000000000000000000000"_s);
    expectTold(binaryOf([](B &b) { return b.shortReal(0.5F); }), ObjectType::Real, u"0.5"_s);
    expectTold(binaryOf([](B &b) { return b.date(-0.75); }), ObjectType::Date,
               u"2000-12-31T23:59:59.25Z"_s);
    expectTold(binaryOf([](B &b) { return b.date(1e300); }), ObjectType::Date,
               u"1e+300 s after 2001-01-01T00:00:00Z"_s);
    expectTold(binaryOf([](B &b) { return b.data("12345"); }), ObjectType::Data, {}, 5);
    expectTold(binaryOf([](B &b) { return b.utf16(u"é"_s); }), ObjectType::String, u"é"_s);
    expectTold(binaryOf([](B &b) { return b.uid(3, 70000); }), ObjectType::Uid, u"70000"_s);
    expectTold(binaryOf([](B &b) { return b.set({b.boolean(true)}); }), ObjectType::Set, {}, 1);
    expectTold(binaryOf([](B &b) { return b.container(0xb, {}); }), ObjectType::OrderedSet, {});
    expectTold(binaryOf([](B &b) {
                   return b.dictionaryOf({{"a", b.array({})}});
               }),
               ObjectType::Dictionary, {}, 1);
}

TEST(Object, LetsOneLookIntoADictionary)
{
    const QByteArray markup = "<dict><key>Name</key><string>A</string><key>in</key><dict>"
                              "<key>Alias</key><data>AAEC</data></dict></dict>";
    const Object inBinary = binaryOf([](BinaryBuilder &b) {
        return b.dictionaryOf(
            {{"Name", b.ascii("A")},
             {"in", b.dictionaryOf({{"Alias", b.data(QByteArray::fromHex("000102"))}})}});
    });
    for (const Object &object : {xml(markup), inBinary}) {
        EXPECT_EQ(object.value({}).kind, Kind::Dictionary);
        EXPECT_EQ(object.value({u"Name"_s}).string, u"A");
        EXPECT_EQ(object.value({u"absent"_s}).kind, Kind::Missing);
        EXPECT_EQ(object.data({u"in"_s, u"Alias"_s}), QByteArray::fromHex("000102"));
        EXPECT_FALSE(object.data({u"Name"_s}));
    }
    EXPECT_EQ(xml("<data>AAEC</data>").data({}), QByteArray::fromHex("000102"));
    EXPECT_EQ(xml("<string>x</string>").value({u"x"_s}).kind, Kind::Missing);
}

TEST(Object, IsTheSameByTypeAndContentInWhateverWords)
{
    const auto same = [](const Object &one, const Object &other) {
        EXPECT_EQ(one.saysTheSameAs(other), other.saysTheSameAs(one));
        return one.saysTheSameAs(other);
    };
    EXPECT_TRUE(same(xml("<real>0.5</real>"),
                     binaryOf([](BinaryBuilder &b) { return b.shortReal(0.5F); })));
    EXPECT_FALSE(same(xml("<real>0.1</real>"),
                      binaryOf([](BinaryBuilder &b) { return b.shortReal(0.1F); })));
    EXPECT_TRUE(same(xml("<real>nan</real>"), binaryOf([](BinaryBuilder &b) {
                         return b.real(std::numeric_limits<double>::quiet_NaN());
                     })));
    EXPECT_FALSE(same(xml("<real>1</real>"), xml("<integer>1</integer>")));
    EXPECT_FALSE(same(xml("<true/>"), xml("<integer>1</integer>")));
    EXPECT_FALSE(same(xml("<string>1</string>"), xml("<integer>1</integer>")));
    EXPECT_TRUE(same(xml("<integer>0xff</integer>"),
                     binaryOf([](BinaryBuilder &b) { return b.integer(8, 255); })));
    EXPECT_FALSE(same(xml("<integer>-1</integer>"),
                      binaryOf([](BinaryBuilder &b) { return b.wideInteger(0, ~quint64 {0}); })));
    EXPECT_TRUE(same(xml("<string>\xc3\xa9</string>"),
                     binaryOf([](BinaryBuilder &b) { return b.utf16(u"é"_s); })));
    EXPECT_TRUE(same(xml("<data>AAEC</data>"), xml("<data>\n AA EC </data>")));
    EXPECT_FALSE(same(xml("<data>AAEC</data>"), xml("<data>AAEC*</data>")));
    EXPECT_TRUE(same(xml("<dict><key>CF$UID</key><integer>7</integer></dict>"),
                     binaryOf([](BinaryBuilder &b) { return b.uid(1, 7); })));
    EXPECT_TRUE(same(xml("<dict><key>a</key><true/><key>b</key><array/></dict>"),
                     xml("<dict><key>b</key><array></array> <key>a</key><true/></dict>")));
    EXPECT_FALSE(same(xml("<dict><key>a</key><true/><key>b</key><false/></dict>"),
                      xml("<dict><key>a</key><false/><key>b</key><true/></dict>")));
    EXPECT_FALSE(same(xml("<dict><key>a</key><true/></dict>"),
                      xml("<array><string>a</string><true/></array>")));
    EXPECT_FALSE(
        same(xml("<array><true/><false/></array>"), xml("<array><false/><true/></array>")));
    EXPECT_FALSE(same(xml("<array/>"), xml("<dict/>")));
    EXPECT_FALSE(same(xml("<array/>"), binaryOf([](BinaryBuilder &b) { return b.set({}); })));
    EXPECT_TRUE(same(xml("<array><string>a</string><string>a</string></array>"),
                     binaryOf([](BinaryBuilder &b) {
                         const auto a = b.ascii("a");
                         return b.array({a, a});
                     })));
}

TEST(Object, ComparesWhatIsSharedOverAndOverInNoTime)
{
    EXPECT_TRUE(doubled(200).saysTheSameAs(doubled(200)));
    EXPECT_FALSE(doubled(200).saysTheSameAs(doubled(201)));
    EXPECT_TRUE(deepXml().saysTheSameAs(deepXml()));
}

TEST(Object, ComesBackFromItsBytes)
{
    for (const QByteArray markup :
         {"<string>&#65; <![CDATA[x]]></string>", "<dict >\r\n\t<key/>\n<true/></dict>"}) {
        EXPECT_EQ(xml(markup).toBytes(), markup);
        EXPECT_EQ(xml(markup).format(), Format::Xml);
    }
    const Object object = doubled(30);
    EXPECT_EQ(object.format(), Format::Binary);
    EXPECT_EQ(Object::fromBytes(object.toBytes()).value(), object);
    // Written by others: in another order, with wide numbers and with what nothing refers to.
    BinaryBuilder b;
    b.ascii("unused");
    const auto root = b.array({b.ascii("x"), b.boolean(true)});
    const Object read = Object::fromBytes(b.build(root, 4, 8)).value();
    EXPECT_FALSE(read.toBytes().contains("unused"));
    EXPECT_EQ(Object::fromBytes(read.toBytes()).value(), read);
}

TEST(Object, IsRefusedUnlessItIsJustOneWholeObject)
{
    const QByteArray markup = "<dict><key>a</key><array><true/></array></dict>";
    for (qsizetype length = 0; length < markup.size(); ++length)
        EXPECT_TRUE(isRefused(markup.first(length))) << length;
    for (const QByteArray odd :
         {" <true/>", "<true/>\n", "<true/><true/>", "<plist><true/></plist>", "<key>a</key>",
          "<integer>x</integer>", "<dict><true/></dict>", "<string>\xff</string>",
          "<!-- --><true/>", "<?xml version='1.0' encoding='ISO-8859-1'?><string>\xe9</string>",
          "<string>&x;</string>", "bplist00", "\xef\xbb\xbf<true/>"})
        EXPECT_TRUE(isRefused(odd)) << odd.constData();
    EXPECT_TRUE(isRefused(QByteArray("<\0t\0r\0u\0e\0/\0>\0", 14)));

    BinaryBuilder b;
    const QByteArray whole = b.build(b.array({b.ascii("text"), b.data("data")}));
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_TRUE(isRefused(whole.first(length))) << length;
    BinaryBuilder cyclic;
    const auto first = cyclic.container(0xa, {});
    cyclic.setReferences(first, {cyclic.array({first})});
    EXPECT_TRUE(isRefused(cyclic.build(first)));
}

TEST(Object, IsNeverTakenForAnotherWhenItsBytesAreDamaged)
{
    BinaryBuilder b;
    const auto shared = b.ascii("shared");
    const QByteArray whole = b.build(b.dictionaryOf(
        {{"a", b.array({shared, b.real(0.5), b.date(1)})}, {"b", shared}, {"c", b.uid(2, 9)}}));
    for (qsizetype i = 0; i < whole.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray damaged = whole;
            damaged[i] = static_cast<char>(damaged[i] ^ (1 << bit));
            const auto object = Object::fromBytes(damaged);
            if (!object)
                continue;
            // What is still valid can be told and kept again.
            static_cast<void>(object.value().text());
            EXPECT_EQ(Object::fromBytes(object.value().toBytes()).value(), object.value());
            PropertyList list = PropertyList::empty();
            const auto put = list.put({u"k"_s}, object.value());
            EXPECT_TRUE(put || put.error().code == ErrorCode::Invalid);
        }
    }
}

TEST(Object, NestedWithoutEndIsReadKeptAndPut)
{
    const Object object = deepXml();
    EXPECT_EQ(object.count(), 1);
    BinaryBuilder b;
    PropertyList list = opened(b.build(b.dictionary({})));
    ASSERT_TRUE(list.put({u"k"_s}, object).ok());
    const Object back = *list.object({u"k"_s});
    EXPECT_TRUE(back.saysTheSameAs(object));
    PropertyList onOneLine = opened("<plist><dict></dict></plist>");
    ASSERT_TRUE(onOneLine.put({u"k"_s}, back).ok());
    EXPECT_TRUE(onOneLine.object({u"k"_s})->saysTheSameAs(object));
    // Indented, it would grow with the square of its depth.
    PropertyList indented = PropertyList::empty();
    EXPECT_EQ(indented.put({u"k"_s}, back).error().code, ErrorCode::Invalid);
    EXPECT_EQ(indented.bytes(), PropertyList::empty().bytes());
}

TEST(Object, SharedWithoutEndIsRefusedWhereItWouldHaveToBeWrittenOut)
{
    PropertyList list = PropertyList::empty();
    EXPECT_EQ(list.put({u"k"_s}, doubled(60)).error().code, ErrorCode::Invalid);
    EXPECT_EQ(list.bytes(), PropertyList::empty().bytes());
    ASSERT_TRUE(list.put({u"k"_s}, doubled(8)).ok());
    EXPECT_TRUE(list.object({u"k"_s})->saysTheSameAs(doubled(8)));
}
