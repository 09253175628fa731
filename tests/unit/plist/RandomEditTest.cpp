#include "BinaryDump.h"
#include "Opened.h"
#include "Twins.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

/// A random entry of an XML dictionary, in the one style that edits write or in others.
struct XmlEntry {
    QByteArray key; ///< with the white space and comments before it
    QByteArray between;
    QByteArray value;
    [[nodiscard]] QByteArray text() const { return key + between + value; }
};

QByteArray randomXmlValue(Chance &chance, int depth)
{
    switch (chance.below(depth > 3 ? 8 : 10)) {
    case 0:
        return "<integer>" + QByteArray::number(static_cast<qint64>(chance.wide())) + "</integer>";
    case 1:
        return "<integer>0x" + QByteArray::number(chance.below(5000), 16) + "</integer>";
    case 2:
        return "<real>" + QByteArray::number(chance.below(1000) / 7.0) + "</real>";
    case 3:
        return chance.below(2) ? "<true/>" : "<false></false>";
    case 4:
        return "<data>\n\tAAEC\n</data>";
    case 5:
        return "<date>2011-07-20T12:00:00.5Z</date>";
    case 6:
        return "<string>" + chance.text().toHtmlEscaped().toUtf8() + "<![CDATA[<&]]></string>";
    case 7:
        return "<string/>";
    case 8:
        return "<array><!-- <key> -->" + randomXmlValue(chance, depth + 1) + "\r\n"
            + randomXmlValue(chance, depth + 1) + "</array>";
    default:
        return "<dict >\n<key>k1</key>" + randomXmlValue(chance, depth + 1) + "<key/>"
            + randomXmlValue(chance, depth + 1) + "</dict>";
    }
}

XmlEntry randomXmlEntry(Chance &chance, unsigned number)
{
    static const char *const before[] = {"\n", "\n\t", " ", "", "\n<!-- a <key> -->", "\r\n  "};
    static const char *const between[] = {"", "\n\t", " <!-- <true/> --> ", "<?pi ?>"};
    return {before[chance.below(6)] + ("<key>k" + QByteArray::number(number) + "</key>"),
            between[chance.below(4)], randomXmlValue(chance, 0)};
}

QByteArray joined(const QList<XmlEntry> &entries)
{
    QByteArray text;
    for (const XmlEntry &entry : entries)
        text += entry.text();
    return xmlWith(text);
}

} // namespace

TEST(RandomEdits, InBinaryFilesLeaveEveryOtherObjectAsItWas)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        Chance chance(seed);
        BinaryBuilder b;
        QList<std::pair<QByteArray, BinaryBuilder::Index>> entries;
        b.boolean(true);
        for (unsigned i = 1 + chance.below(25); i > 0; --i)
            entries.append({"k" + QByteArray::number(i), randomObject(b, chance)});
        const QByteArray file = b.build(b.dictionaryOf(entries));
        auto expected = BinaryDump(file).root();
        PropertyList list = opened(file);
        for (int step = 0; step < 6; ++step) {
            const QString key = u"k%1"_s.arg(chance.below(30));
            if (chance.below(3) == 0) {
                ASSERT_TRUE(list.remove({key}).ok()) << seed;
                EXPECT_EQ(list.value({key}).kind, Kind::Missing);
                expected.remove(key);
            } else {
                const NewValue value = chance.newValue();
                ASSERT_TRUE(list.set({key}, value).ok()) << seed;
                EXPECT_TRUE(holds(list, key, value)) << seed;
                expected[key] = BinaryDump(list.bytes()).root().value(key);
            }
            ASSERT_EQ(BinaryDump(list.bytes()).root(), expected) << seed;
        }
    }
}

TEST(RandomEdits, InXmlFilesLeaveEveryOtherByteAsItWas)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        Chance chance(seed);
        QList<XmlEntry> entries;
        for (unsigned i = 0; i <= chance.below(12); ++i)
            entries.append(randomXmlEntry(chance, i));
        PropertyList list = opened(joined(entries));
        for (int step = 0; step < 6; ++step) {
            const auto at =
                static_cast<qsizetype>(chance.below(static_cast<unsigned>(entries.size())));
            XmlEntry &entry = entries[at];
            const QByteArray text = entry.key;
            const QByteArray inKey = text.mid(text.lastIndexOf("<key>") + 5).chopped(6);
            const QString key = QString::fromUtf8(inKey);
            const NewValue value = chance.newValue();
            const QByteArray before = list.bytes();
            ASSERT_TRUE(list.set({key}, value).ok()) << seed;
            EXPECT_TRUE(holds(list, key, value)) << seed;
            // What changed lies where the value stood.
            const QByteArray after = list.bytes();
            if (after == before)
                continue;
            const QByteArray head = xmlWith({}).left(xmlWith({}).indexOf("</dict>"));
            QByteArray start = head;
            for (qsizetype i = 0; i < at; ++i)
                start += entries[i].text();
            start += entry.key + entry.between;
            const QByteArray end = before.mid(start.size() + entry.value.size());
            ASSERT_TRUE(after.startsWith(start) && after.endsWith(end)) << seed;
            entry.value = after.mid(start.size(), after.size() - start.size() - end.size());
            ASSERT_EQ(after, joined(entries)) << seed;
        }
    }
}

TEST(RandomEdits, AddedAndRemovedInXmlFilesGiveBackTheSameBytes)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        Chance chance(seed);
        QList<XmlEntry> entries;
        for (unsigned i = 0; i <= chance.below(12); ++i)
            entries.append(randomXmlEntry(chance, i));
        const QByteArray before = joined(entries);
        PropertyList list = opened(before);
        const NewValue value = chance.newValue();
        ASSERT_TRUE(list.set({u"new"_s}, value).ok()) << seed;
        EXPECT_TRUE(holds(list, u"new"_s, value));
        ASSERT_TRUE(list.remove({u"new"_s}).ok()) << seed;
        ASSERT_EQ(list.bytes(), before) << seed;
    }
}
