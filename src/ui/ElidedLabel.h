#pragma once

#include <QLabel>

namespace varnel {

/// One line of text that loses a part where there is no room; the whole text is in the tip then.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    /// In the middle at first.
    void setElideMode(Qt::TextElideMode mode) { elide = mode; }
    /// A tip of its own, in place of the whole text.
    void setLastingTip(const QString &tip);
    /// Another ink than that of its role, of the palette it has then; null: its role's.
    using Ink = QColor (*)(const QPalette &palette);
    void setInk(Ink colour);
    /// Another text, with its tip.
    void showText(const QString &text);

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QString fitting() const;
    void updateTip();

    bool hasLastingTip = false;
    Ink ink = nullptr;
    Qt::TextElideMode elide = Qt::ElideMiddle;
};

} // namespace varnel
