// Random documents, each in both formats at once, and random edits of both: what two readers that
// are not ours see of them.
#include "Opened.h"
#include "Referees.h"
#include "Twins.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

constexpr unsigned documents = 60;
constexpr int editsOfEach = 4;

QByteArray documentOf(const QByteArray &key, const NewValue &value)
{
    BinaryBuilder b;
    return b.build(b.dictionaryOf({{key, ofValue(b, value).object}}));
}

/// A file as it was, as an edit left it, and the new value alone: none where the key was removed.
struct Case {
    QByteArray key;
    QByteArray before;
    QByteArray after;
    QByteArray alone;
};

QList<Case> randomCases()
{
    QList<Case> cases;
    for (unsigned seed = 0; seed < documents; ++seed) {
        Chance chance(seed);
        const Document document = randomDocument(chance);
        PropertyList binary = opened(document.binary);
        PropertyList xml = opened(document.xml);
        for (int step = 0; step < editsOfEach; ++step) {
            const QString key = u"k%1"_s.arg(chance.below(10));
            const bool removes = chance.below(3) == 0;
            const NewValue value = chance.newValue();
            for (PropertyList *list : {&binary, &xml}) {
                const QByteArray before = list->bytes();
                EXPECT_TRUE(removes ? list->remove({key}).ok() : list->set({key}, value).ok());
                const QByteArray alone = removes ? "" : documentOf(key.toUtf8(), value);
                cases.append({key.toUtf8(), before, list->bytes(), alone});
            }
        }
    }
    return cases;
}

using Entries = QMap<QByteArray, QByteArray>;

void expectOneChange(const Case &one, Entries before, Entries after, const Entries &alone)
{
    EXPECT_EQ(after.contains(one.key), !one.alone.isEmpty());
    EXPECT_EQ(after.value(one.key), alone.value(one.key));
    before.remove(one.key);
    after.remove(one.key);
    EXPECT_EQ(after, before) << one.after.toBase64().constData();
}

} // namespace

TEST(RandomReferees, PythonSeesOneKeyChangedAndNothingElse)
{
    QList<QByteArray> files;
    const QList<Case> cases = randomCases();
    for (const Case &one : cases)
        files += {one.before, one.after, one.alone};
    const auto read = readByPython(files);
    if (!read)
        GTEST_SKIP() << "python3 is not there";
    ASSERT_EQ(read->size(), files.size());
    for (qsizetype i = 0; i < cases.size(); ++i) {
        const Entries alone = cases[i].alone.isEmpty() ? Entries() : read->at(3 * i + 2);
        EXPECT_FALSE(read->at(3 * i).contains("error")) << read->at(3 * i)["error"].constData();
        expectOneChange(cases[i], read->at(3 * i), read->at(3 * i + 1), alone);
    }
}

TEST(RandomReferees, PythonSeesTheSameInBothFormats)
{
    QList<QByteArray> files;
    const QList<Case> cases = randomCases();
    for (const Case &one : cases)
        files.append(one.after);
    const auto read = readByPython(files);
    if (!read)
        GTEST_SKIP() << "python3 is not there";
    for (qsizetype i = 0; i < read->size(); i += 2)
        EXPECT_EQ(read->at(i), read->at(i + 1)) << files[i + 1].constData();
}

TEST(RandomReferees, LibplistSeesOneKeyChangedAndNothingElse)
{
    for (const Case &one : randomCases()) {
        const auto before = readByLibplist(one.before);
        const auto after = readByLibplist(one.after);
        ASSERT_TRUE(before && after);
        const auto alone =
            one.alone.isEmpty() ? std::optional(Entries()) : readByLibplist(one.alone);
        ASSERT_TRUE(alone);
        expectOneChange(one, *before, *after, *alone);
    }
}

TEST(RandomReferees, AnEditAndItsInverseGiveBackTheSameDocument)
{
    for (unsigned seed = 0; seed < documents; ++seed) {
        Chance chance(seed);
        const Document document = randomDocument(chance);
        const NewValue old = chance.newValue();
        const NewValue value = chance.newValue();
        for (const QByteArray &file : {document.binary, document.xml}) {
            PropertyList list = opened(file);
            ASSERT_TRUE(list.set({u"k0"_s}, old).ok());
            const auto before = readByLibplist(list.bytes());
            const QByteArray bytes = list.bytes();
            ASSERT_TRUE(list.set({u"k0"_s}, value).ok());
            EXPECT_TRUE(holds(list, u"k0"_s, value));
            ASSERT_TRUE(list.set({u"k0"_s}, old).ok());
            EXPECT_EQ(readByLibplist(list.bytes()), before);
            // What said the same before may have said it in other words than ours.
            if (list.format() == Format::Xml && bytes != file) {
                EXPECT_EQ(list.bytes(), bytes);
            }
            ASSERT_TRUE(list.set({u"new"_s}, value).ok());
            ASSERT_TRUE(list.remove({u"new"_s}).ok());
            EXPECT_EQ(readByLibplist(list.bytes()), before);
        }
    }
}
