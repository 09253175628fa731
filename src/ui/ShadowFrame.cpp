#include "ui/ShadowFrame.h"

#include <QPainter>

#include <cmath>

namespace varnel {

ShadowFrame::ShadowFrame(QWidget *parent) : QWidget(parent) { }

void ShadowFrame::setShadowColor(const QColor &shadowColor)
{
    color = shadowColor;
    update();
}

void ShadowFrame::setBlurRadius(double blurRadius)
{
    radius = blurRadius;
    const int margin = int(std::ceil(radius));
    setContentsMargins(margin, margin, margin, margin);
    update();
}

void ShadowFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int steps = int(std::ceil(radius));
    for (int step = 0; step < steps; ++step) {
        QColor ring = color;
        const double nearness = (step + 0.5) / steps; // 1 at the edge of what it holds
        ring.setAlphaF(float(color.alphaF() * nearness * nearness));
        painter.setPen(ring);
        painter.drawRoundedRect(
            QRectF(rect()).adjusted(step + 0.5, step + 0.5, -step - 0.5, -step - 0.5),
            radius - step, radius - step);
    }
}

} // namespace varnel
