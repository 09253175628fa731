#include "settings/views/SettingsColumn.h"

#include <QChildEvent>

#include <algorithm>

namespace varnel {

SettingsColumn::SettingsColumn(QWidget *parent) : QWidget(parent)
{
    setBackgroundRole(QPalette::Base);
    setFixedHeight(0);
}

int SettingsColumn::append(QWidget *row)
{
    row->setParent(this);
    stack.removeOne(row);
    stack.append(row);
    row->show();
    layOutRows();
    return row->height();
}

void SettingsColumn::removeSubview()
{
    while (!stack.isEmpty()) {
        QWidget *last = stack.takeLast();
        last->hide();
        last->setParent(nullptr);
    }
    layOutRows();
}

QList<QWidget *> SettingsColumn::rows() const
{
    return stack;
}

int SettingsColumn::heightOf(const QWidget &row) const
{
    return row.hasHeightForWidth() ? row.heightForWidth(width()) : row.sizeHint().height();
}

void SettingsColumn::layOutRows()
{
    // With a font so large that a row no longer fits, the page is scrolled sideways: nothing is cut
    // off.
    int widest = 0;
    for (const QWidget *row : std::as_const(stack))
        widest = std::max(widest, row->minimumSizeHint().width());
    setMinimumWidth(widest);
    int bottom = 0;
    for (QWidget *row : std::as_const(stack)) {
        const int height = heightOf(*row);
        row->setGeometry(0, bottom, width(), height);
        bottom += height;
    }
    setFixedHeight(bottom);
}

bool SettingsColumn::event(QEvent *event)
{
    // A row wants another height: its font or its text has changed.
    if (event->type() == QEvent::LayoutRequest)
        layOutRows();
    return QWidget::event(event);
}

void SettingsColumn::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layOutRows();
}

void SettingsColumn::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    // Rows belong to their modules, which may take them away at any time.
    if (event->removed())
        stack.removeAll(event->child());
}

} // namespace varnel
