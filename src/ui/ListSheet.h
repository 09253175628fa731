#pragma once

#include "ui/SortFlag.h"
#include "ui/TextTableModel.h"

#include <QDialog>
#include <QLoggingCategory>

class QLabel;
class QTableView;

namespace varnel {

class ElidedLabel;

/// A sheet that lists rows of text, sorts them when a header is clicked, and changes nothing.
class ListSheet : public QDialog {
    Q_OBJECT

public:
    /// `category` takes the line "didClickTableColumn" of each header click.
    ListSheet(const QString &title, QList<TextTableModel::Column> columns,
              const QLoggingCategory &(*category)(), QWidget *parent);

    /// New rows stand in their own order, whatever sorting was done before; the sort state stays.
    void setRows(QList<QStringList> rows);
    [[nodiscard]] const QList<QStringList> &rows() const;

    /// A line of muted text above the table; there is none at first.
    void setCaption(const QString &text);
    [[nodiscard]] QString captionText() const;

    /// A sentence of muted text below the table; none when it is null.
    void setNote(const QString &text);
    [[nodiscard]] QString noteText() const;

    /// Said in grey over the table while there are no rows.
    void setEmptyText(const QString &text);

    /// Makes the sheet large enough for its rows, at the font it has, within the screen.
    void fitRows();

    void didClickTableColumn(int column);
    [[nodiscard]] const SortFlag &sorting() const;

    /// Drops the rows and ends the sheet.
    void closeWindow();

protected:
    void reject() override;

private:
    void showEmptyText();

    TextTableModel *model;
    QTableView *tableView;
    ElidedLabel *caption;
    QLabel *note;
    QLabel *emptyLabel;
    SortFlag sortFlag;
    const QLoggingCategory &(*category)();
};

} // namespace varnel
