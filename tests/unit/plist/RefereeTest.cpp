#include "BinaryBuilder.h"
#include "Opened.h"
#include "Referees.h"

using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

/// What both referees read without loss.
QByteArray binaryFile()
{
    BinaryBuilder b;
    const auto shared = b.array({b.ascii("shared"), b.integer(1, 9)});
    return b.build(b.dictionaryOf({
        {"one", b.integer(1, 200)},
        {"two", b.integer(2, 40000)},
        {"four", b.integer(4, 4000000000)},
        {"eight", b.integer(8, 1ULL << 40)},
        {"minus", b.integer(8, static_cast<quint64>(-5))},
        {"unsigned", b.wideInteger(0, ~quint64 {0})},
        {"yes", b.boolean(true)},
        {"no", b.boolean(false)},
        {"real", b.real(0.1)},
        {"date", b.date(345678901.25)},
        {"data", b.data(QByteArray::fromHex("00ff10"))},
        {"uid", b.uid(1, 7)},
        {"emoji", b.utf16(QStringLiteral("\U0001f600"))},
        {"empty", b.ascii({})},
        {"array", b.array({})},
        {"dict", b.dictionaryOf({{"in", b.utf16(QStringLiteral("é"))}})},
        {"a", shared},
        {"b", shared},
        {"old", b.integer(1, 1)},
    }));
}

QByteArray xmlFile()
{
    return xmlWith("\t<key>int</key>\n\t<integer>-42</integer>\n"
                   "\t<key>big</key>\n\t<integer>9223372036854775807</integer>\n"
                   "\t<key>real</key>\n\t<real>0.25</real>\n"
                   "\t<key>yes</key>\n\t<true/>\n"
                   "\t<key>text</key>\n\t<string>a &lt;&amp; \xc3\xa9</string>\n"
                   "\t<key>date</key>\n\t<date>2011-07-20T12:00:00Z</date>\n"
                   "\t<key>data</key>\n\t<data>\n\tAAEC\n\t</data>\n"
                   "\t<key>array</key>\n\t<array>\n\t\t<string>x</string>\n\t</array>\n"
                   "\t<key>old</key>\n\t<dict>\n\t\t<key>k</key>\n\t\t<string/>\n\t</dict>\n");
}

struct Edit {
    NewValue value;
    QByteArray byLibplist;
    QByteArray byPython;
};

const Edit edits[] = {
    {true, "true", "bool True"},
    {qint64 {1}, "int 1", "int 1"},
    {qint64 {-300}, "int -300", "int -300"},
    {qint64 {5000000000}, "int 5000000000", "int 5000000000"},
    {qint64 {4294967295}, "int 4294967295", "int 4294967295"},
    {QStringLiteral("pl<a>in & \"q\""), "string pl<a>in & \"q\"", "str 'pl<a>in & \"q\"'"},
    {QStringLiteral("é€\U0001f600"), "string é€\U0001f600", "str 'é€\U0001f600'"},
    {QString(QLatin1String("")), "string ", "str ''"},
    {QStringList {QStringLiteral("a"), QStringLiteral("ü")}, "[string a,string ü,]",
     "[str 'a',str 'ü']"},
    {QStringList {}, "[]", "[]"},
};

const QString keys[] = {QStringLiteral("old"), QStringLiteral("new"), QStringLiteral("kéy")};

} // namespace

TEST(Referee, LibplistSeesOneKeyChangedAndNothingElse)
{
    for (const QByteArray &file : {binaryFile(), xmlFile()}) {
        auto before = readByLibplist(file);
        ASSERT_TRUE(before);
        for (const Edit &edit : edits) {
            for (const QString &key : keys) {
                PropertyList list = opened(file);
                ASSERT_TRUE(list.set({key}, edit.value).ok());
                auto after = readByLibplist(list.bytes());
                ASSERT_TRUE(after);
                EXPECT_EQ(after->take(key.toUtf8()), edit.byLibplist);
                auto others = *before;
                others.remove(key.toUtf8());
                EXPECT_EQ(*after, others);
            }
        }
    }
}

TEST(Referee, LibplistSeesAKeyRemovedAndNothingElse)
{
    for (const QByteArray &file : {binaryFile(), xmlFile()}) {
        const auto before = readByLibplist(file);
        ASSERT_TRUE(before);
        for (const QByteArray &key : before->keys()) {
            PropertyList list = opened(file);
            ASSERT_TRUE(list.remove({QString::fromUtf8(key)}).ok());
            auto others = *before;
            others.remove(key);
            EXPECT_EQ(readByLibplist(list.bytes()), others);
        }
    }
}

TEST(Referee, PythonSeesOneKeyChangedAndNothingElse)
{
    QList<QByteArray> files;
    QList<std::pair<QByteArray, QByteArray>> expected;
    for (const QByteArray &file : {binaryFile(), xmlFile()}) {
        files.append(file);
        expected.append(std::pair<QByteArray, QByteArray>());
        for (const Edit &edit : edits) {
            for (const QString &key : keys) {
                PropertyList list = opened(file);
                ASSERT_TRUE(list.set({key}, edit.value).ok());
                files.append(list.bytes());
                expected.append({key.toUtf8(), edit.byPython});
            }
        }
    }
    const auto read = readByPython(files);
    if (!read)
        GTEST_SKIP() << "python3 is not there";
    ASSERT_EQ(read->size(), files.size());
    QMap<QByteArray, QByteArray> before;
    for (qsizetype i = 0; i < files.size(); ++i) {
        auto entries = read->at(i);
        EXPECT_FALSE(entries.contains("error")) << entries.value("error").toStdString();
        const auto &[key, value] = expected.at(i);
        if (key.isEmpty()) {
            before = entries;
            continue;
        }
        EXPECT_EQ(entries.take(key), value);
        auto others = before;
        others.remove(key);
        EXPECT_EQ(entries, others);
    }
}

TEST(Referee, ANewFileIsReadByBoth)
{
    PropertyList list = PropertyList::empty();
    EXPECT_EQ(readByLibplist(list.bytes())->size(), 0);
    for (const Edit &edit : edits)
        ASSERT_TRUE(list.set({QString::fromUtf8(edit.byLibplist)}, edit.value).ok());
    const auto read = readByLibplist(list.bytes());
    ASSERT_TRUE(read);
    for (const Edit &edit : edits)
        EXPECT_EQ(read->value(edit.byLibplist), edit.byLibplist);
    const auto byPython = readByPython({list.bytes()});
    if (!byPython)
        GTEST_SKIP() << "python3 is not there";
    for (const Edit &edit : edits)
        EXPECT_EQ(byPython->first().value(edit.byLibplist), edit.byPython);
}

TEST(Referee, LibplistReadsTheSameValues)
{
    const PropertyList list = opened(binaryFile());
    const auto byLibplist = readByLibplist(binaryFile());
    ASSERT_TRUE(byLibplist);
    ASSERT_EQ(byLibplist->size(), 19);
    for (auto entry = byLibplist->begin(); entry != byLibplist->end(); ++entry) {
        const Value value = list.value({QString::fromUtf8(entry.key())});
        if (value.kind == Kind::Integer) {
            EXPECT_EQ(entry.value(), "int " + QByteArray::number(value.integer));
        } else if (value.kind == Kind::String) {
            EXPECT_EQ(entry.value(), "string " + value.string.toUtf8());
        } else if (value.kind == Kind::Real) {
            EXPECT_EQ(entry.value(), "real " + QByteArray::number(value.real, 'g', 17));
        } else if (value.kind == Kind::Boolean) {
            EXPECT_EQ(entry.value(), value.boolean ? "true" : "false");
        }
    }
}
