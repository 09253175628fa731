#pragma once

#include "ui/ImageAndTextCell.h"

namespace varnel {

/// The process column's cell: logs each display, with the path of the icon.
class ProcessCell : public ImageAndTextCell {
    Q_OBJECT

public:
    using ImageAndTextCell::ImageAndTextCell;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};

} // namespace varnel
