#pragma once

#include "sysinfo/ProcessList.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

namespace varnel {

/// The process list as a table; nothing in it can be edited.
class ProcessModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Process, Priority, ProcessId, Location };
    static constexpr int IconPathRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setRows(QList<ProcessRow> rows);
    [[nodiscard]] const QList<ProcessRow> &rows() const { return processes; }
    void removeRowAt(int row);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QIcon icon(const QString &path) const;

    QList<ProcessRow> processes;
    mutable QHash<QString, QIcon> icons; ///< each file is read once for each reading of the list
};

} // namespace varnel
