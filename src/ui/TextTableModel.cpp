#include "ui/TextTableModel.h"

#include <algorithm>
#include <utility>

namespace varnel {

TextTableModel::TextTableModel(QList<Column> columns, QObject *parent)
    : QAbstractTableModel(parent), columns(std::move(columns))
{
}

void TextTableModel::setRows(QList<QStringList> rows)
{
    beginResetModel();
    texts = std::move(rows);
    endResetModel();
}

const QList<QStringList> &TextTableModel::rows() const
{
    return texts;
}

void TextTableModel::setAlignment(int column, Qt::Alignment alignment)
{
    columns[column].alignment = alignment;
    if (!texts.isEmpty())
        emit dataChanged(index(0, column), index(rowCount() - 1, column), {Qt::TextAlignmentRole});
    emit headerDataChanged(Qt::Horizontal, column, column);
}

void TextTableModel::sortRows(int column, bool ascending)
{
    const Qt::CaseSensitivity comparison = columns[column].comparison;
    beginResetModel();
    std::stable_sort(texts.begin(), texts.end(), [&](const QStringList &a, const QStringList &b) {
        const int order = a[column].compare(b[column], comparison);
        return ascending ? order < 0 : order > 0;
    });
    endResetModel();
}

int TextTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(texts.size());
}

int TextTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(columns.size());
}

QVariant TextTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: // a long text is elided in its cell
        return texts[index.row()][index.column()];
    case Qt::TextAlignmentRole:
        return int(columns[index.column()].alignment | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant TextTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return columns[section].title;
    case Qt::TextAlignmentRole:
        return int(columns[section].alignment | Qt::AlignVCenter);
    default:
        return {};
    }
}

} // namespace varnel
