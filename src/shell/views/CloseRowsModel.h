#pragma once

#include "shell/QuitDecision.h"

#include <QAbstractTableModel>

namespace varnel {

/// The rows of the close-applications sheet: a check box, icon and name.
class CloseRowsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Close, Name };

    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] const QList<CloseRow> &rows() const { return applications; }
    void appendRows(const QList<CloseRow> &more);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    QList<CloseRow> applications;
};

} // namespace varnel
