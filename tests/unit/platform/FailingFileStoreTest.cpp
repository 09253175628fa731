#include "support/FailingFileStore.h"

#include "StoreFixture.h"

using namespace varnel;
using namespace varnel::test;

namespace {

struct FailingFileStoreTest : StoreFixture {
    FailingFileStore failing {store};
};

TEST_F(FailingFileStoreTest, TheChosenOperationFailsAndTheOthersGoThrough)
{
    failing.failOperation(2, {ErrorCode::Failed, QStringLiteral("no room")});
    EXPECT_TRUE(failing.update(path, become("one")).ok());
    const Result<void> second = failing.update(path, become("two"));
    ASSERT_FALSE(second.ok());
    EXPECT_EQ(second.error().text, QStringLiteral("no room"));
    EXPECT_EQ(failing.read(path).value(), "one");
    EXPECT_TRUE(failing.exists(path));
    const QStringList expected {u"update " + path, u"update " + path, u"read " + path,
                                u"exists " + path};
    EXPECT_EQ(failing.calls, expected);
    EXPECT_EQ(failing.operations, 3);
}

} // namespace
