#pragma once

#include <QStyledItemDelegate>

namespace varnel {

/// A cell that is a check box and nothing else, in the middle of its column. A click on the box
/// changes it; one beside it only selects the row.
class CheckBoxCell : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Where the box is drawn in a cell of that place.
    [[nodiscard]] static QRect boxRect(const QRect &cell, const QWidget *view);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;
};

} // namespace varnel
