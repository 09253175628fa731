#include "ui/StyleDrawing.h"

#include "ui/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

namespace varnel::StyleDrawing {

namespace {

/// Thick enough to be seen round a control, thin enough not to move anything.
constexpr qreal focusWidth = 2;

/// Keeps what a drawing function sets on the painter to itself.
class PainterGuard {
public:
    explicit PainterGuard(QPainter *painter) : painter(painter)
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
    }
    ~PainterGuard() { painter->restore(); }
    Q_DISABLE_COPY_MOVE(PainterGuard)

private:
    QPainter *painter;
};

bool has(const QStyleOption &option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

QColor withAlpha(QColor colour, double alpha)
{
    colour.setAlphaF(static_cast<float>(alpha));
    return colour;
}

/// A flat ground under the pointer is a little darker, pressed a little more.
QColor underPointer(const QColor &ground, const QStyleOption &option)
{
    const QColor shade = option.palette.color(QPalette::Text);
    if (has(option, QStyle::State_Sunken) || has(option, QStyle::State_On))
        return Theme::over(withAlpha(shade, 0.14), ground);
    if (has(option, QStyle::State_MouseOver))
        return Theme::over(withAlpha(shade, 0.05), ground);
    return ground;
}

QColor quietEdge(const QStyleOption &option)
{
    return has(option, QStyle::State_Enabled) ? Theme::controlEdge(option.palette)
                                              : Theme::hairline(option.palette);
}

} // namespace

QRectF onDevicePixels(const QPainter &painter, const QRectF &rect)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device = toDevice.mapRect(rect);
    const QRectF whole(QPointF(qRound(device.left()), qRound(device.top())),
                       QPointF(qRound(device.right()), qRound(device.bottom())));
    return toDevice.inverted().mapRect(whole);
}

qreal devicePixel(const QPainter &painter)
{
    return 1 / painter.deviceTransform().m22();
}

void box(QPainter *painter, const QRectF &rect, qreal radius, const QColor &fill,
         const QColor &edge, qreal edgeWidth)
{
    const PainterGuard guard(painter);
    const qreal width = edgeWidth > 0 ? edgeWidth : devicePixel(*painter);
    const qreal inset = edge.alpha() ? width / 2 : 0;
    const QRectF line = onDevicePixels(*painter, rect).adjusted(inset, inset, -inset, -inset);
    painter->setPen(edge.alpha() ? QPen(edge, width) : QPen(Qt::NoPen));
    painter->setBrush(fill.alpha() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter->drawRoundedRect(line, radius, radius);
}

void buttonPanel(QPainter *painter, const QStyleOption &option, ButtonKind kind)
{
    const QPalette &palette = option.palette;
    const bool filled = kind == ButtonKind::Accent && has(option, QStyle::State_Enabled);
    QColor fill = filled ? Theme::accentFill() : palette.color(QPalette::Button);
    QColor edge = filled ? Theme::accentFill() : quietEdge(option);
    if (!has(option, QStyle::State_Enabled))
        fill = Qt::transparent;
    else
        fill = underPointer(fill, option);
    box(painter, option.rect, Theme::controlRadius, fill, edge);
    if (!has(option, QStyle::State_HasFocus))
        return;
    if (!filled) {
        focusRing(painter, option, Theme::controlRadius);
        return;
    }
    // The accent cannot be seen upon itself: the ring moves in, and is white.
    box(painter, QRectF(option.rect).adjusted(2, 2, -2, -2), Theme::controlRadius - 2,
        Qt::transparent, Theme::accentText(), 1);
}

QColor buttonText(const QStyleOption &option, ButtonKind kind)
{
    if (!has(option, QStyle::State_Enabled))
        return option.palette.color(QPalette::Disabled, QPalette::ButtonText);
    switch (kind) {
    case ButtonKind::Plain:
        break;
    case ButtonKind::Accent:
        return Theme::accentText();
    case ButtonKind::Danger:
        return Theme::danger(option.palette);
    }
    return option.palette.color(QPalette::ButtonText);
}

void fieldPanel(QPainter *painter, const QStyleOption &option, qreal radius)
{
    if (has(option, QStyle::State_Enabled))
        box(painter, option.rect, radius, option.palette.color(QPalette::Base), Qt::transparent);
    fieldEdge(painter, option, radius);
}

void fieldEdge(QPainter *painter, const QStyleOption &option, qreal radius)
{
    box(painter, option.rect, radius, Qt::transparent, quietEdge(option));
    if (has(option, QStyle::State_HasFocus))
        focusRing(painter, option, radius);
}

void focusRing(QPainter *painter, const QStyleOption &option, qreal radius)
{
    const bool onSelection = has(option, QStyle::State_Selected);
    box(painter, option.rect, radius, Qt::transparent,
        onSelection ? Theme::accentText() : Theme::accent(option.palette),
        onSelection ? 1 : focusWidth);
}

void ringPart(QPainter *painter, const QStyleOption &option, const QRectF &ring)
{
    const PainterGuard guard(painter);
    painter->setClipRect(option.rect, Qt::IntersectClip);
    box(painter, ring, Theme::controlRadius, Qt::transparent, Theme::accent(option.palette),
        focusWidth);
}

void checkBox(QPainter *painter, const QStyleOption &option)
{
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool on = has(option, QStyle::State_On) || has(option, QStyle::State_NoChange);
    const QColor fill = on && enabled ? Theme::accentFill()
        : enabled                     ? underPointer(option.palette.color(QPalette::Base), option)
                                      : QColor(Qt::transparent);
    const QRectF square = option.rect;
    const QColor edge = has(option, QStyle::State_Selected) ? Theme::accentText()
        : on && enabled                                     ? fill
                                                            : quietEdge(option);
    box(painter, square, 3, fill, edge);
    if (!on)
        return;
    const PainterGuard guard(painter);
    const QColor ink =
        enabled ? Theme::accentText() : option.palette.color(QPalette::Disabled, QPalette::Text);
    painter->setPen(QPen(ink, square.width() / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&square](qreal x, qreal y) {
        return square.topLeft() + QPointF(x * square.width(), y * square.height());
    };
    if (has(option, QStyle::State_NoChange))
        painter->drawLine(at(0.28, 0.5), at(0.72, 0.5));
    else
        painter->drawPolyline(QPolygonF({at(0.25, 0.53), at(0.43, 0.7), at(0.76, 0.32)}));
}

void slider(QPainter *painter, const QStyleOptionSlider &option, const QRectF &groove,
            const QRectF &handle)
{
    constexpr qreal thickness = 4;
    const bool enabled = has(option, QStyle::State_Enabled);
    const QColor edge = quietEdge(option);
    QRectF line(0, 0, groove.width(), thickness);
    line.moveCenter(groove.center());
    box(painter, line, thickness / 2, withAlpha(edge, edge.alphaF() * 0.6), Qt::transparent);
    if (enabled) {
        QRectF filled = line;
        if (option.direction == Qt::RightToLeft)
            filled.setLeft(handle.center().x());
        else
            filled.setRight(handle.center().x());
        box(painter, filled, thickness / 2, Theme::accent(option.palette), Qt::transparent);
    }
    const qreal size = std::min(handle.width(), handle.height());
    QRectF knob(0, 0, size, size);
    knob.moveCenter(handle.center());
    const bool focus = has(option, QStyle::State_HasFocus);
    box(painter, knob, size / 2,
        underPointer(option.palette.color(enabled ? QPalette::Button : QPalette::Window), option),
        focus ? Theme::accent(option.palette) : edge, focus ? focusWidth : 0);
}

QRect scrollBarPart(const QStyleOptionSlider &option, QStyle::SubControl part)
{
    constexpr int shortest = 32;
    const bool upright = option.orientation == Qt::Vertical;
    const int length = upright ? option.rect.height() : option.rect.width();
    const qint64 range = qint64(option.maximum) - option.minimum;
    const auto fitting =
        int(qint64(length) * option.pageStep / std::max<qint64>(range + option.pageStep, 1));
    const int handle = range > 0 ? std::min(std::max(fitting, shortest), length) : length;
    const int start = QStyle::sliderPositionFromValue(
        option.minimum, option.maximum, option.sliderPosition, length - handle, option.upsideDown);
    const auto between = [&](int from, int to) {
        const QRect &all = option.rect;
        return upright ? QRect(all.left(), all.top() + from, all.width(), to - from)
                       : QRect(all.left() + from, all.top(), to - from, all.height());
    };
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return option.rect;
    case QStyle::SC_ScrollBarSlider:
        return between(start, start + handle);
    case QStyle::SC_ScrollBarSubPage:
        return between(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return between(start + handle, length);
    default:
        return {};
    }
}

void scrollBar(QPainter *painter, const QStyleOptionSlider &option, const QRectF &handle)
{
    constexpr qreal inset = 3;
    const QRectF bar = handle.adjusted(inset, inset, -inset, -inset);
    const bool touched = has(option, QStyle::State_MouseOver) || has(option, QStyle::State_Sunken);
    QColor fill = Theme::controlEdge(option.palette);
    if (touched)
        fill.setAlphaF(0.7F);
    painter->fillRect(option.rect, option.palette.color(QPalette::Base));
    box(painter, bar, std::min(bar.width(), bar.height()) / 2, fill, Qt::transparent);
}

void tab(QPainter *painter, const QStyleOptionTab &option)
{
    constexpr qreal mark = 3;
    const QRectF rect = option.rect;
    const QRectF ground = rect.adjusted(2, 4, -2, -4);
    const bool chosen = has(option, QStyle::State_Selected);
    const QColor accent = Theme::accent(option.palette);
    if (chosen)
        box(painter, ground, Theme::floatingRadius, withAlpha(accent, 0.14), Qt::transparent);
    else if (has(option, QStyle::State_MouseOver))
        box(painter, ground, Theme::floatingRadius, Theme::rowShading(option.palette),
            Qt::transparent);
    if (chosen) {
        const QRectF line(ground.left() + Theme::gapSmall, rect.bottom() + 1 - mark,
                          ground.width() - 2 * Theme::gapSmall, mark);
        box(painter, line, mark / 2, accent, Qt::transparent);
    }
    if (has(option, QStyle::State_HasFocus))
        box(painter, ground, Theme::floatingRadius, Qt::transparent, accent, focusWidth);
}

void headerGround(QPainter *painter, const QStyleOption &option, bool dividerAtRight)
{
    const PainterGuard guard(painter);
    const QRectF rect = onDevicePixels(*painter, option.rect);
    const qreal line = devicePixel(*painter);
    const QColor colour = Theme::hairline(option.palette);
    painter->fillRect(rect, underPointer(option.palette.color(QPalette::Base), option));
    painter->fillRect(QRectF(rect.left(), rect.bottom() - line, rect.width(), line), colour);
    if (dividerAtRight)
        painter->fillRect(QRectF(rect.right() - line, rect.top() + Theme::gapTiny, line,
                                 rect.height() - 2 * Theme::gapTiny),
                          colour);
}

void sourceListBar(QPainter *painter, const QStyleOption &option, const QRectF &bar,
                   bool viewHasFocus)
{
    if (has(option, QStyle::State_Selected))
        box(painter, bar, Theme::floatingRadius, Theme::selectionFill(viewHasFocus),
            Qt::transparent);
    else if (has(option, QStyle::State_MouseOver))
        box(painter, bar, Theme::floatingRadius, Theme::rowShading(option.palette),
            Qt::transparent);
}

} // namespace varnel::StyleDrawing
