#include "BinaryBuilder.h"
#include "Opened.h"

using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

TEST(Keys, ofXmlStandInTheFilesOrderAsOftenAsTheyStandThere)
{
    const PropertyList list = opened(xmlWith("<!-- c --><key>b</key><true/>\n"
                                             "<key>a &amp; \xc3\xa9</key><dict><key>in</key><true/>"
                                             "</dict>\n<key>b</key><false/><key/><true/>"));
    EXPECT_EQ(list.keys({}), (QStringList {u"b"_qs, u"a & é"_qs, u"b"_qs, u""_qs}));
    EXPECT_EQ(list.keys({u"a & é"_qs}), QStringList {u"in"_qs});
    EXPECT_EQ(list.keys({u"b"_qs}), std::nullopt) << "no dictionary";
    EXPECT_EQ(list.keys({u"c"_qs}), std::nullopt);
    EXPECT_EQ(list.keys({u"b"_qs, u"c"_qs}), std::nullopt);
    EXPECT_EQ(PropertyList::empty().keys({}), QStringList());
}

TEST(Keys, ofBinaryStandInTheFilesOrderAsOftenAsTheyStandThere)
{
    BinaryBuilder builder;
    const auto yes = builder.boolean(true);
    const auto b = builder.ascii("b");
    const auto wide = builder.utf16(u"a & é"_qs);
    const auto inner = builder.dictionaryOf({{"in", yes}});
    const PropertyList list =
        opened(builder.build(builder.dictionary({{b, yes}, {wide, inner}, {b, yes}})));
    EXPECT_EQ(list.keys({}), (QStringList {u"b"_qs, u"a & é"_qs, u"b"_qs}));
    EXPECT_EQ(list.keys({u"a & é"_qs}), QStringList {u"in"_qs});
    EXPECT_EQ(list.keys({u"b"_qs}), std::nullopt) << "no dictionary";
    EXPECT_EQ(list.keys({u"c"_qs}), std::nullopt);
}
