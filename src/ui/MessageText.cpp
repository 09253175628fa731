#include "ui/MessageText.h"

#include "ui/Theme.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace varnel {

namespace {

constexpr int mostLines = 2;
constexpr int signSize = 16;

class AccessibleMessage : public QAccessibleWidget {
public:
    explicit AccessibleMessage(MessageText *text)
        : QAccessibleWidget(text, QAccessible::Notification)
    {
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        const auto *message = qobject_cast<const MessageText *>(object());
        return kind == QAccessible::Name && message != nullptr ? message->notice().text
                                                               : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface *makeAccessible(const QString & /*className*/, QObject *object)
{
    auto *text = qobject_cast<MessageText *>(object);
    return text != nullptr ? new AccessibleMessage(text) : nullptr;
}

} // namespace

MessageText::MessageText(QWidget *parent) : QWidget(parent)
{
    static const bool known = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(known)
    setObjectName(QStringLiteral("messageText"));
    Theme::setTextRole(this, Theme::TextRole::Help);
}

void MessageText::setNotice(const Notice &notice, bool hasSign)
{
    shown = notice;
    showsSign = hasSign;
    update();
}

void MessageText::announce()
{
    QAccessibleEvent named(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&named);
    // Older toolkits have no announcements; there readers say what a notification says that shows.
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent announcement(this, shown.text);
    if (shown.tone == Notice::Tone::Failure)
        announcement.setPoliteness(QAccessible::AnnouncementPoliteness::Assertive);
    QAccessible::updateAccessibility(&announcement);
#else
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
#endif
}

int MessageText::textLeft() const
{
    return showsSign ? signSize + Theme::gapSmall : 0;
}

int MessageText::lineWidth() const
{
    // One more than the text, lest rounding elides what fits.
    return textLeft() + fontMetrics().horizontalAdvance(shown.text) + 1;
}

QStringList MessageText::linesAt(int width) const
{
    const int room = std::max(0, width - textLeft());
    QStringList lines;
    QTextLayout layout(shown.text, font(), this);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(room);
        if (lines.size() + 1 == mostLines) {
            lines +=
                fontMetrics().elidedText(shown.text.mid(line.textStart()), Qt::ElideRight, room);
            break;
        }
        lines += shown.text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

int MessageText::heightAt(int width) const
{
    const int lines = std::max(1, int(linesAt(width).size()));
    return std::max(lines * fontMetrics().lineSpacing(), showsSign ? signSize : 0);
}

void MessageText::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const bool isWhole = !linesAt(width()).value(mostLines - 1).endsWith(u'…');
    setToolTip(isWhole ? QString() : shown.text);
}

void MessageText::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor ink = Theme::mutedText(palette());
    if (shown.tone != Notice::Tone::Quiet)
        ink = shown.tone == Notice::Tone::Failure ? Theme::danger(palette())
                                                  : Theme::caution(palette());
    if (showsSign)
        drawSign(painter, ink);
    painter.setPen(ink);
    const QStringList lines = linesAt(width());
    const int line = fontMetrics().lineSpacing();
    int top = std::max(0, height() - int(lines.size()) * line) / 2;
    for (const QString &each : lines) {
        painter.drawText(QRect(textLeft(), top, width() - textLeft(), line),
                         int(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine, each);
        top += line;
    }
}

/// A tick, a triangle or a ring with a mark, level with the first line.
void MessageText::drawSign(QPainter &painter, const QColor &ink) const
{
    const int line = std::max(fontMetrics().lineSpacing(), signSize);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0, (std::min(line, height()) - signSize) / 2.0);
    painter.setPen(QPen(ink, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (shown.tone == Notice::Tone::Quiet) {
        painter.drawEllipse(QRectF(1.5, 1.5, 13, 13));
        painter.drawPolyline(QPolygonF({{5, 8.2}, {7.2, 10.4}, {11, 5.8}}));
    } else {
        if (shown.tone == Notice::Tone::Failure)
            painter.drawEllipse(QRectF(1.5, 1.5, 13, 13));
        else
            painter.drawPolygon(QPolygonF({{8, 1.8}, {14.8, 13.8}, {1.2, 13.8}}));
        const double down = shown.tone == Notice::Tone::Failure ? 0 : 1.4;
        painter.drawLine(QPointF(8, 4.8 + down), QPointF(8, 8.4 + down));
        painter.drawPoint(QPointF(8, 11 + down / 2));
    }
    painter.restore();
}

} // namespace varnel
