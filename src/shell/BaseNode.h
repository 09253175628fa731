#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <optional>

class QDataStream;

namespace varnel {

/// A node of a tree with title, icon and address, that can be asked about its place in the tree and
/// be turned into a dictionary, an archive and a copy.
///
/// A leaf is its own only child. Nodes are always held by shared pointers: make them with create().
class BaseNode final : public std::enable_shared_from_this<BaseNode> {
    struct OnlyCreate {
        explicit OnlyCreate() = default;
    };

public:
    using Pointer = std::shared_ptr<BaseNode>;
    using List = QList<Pointer>;

    explicit BaseNode(OnlyCreate) { }
    BaseNode(const BaseNode &) = delete;
    BaseNode &operator=(const BaseNode &) = delete;

    /// A node titled "BaseNode Untitled", no leaf, without children.
    [[nodiscard]] static Pointer create();
    [[nodiscard]] static Pointer initLeaf();
    /// A key that is missing sets a null title, icon or address, and no leaf.
    [[nodiscard]] static Pointer initWithDictionary(const QVariantMap &dictionary);
    /// The node that encodeWithCoder() wrote, with everything beneath it; null when the stream does
    /// not hold one.
    [[nodiscard]] static Pointer initWithCoder(QDataStream &coder);

    [[nodiscard]] QString nodeTitle() const { return title; }
    void setNodeTitle(const QString &nodeTitle) { title = nodeTitle; }
    /// An image of the toolkit's (the core has none of its own); invalid: no icon.
    [[nodiscard]] QVariant nodeIcon() const { return icon; }
    void setNodeIcon(const QVariant &nodeIcon);
    /// The address or file path that the node stands for; null until set.
    [[nodiscard]] QString urlString() const { return address; }
    void setURL(const QString &urlString);
    [[nodiscard]] bool isLeaf() const { return leaf; }
    /// Either way the children that were there are gone.
    void setLeaf(bool isLeaf);
    [[nodiscard]] List children() const;
    void setChildren(const List &children);

    /// Below, at or above 0 as the title comes before, with or after the other's; case is ignored.
    [[nodiscard]] int compare(const BaseNode &other) const;
    /// Whether it has an icon and its address is no absolute path.
    [[nodiscard]] bool isDraggable() const;

    /// The node among or beneath the roots that has this one as a child; null for a root.
    [[nodiscard]] Pointer parentFromArray(const List &roots) const;
    /// Removes the first occurrence at each level that the depth-first walk comes to; the walk of a
    /// level ends there.
    void removeObjectFromChildren(const BaseNode *node);
    // A node that is no leaf may be its own only child too: it is then beneath itself, once.

    /// Depth first, parents before their children.
    [[nodiscard]] List descendants() const;
    [[nodiscard]] List allChildLeafs() const;
    /// The direct children that are no leaves.
    [[nodiscard]] List groupChildren() const;
    [[nodiscard]] bool isDescendantOfOrOneOfNodes(const List &nodes) const;
    [[nodiscard]] bool isDescendantOfNodes(const List &nodes) const;
    /// The index at each level, the root's first; none when the roots don't lead here.
    [[nodiscard]] std::optional<QList<qsizetype>> indexPathInArray(const List &roots) const;

    /// The keys that dictionary, archive and copy are made of, in order.
    [[nodiscard]] static QStringList mutableKeys();
    /// The value under one of the mutable keys but "children"; invalid when there is none.
    [[nodiscard]] QVariant value(const QString &key) const;
    /// An invalid or null value clears: see setNilValueForKey() for what is no object.
    void setValue(const QString &key, const QVariant &value);
    /// Clears a key that can't hold null: "isLeaf" becomes false. Other keys are left alone.
    void setNilValueForKey(const QString &key);

    [[nodiscard]] QVariantMap dictionaryRepresentation() const;
    void encodeWithCoder(QDataStream &coder) const;
    /// A new node with the same values; the children are the same nodes, not copies.
    [[nodiscard]] Pointer copyWithZone() const;

private:
    [[nodiscard]] bool hasChild(const BaseNode *node) const;

    QString title = QStringLiteral("BaseNode Untitled");
    List below;
    bool leaf = false;
    /// The only child is the node itself: kept apart from the list, where a strong reference to
    /// itself would keep the node alive for ever.
    bool ownChild = false;
    QVariant icon;
    QString address;
};

} // namespace varnel
