// Random documents out of which a key is taken, or changed, and put back: what the bytes, a reader
// of the tests' own and two readers that are not ours say of that.
#include "BinaryDump.h"
#include "Opened.h"
#include "Referees.h"
#include "Twins.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

constexpr unsigned documents = 2000;

/// XML as programs and careful people write it: one key and one value a line, or all on one line.
class OrdinaryXml {
public:
    explicit OrdinaryXml(Chance &chance) : chance(chance)
    {
        static const char *const units[] = {"\t", "  ", "    ", "", " \t"};
        static const char *const ends[] = {"\n", "\r\n", "\n", ""};
        unit = units[chance.below(5)];
        end = ends[chance.below(4)];
        joinsValues = chance.below(3) == 0;
    }

    QByteArray file()
    {
        static const char *const heads[] = {
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n", "",
            "<?xml version='1.0'?>\n<!-- mine -->\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST "
            "1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"};
        return heads[chance.below(3)] + ("<plist version=\"1.0\">" + end) + dictionary(0) + end
            + "</plist>" + end;
    }

    QByteArray dictionary(int depth)
    {
        const unsigned count = (depth == 0 ? 1 : 0) + chance.below(6);
        if (count == 0)
            return chance.below(2) ? "<dict/>" : "<dict></dict>";
        QByteArray text = "<dict>";
        for (unsigned i = 0; i < count; ++i) {
            if (chance.below(6) == 0)
                text += line(depth + 1) + "<!-- of k" + QByteArray::number(i) + " -->";
            text += line(depth + 1) + "<key>k" + QByteArray::number(i) + "</key>"
                + (joinsValues ? QByteArray() : line(depth + 1)) + value(depth + 1);
        }
        return text + line(depth) + "</dict>";
    }

private:
    [[nodiscard]] QByteArray line(int depth) const
    {
        return end.isEmpty() ? end : end + unit.repeated(depth);
    }

    QByteArray value(int depth)
    {
        BinaryBuilder unused;
        const unsigned kind = chance.below(depth > 3 ? 4 : 7);
        if (kind < 4)
            return randomTwin(unused, chance, 9).markup;
        if (kind < 6)
            return dictionary(depth);
        QByteArray text = "<array>";
        for (unsigned i = chance.below(4); i > 0; --i)
            text += line(depth + 1) + value(depth + 1);
        return text + line(depth) + "</array>";
    }

    Chance &chance;
    QByteArray unit;
    QByteArray end;
    bool joinsValues = false;
};

/// One of the keys of the root or of a dictionary in it.
QStringList randomPath(const PropertyList &list, Chance &chance)
{
    QStringList path;
    do {
        const QStringList keys = *list.keys(path);
        if (keys.isEmpty())
            break;
        path.append(keys[static_cast<qsizetype>(chance.below(static_cast<unsigned>(keys.size())))]);
    } while (list.keys(path) && chance.below(3) != 0);
    return path;
}

/// Takes the object out of a list, or another value in its place, perhaps with edits of others
/// around that; and puts back what is kept of it.
void takeAndPutBack(PropertyList &list, const QStringList &path, const Object &object,
                    const std::optional<Place> &place, Chance &chance)
{
    const bool others = chance.below(2) == 0;
    ASSERT_TRUE(chance.below(2) ? list.remove(path).ok() : list.set(path, chance.newValue()).ok());
    if (others) {
        ASSERT_TRUE(list.set({u"of another"_s}, chance.newValue()).ok());
    }
    const auto kept = Object::fromBytes(object.toBytes());
    ASSERT_TRUE(kept.ok());
    ASSERT_TRUE(list.put(path, kept.value(), place).ok());
    if (others) {
        ASSERT_TRUE(list.remove({u"of another"_s}).ok());
    }
}

QByteArray inUtf16(const QByteArray &file)
{
    QByteArray bytes("\xfe\xff", 2);
    for (const QChar c : QString::fromUtf8(QByteArray(file).replace("UTF-8", "UTF-16"))) {
        bytes += static_cast<char>(c.unicode() >> 8);
        bytes += static_cast<char>(c.unicode() & 0xff);
    }
    return bytes;
}

/// Two documents that say the same: one as it was, one that was edited and mended.
struct Mended {
    QByteArray whole;
    QByteArray mended;
};

/// Of each random document both formats, mended by objects of the other.
std::vector<Mended> mendedAcrossFormats()
{
    std::vector<Mended> all;
    for (unsigned seed = 0; seed < documents; ++seed) {
        Chance chance(seed);
        const Document document = randomDocument(chance);
        const PropertyList binary = opened(document.binary);
        const PropertyList xml = opened(document.xml);
        const QStringList path = randomPath(binary, chance);
        for (const auto &[list, source] : {std::pair(&binary, &xml), std::pair(&xml, &binary)}) {
            PropertyList mended = list->copy();
            const Object object = *source->object(path);
            EXPECT_TRUE(object.saysTheSameAs(*list->object(path))) << seed;
            takeAndPutBack(mended, path, object, source->place(path), chance);
            EXPECT_TRUE(mended.object({})->saysTheSameAs(*list->object({}))) << seed;
            all.push_back({list->bytes(), mended.bytes()});
        }
    }
    return all;
}

} // namespace

TEST(RandomObjects, PutBackIntoXmlFilesGiveTheSameBytes)
{
    for (unsigned seed = 0; seed < documents; ++seed) {
        Chance chance(seed);
        QByteArray file = OrdinaryXml(chance).file();
        if (chance.below(5) == 0)
            file = inUtf16(file);
        PropertyList list = opened(file);
        for (int step = 0; step < 3; ++step) {
            const QStringList path = randomPath(list, chance);
            const Object object = *list.object(path);
            const auto place = list.place(path);
            takeAndPutBack(list, path, object, place, chance);
            ASSERT_EQ(list.bytes(), file) << seed << ' ' << path.join(u'/').toStdString();
        }
    }
}

TEST(RandomObjects, PutBackIntoBinaryFilesGiveTheSameObjects)
{
    for (unsigned seed = 0; seed < documents; ++seed) {
        Chance chance(seed);
        BinaryBuilder b;
        QList<std::pair<QByteArray, BinaryBuilder::Index>> entries;
        b.boolean(true);
        for (unsigned i = 1 + chance.below(25); i > 0; --i)
            entries.append({"k" + QByteArray::number(i), randomObject(b, chance)});
        const QByteArray file = b.build(b.dictionaryOf(entries));
        const auto expected = BinaryDump(file).root();
        PropertyList list = opened(file);
        const QStringList keys = *list.keys({});
        for (int step = 0; step < 3; ++step) {
            const QStringList path = randomPath(list, chance);
            const Object object = *list.object(path);
            const auto place = list.place(path);
            takeAndPutBack(list, path, object, place, chance);
            ASSERT_EQ(BinaryDump(list.bytes()).root(), expected) << seed;
            ASSERT_EQ(*list.keys({}), keys) << seed;
            ASSERT_EQ(*list.object(path), object) << seed;
        }
    }
}

TEST(RandomObjects, ElementsTakenOutAndPutBackGiveTheSameList)
{
    for (unsigned seed = 0; seed < documents; ++seed) {
        Chance chance(seed);
        const Document document = randomDocument(chance);
        for (const QByteArray &file : {document.xml, document.binary}) {
            PropertyList list = opened(file);
            const Object before = *list.object({});
            const QStringList keys = *list.keys({});
            for (const QString &key : keys) {
                const qsizetype count = list.count({key});
                if (count == 0)
                    continue;
                const qsizetype index = chance.below(static_cast<unsigned>(count));
                const Object element = *list.object({key}, index);
                const auto place = list.place({key}, index);
                ASSERT_EQ(list.elements({key})[static_cast<std::size_t>(index)], element);
                ASSERT_TRUE(list.removeElement({key}, index).ok());
                ASSERT_EQ(list.count({key}), count - 1);
                ASSERT_TRUE(list.insertElement({key}, index, element, place).ok());
                ASSERT_EQ(*list.object({key}, index), element) << seed;
            }
            ASSERT_TRUE(list.object({})->saysTheSameAs(before)) << seed;
            if (list.format() == Format::Xml) {
                ASSERT_EQ(list.bytes(), file) << seed;
            }
        }
    }
}

TEST(RandomObjects, PutAcrossFormatsAreWhatPythonReadsInBoth)
{
    QList<QByteArray> files;
    for (const Mended &one : mendedAcrossFormats())
        files += {one.whole, one.mended};
    const auto read = readByPython(files);
    if (!read)
        GTEST_SKIP() << "python3 is not there";
    ASSERT_EQ(read->size(), files.size());
    for (qsizetype i = 0; i < read->size(); i += 2) {
        EXPECT_FALSE(read->at(i).contains("error")) << read->at(i)["error"].constData();
        EXPECT_EQ(read->at(i), read->at(i + 1)) << files[i + 1].constData();
    }
}

TEST(RandomObjects, PutAcrossFormatsAreWhatLibplistReadsInBoth)
{
    for (const Mended &one : mendedAcrossFormats()) {
        const auto whole = readByLibplist(one.whole);
        ASSERT_TRUE(whole);
        EXPECT_EQ(readByLibplist(one.mended), whole) << one.mended.constData();
    }
}
