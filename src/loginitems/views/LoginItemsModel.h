#pragma once

#include "loginitems/LoginItemRow.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

#include <functional>

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

    /// What is said beside a name whose change waits to be saved; null where none does.
    using NoteOf = std::function<QString(const QString &path)>;
    void setNotes(NoteOf notes);
    /// Some may be others now.
    void updateNotes();

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
    NoteOf noteOf;
    mutable QHash<QString, QIcon> icons; ///< each file is read once for each reading of the list
};

} // namespace varnel
