#pragma once

#include <QWidget>

namespace varnel {

/// The part of the window below the band. It paints nothing and moves nothing; it only notes where
/// the mouse is dragged over what no page uses.
class MainView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Whether y grows downwards from the top left corner.
    [[nodiscard]] static bool isFlipped() { return true; }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void mouseDragged(const QPointF &place);
};

} // namespace varnel
