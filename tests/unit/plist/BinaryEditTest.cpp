#include "BinaryBuilder.h"
#include "BinaryDump.h"
#include "Opened.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

/// One of everything, most of which the program has no type for.
QByteArray everything()
{
    BinaryBuilder b;
    const auto shared = b.array({b.ascii("shared"), b.integer(1, 9)});
    const auto root = b.dictionaryOf({
        {"one", b.integer(1, 200)},
        {"two", b.integer(2, 40000)},
        {"four", b.integer(4, 4000000000)},
        {"eight", b.integer(8, 1ULL << 40)},
        {"minus", b.integer(8, static_cast<quint64>(-5))},
        {"unsigned", b.wideInteger(0, ~quint64 {0})},
        {"huge", b.wideInteger(0x0123456789abcdef, 0xfedcba9876543210)},
        {"yes", b.boolean(true)},
        {"no", b.boolean(false)},
        {"null", b.raw(QByteArray(1, '\0'))},
        {"real", b.real(0.1)},
        {"short", b.shortReal(0.1F)},
        {"date", b.date(345678901.25)},
        {"data", b.data(QByteArray::fromHex("00ff10"))},
        {"none", b.data({})},
        {"uid", b.uid(1, 7)},
        {"wideuid", b.uid(4, 70000)},
        {"nul", b.ascii(QByteArray("a\0b", 3))},
        {"nul16", b.utf16(u"ä"_s + QChar(0) + u"b"_s)},
        {"lone", b.utf16(QString(QString(QChar(0xd83d)) + u"x"_s + QChar(0xde00)))},
        {"emoji", b.utf16(QStringLiteral("\U0001f600"))},
        {"empty", b.ascii({})},
        {"set", b.set({b.integer(1, 1), b.ascii("in a set")})},
        {"array", b.array({})},
        {"dict", b.dictionary({})},
        {"a", shared},
        {"b", shared},
        {"old", b.integer(1, 1)},
    });
    return b.build(root);
}

QByteArray manyObjects(int count)
{
    BinaryBuilder b;
    QList<std::pair<QByteArray, BinaryBuilder::Index>> entries;
    for (int i = 0; i < count / 2; ++i)
        entries.append({"key" + QByteArray::number(i), b.integer(4, static_cast<quint64>(i))});
    return b.build(b.dictionaryOf(entries));
}

} // namespace

TEST(BinaryEdit, KeepsEveryOtherObjectByteForByte)
{
    const auto before = BinaryDump(everything()).root();
    for (const NewValue &value : {NewValue(true), NewValue(qint64 {-3}), NewValue(u"tëxt"_s),
                                  NewValue(QStringList {u"x"_s, u"ÿ"_s})}) {
        for (const QString &key : {u"old"_s, u"new"_s}) {
            PropertyList list = opened(everything());
            ASSERT_TRUE(list.set({key}, value).ok());
            auto after = BinaryDump(list.bytes()).root();
            EXPECT_TRUE(after.remove(key));
            auto others = before;
            others.remove(key);
            EXPECT_EQ(after, others);
        }
    }
}

TEST(BinaryEdit, RemovesAKeyAndNothingElse)
{
    auto expected = BinaryDump(everything()).root();
    const QStringList keys = expected.keys();
    for (const QString &key : keys) {
        PropertyList list = opened(everything());
        ASSERT_TRUE(list.remove({key}).ok());
        auto others = expected;
        others.remove(key);
        EXPECT_EQ(BinaryDump(list.bytes()).root(), others) << qPrintable(key);
    }
}

TEST(BinaryEdit, WritesIntegersInTheLeastWidthThatReadersTakeRight)
{
    const auto written = [](qint64 number) {
        PropertyList list = opened(everything());
        EXPECT_TRUE(list.set({u"k"_s}, number).ok());
        EXPECT_EQ(list.value({u"k"_s}).integer, number);
        return BinaryDump(list.bytes()).root().value(u"k"_s);
    };
    EXPECT_EQ(written(0), "1000");
    EXPECT_EQ(written(255), "10ff");
    EXPECT_EQ(written(256), "110100");
    EXPECT_EQ(written(65536), "1200010000");
    EXPECT_EQ(written(4294967296), "130000000100000000");
    EXPECT_EQ(written(-1), "13ffffffffffffffff");
}

TEST(BinaryEdit, WritesStringsOfAnyLengthAndContent)
{
    for (const QString &text :
         {u""_s, u"ascii"_s, QString(300, u'x'), QString(70000, u'é'), QString(QChar(0xd800)),
          QString(QString(QChar(0)) + u"é"_s), u"\U0001f600"_s}) {
        PropertyList list = opened(everything());
        ASSERT_TRUE(list.set({text}, text).ok());
        const Value read = opened(list.bytes()).value({text});
        EXPECT_EQ(read.kind, Kind::String);
        EXPECT_EQ(read.string, text);
    }
}

TEST(BinaryEdit, LeavesTheBytesWhereTheValueIsAlreadyThere)
{
    const QByteArray before = everything();
    PropertyList list = opened(before);
    EXPECT_TRUE(list.set({u"one"_s}, qint64 {200}).ok());
    EXPECT_TRUE(list.set({u"yes"_s}, true).ok());
    EXPECT_TRUE(list.set({u"empty"_s}, QString()).ok());
    EXPECT_TRUE(list.set({u"array"_s}, QStringList()).ok());
    EXPECT_TRUE(list.remove({u"no such key"_s}).ok());
    EXPECT_TRUE(list.remove({u"one"_s, u"no such key"_s}).ok());
    EXPECT_EQ(list.bytes(), before);
}

TEST(BinaryEdit, TellsAValueOfAnotherTypeOrACutIntegerFromTheSame)
{
    const auto changes = [](const QString &key, const NewValue &value) {
        PropertyList list = opened(everything());
        EXPECT_TRUE(list.set({key}, value).ok());
        return list.bytes() != everything();
    };
    EXPECT_TRUE(changes(u"yes"_s, qint64 {1}));
    EXPECT_TRUE(changes(u"old"_s, true));
    EXPECT_TRUE(changes(u"real"_s, qint64 {0}));
    // Low 64 bits alone would be the same.
    EXPECT_TRUE(changes(u"unsigned"_s, qint64 {-1}));
    EXPECT_TRUE(changes(u"huge"_s, static_cast<qint64>(0xfedcba9876543210)));
}

TEST(BinaryEdit, AnswersNotFoundWhenADictionaryOnTheWayIsMissing)
{
    PropertyList list = opened(everything());
    for (const QStringList &path :
         {QStringList {u"nowhere"_s, u"k"_s}, QStringList {u"one"_s, u"k"_s}}) {
        const auto result = list.set(path, true);
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.error().code, ErrorCode::NotFound);
    }
    EXPECT_EQ(list.bytes(), everything());
    EXPECT_FALSE(list.set({}, true).ok());
    EXPECT_FALSE(list.remove({}).ok());
}

TEST(BinaryEdit, EditsANestedDictionary)
{
    PropertyList list = opened(everything());
    ASSERT_TRUE(list.set({u"dict"_s, u"k"_s}, u"v"_s).ok());
    auto after = BinaryDump(list.bytes()).root();
    EXPECT_EQ(after.take(u"dict"_s), "d(516b,5176,)");
    auto before = BinaryDump(everything()).root();
    before.remove(u"dict"_s);
    EXPECT_EQ(after, before);
    ASSERT_TRUE(list.remove({u"dict"_s, u"k"_s}).ok());
    EXPECT_EQ(BinaryDump(list.bytes()).root(), BinaryDump(everything()).root());
}

TEST(BinaryEdit, KeepsSharedObjectsShared)
{
    PropertyList list = opened(everything());
    ASSERT_TRUE(list.set({u"new"_s}, true).ok());
    const BinaryDump dump(list.bytes());
    EXPECT_EQ(dump.objectOf(u"a"_s), dump.objectOf(u"b"_s));
    EXPECT_EQ(dump.objectCount(), BinaryDump(everything()).objectCount() + 2);
}

TEST(BinaryEdit, ChangesASharedDictionaryOnlyWhereItWasAskedTo)
{
    BinaryBuilder b;
    const auto inner = b.dictionaryOf({{"x", b.integer(1, 1)}});
    const auto outer = b.dictionaryOf({{"in", inner}});
    const auto root = b.dictionaryOf({{"left", outer}, {"right", outer}, {"third", inner}});
    const auto before = BinaryDump(b.build(root)).root();

    PropertyList list = opened(b.build(root));
    ASSERT_TRUE(list.set({u"left"_s, u"in"_s, u"x"_s}, qint64 {2}).ok());
    EXPECT_EQ(list.value({u"left"_s, u"in"_s, u"x"_s}).integer, 2);
    auto after = BinaryDump(list.bytes()).root();
    EXPECT_EQ(after.value(u"right"_s), before.value(u"right"_s));
    EXPECT_EQ(after.value(u"third"_s), before.value(u"third"_s));

    ASSERT_TRUE(list.remove({u"right"_s, u"in"_s}).ok());
    after = BinaryDump(list.bytes()).root();
    EXPECT_EQ(after.value(u"right"_s), "d()");
    EXPECT_EQ(after.value(u"third"_s), before.value(u"third"_s));
    EXPECT_EQ(list.value({u"left"_s, u"in"_s, u"x"_s}).integer, 2);
}

TEST(BinaryEdit, ReplacesAValueThatStandsAloneWhereItLies)
{
    const auto fileWith = [](const auto &makeValue) {
        BinaryBuilder b;
        const auto before = b.ascii("before");
        const auto value = makeValue(b);
        return b.build(b.dictionaryOf({{"a", before}, {"b", value}, {"c", b.ascii("behind")}}));
    };
    PropertyList list = opened(fileWith([](BinaryBuilder &b) { return b.integer(1, 200); }));
    ASSERT_TRUE(list.set({u"b"_s}, u"a longer one"_s).ok());
    EXPECT_EQ(list.bytes(), fileWith([](BinaryBuilder &b) { return b.ascii("a longer one"); }));
    ASSERT_TRUE(list.set({u"b"_s}, true).ok());
    EXPECT_EQ(list.bytes(), fileWith([](BinaryBuilder &b) { return b.boolean(true); }));
}

TEST(BinaryEdit, ChangesASharedValueOnlyWhereItWasAskedTo)
{
    BinaryBuilder b;
    const auto shared = b.integer(1, 7);
    PropertyList list = opened(b.build(b.dictionaryOf({{"a", shared}, {"b", shared}})));
    ASSERT_TRUE(list.set({u"a"_s}, qint64 {8}).ok());
    EXPECT_EQ(list.value({u"a"_s}).integer, 8);
    EXPECT_EQ(list.value({u"b"_s}).integer, 7);
}

TEST(BinaryEdit, KeepsAnObjectThatLiesInsideTheReplacedOne)
{
    BinaryBuilder b;
    const auto outer = b.data(QByteArray::fromHex("1005"));
    const auto number = b.integer(1, 7);
    QByteArray file = b.build(b.dictionaryOf({{"a", outer}, {"b", number}}));
    const int table = file.back();
    const char bodyOfOuter = 9;
    file[table + static_cast<int>(number)] = bodyOfOuter;
    PropertyList list = opened(file);
    ASSERT_EQ(list.value({u"b"_s}).integer, 5);
    ASSERT_TRUE(list.set({u"a"_s}, true).ok());
    EXPECT_TRUE(list.value({u"a"_s}).boolean);
    EXPECT_EQ(list.value({u"b"_s}).integer, 5);
}

TEST(BinaryEdit, DropsWhatNothingRefersToAnyLonger)
{
    PropertyList list = opened(everything());
    const auto count = BinaryDump(list.bytes()).objectCount();
    ASSERT_TRUE(list.remove({u"a"_s}).ok());
    EXPECT_EQ(BinaryDump(list.bytes()).objectCount(), count - 1); // only the key
    ASSERT_TRUE(list.remove({u"b"_s}).ok());
    EXPECT_EQ(BinaryDump(list.bytes()).objectCount(), count - 5); // key, array, two elements
}

TEST(BinaryEdit, WidensReferencesPastTwoHundredFiftySixObjects)
{
    const QByteArray file = manyObjects(254);
    ASSERT_EQ(BinaryDump(file).referenceWidth(), 1U);
    PropertyList list = opened(file);
    ASSERT_TRUE(list.set({u"new"_s}, QStringList {u"a"_s, u"b"_s}).ok());
    const BinaryDump after(list.bytes());
    EXPECT_EQ(after.referenceWidth(), 2U);
    auto entries = after.root();
    entries.remove(u"new"_s);
    EXPECT_EQ(entries, BinaryDump(file).root());
}

TEST(BinaryEdit, WidensReferencesPastSixtyFiveThousandObjects)
{
    const QByteArray file = manyObjects(65534);
    ASSERT_EQ(BinaryDump(file).referenceWidth(), 2U);
    PropertyList list = opened(file);
    ASSERT_TRUE(list.set({u"new"_s}, u"value"_s).ok());
    const BinaryDump after(list.bytes());
    EXPECT_EQ(after.referenceWidth(), 4U);
    auto entries = after.root();
    entries.remove(u"new"_s);
    EXPECT_EQ(entries, BinaryDump(file).root());
}

TEST(BinaryEdit, WidensOffsetsWhenTheFileGrows)
{
    BinaryBuilder b;
    PropertyList list = opened(b.build(b.dictionaryOf({{"k", b.ascii("v")}})));
    ASSERT_EQ(BinaryDump(list.bytes()).offsetWidth(), 1U);
    ASSERT_TRUE(list.set({u"long"_s}, QString(300, u'x')).ok());
    EXPECT_EQ(BinaryDump(list.bytes()).offsetWidth(), 2U);
    ASSERT_TRUE(list.set({u"longer"_s}, QString(70000, u'x')).ok());
    EXPECT_EQ(BinaryDump(list.bytes()).offsetWidth(), 4U);
    EXPECT_EQ(list.value({u"long"_s}).string.size(), 300);
}

TEST(BinaryEdit, EditsFilesWithWiderReferencesThanNeeded)
{
    BinaryBuilder b;
    const auto root = b.dictionaryOf({{"k", b.ascii("v")}, {"l", b.integer(1, 4)}});
    for (unsigned width = 1; width <= 8; ++width) {
        PropertyList list = opened(b.build(root, width, 9 - width));
        ASSERT_TRUE(list.set({u"k"_s}, true).ok());
        EXPECT_EQ(list.value({u"l"_s}).integer, 4);
    }
}

TEST(BinaryEdit, EditsEveryEntryOfAKeyThatStandsTwice)
{
    BinaryBuilder b;
    const auto root =
        b.dictionaryOf({{"k", b.integer(1, 1)}, {"m", b.integer(1, 5)}, {"k", b.integer(1, 2)}});
    PropertyList list = opened(b.build(root));
    ASSERT_TRUE(list.set({u"k"_s}, qint64 {2}).ok());
    const BinaryDump both(list.bytes());
    EXPECT_EQ(both.objectOf(u"k"_s), 3U + 3U - 1U); // the first entry is the new value as well
    EXPECT_EQ(both.root().value(u"k"_s), "1002");
    ASSERT_TRUE(list.remove({u"k"_s}).ok());
    EXPECT_EQ(BinaryDump(list.bytes()).root().keys(), QStringList(u"m"_s));
}

TEST(BinaryEdit, KeepsAFileOfSharedReferencesSmall)
{
    BinaryBuilder b;
    auto bomb = b.ascii("boom");
    for (int level = 0; level < 40; ++level)
        bomb = b.array(QList<BinaryBuilder::Index>(10, bomb));
    PropertyList list = opened(b.build(b.dictionaryOf({{"bomb", bomb}})));
    const auto size = list.bytes().size();
    ASSERT_TRUE(list.set({u"k"_s}, true).ok());
    EXPECT_LT(list.bytes().size(), size + 20);
    EXPECT_EQ(list.value({u"bomb"_s}).kind, Kind::Array);
}

TEST(BinaryEdit, CopiesAMillionLevelsOfNesting)
{
    BinaryBuilder b;
    auto nested = b.array({});
    for (int level = 0; level < 1000000; ++level)
        nested = b.array({nested});
    const auto root = b.dictionaryOf({{"deep", nested}});
    PropertyList list = opened(b.build(root));
    ASSERT_TRUE(list.set({u"k"_s}, true).ok());
    EXPECT_TRUE(opened(list.bytes()).value({u"k"_s}).boolean);
    EXPECT_EQ(BinaryDump(list.bytes()).objectCount(), 1000001U + 2 + 2);
}

TEST(BinaryEdit, AnEditAndItsInverseGiveTheSameObjects)
{
    const auto before = BinaryDump(everything()).root();
    PropertyList list = opened(everything());
    ASSERT_TRUE(list.set({u"old"_s}, u"other"_s).ok());
    ASSERT_TRUE(list.set({u"fresh"_s}, true).ok());
    ASSERT_TRUE(list.set({u"old"_s}, qint64 {1}).ok());
    ASSERT_TRUE(list.remove({u"fresh"_s}).ok());
    EXPECT_EQ(BinaryDump(list.bytes()).root(), before);
}
