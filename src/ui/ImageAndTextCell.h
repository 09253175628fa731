#pragma once

#include "ui/CellGeometry.h"

#include <QFont>
#include <QIcon>
#include <QStyledItemDelegate>

#include <memory>
#include <optional>

class QAbstractItemView;

namespace varnel {

/// An image and the size at which everybody who holds it draws it.
struct CellImage {
    QIcon icon;
    QSizeF size;
};

/// The cell of every icon-and-name column: a 16 x 16 icon at the left of a text. In a view the
/// image is the row's decoration, or else the cell's own.
class ImageAndTextCell : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// What a model tells beside the text: a dot at the right end for what waits to be saved, and a
    /// muted word before it.
    enum Role { PendingRole = Qt::UserRole + 100, NoteRole };

    explicit ImageAndTextCell(QObject *parent = nullptr);

    /// A cell like this one that holds the same image.
    [[nodiscard]] ImageAndTextCell *copyWithZone(QObject *parent) const;

    [[nodiscard]] std::shared_ptr<CellImage> image() const { return held; }
    /// Forces 16 x 16 on the image itself, so that every other user of it draws it so.
    void setImage(const std::shared_ptr<CellImage> &image);

    /// The text's font; at first the system's at its small size.
    [[nodiscard]] QFont font() const { return textFont; }
    void setFont(const QFont &font) { textFont = font; }

    /// The text of the cell when it stands outside a view.
    [[nodiscard]] QString title() const { return text; }
    void setTitle(const QString &title) { text = title; }

    /// Where long texts lose letters; none: as the view says. Paths lose them in the middle.
    void setElideMode(std::optional<Qt::TextElideMode> mode) { elide = mode; }

    /// Whether there is a title and no image.
    [[nodiscard]] bool isGroupCell() const;
    [[nodiscard]] QRectF titleRectForBounds(const QRectF &bounds) const;
    /// The size of title and image.
    [[nodiscard]] QSizeF cellSize() const;
    /// What a press hits. It goes by the selected row, whichever row the press is over.
    [[nodiscard]] static cell::Hit hitTest(const QAbstractItemView *controlView);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    [[nodiscard]] QIcon iconOf(const QModelIndex &index) const;
    [[nodiscard]] cell::Icon imageSize() const;

    std::shared_ptr<CellImage> held;
    QFont textFont;
    QString text;
    std::optional<Qt::TextElideMode> elide;
};

} // namespace varnel
