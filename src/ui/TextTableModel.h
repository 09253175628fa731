#pragma once

#include <QAbstractTableModel>
#include <QStringList>

namespace varnel {

/// A read-only table of texts that is sorted when it is told to, not by itself.
class TextTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Column {
        QString title;
        Qt::CaseSensitivity comparison = Qt::CaseSensitive;
        Qt::Alignment alignment = Qt::AlignLeft;
    };

    explicit TextTableModel(QList<Column> columns, QObject *parent = nullptr);

    /// Each row has a text for each column.
    void setRows(QList<QStringList> rows);
    [[nodiscard]] const QList<QStringList> &rows() const;

    void setAlignment(int column, Qt::Alignment alignment);

    /// By the texts of the column, not by the locale; equal rows keep their order.
    void sortRows(int column, bool ascending);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QList<Column> columns;
    QList<QStringList> texts;
};

} // namespace varnel
