// Elements of arrays: counted, taken out, put back.
#include "BinaryBuilder.h"
#include "BinaryDump.h"
#include "Opened.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

const QStringList items {QStringLiteral("SessionItems"), QStringLiteral("CustomListItems")};

QByteArray item(const QByteArray &name)
{
    return "<dict>\n\t\t\t\t<key>Alias</key>\n\t\t\t\t<data>\n\t\t\t\t" + name.toBase64()
        + "\n\t\t\t\t</data>\n\t\t\t\t<key>Name</key>\n\t\t\t\t<string>" + name
        + "</string>\n\t\t\t</dict>";
}

QByteArray xmlList(const QByteArray &elements)
{
    return xmlWith(
        "\t<key>SessionItems</key>\n\t<dict>\n\t\t<key>Controller</key>\n"
        "\t\t<string>CustomListItems</string>\n\t\t<key>CustomListItems</key>\n\t\t<array>"
        + elements
        + "\n\t\t</array>\n\t</dict>\n\t<key>after</key>\n\t<array>\n\t\t<true/>\n"
          "\t</array>\n");
}

QByteArray xmlOf(const QList<QByteArray> &names)
{
    QByteArray elements;
    for (const QByteArray &name : names)
        elements += "\n\t\t\t" + item(name);
    return xmlList(elements);
}

QByteArray binaryOf(const QList<QByteArray> &names)
{
    BinaryBuilder b;
    QList<BinaryBuilder::Index> elements;
    for (const QByteArray &name : names)
        elements.append(b.dictionaryOf({{"Alias", b.data(name)}, {"Name", b.ascii(name)}}));
    const auto array = b.array(elements);
    // Held twice: an edit must not change the other place.
    return b.build(b.dictionaryOf(
        {{"SessionItems", b.dictionaryOf({{"CustomListItems", array}})}, {"shared", array}}));
}

QStringList namesIn(const PropertyList &list)
{
    QStringList names;
    for (const Object &object : list.elements(items))
        names.append(object.value({u"Name"_s}).string);
    return names;
}

} // namespace

TEST(Elements, AreCountedAndReadInBothFormats)
{
    for (const QByteArray &file : {xmlOf({"A", "B", "C"}), binaryOf({"A", "B", "C"})}) {
        const PropertyList list = opened(file);
        EXPECT_EQ(list.count(items), 3);
        EXPECT_EQ(list.count({u"SessionItems"_s}), 0);
        EXPECT_EQ(list.count({u"absent"_s}), 0);
        EXPECT_EQ(namesIn(list), (QStringList {u"A"_s, u"B"_s, u"C"_s}));
        EXPECT_EQ(list.object(items, 1)->value({u"Name"_s}).string, u"B");
        EXPECT_EQ(list.object(items, 2)->data({u"Alias"_s}), "C");
        for (const qsizetype none : {-1, 3}) {
            EXPECT_FALSE(list.object(items, none));
            EXPECT_FALSE(list.place(items, none));
        }
        EXPECT_FALSE(list.object({u"SessionItems"_s}, 0));
    }
}

TEST(Elements, OfAnyTypeAreToldApartFromWhatStandsInThem)
{
    const PropertyList list =
        opened("<dict><key>k</key><array><!-- <true/> --><array><true/></array>"
               "<string/> <dict><key>k</key><integer>1</integer></dict></array>"
               "</dict>");
    const auto all = list.elements({u"k"_s});
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].toBytes(), "<array><true/></array>");
    EXPECT_EQ(all[1].toBytes(), "<string/>");
    EXPECT_EQ(all[2].toBytes(), "<dict><key>k</key><integer>1</integer></dict>");
}

TEST(Elements, TakenOutAndPutBackGiveTheSameBytesInXml)
{
    const QByteArray file = xmlOf({"A", "B", "C"});
    for (const QByteArray &shape :
         {file, QByteArray(file).replace("\n", "\r\n"), QByteArray(file).replace("\t", "  "),
          QByteArray(file).replace("\n", "").replace("\t", ""), xmlOf({"A"}),
          xmlOf({"A"})
              .replace("\t\t<array>\n\t\t\t", "\t\t<array>")
              .replace("\n\t\t</array>", "</array>"),
          QByteArray(file).replace("\n\t\t\t<dict>", "\n\t\t\t<!-- one -->\n\t\t\t<dict>")}) {
        for (qsizetype index = 0; index < opened(shape).count(items); ++index) {
            PropertyList list = opened(shape);
            const Object object = *list.object(items, index);
            const auto place = list.place(items, index);
            ASSERT_TRUE(list.removeElement(items, index).ok());
            EXPECT_EQ(list.count(items), opened(shape).count(items) - 1);
            ASSERT_TRUE(list.insertElement(items, index, object, place).ok());
            EXPECT_EQ(list.bytes(), shape);
        }
    }
}

TEST(Elements, AreWrittenAsTheirNeighboursAre)
{
    const Object b = *opened(xmlOf({"B"})).object(items, 0);
    const Object fromBinary = *opened(binaryOf({"B"})).object(items, 0);
    for (const qsizetype index : {0, 1, 2, 9}) {
        PropertyList list = opened(xmlOf({"A", "C"}));
        QList<QByteArray> names {"A", "C"};
        names.insert(qMin(index, qsizetype {2}), "B");
        ASSERT_TRUE(list.insertElement(items, index, b).ok());
        EXPECT_EQ(list.bytes(), xmlOf(names));
    }
    for (const QByteArray &none :
         {xmlOf({}), xmlOf({}).replace("<array>\n\t\t</array>", "<array/>"),
          xmlOf({}).replace("<array>\n\t\t</array>", "<array></array>")}) {
        PropertyList list = opened(none);
        ASSERT_TRUE(list.insertElement(items, 0, b).ok());
        EXPECT_EQ(list.bytes(), xmlOf({"B"}));
        PropertyList converted = opened(none);
        ASSERT_TRUE(converted.insertElement(items, 0, fromBinary).ok());
        EXPECT_EQ(
            converted.bytes(),
            xmlOf({"B"}).replace("<data>\n\t\t\t\tQg==\n\t\t\t\t</data>", "<data>Qg==</data>"));
    }
}

TEST(Elements, OfBinaryListsAreMovedAndWhatIsSharedStays)
{
    const auto shared = BinaryDump(binaryOf({"A", "B", "C"})).root()[u"shared"_s];
    PropertyList list = opened(binaryOf({"A", "B", "C"}));
    const Object b = *list.object(items, 1);
    ASSERT_TRUE(list.removeElement(items, 1).ok());
    EXPECT_EQ(namesIn(list), (QStringList {u"A"_s, u"C"_s}));
    ASSERT_TRUE(list.insertElement(items, 1, b, list.place(items, 1)).ok());
    EXPECT_EQ(*list.object(items, 1), b);
    ASSERT_TRUE(list.insertElement(items, 0, *opened(xmlOf({"D"})).object(items, 0)).ok());
    ASSERT_TRUE(list.insertElement(items, 99, b).ok());
    EXPECT_EQ(namesIn(list), (QStringList {u"D"_s, u"A"_s, u"B"_s, u"C"_s, u"B"_s}));
    EXPECT_EQ(BinaryDump(list.bytes()).root()[u"shared"_s], shared);
}

TEST(Elements, ThatAreNotThereLeaveTheBytes)
{
    const Object object = *opened(xmlOf({"A"})).object(items, 0);
    for (const QByteArray &file : {xmlOf({"A"}), binaryOf({"A"})}) {
        PropertyList list = opened(file);
        for (const qsizetype none : {-1, 1, 100})
            EXPECT_TRUE(list.removeElement(items, none).ok());
        EXPECT_TRUE(list.removeElement({u"SessionItems"_s}, 0).ok());
        EXPECT_TRUE(list.removeElement({}, 0).ok());
        for (const QStringList &path :
             {QStringList(), {u"SessionItems"_s}, {u"absent"_s}, {u"absent"_s, u"x"_s}})
            EXPECT_EQ(list.insertElement(path, 0, object).error().code, ErrorCode::NotFound);
        EXPECT_EQ(list.bytes(), file);
    }
    PropertyList list = opened(xmlOf({"A"}));
    BinaryBuilder b;
    const auto null = Object::fromBytes(b.build(b.raw(QByteArray(1, '\0'))));
    EXPECT_EQ(list.insertElement(items, 0, null.value()).error().code, ErrorCode::Invalid);
    EXPECT_EQ(list.bytes(), xmlOf({"A"}));
}

TEST(Elements, ManyAreReadAndPutInNoTime)
{
    QByteArray elements;
    for (int i = 0; i < 200000; ++i)
        elements += "\n\t\t\t<true/>";
    PropertyList list = opened(xmlList(elements));
    EXPECT_EQ(list.elements(items).size(), 200000U);
    const QByteArray before = list.bytes();
    const auto place = list.place(items, 100000);
    ASSERT_TRUE(list.removeElement(items, 100000).ok());
    ASSERT_TRUE(list.insertElement(items, 100000, *opened(before).object(items, 0), place).ok());
    EXPECT_EQ(list.bytes(), before);
}
