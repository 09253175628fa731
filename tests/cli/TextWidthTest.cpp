#include "cli/TextWidth.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::cli;

namespace {

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
    EXPECT_EQ(printable(u"a\u202eb"_s), u"a\\u202eb");
    EXPECT_EQ(printable(u"Büro \U0001F58B"_s), u"Büro \U0001F58B");
}

} // namespace
