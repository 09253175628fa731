#include "sysinfo/views/ProcessModel.h"

#include "ui/FileIcon.h"

#include <utility>

namespace varnel {

namespace {

bool isNumber(int column)
{
    return column == ProcessModel::Priority || column == ProcessModel::ProcessId;
}

QString text(const ProcessRow &row, int column)
{
    switch (column) {
    case ProcessModel::Process:
        return row.process;
    case ProcessModel::Priority:
        return row.priority;
    case ProcessModel::ProcessId:
        return QString::number(row.processId);
    case ProcessModel::Location:
        return row.bundleLocation;
    default:
        return {};
    }
}

} // namespace

void ProcessModel::setRows(QList<ProcessRow> rows)
{
    beginResetModel();
    processes = std::move(rows);
    icons.clear();
    endResetModel();
}

void ProcessModel::removeRowAt(int row)
{
    beginRemoveRows({}, row, row);
    processes.removeAt(row);
    endRemoveRows();
}

int ProcessModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(processes.size());
}

int ProcessModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 4;
}

QIcon ProcessModel::icon(const QString &path) const
{
    auto known = icons.find(path);
    if (known == icons.end())
        known = icons.insert(path, fileIcon(path));
    return *known;
}

QVariant ProcessModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const ProcessRow &row = processes[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return text(row, index.column());
    case Qt::DecorationRole:
        return index.column() == Process ? QVariant(icon(row.icon)) : QVariant();
    case Qt::TextAlignmentRole:
        return int((isNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case IconPathRole:
        return row.icon;
    default:
        return {};
    }
}

QVariant ProcessModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int((isNumber(section) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Process:
        return tr("Process");
    case Priority:
        return tr("Priority");
    case ProcessId:
        return tr("Process ID");
    default:
        return tr("Location");
    }
}

} // namespace varnel
