#include "cli/Table.h"

#include "cli/TextWidth.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::cli;

namespace {

Table sample()
{
    Table table;
    table.addHeading(u"Dock"_s);
    table.addRow({{u"1"_s, Table::Look::Quiet}, {u"short"_s}, {u"a value that is long"_s}});
    table.addRow({{u"1004"_s}, {u"a-longer-name"_s}, {u"48 "_s, Table::Look::Strong}});
    table.addHeading(u"Finder"_s);
    table.addRow({{u"2"_s}, {u"x"_s}, {u"画像"_s}});
    return table;
}

TEST(TableTest, columnsAreAlignedAndLinesEndWithoutBlanks)
{
    EXPECT_EQ(sample().text({}),
              u"Dock\n"
              u"  1     short          a value that is long\n"
              u"  1004  a-longer-name  48\n"
              u"\n"
              u"Finder\n"
              u"  2     x              画像\n");
}

TEST(TableTest, aNarrowTerminalTakesFromTheLastColumnFirst)
{
    Style style;
    style.columns = 34;
    EXPECT_EQ(sample().text(style).split(u'\n')[1], u"  1     short          a value ...");
    for (const int columns : {80, 40, 34, 31}) {
        style.columns = columns;
        for (const QString &line : sample().text(style).split(u'\n'))
            EXPECT_LE(textWidth(line), columns) << line.toStdString();
    }
}

TEST(TableTest, coloursAreOnlyPaintedWhenAskedFor)
{
    EXPECT_FALSE(sample().text({}).contains(u'\033'));
    Style style;
    style.colour = true;
    const QString painted = sample().text(style);
    EXPECT_TRUE(painted.startsWith(u"\033[1mDock\033[0m\n  \033[2m1\033[0m     short"));
    EXPECT_TRUE(painted.contains(u"\033[1m48\033[0m\n"));
}

} // namespace
