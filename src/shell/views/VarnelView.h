#pragma once

#include <QWidget>

namespace varnel {

/// The ground of the window: white, or the palette's base on a dark desktop, with a blue band of 90
/// along the top.
class VarnelView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace varnel
