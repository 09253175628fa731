#include "platform/linux/LinuxFileStore.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

FileStore::Change to(const QByteArray &bytes)
{
    return [bytes](const std::optional<QByteArray> &) { return std::optional(bytes); };
}

TEST(LinuxFileStore, WhatIsWrittenIsRead)
{
    const TemporaryHome home;
    LinuxFileStore store(home.home());
    const QString path = home.preference(QStringLiteral("a.plist"));
    EXPECT_FALSE(store.exists(path));
    EXPECT_EQ(store.read(path).error().code, ErrorCode::NotFound);
    ASSERT_TRUE(store.update(path, to("one")).ok());
    EXPECT_EQ(store.read(path).value(), "one");
    ASSERT_TRUE(store.update(path, to("two")).ok());
    EXPECT_EQ(store.read(path).value(), "two");
    EXPECT_TRUE(store.exists(path));
}

} // namespace
