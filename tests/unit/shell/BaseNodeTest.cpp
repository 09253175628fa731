#include "shell/BaseNode.h"

#include <QDataStream>
#include <QIODevice>

#include <gtest/gtest.h>

using namespace varnel;

namespace {

BaseNode::Pointer named(const QString &title, const BaseNode::List &children = {})
{
    auto node = BaseNode::create();
    node->setNodeTitle(title);
    node->setChildren(children);
    return node;
}

BaseNode::Pointer leafNamed(const QString &title)
{
    auto node = BaseNode::initLeaf();
    node->setNodeTitle(title);
    return node;
}

/// root -> group -> deep; root -> leaf; a second root beside it.
struct BaseNodeTree : testing::Test {
    BaseNode::Pointer deep = leafNamed(QStringLiteral("deep"));
    BaseNode::Pointer group = named(QStringLiteral("group"), {deep});
    BaseNode::Pointer leaf = leafNamed(QStringLiteral("leaf"));
    BaseNode::Pointer root = named(QStringLiteral("root"), {group, leaf});
    BaseNode::Pointer second = named(QStringLiteral("second"));
    BaseNode::List roots {second, root};
};

BaseNode::Pointer throughArchive(const BaseNode::Pointer &node)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    node->encodeWithCoder(out);
    QDataStream in(bytes);
    return BaseNode::initWithCoder(in);
}

} // namespace

TEST(BaseNode, AFreshOneIsUntitledWithoutChildrenAndNoLeaf)
{
    const auto node = BaseNode::create();
    EXPECT_EQ(node->nodeTitle(), QStringLiteral("BaseNode Untitled"));
    EXPECT_TRUE(node->children().isEmpty());
    EXPECT_FALSE(node->isLeaf());
    EXPECT_FALSE(node->nodeIcon().isValid());
    EXPECT_TRUE(node->urlString().isNull());
}

TEST(BaseNode, ALeafIsItsOwnOnlyChildUntilItIsNoLeafAnyMore)
{
    const auto node = BaseNode::create();
    node->setLeaf(true);
    EXPECT_EQ(node->children(), BaseNode::List {node});
    node->setLeaf(false);
    EXPECT_TRUE(node->children().isEmpty());
}

TEST(BaseNode, ALeafThatNobodyHoldsIsGone)
{
    std::weak_ptr<BaseNode> watched = BaseNode::initLeaf();
    EXPECT_TRUE(watched.expired());
}

TEST(BaseNode, TitlesAreOrderedWhateverTheirCase)
{
    const auto apple = named(QStringLiteral("apple"));
    const auto banana = named(QStringLiteral("Banana"));
    EXPECT_LT(apple->compare(*banana), 0);
    EXPECT_GT(banana->compare(*apple), 0);
    EXPECT_EQ(apple->compare(*named(QStringLiteral("APPLE"))), 0);
}

TEST(BaseNode, OnlyANodeWithAnIconAndNoAbsolutePathCanBeDragged)
{
    const auto node = BaseNode::create();
    EXPECT_FALSE(node->isDraggable());
    node->setNodeIcon(QStringLiteral("an icon"));
    EXPECT_TRUE(node->isDraggable());
    node->setURL(QStringLiteral("https://example.invalid/"));
    EXPECT_TRUE(node->isDraggable());
    node->setURL(QStringLiteral("/Applications"));
    EXPECT_FALSE(node->isDraggable());
    node->setURL(QStringLiteral(":/icons/dock.svg")); // absolute to the toolkit, no path to a user
    EXPECT_TRUE(node->isDraggable());
}

TEST_F(BaseNodeTree, AParentIsFoundAtAnyDepth)
{
    EXPECT_EQ(deep->parentFromArray(roots), group);
    EXPECT_EQ(leaf->parentFromArray(roots), root);
    EXPECT_EQ(root->parentFromArray(roots), nullptr);
    EXPECT_EQ(named(QStringLiteral("stranger"))->parentFromArray(roots), nullptr);
}

TEST_F(BaseNodeTree, TheWalkForAParentEndsWhereTheNodeItselfStands)
{
    // A root that also stands beneath a later root.
    root->setChildren({second});
    EXPECT_EQ(second->parentFromArray(roots), nullptr);
}

TEST_F(BaseNodeTree, DescendantsComeDepthFirstParentsBeforeChildren)
{
    EXPECT_EQ(root->descendants(), (BaseNode::List {group, deep, leaf}));
    EXPECT_EQ(root->allChildLeafs(), (BaseNode::List {deep, leaf}));
    EXPECT_EQ(root->groupChildren(), BaseNode::List {group});
}

TEST_F(BaseNodeTree, ANodeIsRemovedFromDeepDown)
{
    root->removeObjectFromChildren(deep.get());
    EXPECT_TRUE(group->children().isEmpty());
    EXPECT_EQ(root->children(), (BaseNode::List {group, leaf}));
}

TEST_F(BaseNodeTree, OnlyTheFirstOfALevelIsRemovedAndSubtreesBeforeItAreWalkedToo)
{
    group->setChildren({leaf, deep, leaf});
    root->removeObjectFromChildren(leaf.get());
    EXPECT_EQ(group->children(), (BaseNode::List {deep, leaf}));
    EXPECT_EQ(root->children(), BaseNode::List {group});
}

TEST_F(BaseNodeTree, BeingOneOfTheNodesIsNotBeneathThem)
{
    EXPECT_FALSE(root->isDescendantOfNodes({root}));
    EXPECT_TRUE(root->isDescendantOfOrOneOfNodes({root}));
    EXPECT_FALSE(leaf->isDescendantOfNodes({leaf}));
}

TEST_F(BaseNodeTree, ADeepNodeIsBeneathEachOfItsParents)
{
    EXPECT_TRUE(deep->isDescendantOfNodes({root}));
    EXPECT_TRUE(deep->isDescendantOfNodes({second, group}));
    EXPECT_FALSE(deep->isDescendantOfOrOneOfNodes({second, leaf}));
}

TEST_F(BaseNodeTree, ANodeThatIsNoLeafAndItsOwnOnlyChildIsBeneathItself)
{
    group->setChildren({group});
    EXPECT_TRUE(group->isDescendantOfNodes({group}));
    EXPECT_FALSE(deep->isDescendantOfOrOneOfNodes({group}));
    EXPECT_EQ(group->descendants(), BaseNode::List {group});
    EXPECT_EQ(root->descendants(), (BaseNode::List {group, group, leaf}));
    EXPECT_EQ(root->allChildLeafs(), BaseNode::List {leaf});
    EXPECT_EQ(group->groupChildren(), BaseNode::List {group});
}

TEST_F(BaseNodeTree, AnIndexPathStartsAtTheRoot)
{
    EXPECT_EQ(root->indexPathInArray(roots), QList<qsizetype> {1});
    EXPECT_EQ(deep->indexPathInArray(roots), (QList<qsizetype> {1, 0, 0}));
    EXPECT_EQ(named(QStringLiteral("stranger"))->indexPathInArray(roots), std::nullopt);
}

TEST_F(BaseNodeTree, ADictionaryOfALeafHasNoChildrenAndGivesALeafAgain)
{
    leaf->setURL(QStringLiteral("/path"));
    const QVariantMap form = leaf->dictionaryRepresentation();
    EXPECT_FALSE(form.contains(QStringLiteral("children")));
    EXPECT_FALSE(form.contains(QStringLiteral("nodeIcon")));
    const auto again = BaseNode::initWithDictionary(form);
    EXPECT_TRUE(again->isLeaf());
    EXPECT_EQ(again->children(), BaseNode::List {again});
    EXPECT_EQ(again->nodeTitle(), QStringLiteral("leaf"));
    EXPECT_EQ(again->urlString(), QStringLiteral("/path"));
}

TEST_F(BaseNodeTree, ADictionaryHoldsTheWholeTree)
{
    const auto again = BaseNode::initWithDictionary(root->dictionaryRepresentation());
    EXPECT_EQ(again->dictionaryRepresentation(), root->dictionaryRepresentation());
    ASSERT_EQ(again->descendants().size(), 3);
    EXPECT_EQ(again->descendants()[1]->nodeTitle(), QStringLiteral("deep"));
}

TEST(BaseNode, WhatADictionaryLacksIsSetToNothing)
{
    const auto node = BaseNode::initWithDictionary({});
    EXPECT_TRUE(node->nodeTitle().isNull());
    EXPECT_FALSE(node->isLeaf());
    EXPECT_TRUE(node->children().isEmpty());
}

TEST_F(BaseNodeTree, AnArchiveHoldsTheWholeTreeAndKeepsSharedNodesOne)
{
    group->setNodeIcon(QStringLiteral("icon"));
    root->setChildren({group, leaf, leaf});
    const auto again = throughArchive(root);
    ASSERT_TRUE(again);
    ASSERT_EQ(again->children().size(), 3);
    EXPECT_EQ(again->children()[1], again->children()[2]);
    EXPECT_EQ(again->children()[0]->nodeIcon(), group->nodeIcon());
    EXPECT_EQ(again->children()[1]->children(), BaseNode::List {again->children()[1]});
    EXPECT_TRUE(again->children()[1]->isLeaf());
}

TEST(BaseNode, ABrokenArchiveGivesNoNode)
{
    QByteArray bytes("\0\0\0\1garbage", 11);
    QDataStream in(bytes);
    EXPECT_EQ(BaseNode::initWithCoder(in), nullptr);
}

TEST_F(BaseNodeTree, ACopySharesItsChildren)
{
    root->setURL(QStringLiteral("/root"));
    const auto copy = root->copyWithZone();
    EXPECT_NE(copy, root);
    EXPECT_EQ(copy->nodeTitle(), QStringLiteral("root"));
    EXPECT_EQ(copy->urlString(), QStringLiteral("/root"));
    EXPECT_EQ(copy->children(), root->children());
}

TEST_F(BaseNodeTree, ACopyOfALeafIsALeafWhoseChildIsTheOriginal)
{
    const auto copy = leaf->copyWithZone();
    EXPECT_TRUE(copy->isLeaf());
    EXPECT_EQ(copy->children(), BaseNode::List {leaf});
}

TEST(BaseNode, NothingUnderTheLeafKeyIsNoLeaf)
{
    const auto node = BaseNode::initLeaf();
    node->setNilValueForKey(QStringLiteral("nodeTitle"));
    EXPECT_TRUE(node->isLeaf());
    node->setValue(QStringLiteral("isLeaf"), QVariant());
    EXPECT_FALSE(node->isLeaf());
}

TEST(BaseNode, TheKeysStandInTheirOrder)
{
    const QStringList keys {QStringLiteral("nodeTitle"), QStringLiteral("isLeaf"),
                            QStringLiteral("children"), QStringLiteral("nodeIcon"),
                            QStringLiteral("urlString")};
    EXPECT_EQ(BaseNode::mutableKeys(), keys);
}
