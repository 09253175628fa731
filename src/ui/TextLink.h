#pragma once

#include <QAbstractButton>

namespace varnel {

/// A button that is only a word or two in the accent's colour, underlined under the pointer.
class TextLink : public QAbstractButton {
    Q_OBJECT

public:
    explicit TextLink(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace varnel
