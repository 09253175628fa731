#include "shell/views/VarnelView.h"

#include "ui/Theme.h"

#include <QPainter>
#include <QPaintEvent>

namespace varnel {

void VarnelView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QColor ground = Theme::isDark(palette()) ? palette().color(QPalette::Base) : Qt::white;
    painter.fillRect(event->rect(), ground);
    Theme::drawBand(&painter, QRect(0, 0, width(), Theme::bandHeight), palette());
}

} // namespace varnel
