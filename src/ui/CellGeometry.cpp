#include "ui/CellGeometry.h"

#include <algorithm>
#include <cmath>

namespace varnel::cell {

namespace {

constexpr qreal gap = 3; // added to the icon's width when the cell is divided
constexpr QPointF iconOffset {3, -1};
constexpr QPointF textOffset {2, 2};
constexpr qreal textHeightCut = 4;

} // namespace

QRectF titleRectForBounds(const QRectF &bounds, const Icon &icon)
{
    QRectF text = bounds;
    if (icon)
        text.setLeft(text.left() + std::min(icon->width() + gap, bounds.width()));
    text.translate(textOffset);
    text.setHeight(text.height() - textHeightCut);
    return text;
}

QPointF iconPoint(const QRectF &frame, const QSizeF &icon, bool flipped)
{
    const qreal heights = flipped ? frame.height() + icon.height() : frame.height() - icon.height();
    return frame.topLeft() + iconOffset + QPointF(0, std::ceil(heights * 0.5));
}

QRectF iconRect(const QRectF &frame, const QSizeF &icon)
{
    return {iconPoint(frame, icon, true) - QPointF(0, icon.height()), icon};
}

QRectF groupTitleRect(const QRectF &frame, qreal textHeight)
{
    const qreal offset = std::floor((frame.height() - textHeight) * 0.5);
    return frame.adjusted(0, offset, 0, -offset);
}

QSizeF cellSize(const QSizeF &base, const Icon &icon)
{
    return {base.width() + gap + (icon ? icon->width() : 0), base.height()};
}

Hit hitTest(std::optional<bool> selectedIsDraggable)
{
    return selectedIsDraggable.value_or(true) ? Hit::ContentArea : Hit::TrackableArea;
}

} // namespace varnel::cell
