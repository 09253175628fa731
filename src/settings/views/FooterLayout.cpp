#include "settings/views/FooterLayout.h"

#include <QLabel>

namespace varnel {

namespace {

void centreOver(QWidget *widget, const QWidget *below, int y)
{
    widget->move(below->x() + (below->width() - widget->width()) / 2, y);
}

} // namespace

int layOutFooter(const std::array<FooterColumn, 3> &columns, int left)
{
    constexpr int gap = 15;
    int x = left;
    int bottom = 0;
    for (const FooterColumn &column : columns) {
        column.button->resize(column.button->sizeHint());
        column.label->adjustSize();
        column.changesLabel->adjustSize();
        const int labelY = column.button->height() + 4;
        const int changesY = labelY + column.label->height();
        // Each caption after the first is set off by its own width, not by that of the one before.
        if (&column != columns.data())
            x += column.changesLabel->width() + gap;
        column.changesLabel->move(x, changesY);
        centreOver(column.label, column.changesLabel, labelY);
        centreOver(column.button, column.changesLabel, 0);
        bottom = std::max(bottom, changesY + column.changesLabel->height());
    }
    return bottom;
}

} // namespace varnel
