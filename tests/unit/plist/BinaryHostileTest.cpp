#include "BinaryBuilder.h"
#include "Opened.h"

#include <random>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

QByteArray small()
{
    BinaryBuilder b;
    const auto list = b.array({b.ascii("x"), b.real(1.5), b.integer(2, 300)});
    const auto root = b.dictionaryOf({{"list", list},
                                      {"dict", b.dictionaryOf({{"k", b.boolean(true)}})},
                                      {"text", b.utf16(QStringLiteral("é"))}});
    return b.build(root);
}

/// Whatever the bytes are, opening, looking up and editing end, and an edit that works reads back.
void tryAll(const QByteArray &bytes)
{
    auto opened = PropertyList::open(bytes);
    if (!opened)
        return;
    PropertyList list = std::move(opened).value();
    for (const QString &key : {u"list"_s, u"dict"_s, u"text"_s}) {
        if (list.value({key}).kind != Kind::Dictionary) {
            EXPECT_EQ(list.value({key, u"k"_s}).kind, Kind::Missing);
        }
    }
    if (list.set({u"text"_s}, u"new"_s)) {
        EXPECT_EQ(list.value({u"text"_s}).string, u"new"_s);
    } else {
        EXPECT_EQ(list.bytes(), bytes);
    }
}

/// A file whose one interesting object is these bytes.
bool refusesObject(const QByteArray &object)
{
    BinaryBuilder b;
    const auto odd = b.raw(object);
    return isUnloadable(b.build(b.dictionaryOf({{"k", odd}})));
}

} // namespace

TEST(BinaryHostile, EveryTruncationIsRefusedOrHandled)
{
    const QByteArray whole = small();
    for (qsizetype length = 0; length < whole.size(); ++length) {
        EXPECT_TRUE(isUnloadable(whole.first(length))) << length;
        tryAll(whole.first(length) + whole.last(32));
    }
}

TEST(BinaryHostile, EveryByteMayHoldAnything)
{
    const QByteArray whole = small();
    for (qsizetype at = 0; at < whole.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x0f, 0x10, 0x14, 0x5f, 0x7f, 0x80, 0xaf, 0xd1, 0xff}) {
            QByteArray changed = whole;
            changed[at] = static_cast<char>(value);
            tryAll(changed);
        }
    }
}

TEST(BinaryHostile, RandomDamageNeverBreaksTheProgram)
{
    std::mt19937 random(20110714);
    const QByteArray whole = small();
    for (int round = 0; round < 3000; ++round) {
        QByteArray changed = whole;
        for (int i = 0; i < 4; ++i)
            changed[static_cast<qsizetype>(random() % static_cast<unsigned>(whole.size()))] =
                static_cast<char>(random());
        tryAll(changed);
    }
}

TEST(BinaryHostile, RefusesCyclesHoweverLong)
{
    for (const int length : {1, 2, 100000}) {
        BinaryBuilder b;
        const auto first = b.container(0xa, {});
        auto last = first;
        for (int i = 1; i < length; ++i)
            last = b.array({last});
        b.setReferences(first, {last});
        EXPECT_TRUE(isUnloadable(b.build(b.dictionaryOf({{"cycle", last}})))) << length;
    }
}

TEST(BinaryHostile, RefusesACycleThroughTheRoot)
{
    BinaryBuilder b;
    const auto key = b.ascii("k");
    const auto root = b.container(0xd, {});
    b.setReferences(root, {key, root});
    EXPECT_TRUE(isUnloadable(b.build(root)));
}

TEST(BinaryHostile, AcceptsParentsBeforeAndAfterTheirChildren)
{
    BinaryBuilder before;
    const auto root = before.container(0xd, {});
    const auto key = before.ascii("k");
    const auto outer = before.container(0xa, {});
    const auto inner = before.array({});
    before.setReferences(outer, {inner, inner});
    before.setReferences(root, {key, outer});
    EXPECT_EQ(opened(before.build(root)).value({u"k"_s}).kind, Kind::Array);

    BinaryBuilder after;
    const auto child = after.array({});
    const auto parent = after.array({child, child});
    const auto top = after.dictionaryOf({{"k", parent}});
    EXPECT_EQ(opened(after.build(top)).value({u"k"_s}).kind, Kind::Array);
}

TEST(BinaryHostile, RefusesCountsThatTheFileDoesNotHold)
{
    const QByteArray most = QByteArray::fromHex("13ffffffffffffffff");
    for (const char type : {'\x4f', '\x5f', '\x6f', '\xaf', '\xcf', '\xdf'}) {
        EXPECT_TRUE(refusesObject(type + most));
        EXPECT_TRUE(refusesObject(type + QByteArray::fromHex("137fffffffffffffff")));
        EXPECT_TRUE(refusesObject(type + QByteArray::fromHex("1300000000ffffffff")));
        EXPECT_TRUE(
            refusesObject(type + QByteArray::fromHex("1400000000000000000000000000000000")));
        EXPECT_TRUE(refusesObject(type + QByteArray::fromHex("2300")));
    }
}

TEST(BinaryHostile, RefusesUnknownMarkers)
{
    for (const char *hex : {"01", "0f", "0c", "1500", "2000", "210000", "24", "320000000000000000",
                            "71ff", "9000", "e0", "f0"})
        EXPECT_TRUE(refusesObject(QByteArray::fromHex(hex))) << hex;
}

TEST(BinaryHostile, RefusesKeysThatAreNoStrings)
{
    BinaryBuilder b;
    EXPECT_TRUE(isUnloadable(b.build(b.dictionary({{b.integer(1, 1), b.ascii("v")}}))));
    BinaryBuilder forward;
    const auto root = forward.container(0xd, {1, 1});
    forward.integer(1, 1);
    EXPECT_TRUE(isUnloadable(forward.build(root)));
}

TEST(BinaryHostile, RefusesReferencesAndOffsetsOutOfRange)
{
    BinaryBuilder b;
    const auto key = b.ascii("k");
    EXPECT_TRUE(isUnloadable(b.build(b.container(0xd, {key, 77}))));

    const QByteArray whole = small();
    const auto at = [&](qsizetype fromEnd, quint64 value) {
        QByteArray changed = whole;
        changed.replace(whole.size() - fromEnd, 8, bigEndian(value, 8));
        return changed;
    };
    for (const quint64 value : {quint64 {0}, quint64 {1} << 63, ~quint64 {0}}) {
        EXPECT_TRUE(isUnloadable(at(24, value))); // object count
        EXPECT_TRUE(isUnloadable(at(8, value))); // offset table
    }
    EXPECT_TRUE(isUnloadable(at(16, ~quint64 {0}))); // root
}

TEST(BinaryHostile, RefusesARootThatIsNoDictionary)
{
    BinaryBuilder b;
    EXPECT_TRUE(isUnloadable(b.build(b.array({}))));
    EXPECT_TRUE(isUnloadable(b.build(b.ascii("x"))));
}

TEST(BinaryHostile, RefusesObjectsThatLieOverEachOther)
{
    // Each of many objects names the same long run of references.
    BinaryBuilder b;
    const auto list = b.array(QList<BinaryBuilder::Index>(20000, 0));
    const auto root = b.dictionaryOf({{"k", list}});
    for (int i = 0; i < 20000; ++i)
        b.boolean(true);
    QByteArray file = b.build(root, 4, 4);
    const auto table = static_cast<qsizetype>(file.last(4).toHex().toULongLong(nullptr, 16));
    const QByteArray shared = file.mid(table, 4);
    for (qsizetype i = 0; i < 20000; ++i)
        file.replace(file.size() - 32 - 4 * (i + 1), 4, shared);
    EXPECT_TRUE(isUnloadable(file));
}
