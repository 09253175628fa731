#include "BinaryBuilder.h"
#include "Opened.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

/// The value of an object put under the key "k".
template <typename Add> Value valueOf(Add add)
{
    BinaryBuilder builder;
    const auto object = add(builder);
    const auto root = builder.dictionaryOf({{"k", object}});
    return opened(builder.build(root)).value({QStringLiteral("k")});
}

qint64 integerOf(unsigned width, quint64 value)
{
    const Value read = valueOf([&](BinaryBuilder &b) { return b.integer(width, value); });
    EXPECT_EQ(read.kind, Kind::Integer);
    return read.integer;
}

} // namespace

TEST(BinaryLookUp, ReadsIntegersOfOneTwoAndFourBytesWithoutSign)
{
    EXPECT_EQ(integerOf(1, 0), 0);
    EXPECT_EQ(integerOf(1, 0xff), 0xff);
    EXPECT_EQ(integerOf(2, 0x8001), 0x8001);
    EXPECT_EQ(integerOf(4, 0xffffffff), 0xffffffff);
}

TEST(BinaryLookUp, ReadsIntegersOfEightBytesWithSign)
{
    EXPECT_EQ(integerOf(8, 0xffffffffffffffff), -1);
    EXPECT_EQ(integerOf(8, 0x8000000000000000), std::numeric_limits<qint64>::min());
    EXPECT_EQ(integerOf(8, 0x7fffffffffffffff), std::numeric_limits<qint64>::max());
}

TEST(BinaryLookUp, CutsIntegersOfSixteenBytesToTheLowSixtyFourBits)
{
    const auto wide = [](quint64 high, quint64 low) {
        return valueOf([&](BinaryBuilder &b) { return b.wideInteger(high, low); }).integer;
    };
    EXPECT_EQ(wide(0, 0xffffffffffffffff), -1);
    EXPECT_EQ(wide(0x1234, 42), 42);
    EXPECT_EQ(wide(~quint64 {0}, static_cast<quint64>(-7)), -7);
}

TEST(BinaryLookUp, ReadsRealsOfFourAndEightBytes)
{
    const Value real = valueOf([](BinaryBuilder &b) { return b.real(-1234.5678e-9); });
    EXPECT_EQ(real.kind, Kind::Real);
    EXPECT_EQ(real.real, -1234.5678e-9);
    EXPECT_EQ(valueOf([](BinaryBuilder &b) { return b.shortReal(0.5F); }).real, 0.5);
    EXPECT_TRUE(std::isnan(valueOf([](BinaryBuilder &b) { return b.real(NAN); }).real));
}

TEST(BinaryLookUp, TellsBooleansFromIntegers)
{
    const Value yes = valueOf([](BinaryBuilder &b) { return b.boolean(true); });
    EXPECT_EQ(yes.kind, Kind::Boolean);
    EXPECT_TRUE(yes.boolean);
    EXPECT_FALSE(valueOf([](BinaryBuilder &b) { return b.boolean(false); }).boolean);
}

TEST(BinaryLookUp, ReadsStringsUnitByUnit)
{
    const auto utf16 = [](const QString &text) {
        return valueOf([&](BinaryBuilder &b) { return b.utf16(text); }).string;
    };
    const QString odd = QString(QChar(0xd800)) + QChar(0) + u"\U0001f600é"_s + QChar(0xdc00);
    EXPECT_EQ(utf16(odd), odd);
    EXPECT_EQ(utf16(QString()), QString());
    const Value ascii = valueOf([](BinaryBuilder &b) { return b.ascii(QByteArray("a\0b", 3)); });
    EXPECT_EQ(ascii.kind, Kind::String);
    EXPECT_EQ(ascii.string, QString::fromLatin1(QByteArray("a\0b", 3)));
}

TEST(BinaryLookUp, TellsArraysOfStringsFromOtherArrays)
{
    const Value strings = valueOf([](BinaryBuilder &b) {
        const auto shared = b.ascii("s");
        return b.array({shared, b.utf16(QStringLiteral("ü")), shared});
    });
    EXPECT_EQ(strings.kind, Kind::StringArray);
    EXPECT_EQ(strings.strings, QStringList({u"s"_s, u"ü"_s, u"s"_s}));

    const Value mixed = valueOf([](BinaryBuilder &b) {
        return b.array({b.integer(1, 3), b.ascii("t")});
    });
    EXPECT_EQ(mixed.kind, Kind::Array);
    EXPECT_EQ(mixed.strings, QStringList(u"t"_s));
    EXPECT_EQ(valueOf([](BinaryBuilder &b) { return b.array({}); }).kind, Kind::StringArray);
}

TEST(BinaryLookUp, ReadsTheBytesOfData)
{
    const QByteArray bytes("x\0y", 3);
    const Value data = valueOf([&](BinaryBuilder &b) { return b.data(bytes); });
    EXPECT_EQ(data.kind, Kind::Data);
    EXPECT_EQ(data.data, bytes);
}

TEST(BinaryLookUp, CallsWhatItHasNoTypeForOther)
{
    EXPECT_EQ(valueOf([](BinaryBuilder &b) { return b.date(1.5); }).kind, Kind::Other);
    EXPECT_EQ(valueOf([](BinaryBuilder &b) { return b.uid(2, 700); }).kind, Kind::Other);
    EXPECT_EQ(valueOf([](BinaryBuilder &b) { return b.set({b.ascii("x")}); }).kind, Kind::Other);
    EXPECT_EQ(valueOf([](BinaryBuilder &b) { return b.raw(QByteArray(1, '\0')); }).kind,
              Kind::Other);
    EXPECT_EQ(valueOf([](BinaryBuilder &b) { return b.dictionary({}); }).kind, Kind::Dictionary);
}

TEST(BinaryLookUp, FollowsAPathOfDictionaries)
{
    BinaryBuilder builder;
    const auto inner = builder.dictionaryOf({{"deep", builder.integer(1, 5)}});
    const auto root = builder.dictionaryOf({{"outer", inner}, {"n", builder.integer(1, 1)}});
    const PropertyList list = opened(builder.build(root));
    EXPECT_EQ(list.format(), Format::Binary);
    EXPECT_EQ(list.value({}).kind, Kind::Dictionary);
    EXPECT_EQ(list.value({u"outer"_s, u"deep"_s}).integer, 5);
    EXPECT_EQ(list.value({u"outer"_s, u"none"_s}).kind, Kind::Missing);
    EXPECT_EQ(list.value({u"n"_s, u"deep"_s}).kind, Kind::Missing);
    EXPECT_EQ(list.value({u"none"_s}).kind, Kind::Missing);
}

TEST(BinaryLookUp, FindsAKeyWhicheverWayItIsStored)
{
    BinaryBuilder builder;
    const auto root = builder.dictionary({{builder.utf16(u"plain"_s), builder.integer(1, 1)},
                                          {builder.utf16(u"größe"_s), builder.integer(1, 2)},
                                          {builder.ascii(""), builder.integer(1, 3)}});
    const PropertyList list = opened(builder.build(root));
    EXPECT_EQ(list.value({u"plain"_s}).integer, 1);
    EXPECT_EQ(list.value({u"größe"_s}).integer, 2);
    EXPECT_EQ(list.value({QString()}).integer, 3);
}

TEST(BinaryLookUp, TakesTheLastOfSeveralEntriesWithOneKey)
{
    BinaryBuilder builder;
    const auto root =
        builder.dictionaryOf({{"k", builder.integer(1, 1)}, {"k", builder.integer(1, 2)}});
    EXPECT_EQ(opened(builder.build(root)).value({u"k"_s}).integer, 2);
}

TEST(BinaryLookUp, DecodesALongStringThatAnArraySharesOnlyOnce)
{
    // A million elements that are one string of a megabyte: a terabyte when each is decoded.
    const Value value = valueOf([&](BinaryBuilder &b) {
        const auto shared = b.ascii(QByteArray(1 << 20, 'x'));
        return b.array(QList<BinaryBuilder::Index>(1 << 20, shared));
    });
    EXPECT_EQ(value.strings.size(), 1 << 20);
    EXPECT_EQ(value.strings.last().size(), 1 << 20);
}
