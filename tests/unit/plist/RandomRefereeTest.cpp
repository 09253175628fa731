// Random documents, each in both formats at once, and random edits of both: what two readers that
// are not ours see of them.
#include "BinaryBuilder.h"
#include "Chance.h"
#include "Opened.h"
#include "Referees.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

constexpr unsigned documents = 60;
constexpr int editsOfEach = 4;

QByteArray xmlText(const QString &text)
{
    return text.toHtmlEscaped().replace(u"\r"_s, u"&#13;"_s).toUtf8();
}

/// The same value as an object and as markup, put together without the program's own writers.
struct Twin {
    BinaryBuilder::Index object = 0;
    QByteArray markup;
};

Twin ofValue(BinaryBuilder &b, const NewValue &value)
{
    if (const auto *boolean = std::get_if<bool>(&value))
        return {b.boolean(*boolean), *boolean ? "<true/>" : "<false/>"};
    if (const auto *integer = std::get_if<qint64>(&value))
        return {b.integer(8, static_cast<quint64>(*integer)),
                "<integer>" + QByteArray::number(*integer) + "</integer>"};
    if (const auto *string = std::get_if<QString>(&value))
        // libplist takes no UTF-16 text without a character.
        return {string->isEmpty() ? b.ascii({}) : b.utf16(*string),
                "<string>" + xmlText(*string) + "</string>"};
    QList<BinaryBuilder::Index> elements;
    QByteArray markup = "<array>";
    for (const QString &text : std::get<QStringList>(value)) {
        const Twin element = ofValue(b, text);
        elements.append(element.object);
        markup += element.markup;
    }
    return {b.array(elements), markup + "</array>"};
}

Twin randomTwin(BinaryBuilder &b, Chance &chance, int depth)
{
    switch (chance.below(depth > 3 ? 6 : 9)) {
    case 0: {
        const double real = static_cast<double>(chance.below(100000)) / 7;
        return {b.real(real), "<real>" + QByteArray::number(real, 'g', 17) + "</real>"};
    }
    case 1: {
        const QByteArray data = QByteArray::number(chance.wide()).left(chance.below(20));
        return {b.data(data), "<data>\n\t" + data.toBase64() + "\n\t</data>"};
    }
    case 2: // a second of a minute of 2001
    {
        const unsigned second = chance.below(60);
        return {b.date(second),
                "<date>2001-01-01T00:00:" + QByteArray::number(second).rightJustified(2, '0')
                    + "Z</date>"};
    }
    case 6:
    case 7: {
        QList<BinaryBuilder::Index> elements;
        QByteArray markup = "<array>";
        for (unsigned i = chance.below(4); i > 0; --i) {
            const Twin element = randomTwin(b, chance, depth + 1);
            elements.append(element.object);
            markup += "\n<!-- one -->" + element.markup;
        }
        return {b.array(elements), markup + "</array>"};
    }
    case 8: {
        const Twin one = randomTwin(b, chance, depth + 1);
        const Twin two = randomTwin(b, chance, depth + 1);
        return {b.dictionaryOf({{"one", one.object}, {"two", two.object}}),
                "<dict><key>one</key>" + one.markup + " <key>two</key>\t" + two.markup + "</dict>"};
    }
    default:
        return ofValue(b, chance.newValue());
    }
}

struct Document {
    QByteArray binary;
    QByteArray xml;
};

Document randomDocument(Chance &chance)
{
    BinaryBuilder b;
    QList<std::pair<QByteArray, BinaryBuilder::Index>> entries;
    QByteArray text;
    for (unsigned i = 0; i <= chance.below(8); ++i) {
        const QByteArray key = "k" + QByteArray::number(i);
        const Twin twin = randomTwin(b, chance, 0);
        entries.append({key, twin.object});
        text += "\t<key>" + key + "</key>\n\t" + twin.markup + "\n";
    }
    return {b.build(b.dictionaryOf(entries)), xmlWith(text)};
}

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
