#include "sysinfo/BSDProcesses.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <vector>

using namespace varnel;

namespace {

/// Answers each call by the next step.
class ScriptedTable : public ProcessTable {
public:
    using Step = std::function<int(void *old, std::size_t *oldLength)>;

    explicit ScriptedTable(std::vector<Step> steps) : steps(std::move(steps)) { }

    int sysctl(const int *name, unsigned nameLength, void *old,
               std::size_t *oldLength) const override
    {
        EXPECT_EQ(nameLength, 3U);
        EXPECT_EQ((std::vector<int>(name, name + 4)), (std::vector<int> {1, 14, 0, 0}));
        return steps.at(calls++)(old, oldLength);
    }

    mutable std::size_t calls = 0;

private:
    std::vector<Step> steps;
};

ScriptedTable::Step needs(std::size_t length)
{
    return [length](void *old, std::size_t *oldLength) {
        EXPECT_EQ(old, nullptr);
        *oldLength = length;
        return 0;
    };
}

ScriptedTable::Step fills(std::size_t length)
{
    return [length](void *old, std::size_t *oldLength) {
        EXPECT_NE(old, nullptr);
        EXPECT_GE(*oldLength, length);
        std::memset(old, 1, length);
        *oldLength = length;
        return 0;
    };
}

ScriptedTable::Step fails(int error)
{
    return [error](void *, std::size_t *) {
        errno = error;
        return -1;
    };
}

struct Listing {
    int error = 0;
    bool hasArray = false;
    std::size_t count = 99;
};

Listing list(const ProcessTable &table)
{
    std::byte *records = nullptr;
    Listing listing;
    listing.error = GetBSDProcessList(table, &records, &listing.count);
    listing.hasArray = records != nullptr;
    std::free(records);
    return listing;
}

} // namespace

TEST(ProcessTableReading, CountsWholeRecordsOfTheReturnedLength)
{
    const ScriptedTable table({needs(648 * 4), fills(648 * 3)});
    const Listing listing = list(table);
    EXPECT_EQ(listing.error, 0);
    EXPECT_TRUE(listing.hasArray);
    EXPECT_EQ(listing.count, 3U);
}

TEST(ProcessTableReading, StartsAgainWhenTheTableGrewBetweenTheCalls)
{
    const ScriptedTable table(
        {needs(648), fails(ENOMEM), needs(648 * 2), fails(ENOMEM), needs(648 * 3), fills(648 * 3)});
    const Listing listing = list(table);
    EXPECT_EQ(listing.error, 0);
    EXPECT_EQ(listing.count, 3U);
    EXPECT_EQ(table.calls, 6U);
}

TEST(ProcessTableReading, AnErrorOfTheFirstCallEndsIt)
{
    const ScriptedTable table({fails(ENOMEM)});
    const Listing listing = list(table);
    EXPECT_EQ(listing.error, ENOMEM);
    EXPECT_FALSE(listing.hasArray);
    EXPECT_EQ(listing.count, 0U);
}

TEST(ProcessTableReading, AnyOtherErrorOfTheSecondCallEndsIt)
{
    const ScriptedTable table({needs(648), fails(EPERM)});
    const Listing listing = list(table);
    EXPECT_EQ(listing.error, EPERM);
    EXPECT_FALSE(listing.hasArray);
    EXPECT_EQ(listing.count, 0U);
}

TEST(ProcessTableReading, AnEmptyTableIsAnArrayOfNoRecords)
{
    const ScriptedTable table({needs(0), fills(0)});
    const Listing listing = list(table);
    EXPECT_EQ(listing.error, 0);
    EXPECT_TRUE(listing.hasArray);
    EXPECT_EQ(listing.count, 0U);
}

TEST(ProcessTableReadingDeathTest, BrokenArgumentsEndTheProgramInThisOrder)
{
    const ScriptedTable table({});
    std::byte used {};
    std::byte *taken = &used;
    std::byte *none = nullptr;
    std::size_t count = 0;
    EXPECT_DEATH(GetBSDProcessList(table, nullptr, nullptr),
                 "\\(procList != NULL\\), function GetBSDProcessList, file BSDProcesses");
    EXPECT_DEATH(GetBSDProcessList(table, &taken, nullptr), "\\(\\*procList == NULL\\)");
    EXPECT_DEATH(GetBSDProcessList(table, &none, nullptr), "\\(procCount != NULL\\)");
    EXPECT_DEATH(GetBSDProcessList(table, &taken, &count), "\\(\\*procList == NULL\\)");
}
