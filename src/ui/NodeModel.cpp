#include "ui/NodeModel.h"

#include "ui/ImageAndTextCell.h"

#include <utility>

namespace varnel {

NodeModel::NodeModel(std::shared_ptr<Node> root, IconOf iconOf, QString heading, QObject *parent)
    : QAbstractItemModel(parent), root(std::move(root)), iconOf(std::move(iconOf)),
      heading(std::move(heading))
{
    note(*this->root);
}

void NodeModel::note(const Node &parent)
{
    int row = 0;
    for (const std::shared_ptr<Node> &child : parent.children()) {
        places.insert(child.get(), {&parent == root.get() ? nullptr : &parent, row++});
        note(*child);
    }
}

const Node *NodeModel::nodeAt(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<const Node *>(index.constInternalPointer()) : nullptr;
}

const Node &NodeModel::nodeOrRoot(const QModelIndex &index) const
{
    const Node *node = nodeAt(index);
    return node ? *node : *root;
}

QModelIndex NodeModel::index(int row, int column, const QModelIndex &parent) const
{
    const Node &above = nodeOrRoot(parent);
    if (column != 0 || row < 0 || row >= above.children().size())
        return {};
    return createIndex(row, column, above.children().at(row).get());
}

QModelIndex NodeModel::parent(const QModelIndex &child) const
{
    const Node *above = places.value(nodeAt(child)).parent;
    return above ? createIndex(places.value(above).row, 0, above) : QModelIndex();
}

int NodeModel::rowCount(const QModelIndex &parent) const
{
    return int(nodeOrRoot(parent).children().size());
}

int NodeModel::columnCount(const QModelIndex &) const
{
    return 1;
}

bool NodeModel::hasChildren(const QModelIndex &parent) const
{
    // A row opens exactly when it is a group, whatever stands beneath it.
    return parent.isValid() ? nodeAt(parent)->isGroup() : rowCount(parent) > 0;
}

QVariant NodeModel::data(const QModelIndex &index, int role) const
{
    const Node *node = nodeAt(index);
    if (!node)
        return {};
    if (role == Qt::DisplayRole)
        return node->name();
    if (role == Qt::DecorationRole && iconOf)
        return iconOf(node->name());
    const bool waits = pending.contains(node->name());
    if (role == ImageAndTextCell::PendingRole)
        return waits;
    if (role == Qt::AccessibleDescriptionRole && waits)
        return tr("has changes that are not saved");
    return {};
}

void NodeModel::setPending(const QSet<QString> &names)
{
    if (names == pending)
        return;
    pending = names;
    emit dataChanged(index(0, 0, {}), index(rowCount({}) - 1, 0, {}),
                     {ImageAndTextCell::PendingRole, Qt::AccessibleDescriptionRole});
}

QVariant NodeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool wanted = section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return wanted ? QVariant(heading) : QVariant();
}

Qt::ItemFlags NodeModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

} // namespace varnel
