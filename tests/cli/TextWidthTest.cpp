#include "cli/TextWidth.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(elided(u"abcdef"_qs, 6, u"…"_qs), u"abcdef");
    EXPECT_EQ(elided(u"abcdefg"_qs, 6, u"…"_qs), u"abcde…");
    EXPECT_EQ(elided(u"abcdefg"_qs, 6, u"..."_qs), u"abc...");
    EXPECT_EQ(elided(u"画像の画像"_qs, 6, u"…"_qs), u"画像…") << "never half a character";
    EXPECT_EQ(elided(u"\U0001F58B\U0001F58B"_qs, 3, u"…"_qs), u"\U0001F58B…");
    EXPECT_EQ(elided(u"abc"_qs, 0, u"…"_qs), u"");
}

TEST(TextWidthTest, nothingThatSteersATerminalIsLeftInAPrintableText)
{
    EXPECT_EQ(printable(u"a\033[31mb"_qs), u"a\\u001b[31mb");
    EXPECT_EQ(printable(u"a\nb\tc\rd"_qs), u"a\\nb\\tc\\u000dd");
    EXPECT_EQ(printable(u"a\u009bb"_qs), u"a\\u009bb");
    EXPECT_EQ(printable(u"a\u202eb"_qs), u"a\\u202eb");
    EXPECT_EQ(printable(u"Büro \U0001F58B"_qs), u"Büro \U0001F58B");
}

} // namespace
