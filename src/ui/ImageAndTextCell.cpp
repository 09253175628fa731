#include "ui/ImageAndTextCell.h"

#include "ui/SmallFont.h"
#include "ui/Theme.h"
#include "ui/VarnelStyle.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace varnel {

namespace {

const QStyle &styleOf(const QStyleOptionViewItem &option)
{
    return option.widget != nullptr ? *option.widget->style() : *QApplication::style();
}

QIcon::Mode iconMode(QStyle::State state)
{
    if ((state & QStyle::State_Enabled) == 0)
        return QIcon::Disabled;
    return (state & QStyle::State_Selected) != 0 ? QIcon::Selected : QIcon::Normal;
}

/// The part of an item's rectangle that the cell may use.
QRectF frameOf(const QStyleOptionViewItem &option)
{
    QRectF frame = option.rect;
    // A source list's bar stands clear of the view's edge; the cell begins within the bar.
    if (VarnelStyle::part(option.widget) == VarnelStyle::Part::SourceList)
        frame.setLeft(std::max(frame.left(), qreal(Theme::gapSmall + Theme::gapTiny)));
    // A table's cells stand clear of one another, in line with the headers' words.
    else if (VarnelStyle::part(option.widget) == VarnelStyle::Part::List)
        frame.adjust(Theme::gapSmall, 0, -Theme::gapSmall, 0);
    return frame;
}

void drawText(QPainter &painter, const QStyleOptionViewItem &option, const QRectF &rect,
              Qt::TextElideMode elide)
{
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const QFontMetricsF metrics(option.font);
    const Qt::Alignment side = QStyle::visualAlignment(
        option.direction, option.displayAlignment & Qt::AlignHorizontal_Mask);
    painter.setFont(option.font);
    styleOf(option).drawItemText(&painter, rect.toAlignedRect(),
                                 int(Qt::AlignVCenter | side) | Qt::TextSingleLine, option.palette,
                                 (option.state & QStyle::State_Enabled) != 0,
                                 metrics.elidedText(option.text, elide, rect.width()),
                                 selected ? QPalette::HighlightedText : QPalette::Text);
}

/// The dot and the word; gives what is left for the text.
QRectF drawPending(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                   QRectF room)
{
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    // A source list's bar ends before the view does.
    if (VarnelStyle::part(option.widget) == VarnelStyle::Part::SourceList)
        room.setRight(room.right() - Theme::gapSmall);
    if (index.data(ImageAndTextCell::PendingRole).toBool()) {
        const double radius = Theme::pendingDotSize / 2.0;
        const QPointF centre(room.right() - radius - Theme::gapTiny, room.center().y());
        Theme::drawPendingDot(&painter, centre, option.palette, selected);
        room.setRight(centre.x() - radius - Theme::gapSmall);
    }
    const QString note = index.data(ImageAndTextCell::NoteRole).toString();
    if (note.isEmpty())
        return room;
    painter.setFont(option.font);
    painter.setPen(selected ? Theme::accentText() : Theme::mutedText(option.palette));
    painter.drawText(room, int(Qt::AlignRight | Qt::AlignVCenter) | Qt::TextSingleLine, note);
    const double width = QFontMetricsF(option.font).horizontalAdvance(note);
    room.setRight(room.right() - width - Theme::gapSmall);
    return room;
}

} // namespace

ImageAndTextCell::ImageAndTextCell(QObject *parent)
    : QStyledItemDelegate(parent), textFont(smallSystemFont())
{
}

ImageAndTextCell *ImageAndTextCell::copyWithZone(QObject *parent) const
{
    auto *copy = new ImageAndTextCell(parent);
    copy->held = held;
    copy->textFont = textFont;
    copy->text = text;
    copy->elide = elide;
    return copy;
}

void ImageAndTextCell::setImage(const std::shared_ptr<CellImage> &image)
{
    if (image == held)
        return;
    held = image;
    if (held)
        held->size = cell::iconSize;
}

bool ImageAndTextCell::isGroupCell() const
{
    return !held && !text.isEmpty();
}

cell::Icon ImageAndTextCell::imageSize() const
{
    return held ? cell::Icon(held->size) : std::nullopt;
}

QRectF ImageAndTextCell::titleRectForBounds(const QRectF &bounds) const
{
    return cell::titleRectForBounds(bounds, imageSize());
}

QSizeF ImageAndTextCell::cellSize() const
{
    return cell::cellSize(QFontMetricsF(textFont).size(Qt::TextSingleLine, text), imageSize());
}

cell::Hit ImageAndTextCell::hitTest(const QAbstractItemView *controlView)
{
    if (controlView == nullptr)
        return cell::hitTest(std::nullopt);
    const QModelIndexList selected = controlView->selectionModel() != nullptr
        ? controlView->selectionModel()->selectedIndexes()
        : QModelIndexList();
    return cell::hitTest(!selected.isEmpty()
                         && selected.first().flags().testFlag(Qt::ItemIsDragEnabled));
}

QIcon ImageAndTextCell::iconOf(const QModelIndex &index) const
{
    const QVariant decoration = index.data(Qt::DecorationRole);
    const QIcon icon = decoration.canConvert<QPixmap>() && !decoration.canConvert<QIcon>()
        ? QIcon(decoration.value<QPixmap>())
        : decoration.value<QIcon>();
    return icon.isNull() && held ? held->icon : icon;
}

void ImageAndTextCell::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->font = textFont;
    option->fontMetrics = QFontMetrics(textFont);
    option->features &= ~QStyleOptionViewItem::HasDecoration;
    option->icon = {};
}

void ImageAndTextCell::paint(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    QStyleOptionViewItem ground = item;
    ground.text.clear();
    painter->save();
    styleOf(item).drawControl(QStyle::CE_ItemViewItem, &ground, painter, item.widget);

    const QRectF frame = drawPending(*painter, item, index, frameOf(item));
    const QIcon icon = iconOf(index);
    QRectF textRect = frame;
    if (!icon.isNull()) {
        icon.paint(painter, cell::iconRect(frame, cell::iconSize).toAlignedRect(), Qt::AlignCenter,
                   iconMode(item.state));
        textRect = cell::titleRectForBounds(frame, cell::iconSize);
    } else if (!item.text.isEmpty()) {
        textRect = cell::groupTitleRect(frame, QFontMetricsF(item.font).height());
    }
    drawText(*painter, item, textRect, elide.value_or(item.textElideMode));
    painter->restore();
}

QSize ImageAndTextCell::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize base = QStyledItemDelegate::sizeHint(option, index);
    const cell::Icon icon = iconOf(index).isNull() ? std::nullopt : cell::Icon(cell::iconSize);
    const QSize size = cell::cellSize(base, icon).toSize();
    return size.expandedTo({0, int(cell::iconSize.height()) + 2});
}

void ImageAndTextCell::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                            const QModelIndex &index) const
{
    const cell::Icon icon = iconOf(index).isNull() ? std::nullopt : cell::Icon(cell::iconSize);
    editor->setGeometry(cell::titleRectForBounds(frameOf(option), icon).toAlignedRect());
}

} // namespace varnel
