#include "shell/views/WelcomeLinkBox.h"

#include "shell/views/WelcomeLink.h"
#include "ui/StyleDrawing.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QVBoxLayout>

namespace varnel {

WelcomeLinkBox::WelcomeLinkBox(QWidget *parent) : QWidget(parent), rows(new QVBoxLayout(this))
{
    rows->setContentsMargins(1, 1, 1, 1);
    rows->setSpacing(1);
    rows->setSizeConstraint(QLayout::SetMinAndMaxSize); // no higher than its links want to be
}

void WelcomeLinkBox::addLink(WelcomeLink *link)
{
    rows->addWidget(link);
}

void WelcomeLinkBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QColor line = Theme::hairline(palette());
    StyleDrawing::box(&painter, rect(), Theme::floatingRadius, Theme::bandGround(palette()), line);
    const qreal thickness = StyleDrawing::devicePixel(painter);
    for (int i = 1; i < rows->count(); ++i) {
        const QRect below = rows->itemAt(i)->geometry();
        const QRectF between(below.left() + Theme::gap, below.top() - 1,
                             below.width() - 2 * Theme::gap, thickness);
        painter.fillRect(StyleDrawing::onDevicePixels(painter, between), line);
    }
}

} // namespace varnel
