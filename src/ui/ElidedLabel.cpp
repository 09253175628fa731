#include "ui/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace varnel {

QString ElidedLabel::fitting() const
{
    return fontMetrics().elidedText(text(), elide, contentsRect().width());
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, fontMetrics().height()};
}

QSize ElidedLabel::sizeHint() const
{
    // One more than the text, lest rounding elides what fits.
    return {fontMetrics().horizontalAdvance(text()) + 1, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    // The label itself shows what is selected, which nothing does of a text that is cut.
    if (textInteractionFlags().testFlag(Qt::TextSelectableByMouse) && fitting() == text()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    if (ink)
        painter.setPen(ink(palette()));
    style()->drawItemText(&painter, contentsRect(), int(alignment()) | Qt::TextSingleLine,
                          palette(), isEnabled(), fitting(),
                          ink ? QPalette::NoRole : foregroundRole());
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    updateTip();
}

void ElidedLabel::showText(const QString &text)
{
    setText(text);
    updateTip();
}

void ElidedLabel::setLastingTip(const QString &tip)
{
    hasLastingTip = true;
    setToolTip(tip);
}

void ElidedLabel::setInk(Ink colour)
{
    if (colour != ink)
        update();
    ink = colour;
}

void ElidedLabel::updateTip()
{
    if (!hasLastingTip)
        setToolTip(fitting() == text() ? QString() : text());
}

} // namespace varnel
