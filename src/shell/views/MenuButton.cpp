#include "shell/views/MenuButton.h"

#include "ui/Theme.h"

#include <QPainter>

namespace varnel {

namespace {

constexpr int lineLength = 16;
constexpr qreal lineWidth = 1.75;
constexpr int lineDistance = 5;

} // namespace

MenuButton::MenuButton(QWidget *parent) : QToolButton(parent)
{
    setPopupMode(QToolButton::InstantPopup);
    setFocusPolicy(Qt::TabFocus);
}

QSize MenuButton::sizeHint() const
{
    return {Theme::gapHuge, Theme::gapHuge};
}

void MenuButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = Theme::bandInk(palette());
    if (underMouse() || isDown() || hasFocus()) {
        QColor veil = ink;
        veil.setAlphaF(isDown() ? 0.2F : 0.1F);
        painter.setBrush(veil);
        painter.setPen(hasFocus() ? QPen(ink, 1) : QPen(Qt::NoPen));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5),
                                Theme::floatingRadius, Theme::floatingRadius);
    }
    painter.setPen(QPen(ink, lineWidth, Qt::SolidLine, Qt::RoundCap));
    const QPointF middle = QRectF(rect()).center();
    for (const int offset : {-lineDistance, 0, lineDistance}) {
        const qreal y = middle.y() + offset;
        painter.drawLine(QPointF(middle.x() - lineLength / 2.0, y),
                         QPointF(middle.x() + lineLength / 2.0, y));
    }
}

} // namespace varnel
