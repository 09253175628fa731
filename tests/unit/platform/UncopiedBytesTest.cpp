#include "platform/linux/UncopiedBytes.h"

#include "platform/linux/Worker.h"

#include <gtest/gtest.h>

#include <cerrno>

#include <sys/mman.h>

using namespace varnel;

namespace {

TEST(UncopiedBytesTest, allThatWasAppendedIsThereInItsOrder)
{
    UncopiedBytes bytes;
    EXPECT_TRUE(bytes.isEmpty());
    bytes.append({});
    EXPECT_TRUE(bytes.isEmpty());
    QByteArray expected;
    for (qsizetype size = 1; size < qsizetype(5) << 20; size = 3 * size + 1) {
        const QByteArray piece(size, char('a' + size % 26));
        bytes.append(piece);
        expected += piece;
        ASSERT_TRUE(bytes.bytes() == expected) << size;
    }
}

TEST(UncopiedBytesTest, aCopyOfTheProcessDoesNotGetThem)
{
    UncopiedBytes bytes;
    for (int i = 0; i < 3; ++i) {
        bytes.append(QByteArray(qsizetype(1) << 20, 'x'));
        void *const first = const_cast<char *>(bytes.bytes().data());
        QByteArray heard;
        const auto look = [&](const Worker::Tell &tell) {
            tell(::msync(first, 1, MS_ASYNC) != 0 && errno == ENOMEM ? "not there" : "there");
        };
        EXPECT_TRUE(Worker(look).follow([&](const QByteArray &line) { heard = line; }));
        EXPECT_EQ(heard, "not there");
        EXPECT_EQ(::msync(first, 1, MS_ASYNC), 0);
    }
}

} // namespace
