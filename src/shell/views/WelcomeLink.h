#pragma once

#include <QAbstractButton>

namespace varnel {

/// A way in: icon, title, a muted line below it, and an arrow at the end that says that it leads
/// somewhere else. It spends what height it is given on the space round its texts.
class WelcomeLink : public QAbstractButton {
    Q_OBJECT

public:
    /// The line below is also what a screen reader says after the title.
    WelcomeLink(const QIcon &icon, const QString &title, const QString &line);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] int heightOfTexts() const;
    void limitHeight();
    void drawGround(QPainter &painter) const;
    void drawTexts(QPainter &painter, const QRect &place) const;
    void drawArrow(QPainter &painter, const QRect &place) const;
};

} // namespace varnel
