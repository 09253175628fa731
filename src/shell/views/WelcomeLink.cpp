#include "shell/views/WelcomeLink.h"

#include "ui/StyleDrawing.h"
#include "ui/Theme.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace varnel {

namespace {

constexpr int iconExtent = 24;
constexpr int arrowWidth = 8;
constexpr int narrowest = 240;
constexpr int betweenTexts = 2;
constexpr int leastPadding = Theme::gapTiny;
constexpr int usualPadding = Theme::gapSmall;
constexpr int mostPadding = Theme::gap - 2;

QFont titleFont(const QFont &desktop)
{
    return Theme::font(Theme::TextRole::RowTitle, desktop);
}

QFont lineFont(const QFont &desktop)
{
    return Theme::font(Theme::TextRole::Help, desktop);
}

} // namespace

WelcomeLink::WelcomeLink(const QIcon &icon, const QString &title, const QString &line)
{
    setIcon(icon);
    setText(title);
    setAccessibleDescription(line);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    limitHeight();
}

int WelcomeLink::heightOfTexts() const
{
    return QFontMetrics(titleFont(font())).height() + betweenTexts
        + QFontMetrics(lineFont(font())).height();
}

void WelcomeLink::limitHeight()
{
    setMaximumHeight(heightOfTexts() + 2 * mostPadding);
}

QSize WelcomeLink::sizeHint() const
{
    const int texts =
        std::max(QFontMetrics(titleFont(font())).horizontalAdvance(text()),
                 QFontMetrics(lineFont(font())).horizontalAdvance(accessibleDescription()));
    const int width = 4 * Theme::gap + iconExtent + texts + arrowWidth;
    return {std::max(width, narrowest), heightOfTexts() + 2 * usualPadding};
}

QSize WelcomeLink::minimumSizeHint() const
{
    return {narrowest, heightOfTexts() + 2 * leastPadding};
}

void WelcomeLink::changeEvent(QEvent *event)
{
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        limitHeight();
}

void WelcomeLink::resizeEvent(QResizeEvent *event)
{
    QAbstractButton::resizeEvent(event);
    const bool cutOff = width() < sizeHint().width() && sizeHint().width() > narrowest;
    setToolTip(cutOff ? text() + u'\n' + accessibleDescription() : QString());
}

void WelcomeLink::keyPressEvent(QKeyEvent *event)
{
    // A link is followed by Return as well, which the toolkit keeps for push buttons.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void WelcomeLink::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawGround(painter);
    const QRect inner = rect().adjusted(Theme::gap, 0, -Theme::gap, 0);
    const QRect iconPlace(inner.left(), inner.center().y() - iconExtent / 2 + 1, iconExtent,
                          iconExtent);
    icon().paint(&painter, iconPlace);
    const QRect arrow(inner.right() + 1 - arrowWidth, inner.top(), arrowWidth, inner.height());
    drawArrow(painter, arrow);
    drawTexts(painter, inner.adjusted(iconExtent + Theme::gap, 0, -arrowWidth - Theme::gap, 0));
}

void WelcomeLink::drawGround(QPainter &painter) const
{
    const QRect plate = rect().adjusted(Theme::gapTiny, 2, -Theme::gapTiny, -2);
    if (isDown() || underMouse()) {
        QColor veil = palette().color(QPalette::WindowText);
        veil.setAlphaF(isDown() ? 0.10F : 0.05F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(veil);
        painter.drawRoundedRect(plate, Theme::controlRadius, Theme::controlRadius);
    }
    if (hasFocus()) {
        QStyleOption ring;
        ring.initFrom(this);
        ring.rect = plate;
        StyleDrawing::focusRing(&painter, ring, Theme::controlRadius);
    }
}

void WelcomeLink::drawTexts(QPainter &painter, const QRect &place) const
{
    const auto draw = [&](const QFont &face, QPalette::ColorRole ink, QRect where,
                          const QString &said) {
        const QString fitting = QFontMetrics(face).elidedText(said, Qt::ElideRight, where.width());
        painter.setFont(face);
        painter.setPen(palette().color(ink));
        painter.drawText(where, int(Qt::AlignLeft) | Qt::AlignTop, fitting);
    };
    QRect where = place;
    where.setTop(place.top() + (place.height() - heightOfTexts()) / 2);
    draw(titleFont(font()), QPalette::WindowText, where, text());
    where.translate(0, QFontMetrics(titleFont(font())).height() + betweenTexts);
    draw(lineFont(font()), QPalette::PlaceholderText, where, accessibleDescription());
}

void WelcomeLink::drawArrow(QPainter &painter, const QRect &place) const
{
    const QPointF tip(place.right(), place.center().y() + 0.5);
    constexpr qreal reach = 4;
    const QPalette::ColorRole ink =
        underMouse() || hasFocus() ? QPalette::WindowText : QPalette::PlaceholderText;
    painter.setPen(QPen(palette().color(ink), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(
        QPolygonF({tip + QPointF(-reach, -reach), tip, tip + QPointF(-reach, reach)}));
}

} // namespace varnel
