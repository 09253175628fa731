#include "BinaryBuilder.h"
#include "Opened.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

TEST(Keys, ofXmlStandInTheFilesOrderAsOftenAsTheyStandThere)
{
    const PropertyList list = opened(xmlWith("<!-- c --><key>b</key><true/>\n"
                                             "<key>a &amp; \xc3\xa9</key><dict><key>in</key><true/>"
                                             "</dict>\n<key>b</key><false/><key/><true/>"));
    EXPECT_EQ(list.keys({}), (QStringList {u"b"_s, u"a & é"_s, u"b"_s, u""_s}));
    EXPECT_EQ(list.keys({u"a & é"_s}), QStringList {u"in"_s});
    EXPECT_EQ(list.keys({u"b"_s}), std::nullopt) << "no dictionary";
    EXPECT_EQ(list.keys({u"c"_s}), std::nullopt);
    EXPECT_EQ(list.keys({u"b"_s, u"c"_s}), std::nullopt);
    EXPECT_EQ(PropertyList::empty().keys({}), QStringList());
}

TEST(Keys, ofBinaryStandInTheFilesOrderAsOftenAsTheyStandThere)
{
    BinaryBuilder builder;
    const auto yes = builder.boolean(true);
    const auto b = builder.ascii("b");
    const auto wide = builder.utf16(u"a & é"_s);
    const auto inner = builder.dictionaryOf({{"in", yes}});
    const PropertyList list =
        opened(builder.build(builder.dictionary({{b, yes}, {wide, inner}, {b, yes}})));
    EXPECT_EQ(list.keys({}), (QStringList {u"b"_s, u"a & é"_s, u"b"_s}));
    EXPECT_EQ(list.keys({u"a & é"_s}), QStringList {u"in"_s});
    EXPECT_EQ(list.keys({u"b"_s}), std::nullopt) << "no dictionary";
    EXPECT_EQ(list.keys({u"c"_s}), std::nullopt);
}
