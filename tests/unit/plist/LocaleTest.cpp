#include "Opened.h"

#include <clocale>
#include <cstdio>

using namespace varnel::test;

TEST(Locale, NumbersReallyHaveACommaInTheSecondRun)
{
    if (!qEnvironmentVariableIsSet("VARNEL_EXPECT_COMMA"))
        GTEST_SKIP() << "not the run under the comma locale";
    if (qstrcmp(setlocale(LC_NUMERIC, nullptr), "de_DE.UTF-8") != 0)
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not there";
    char text[8] = "";
    std::snprintf(text, sizeof text, "%.1f", 0.5);
    EXPECT_STREQ(text, "0,5");
}

TEST(Locale, RealsAreReadWithAPoint)
{
    const auto list = opened(xmlWith("<key>k</key><real>1.75</real>"));
    EXPECT_EQ(list.value({QStringLiteral("k")}).real, 1.75);
}
