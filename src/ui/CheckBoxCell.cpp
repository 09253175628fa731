#include "ui/CheckBoxCell.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

namespace varnel {

namespace {

const QStyle &styleOf(const QWidget *view)
{
    return view != nullptr ? *view->style() : *QApplication::style();
}

} // namespace

QRect CheckBoxCell::boxRect(const QRect &cell, const QWidget *view)
{
    const QStyle &style = styleOf(view);
    const QSize size(style.pixelMetric(QStyle::PM_IndicatorWidth, nullptr, view),
                     style.pixelMetric(QStyle::PM_IndicatorHeight, nullptr, view));
    return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, cell);
}

void CheckBoxCell::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const bool checked = item.checkState == Qt::Checked;
    item.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    const QStyle &style = styleOf(item.widget);
    style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    item.rect = boxRect(option.rect, item.widget);
    item.state.setFlag(QStyle::State_HasFocus, false);
    item.state |= checked ? QStyle::State_On : QStyle::State_Off;
    style.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &item, painter, item.widget);
}

bool CheckBoxCell::editorEvent(QEvent *event, QAbstractItemModel *model,
                               const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const bool isMouse = event->type() == QEvent::MouseButtonPress
        || event->type() == QEvent::MouseButtonRelease
        || event->type() == QEvent::MouseButtonDblClick;
    if (!isMouse)
        return false;
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (mouse->button() != Qt::LeftButton
        || !boxRect(option.rect, option.widget).contains(mouse->position().toPoint()))
        return false;
    // The first half of a click is taken too: it opens no editor and drags nothing.
    if (event->type() != QEvent::MouseButtonRelease)
        return true;
    const bool checked = index.data(Qt::CheckStateRole).value<Qt::CheckState>() == Qt::Checked;
    return model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

} // namespace varnel
