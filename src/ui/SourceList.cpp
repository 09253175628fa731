#include "ui/SourceList.h"

#include "ui/Theme.h"

#include <QHeaderView>
#include <QMouseEvent>

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
    Theme::makeSourceList(this);
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
