#include "cli/TextWidth.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::cli;

namespace {

/// What Unicode names bidirectional controls.
constexpr char16_t directionMarks[] = {0x061c, 0x200e, 0x200f, 0x202a, 0x202b, 0x202c,
                                       0x202d, 0x202e, 0x2066, 0x2067, 0x2068, 0x2069};

TEST(TextWidthTest, wideCharactersTakeTwoColumnsAndMarksNone)
{
    EXPECT_EQ(textWidth(u"abc"), 3);
    EXPECT_EQ(textWidth(u"画像"), 4);
    EXPECT_EQ(textWidth(u"e\u0301"), 1);
    EXPECT_EQ(textWidth(u"\U0001F58B"), 2);
}

TEST(TextWidthTest, aTextIsCutToItsColumnsIncludingTheEllipsis)
{
    EXPECT_EQ(elided(u"abcdef"_s, 6, u"…"_s), u"abcdef");
    EXPECT_EQ(elided(u"abcdefg"_s, 6, u"…"_s), u"abcde…");
    EXPECT_EQ(elided(u"abcdefg"_s, 6, u"..."_s), u"abc...");
    EXPECT_EQ(elided(u"画像の画像"_s, 6, u"…"_s), u"画像…") << "never half a character";
    EXPECT_EQ(elided(u"\U0001F58B\U0001F58B"_s, 3, u"…"_s), u"\U0001F58B…");
    EXPECT_EQ(elided(u"abc"_s, 0, u"…"_s), u"");
}

TEST(TextWidthTest, nothingThatSteersATerminalIsLeftInAPrintableText)
{
    EXPECT_EQ(printable(u"a\033[31mb"_s), u"a\\u001b[31mb");
    EXPECT_EQ(printable(u"a\nb\tc\rd"_s), u"a\\nb\\tc\\u000dd");
    EXPECT_EQ(printable(u"a\u009bb"_s), u"a\\u009bb");
    EXPECT_EQ(printable(u"a\u007fb"_s), u"a\\u007fb");
    for (const char16_t mark : directionMarks)
        EXPECT_EQ(printable(QString(QChar(mark))), u"\\u%1"_s.arg(uint(mark), 4, 16, QChar(u'0')));
    EXPECT_EQ(printable(u"a\u2028b\u2029"_s), u"a\\u2028b\\u2029");
    EXPECT_EQ(printable(u"Büro \U0001F58B"_s), u"Büro \U0001F58B");
}

TEST(TextWidthTest, nothingThatSteersATerminalIsLeftInJson)
{
    QString text = u"Büro \U0001F58B \\u202e \"quoted\"\n\x1b"_s;
    for (char16_t control = 0x7f; control <= 0x9f; ++control)
        text += QChar(control);
    for (const char16_t mark : directionMarks)
        text += QChar(mark);
    text += u"\u2028\u2029";
    const QJsonObject object {{text, text}};
    const QByteArray json = printableJson(QJsonDocument(object).toJson());
    EXPECT_EQ(QJsonDocument::fromJson(json).object(), object);
    for (const QString &line : QString::fromUtf8(json).split(u'\n'))
        EXPECT_EQ(printable(line), line);
    EXPECT_TRUE(json.contains("\\u007f\\u0080\\u0081")) << json.toStdString();
    EXPECT_TRUE(json.contains("\\u202e")) << json.toStdString();
    EXPECT_TRUE(json.contains("Büro \xF0\x9F\x96\x8B")) << json.toStdString();
}

} // namespace
