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
    // The whole text stands in the tip too: a long one is elided in its cell.
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    return texts[index.row()][index.column()];
}

QVariant TextTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return columns[section].title;
}

} // namespace varnel
