#include "loginitems/views/LoginItemsModel.h"

#include "ui/FileIcon.h"
#include "ui/ImageAndTextCell.h"

#include <utility>

namespace varnel {

void LoginItemsModel::setRows(QList<LoginItemRow> rows)
{
    beginResetModel();
    items = std::move(rows);
    icons.clear();
    endResetModel();
}

void LoginItemsModel::appendRow(const LoginItemRow &row)
{
    beginInsertRows({}, rowCount(), rowCount());
    items.append(row);
    endInsertRows();
}

void LoginItemsModel::removeRowAt(int row)
{
    beginRemoveRows({}, row, row);
    items.removeAt(row);
    endRemoveRows();
}

void LoginItemsModel::setNotes(NoteOf notes)
{
    noteOf = std::move(notes);
}

void LoginItemsModel::updateNotes()
{
    if (!items.isEmpty())
        emit dataChanged(index(0, Name), index(rowCount() - 1, Name));
}

int LoginItemsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(items.size());
}

int LoginItemsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 3;
}

QIcon LoginItemsModel::icon(const LoginItemRow &row) const
{
    auto known = icons.find(row.icon);
    if (known == icons.end())
        known = icons.insert(row.icon, fileIcon(row.icon));
    return *known;
}

QVariant LoginItemsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const LoginItemRow &row = items[index.row()];
    switch (index.column()) {
    case Enabled:
        if (role == Qt::CheckStateRole)
            return row.enabled ? Qt::Checked : Qt::Unchecked;
        // Said by a screen reader, for the cell shows no text.
        if (role == Qt::AccessibleTextRole)
            return tr("Open %1 at login").arg(row.name);
        return {};
    case Name:
        if (role == Qt::DecorationRole)
            return icon(row);
        if (role == ImageAndTextCell::PendingRole)
            return noteOf && !noteOf(row.path).isNull();
        if (role == ImageAndTextCell::NoteRole || role == Qt::AccessibleDescriptionRole)
            return noteOf ? noteOf(row.path) : QString();
        return role == Qt::DisplayRole ? QVariant(row.name) : QVariant();
    default:
        return role == Qt::DisplayRole || role == Qt::ToolTipRole ? QVariant(row.path) : QVariant();
    }
}

bool LoginItemsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (index.column() != Enabled || role != Qt::CheckStateRole)
        return false;
    const bool enabled = value.value<Qt::CheckState>() == Qt::Checked;
    items[index.row()].enabled = enabled;
    emit dataChanged(index, index, {role});
    emit enabledChanged(index.row(), enabled);
    return true;
}

Qt::ItemFlags LoginItemsModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags base = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == Enabled ? base | Qt::ItemIsUserCheckable : base;
}

QVariant LoginItemsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section == Enabled)
        return int(Qt::AlignCenter);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Enabled:
        return tr("On");
    case Name:
        return tr("Name");
    default:
        return tr("Path");
    }
}

} // namespace varnel
