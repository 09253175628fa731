#include "ui/SourceList.h"

#include "ui/Theme.h"

#include <QHeaderView>
#include <QMouseEvent>

#include <algorithm>

namespace varnel {

SourceList::SourceList(QWidget *parent) : QTreeView(parent)
{
    setHeaderHidden(true);
    // The selection's bar begins at the indentation's left, the cell at its right.
    setIndentation(Theme::gap - Theme::gapTiny);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    Theme::makeSourceList(this);
}

QSize SourceList::sizeHint() const
{
    constexpr int usualWidth = 192;
    // The words end well before the bar does, which ends before the list.
    const int words = indentation() + sizeHintForColumn(0) + 2 * Theme::gapSmall;
    return {std::max(usualWidth, words), QTreeView::sizeHint().height()};
}

void SourceList::mousePressEvent(QMouseEvent *event)
{
    const QModelIndex pressed = indexAt(event->position().toPoint());
    const bool again = pressed.isValid() && selectionModel()->isSelected(pressed);
    QTreeView::mousePressEvent(event);
    if (again && event->button() == Qt::LeftButton)
        emit chosenAgain();
}

} // namespace varnel
