#pragma once

#include <QColor>
#include <QRectF>
#include <QStyle>

class QPainter;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionHeader;
class QStyleOptionSlider;
class QStyleOptionTab;

/// What VarnelStyle paints itself. Every line is one device pixel and lies on whole ones, also at
/// scale 1.5.
namespace varnel::StyleDrawing {

/// A rectangle with its edges moved to whole device pixels of what the painter paints on.
[[nodiscard]] QRectF onDevicePixels(const QPainter &painter, const QRectF &rect);
/// The height of one device pixel in the painter's units.
[[nodiscard]] qreal devicePixel(const QPainter &painter);

/// A filled box with an edge drawn inside of it; an edge width of 0 is a hairline.
void box(QPainter *painter, const QRectF &rect, qreal radius, const QColor &fill,
         const QColor &edge, qreal edgeWidth = 0);

enum class ButtonKind { Plain, Accent, Danger };
void buttonPanel(QPainter *painter, const QStyleOption &option, ButtonKind kind);
[[nodiscard]] QColor buttonText(const QStyleOption &option, ButtonKind kind);

void fieldPanel(QPainter *painter, const QStyleOption &option, qreal radius);
/// The field's edge alone, and the ring when it has the focus.
void fieldEdge(QPainter *painter, const QStyleOption &option, qreal radius);
void focusRing(QPainter *painter, const QStyleOption &option, qreal radius);
/// The part within the option's rectangle of a focus ring that runs round more than it.
void ringPart(QPainter *painter, const QStyleOption &option, const QRectF &ring);
void checkBox(QPainter *painter, const QStyleOption &option);
/// A horizontal slider without tick marks.
void slider(QPainter *painter, const QStyleOptionSlider &option, const QRectF &groove,
            const QRectF &handle);

/// A scroll bar is a handle on nothing: no groove, no arrows.
inline constexpr int scrollBarWidth = 12;
[[nodiscard]] QRect scrollBarPart(const QStyleOptionSlider &option, QStyle::SubControl part);
void scrollBar(QPainter *painter, const QStyleOptionSlider &option, const QRectF &handle);

void tab(QPainter *painter, const QStyleOptionTab &option);
void headerGround(QPainter *painter, const QStyleOption &option, bool dividerAtRight);
/// The bar behind a source list's row when it is selected or pointed at.
void sourceListBar(QPainter *painter, const QStyleOption &option, const QRectF &bar,
                   bool viewHasFocus);

} // namespace varnel::StyleDrawing
