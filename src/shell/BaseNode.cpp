#include "shell/BaseNode.h"

#include "shell/MyArrayExtensions.h"

#include <algorithm>

namespace varnel {

BaseNode::Pointer BaseNode::create()
{
    return std::make_shared<BaseNode>(OnlyCreate());
}

BaseNode::Pointer BaseNode::initLeaf()
{
    Pointer node = create();
    node->setLeaf(true);
    return node;
}

void BaseNode::setNodeIcon(const QVariant &nodeIcon)
{
    if (nodeIcon != icon)
        icon = nodeIcon;
}

void BaseNode::setURL(const QString &urlString)
{
    if (urlString != address || urlString.isNull() != address.isNull())
        address = urlString;
}

void BaseNode::setLeaf(bool isLeaf)
{
    leaf = isLeaf;
    ownChild = isLeaf;
    below.clear();
}

BaseNode::List BaseNode::children() const
{
    // The list holds nodes that can be changed, as it would had it been stored.
    return ownChild ? List {std::const_pointer_cast<BaseNode>(shared_from_this())} : below;
}

void BaseNode::setChildren(const List &children)
{
    ownChild = children.size() == 1 && children.first().get() == this;
    below = ownChild ? List() : children;
}

int BaseNode::compare(const BaseNode &other) const
{
    return QString::compare(title.toLower(), other.title.toLower());
}

bool BaseNode::isDraggable() const
{
    return !address.startsWith(u'/') && icon.isValid();
}

bool BaseNode::hasChild(const BaseNode *node) const
{
    return ownChild ? node == this : containsObjectIdenticalTo(below, node);
}

BaseNode::Pointer BaseNode::parentFromArray(const List &roots) const
{
    for (const Pointer &node : roots) {
        if (node.get() == this)
            return nullptr;
        if (node->hasChild(this))
            return node;
        if (node->leaf)
            continue;
        if (Pointer parent = parentFromArray(node->below))
            return parent;
    }
    return nullptr;
}

void BaseNode::removeObjectFromChildren(const BaseNode *node)
{
    if (ownChild) {
        ownChild = node != this;
        return;
    }
    for (qsizetype i = 0; i < below.size(); ++i) {
        if (below[i].get() == node) {
            below.removeAt(i);
            return;
        }
        if (!below[i]->leaf)
            below[i]->removeObjectFromChildren(node);
    }
}

BaseNode::List BaseNode::descendants() const
{
    List found;
    for (const Pointer &child : children()) {
        found << child;
        if (!child->leaf && child.get() != this)
            found << child->descendants();
    }
    return found;
}

BaseNode::List BaseNode::allChildLeafs() const
{
    List found;
    for (const Pointer &child : children()) {
        if (child->leaf)
            found << child;
        else if (child.get() != this)
            found << child->allChildLeafs();
    }
    return found;
}

BaseNode::List BaseNode::groupChildren() const
{
    List found;
    const List all = children();
    std::copy_if(all.begin(), all.end(), std::back_inserter(found),
                 [](const Pointer &child) { return !child->leaf; });
    return found;
}

bool BaseNode::isDescendantOfOrOneOfNodes(const List &nodes) const
{
    return containsObjectIdenticalTo(nodes, this) || isDescendantOfNodes(nodes);
}

bool BaseNode::isDescendantOfNodes(const List &nodes) const
{
    return std::any_of(nodes.begin(), nodes.end(), [this](const Pointer &node) {
        if (node->leaf)
            return false;
        return node->ownChild ? node.get() == this : isDescendantOfOrOneOfNodes(node->below);
    });
}

std::optional<QList<qsizetype>> BaseNode::indexPathInArray(const List &roots) const
{
    const auto indexIn = [](const List &list, const BaseNode *node) {
        const auto at = std::find_if(list.begin(), list.end(),
                                     [node](const Pointer &held) { return held.get() == node; });
        return at == list.end() ? -1 : at - list.begin();
    };
    QList<qsizetype> path;
    const BaseNode *current = this;
    while (const Pointer parent = current->parentFromArray(roots)) {
        path.prepend(indexIn(parent->children(), current));
        current = parent.get();
    }
    path.prepend(indexIn(roots, current));
    if (path.contains(-1))
        return std::nullopt;
    return path;
}

} // namespace varnel
