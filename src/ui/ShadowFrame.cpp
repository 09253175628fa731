#include "ui/ShadowFrame.h"

#include <QPainter>

#include <cmath>

namespace varnel {

namespace {

/// How much of the shadow is left at a distance from what throws it, in radii: half of it at the
/// edge, as where a blurred edge lies, and nothing to be seen at the end.
double shadowAt(double distance)
{
    constexpr double spread = 0.5;
    return std::erfc(distance / (spread * std::sqrt(2.0))) / 2;
}

} // namespace

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
    const QRectF inner = contentsRect();
    // One ring for each pixel of the screen, so that the shadow is as soft at twice the scale.
    const double step = 1 / devicePixelRatioF();
    const int rings = qRound(radius / step);
    for (int i = 0; i < rings; ++i) {
        const double distance = (i + 0.5) * step;
        QColor ring = color;
        ring.setAlphaF(float(color.alphaF() * shadowAt(distance / radius)));
        painter.setPen(QPen(ring, step));
        painter.drawRoundedRect(inner.adjusted(-distance, -distance, distance, distance), distance,
                                distance);
    }
}

} // namespace varnel
