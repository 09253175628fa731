#pragma once

#include "backup/BackupFolder.h"

#include <QAbstractTableModel>

namespace varnel {

/// The backup files of the folder as a table.
class BackupModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Name, Created };

    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] const QList<BackupEntry> &entries() const { return files; }
    void setEntries(QList<BackupEntry> entries);
    void removeEntryAt(int row);
    /// The flag's effect is that of sortByName() and sortByDate(). Whoever holds a row by index
    /// keeps the file.
    void sortEntries(int column, bool sortDescending);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QList<BackupEntry> files;
};

} // namespace varnel
