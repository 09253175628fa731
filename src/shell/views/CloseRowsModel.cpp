#include "shell/views/CloseRowsModel.h"

#include "ui/Icons.h"

namespace varnel {

void CloseRowsModel::appendRows(const QList<CloseRow> &more)
{
    if (more.isEmpty())
        return;
    beginInsertRows({}, rowCount(), rowCount() + int(more.size()) - 1);
    applications += more;
    endInsertRows();
}

int CloseRowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(applications.size());
}

int CloseRowsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant CloseRowsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const CloseRow &row = applications[index.row()];
    if (index.column() == Close) {
        if (role == Qt::CheckStateRole)
            return row.close ? Qt::Checked : Qt::Unchecked;
        // Said by a screen reader, for the cell shows no text.
        return role == Qt::AccessibleTextRole ? QVariant(tr("Close %1").arg(row.name)) : QVariant();
    }
    if (role == Qt::DisplayRole)
        return row.name;
    return role == Qt::DecorationRole ? QVariant(Icons::icon(row.icon)) : QVariant();
}

bool CloseRowsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (index.column() != Close || role != Qt::CheckStateRole)
        return false;
    applications[index.row()].close = value.value<Qt::CheckState>() == Qt::Checked;
    emit dataChanged(index, index, {role});
    return true;
}

Qt::ItemFlags CloseRowsModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags base = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == Close ? base | Qt::ItemIsUserCheckable : base;
}

} // namespace varnel
