#include "shell/Node.h"

#include "shell/MyArrayExtensions.h"

#include <gtest/gtest.h>

using namespace varnel;

TEST(Node, AFreshOneHasNoNameNoChildrenAndIsNoGroup)
{
    const Node node;
    EXPECT_TRUE(node.name().isNull());
    EXPECT_TRUE(node.children().isEmpty());
    EXPECT_FALSE(node.isGroup());
}

TEST(Node, ItsChildrenCanBeChangedInPlace)
{
    Node node;
    const auto child = std::make_shared<Node>();
    node.children().append(child);
    EXPECT_EQ(node.children(), Node::List {child});
    node.setChildren({});
    EXPECT_TRUE(node.children().isEmpty());
}

TEST(Node, ItTakesNameAndGroupMark)
{
    Node node;
    node.setName(QStringLiteral("Dock"));
    node.setIsGroup(true);
    EXPECT_EQ(node.name(), QStringLiteral("Dock"));
    EXPECT_TRUE(node.isGroup());
}

namespace {

struct ArrayExtensions : testing::Test {
    using Text = std::shared_ptr<QString>;
    Text one = std::make_shared<QString>(QStringLiteral("same"));
    Text equalToOne = std::make_shared<QString>(QStringLiteral("same"));
    Text other = std::make_shared<QString>(QStringLiteral("other"));
};

} // namespace

TEST_F(ArrayExtensions, TheVeryObjectIsFoundAndAnEqualOneIsNot)
{
    const QList<Text> list {one, other};
    EXPECT_TRUE(containsObjectIdenticalTo(list, one.get()));
    EXPECT_FALSE(containsObjectIdenticalTo(list, equalToOne.get()));
}

TEST_F(ArrayExtensions, AnyOfTheOthersIsEnough)
{
    const QList<Text> list {one};
    EXPECT_TRUE(containsAnyObjectsIdenticalTo(list, {other, one}));
    EXPECT_FALSE(containsAnyObjectsIdenticalTo(list, {other, equalToOne}));
}

TEST_F(ArrayExtensions, NoOthersAreNeverHeld)
{
    EXPECT_FALSE(containsAnyObjectsIdenticalTo(QList<Text> {one}, {}));
    EXPECT_FALSE(containsAnyObjectsIdenticalTo(QList<Text> {}, {}));
}

TEST_F(ArrayExtensions, IndexesAreByEqualityAndSkipWhatIsNotThere)
{
    const QStringList list {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a"),
                            QStringLiteral("c")};
    const QStringList objects {QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("z")};
    EXPECT_EQ(indexesOfObjects<QString>(list, objects), (std::set<qsizetype> {0, 3}));
}
