#include "base/Text.h"

#include <gtest/gtest.h>

using namespace varnel;

TEST(Text, NullPrintsItsNameAndEmptyPrintsNothing)
{
    EXPECT_EQ(orNull(QString()), QStringLiteral("(null)"));
    EXPECT_EQ(orNull(QStringLiteral("")), QString(QStringLiteral("")));
}

TEST(Text, PlaceholdersAreFilledFromLeftToRight)
{
    EXPECT_EQ(fillIn(u"%@ and %d", {QStringLiteral("a"), QStringLiteral("7")}),
              QStringLiteral("a and 7"));
}

TEST(Text, WhatAnArgumentBringsInIsNotFilledAgain)
{
    EXPECT_EQ(fillIn(u"%@-%@", {QStringLiteral("%@ %1"), QStringLiteral("b")}),
              QStringLiteral("%@ %1-b"));
}

TEST(Text, PlaceholdersWithoutAnArgumentStay)
{
    EXPECT_EQ(fillIn(u"size %s", {}), QStringLiteral("size %s"));
}

TEST(Text, LeadingIntReadsSignDigitsAndNothingElse)
{
    EXPECT_EQ(leadingInt(u" \t-12abc"), -12);
    EXPECT_EQ(leadingInt(u"+7"), 7);
    EXPECT_EQ(leadingInt(u"x7"), 0);
    EXPECT_EQ(leadingInt(u""), 0);
    EXPECT_EQ(leadingInt(u"1,5"), 1);
}

TEST(Text, LeadingIntIsClampedTo32Bits)
{
    EXPECT_EQ(leadingInt(u"99999999999999999999"), 2147483647);
    EXPECT_EQ(leadingInt(u"-99999999999999999999"), -2147483647 - 1);
}

TEST(Text, ASpaceWithoutWidthAtTheStartIsPartOfTheText)
{
    EXPECT_EQ(textOfUtf8("\xef\xbb\xbf\xef\xbb\xbf"
                         "a"),
              QStringLiteral("\uFEFF\uFEFF"
                             "a"));
    EXPECT_EQ(textOfUtf8("a\xef\xbb\xbf"), QStringLiteral("a\uFEFF"));
    EXPECT_EQ(textOfUtf8(""), QStringLiteral(""));
}

TEST(Text, WhatIsNoUtf8IsReplaced)
{
    EXPECT_EQ(textOfUtf8("\xc3"), QStringLiteral("\uFFFD"));
    EXPECT_EQ(textOfUtf8("\xef\xbb\xbf\xc3"), QStringLiteral("\uFEFF\uFFFD"));
}

TEST(WithBytesEscaped, LeavesOnlyWhatIsAscii)
{
    EXPECT_EQ(withBytesEscaped("/a b\xff\x80"), QStringLiteral("/a b\\xff\\x80"));
}
