#include "backup/BackupReader.h"
#include "backup/BackupWriter.h"
#include "platform/linux/LinuxFileStore.h"
#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <array>

using namespace varnel;
using namespace varnel::test;

TEST(BackupTogether, RunsThatChoseTheSameFileAllHaveTheirRowsInIt)
{
    const TemporaryHome home;
    const QString path = home.path() + u"/quillet1.sqlite";
    constexpr int processes = 4;
    constexpr int rows = 5;
    std::array<pid_t, processes> children {};
    for (int number = 0; number < processes; ++number) {
        children[size_t(number)] = inChild([&] {
            LinuxFileStore store(home.home());
            BackupWriter writer(path, store);
            bool done = true;
            for (int row = 0; row < rows; ++row)
                done &= writer.addDataToBackupFile({1000 + number * rows + row, 1, {}}).ok();
            return done;
        });
    }
    for (const pid_t child : children)
        EXPECT_TRUE(endOf(child));
    const Result<QList<BackupRow>> read = readBackupRows(path);
    ASSERT_TRUE(read.ok()) << qPrintable(read.error().text);
    EXPECT_EQ(read.value().size(), processes * rows);
}
