#pragma once

#include <QToolButton>

namespace varnel {

/// The three lines on the band that open the application menu.
class MenuButton : public QToolButton {
    Q_OBJECT

public:
    explicit MenuButton(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace varnel
