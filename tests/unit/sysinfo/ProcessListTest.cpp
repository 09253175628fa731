#include "sysinfo/ProcessList.h"
#include "support/FakeFileReader.h"
#include "support/FakeProcesses.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

const QString sysInfoCategory = QStringLiteral("varnel.sysinfo");
const QByteArray iconKey = "<plist version=\"1.0\"><dict><key>CFBundleIconFile</key>";

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

ProcessRow row(const char *bundle, int id)
{
    return {text("p"), text("0"), id, text(bundle), text("")};
}

struct ProcessListTest : testing::Test {
    void add(int id, const char *bundle, const char *name)
    {
        table.add(id);
        manager.processes[id] = {text(bundle), text(name)};
    }

    FakeProcessTable table;
    FakeProcessManager manager;
    FakeFileReader files;
};

} // namespace

TEST_F(ProcessListTest, TakesVisibleProcessesWithABundleAndANameInTableOrder)
{
    manager.processes = {{30, {text("/A/Mail.app"), text("Mail")}},
                         {4, {std::nullopt, text("tool")}},
                         {5, {text("/A/X.app"), std::nullopt}},
                         {6, {text("/A/Agent.app"), text("Agent"), false}},
                         {7, {text("/A/Clock.app"), text("Clock")}}};
    for (const int id : {30, 4, 5, 6, 7})
        table.add(id, std::int8_t(id == 7 ? -20 : 47));
    EXPECT_EQ(
        visibleProcesses(table.records, manager),
        (QList<ProcessRow> {{text("Mail"), text("47"), 30, text("/A/Mail.app"), text("")},
                            {text("Clock"), text("-20"), 7, text("/A/Clock.app"), text("")}}));
}

TEST_F(ProcessListTest, APathThatDoesNotFit1024BytesLeavesTheProcessOut)
{
    table.add(1);
    table.add(2);
    // Two bytes for each letter: it is bytes that count.
    const QString longest = u'/' + QString(511, QChar(0xE4));
    manager.processes = {{1, {longest, text("fits")}}, {2, {longest + u'x', text("does not")}}};
    const QList<ProcessRow> rows = visibleProcesses(table.records, manager);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].process, text("fits"));
}

TEST_F(ProcessListTest, TwoProcessesOfABundleAreOneRowWithTheHigherId)
{
    const QList<ProcessRow> rows {row("/a", 10), row("/b", 5),  row("/a", 30),
                                  row("/a", 20), row("/A", 40), row("/b", 4)};
    EXPECT_EQ(mergedByBundle(rows),
              (QList<ProcessRow> {row("/a", 30), row("/b", 5), row("/A", 40)}));
}

TEST_F(ProcessListTest, TheRowOfABundleKeepsAllButTheIdOfItsFirstProcess)
{
    QList<ProcessRow> rows {row("/a", 10), row("/a", 30)};
    rows[1].process = text("helper");
    rows[1].priority = text("47");
    EXPECT_EQ(mergedByBundle(rows), (QList<ProcessRow> {row("/a", 30)}));
}

TEST_F(ProcessListTest, TenThousandProcessesAreMergedByBundle)
{
    constexpr int count = 10000;
    constexpr int bundles = 5000;
    for (int id = 1; id <= count; ++id) {
        table.add(id);
        manager.processes[id] = {u"/Applications/" + QString::number(id % bundles), text("p")};
    }
    const QList<ProcessRow> rows = getBSDProcesses(table, manager, files);
    ASSERT_EQ(rows.size(), bundles);
    for (int i = 0; i < bundles; ++i) {
        EXPECT_EQ(rows[i].processId, bundles + i + 1);
        EXPECT_EQ(rows[i].bundleLocation, u"/Applications/" + QString::number((i + 1) % bundles));
    }
}

TEST_F(ProcessListTest, AFailedTableLeavesAnEmptyList)
{
    add(1, "/A.app", "A");
    table.error = EPERM;
    LogCapture log;
    EXPECT_TRUE(getBSDProcesses(table, manager, files).isEmpty());
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(ProcessListTest, FillsTheIconPathOfEachRowAndLogsIt)
{
    add(1, "/A.app", "A");
    add(2, "/B.app", "B");
    add(3, "/C.app", "C");
    files.files[text("/A.app/Contents/Info.plist")] =
        iconKey + "<string>a.icns</string></dict></plist>";
    files.files[text("/A.app/Contents/Resources/a.icns")] = "icon";
    files.files[text("/B.app/Contents/Info.plist")] = iconKey + "<string>b</string></dict></plist>";
    LogCapture log;
    const QList<ProcessRow> rows = getBSDProcesses(table, manager, files);
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].icon, text("/A.app/Contents/Resources/a.icns"));
    EXPECT_EQ(rows[1].icon, text("/B.app/Contents/Resources/b.icns"));
    EXPECT_EQ(rows[2].icon, text("/C.app/Contents/Resources/(null).icns"));
    EXPECT_EQ(log.texts(sysInfoCategory), (QStringList {rows[0].icon, rows[1].icon, rows[2].icon}));
    EXPECT_EQ(manager.refreshed, 1);
}
