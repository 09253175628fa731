#pragma once

#include "loginitems/LoginItemRow.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

namespace varnel {

/// The login items as a table: a check box, icon and name, the path.
class LoginItemsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Enabled, Name, Path };

    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] const QList<LoginItemRow> &rows() const { return items; }
    void setRows(QList<LoginItemRow> rows);
    void appendRow(const LoginItemRow &row);
    void removeRowAt(int row);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    /// The user ticked or unticked a row.
    void enabledChanged(int row, bool enabled);

private:
    [[nodiscard]] QIcon icon(const LoginItemRow &row) const;

    QList<LoginItemRow> items;
    mutable QHash<QString, QIcon> icons; ///< each file is read once for each reading of the list
};

} // namespace varnel
