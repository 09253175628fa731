#pragma once

#include <QWidget>

namespace varnel {

/// The place of one page in the tab view. A page that was given another size than the container's
/// keeps the difference when the window is resized.
class PageContainer : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// The views that were added, first to last.
    [[nodiscard]] QList<QWidget *> subviews() const;

    /// Puts the view at the container's origin, in that size.
    void addSubview(QWidget *view, const QSize &size);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QSize surplus; ///< by how much the view is larger than the container
};

} // namespace varnel
