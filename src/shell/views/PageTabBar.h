#pragma once

#include <QTabBar>

namespace varnel {

/// The row of page names under the band: icon and word, the chosen one in the accent with a bar
/// below it.
class PageTabBar : public QTabBar {
    Q_OBJECT

public:
    explicit PageTabBar(QWidget *parent);

    /// Gives up what the names can do without, until all of them fit: room, or the icons, or both.
    void fitInto(int width);

protected:
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    void drawTab(QPainter &painter, int index) const;
    [[nodiscard]] QFont fontOf(int index) const;

    [[nodiscard]] int iconRoom() const;

    int sideGap;
    bool showsIcons = true;
    int hovered = -1;
};

} // namespace varnel
