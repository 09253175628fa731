#include "backup/views/BackupModel.h"

#include <QHash>

#include <utility>

namespace varnel {

void BackupModel::setEntries(QList<BackupEntry> entries)
{
    beginResetModel();
    files = std::move(entries);
    endResetModel();
}

void BackupModel::removeEntryAt(int row)
{
    beginRemoveRows({}, row, row);
    files.removeAt(row);
    endRemoveRows();
}

void BackupModel::sortEntries(int column, bool sortDescending)
{
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    QStringList names;
    for (const QModelIndex &index : before)
        names.append(files[index.row()].name);
    if (column == Name)
        sortByName(files, sortDescending);
    else
        sortByDate(files, sortDescending);

    QHash<QString, int> rows;
    if (!before.isEmpty()) {
        for (int row = 0; row < files.size(); ++row)
            rows.insert(files[row].name, row);
    }
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i)
        after.append(index(rows.value(names[i]), before[i].column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

int BackupModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(files.size());
}

int BackupModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant BackupModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const BackupEntry &file = files[index.row()];
    return index.column() == Name ? file.name : creationText(file.createdDate);
}

QVariant BackupModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Name ? tr("Name") : tr("Created");
}

} // namespace varnel
