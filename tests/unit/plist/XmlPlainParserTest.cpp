#include "plist/XmlPlainParser.h"

#include <gtest/gtest.h>

#include <random>

using namespace varnel::plist;

namespace {

/// Writes down all that it is told; pieces of one text are joined.
class Recorder : public XmlListener {
public:
    bool startElement(XmlElement element, std::uint32_t start, std::uint32_t end) override
    {
        ++depth;
        note("start " + nameOf(element).toByteArray(), start, end);
        return true;
    }
    bool endElement(std::uint32_t start, std::uint32_t end) override
    {
        --depth;
        note("end", start, end);
        return true;
    }
    bool text(QByteArrayView piece) override
    {
        pending += piece;
        return true;
    }
    [[nodiscard]] bool wantsText() const override { return depth > 0; }
    void encodingDeclared(QByteArrayView) override { }

    QByteArray events;

private:
    void note(const QByteArray &what, std::uint32_t start, std::uint32_t end)
    {
        if (!pending.isEmpty())
            events += "text " + pending.toHex() + '\n';
        pending.clear();
        events += what + ' ' + QByteArray::number(start) + ' ' + QByteArray::number(end) + '\n';
    }

    QByteArray pending;
    int depth = 0;
};

/// True when the plain parser took the text. The full parser must then have told the same.
bool takesPlain(const QByteArray &text)
{
    Recorder plain;
    if (!parsePlainXml(text, plain))
        return false;
    Recorder full;
    EXPECT_TRUE(parseXml(text, full)) << text.toStdString();
    EXPECT_EQ(plain.events, full.events) << text.toStdString();
    return true;
}

const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";

QByteArray usual(const QByteArray &text)
{
    return head + "<plist version=\"1.0\">\n<dict>\n\t<key>k</key>\n\t<string>" + text
        + "</string>\n\t<key>l</key>\n\t<array>\n\t\t<true/>\n\t\t<integer>5</integer>\n\t"
          "</array>\n</dict>\n</plist>\n";
}

} // namespace

TEST(XmlPlainParser, TakesTheUsualFiles)
{
    EXPECT_TRUE(takesPlain(usual("text")));
    EXPECT_TRUE(takesPlain(usual("a &amp; &lt;b&gt; &quot;c&apos; ]] > ]")));
    EXPECT_TRUE(takesPlain(usual("\xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80 \xef\xbf\xbd \x7f")));
    EXPECT_TRUE(takesPlain("<dict/>"));
    EXPECT_TRUE(
        takesPlain(QByteArray(head).replace("//Apple//", "//Apple Computer//") + "<dict/>"));
    EXPECT_TRUE(takesPlain("\n<plist>\n<dict>\n</dict></plist>"));
}

TEST(XmlPlainParser, TakesCommentsWhereverTheyMayStand)
{
    const QByteArray comment = "<!-- <dict> & ]]> - \xc3\xa9 -->";
    EXPECT_TRUE(takesPlain(usual("a" + comment + "b<!---->c]]<!-->->-->")));
    EXPECT_TRUE(takesPlain(head + comment + "\n<dict>" + comment + "<key>k" + comment + "</key>"
                           + comment + "<true>" + comment + "</true>" + comment + "</dict>\n"
                           + comment + "\n"));
    // Where the usual first lines do not follow each other, the full parser has to look.
    EXPECT_FALSE(takesPlain(comment + head + "<dict/>"));
}

TEST(XmlPlainParser, LeavesWhatIsUnusualToTheFullParser)
{
    for (const char *text : {"a\rb",          "&#65;",           "&none;",
                             "]]>",           "<!-- a -- b -->", "<!-- c --->",
                             "<!--\r-->",     "<!--\xff-->",     "<!-->",
                             "<![CDATA[x]]>", "<?pi?>",          "\x01",
                             "\xff",          "\xc0\x80",        "\xe0\x80\x80",
                             "\xed\xa0\x80",  "\xef\xbf\xbe",    "\xf4\x90\x80\x80",
                             "\xc3",          "</key>",          "&amp",
                             "<string >",     "<string a=''/>",  "<other/>"})
        EXPECT_FALSE(takesPlain(usual(text))) << text;
    for (const char *text : {"", " ", "<dict>", "</dict>", "<dict/><dict/>", "<dict/>x", "x<dict/>",
                             "\xef\xbb\xbf<dict/>", "<dict></array>", "<"})
        EXPECT_FALSE(takesPlain(text)) << text;
}

TEST(XmlPlainParser, LeavesEveryTruncationToTheFullParser)
{
    const QByteArray whole = usual("a &amp;\xc3\xa9").trimmed();
    for (qsizetype length = 0; length < whole.size(); ++length) {
        // A copy of just this length, so that a checker sees a read past its end.
        const std::vector<char> cut(whole.begin(), whole.begin() + length);
        Recorder recorder;
        EXPECT_FALSE(parsePlainXml(QByteArrayView(cut.data(), length), recorder)) << length;
    }
}

TEST(XmlPlainParser, NeverTakesWhatTheFullParserReadsOtherwise)
{
    std::mt19937 random(20110716);
    const QByteArray letters = "<>&;/![]---\"= \n\t\r#xamplkeydict\xc3\xa9\xe2\x82\xac\xf0\x9f";
    const QByteArray whole =
        usual("<!-- c -->a &amp;\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80]] long enough");
    int taken = 0;
    for (int round = 0; round < 20000; ++round) {
        QByteArray changed = whole;
        for (unsigned i = 0; i < 1 + random() % 2; ++i) {
            const auto at =
                static_cast<qsizetype>(random() % static_cast<unsigned>(changed.size()));
            const char letter =
                letters[static_cast<qsizetype>(random() % static_cast<unsigned>(letters.size()))];
            switch (random() % 3) {
            case 0:
                changed[at] = letter;
                break;
            case 1:
                changed.insert(at, letter);
                break;
            default:
                changed.remove(at, 1 + static_cast<qsizetype>(random() % 6));
            }
        }
        taken += takesPlain(changed) ? 1 : 0;
    }
    EXPECT_GT(taken, 1000);
}

TEST(XmlPlainParser, ReadsEntriesAsIfADictionaryWereAroundThem)
{
    const QByteArray file = "<dict><key>a</key><true/> <key>b</key><dict><key>c</key><data/></dict>"
                            "</dict>";
    const std::uint32_t end = static_cast<std::uint32_t>(file.size()) - 7;
    const auto partOf = [&](std::uint32_t from, std::uint32_t to) {
        Recorder recorder;
        return parsePlainMembers(file, from, to, XmlElement::Dict, recorder);
    };
    EXPECT_TRUE(partOf(6, end));
    EXPECT_TRUE(partOf(6, 6));
    EXPECT_FALSE(partOf(6, end - 1)); // cut in a tag
    EXPECT_FALSE(partOf(6, end - 7)); // left open
    EXPECT_FALSE(partOf(6, end + 7)); // closes what it did not open
}
