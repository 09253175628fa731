#pragma once

#include <QLabel>

namespace varnel {

/// One line of text that loses its middle where there is no room, as paths should; the whole text
/// is in the tip then.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QString fitting() const;
};

} // namespace varnel
