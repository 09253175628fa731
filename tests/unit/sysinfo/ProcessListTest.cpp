#include "sysinfo/ProcessList.h"
#include "support/FakeFileReader.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <vector>

using namespace varnel;
using namespace varnel::test;

namespace {

struct Known {
    std::optional<QString> bundle;
    std::optional<QString> name;
    bool visible = true;
};

class FakeManager : public ProcessManager {
public:
    std::optional<QString> bundleLocation(int id) const override { return processes.at(id).bundle; }
    std::optional<QString> processName(int id) const override { return processes.at(id).name; }
    bool isVisible(int id) const override { return processes.at(id).visible; }
    void refresh() override { ++refreshed; }
    int kill(int, int) override { return -1; }

    std::map<int, Known> processes;
    int refreshed = 0;
};

void append(std::vector<std::byte> &records, std::int32_t id, std::int8_t priority)
{
    const std::size_t start = records.size();
    records.resize(start + 648, std::byte {0xEE});
    std::memcpy(records.data() + start + 40, &id, sizeof id);
    std::memcpy(records.data() + start + 242, &priority, sizeof priority);
}

class FixedTable : public ProcessTable {
public:
    int sysctl(const int *, unsigned, void *old, std::size_t *oldLength) const override
    {
        if (error != 0) {
            errno = error;
            return -1;
        }
        *oldLength = records.size();
        if (old != nullptr)
            std::memcpy(old, records.data(), records.size());
        return 0;
    }

    std::vector<std::byte> records;
    int error = 0;
};

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

ProcessRow row(const char *bundle, int id)
{
    return {text("p"), text("0"), id, text(bundle), text("")};
}

} // namespace

TEST(ProcessList, TakesVisibleProcessesWithABundleAndANameInTableOrder)
{
    FakeManager manager;
    manager.processes = {{30, {text("/A/Mail.app"), text("Mail")}},
                         {4, {std::nullopt, text("tool")}},
                         {5, {text("/A/X.app"), std::nullopt}},
                         {6, {text("/A/Agent.app"), text("Agent"), false}},
                         {7, {text("/A/Clock.app"), text("Clock")}}};
    std::vector<std::byte> records;
    for (const int id : {30, 4, 5, 6, 7})
        append(records, id, std::int8_t(id == 7 ? -20 : 47));
    EXPECT_EQ(
        visibleProcesses(records, manager),
        (QList<ProcessRow> {{text("Mail"), text("47"), 30, text("/A/Mail.app"), text("")},
                            {text("Clock"), text("-20"), 7, text("/A/Clock.app"), text("")}}));
}

TEST(ProcessList, TwoProcessesOfABundleAreOneRowWithTheHigherId)
{
    const QList<ProcessRow> rows {row("/a", 10), row("/b", 5),  row("/a", 30),
                                  row("/a", 20), row("/A", 40), row("/b", 4)};
    EXPECT_EQ(mergedByBundle(rows),
              (QList<ProcessRow> {row("/a", 30), row("/b", 5), row("/A", 40)}));
}

TEST(ProcessList, AFailedTableLeavesAnEmptyList)
{
    FixedTable table;
    table.error = EPERM;
    FakeManager manager;
    EXPECT_TRUE(getBSDProcesses(table, manager, FakeFileReader()).isEmpty());
}

TEST(ProcessList, FillsTheIconPathOfEachRow)
{
    FixedTable table;
    append(table.records, 1, 0);
    append(table.records, 2, 0);
    append(table.records, 3, 0);
    FakeManager manager;
    manager.processes = {{1, {text("/A.app"), text("A")}},
                         {2, {text("/B.app"), text("B")}},
                         {3, {text("/C.app"), text("C")}}};
    FakeFileReader files;
    const QByteArray start = "<plist version=\"1.0\"><dict><key>CFBundleIconFile</key><string>";
    files.files[text("/A.app/Contents/Info.plist")] = start + "a.icns</string></dict></plist>";
    files.files[text("/A.app/Contents/Resources/a.icns")] = "icon";
    files.files[text("/B.app/Contents/Info.plist")] = start + "b</string></dict></plist>";
    const QList<ProcessRow> rows = getBSDProcesses(table, manager, files);
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].icon, text("/A.app/Contents/Resources/a.icns"));
    EXPECT_EQ(rows[1].icon, text("/B.app/Contents/Resources/b.icns"));
    EXPECT_EQ(rows[2].icon, text("/C.app/Contents/Resources/(null).icns"));
    EXPECT_EQ(manager.refreshed, 1);
}
