#pragma once

#include <QRectF>
#include <QSizeF>

#include <optional>

/// Where icon and text stand in a cell that shows a small icon at the left of a text. All numbers
/// in logical pixels; "flipped" means that y grows downwards, as it does in the toolkit's views.
namespace varnel::cell {

inline constexpr QSizeF iconSize {16, 16}; ///< forced on every image given to a cell

using Icon = std::optional<QSizeF>; ///< the size of the cell's image, none without one

/// Where the text stands. Without an icon nothing is cut off for one.
[[nodiscard]] QRectF titleRectForBounds(const QRectF &bounds, const Icon &icon);

/// The point from which the icon is drawn upwards, its lower left corner.
[[nodiscard]] QPointF iconPoint(const QRectF &frame, const QSizeF &icon, bool flipped);

/// The rectangle that the icon covers in a view whose y grows downwards.
[[nodiscard]] QRectF iconRect(const QRectF &frame, const QSizeF &icon);

/// The rectangle of a group's title, centred upright by the height of its text.
[[nodiscard]] QRectF groupTitleRect(const QRectF &frame, qreal textHeight);

/// The size of a cell whose text alone would take the base size.
[[nodiscard]] QSizeF cellSize(const QSizeF &base, const Icon &icon);

enum class Hit { ContentArea, TrackableArea };

/// What a press on a cell hits: nothing is known of the selected row (no view), or whether its item
/// can be dragged.
[[nodiscard]] Hit hitTest(std::optional<bool> selectedIsDraggable);

} // namespace varnel::cell
