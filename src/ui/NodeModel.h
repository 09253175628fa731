#pragma once

#include "shell/Node.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>
#include <QSet>

#include <functional>
#include <memory>

namespace varnel {

/// An outline's view of a tree of nodes: one column, the names, each with the icon that the page
/// gives it.
class NodeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    using IconOf = std::function<QIcon(const QString &name)>;

    /// The root itself is not shown. The tree must not change afterwards. The heading is for who
    /// hears the outline: a screen reader would else call the column by its number.
    NodeModel(std::shared_ptr<Node> root, IconOf iconOf, QString heading, QObject *parent);

    /// Those names get the mark of what waits to be saved.
    void setPending(const QSet<QString> &names);

    /// Null for the root.
    [[nodiscard]] const Node *nodeAt(const QModelIndex &index) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex &child) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex &parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    struct Place {
        const Node *parent = nullptr; ///< null beneath the root
        int row = 0;
    };
    void note(const Node &parent);
    [[nodiscard]] const Node &nodeOrRoot(const QModelIndex &index) const;

    std::shared_ptr<Node> root;
    IconOf iconOf;
    QString heading;
    QHash<const Node *, Place> places;
    QSet<QString> pending;
};

} // namespace varnel
