#include "platform/linux/ProcText.h"

#include <gtest/gtest.h>

using namespace varnel;

TEST(ProcText, MemoryLinesAreReadInKilobytesAndOthersPassedOver)
{
    const auto lines = parseMemInfo("MemTotal:       16384 kB\nHugePages_Total:       0\n"
                                    "Active(anon):  12 kB\nbroken\nMemFree: x kB\n");
    EXPECT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.value("MemTotal"), 16384U);
    EXPECT_EQ(lines.value("Active(anon)"), 12U);
}

TEST(ProcText, CountersStandBelowTheirNames)
{
    const QByteArray text = "Ip: Forwarding InReceives\nIp: 1 42\n"
                            "Tcp: RtoAlgorithm MaxConn ActiveOpens\nTcp: 1 -1 7\n";
    EXPECT_EQ(parseSnmp(text, "Tcp").value("ActiveOpens"), 7);
    EXPECT_EQ(parseSnmp(text, "Tcp").value("MaxConn"), -1);
    EXPECT_EQ(parseSnmp(text, "Ip").value("InReceives"), 42);
    EXPECT_TRUE(parseSnmp(text, "Udp").isEmpty());
    EXPECT_TRUE(parseSnmp("Tcp: A B\n", "Tcp").isEmpty());
    EXPECT_EQ(parseSnmp("Tcp: A B\nTcp: 1\n", "Tcp").size(), 1);
}

TEST(ProcText, AProcessNameMayHoldBlanksAndParentheses)
{
    const auto stat =
        parseProcStat("77 (a) b (c)) S 1 77 77 0 -1 4194304 1 0 0 0 0 0 0 0 -20 0 1 0 9 0 0");
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->processId, 77);
    EXPECT_EQ(stat->command, "a) b (c)");
    EXPECT_EQ(stat->parentId, 1);
    EXPECT_EQ(stat->priority, -20);
}

TEST(ProcText, ALineThatEndsTooSoonIsNone)
{
    EXPECT_FALSE(parseProcStat(""));
    EXPECT_FALSE(parseProcStat("77 (a S 1 77"));
    EXPECT_FALSE(parseProcStat("77 (a) S 1 77 77 0"));
    EXPECT_FALSE(parseProcStat("x (a) S 1 77 77 0 -1 4194304 1 0 0 0 0 0 0 0 20 0 1 0 9"));
}
