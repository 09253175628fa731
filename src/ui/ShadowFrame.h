#pragma once

#include <QWidget>

namespace varnel {

/// A soft shadow round what it holds.
class ShadowFrame : public QWidget {
    Q_OBJECT

public:
    explicit ShadowFrame(QWidget *parent = nullptr);

    [[nodiscard]] QColor shadowColor() const { return color; }
    void setShadowColor(const QColor &shadowColor);
    /// In logical pixels.
    [[nodiscard]] double blurRadius() const { return radius; }
    void setBlurRadius(double blurRadius);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor color;
    double radius = 0;
};

} // namespace varnel
