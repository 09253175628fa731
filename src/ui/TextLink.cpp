#include "ui/TextLink.h"

#include "ui/StyleDrawing.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QStyleOption>

namespace varnel {

namespace {

/// The focus ring stands round the text; without a ring the text's edge is the widget's.
constexpr QMargins ringMargins(0, 2, Theme::gapTiny, 2);

} // namespace

TextLink::TextLink(QWidget *parent) : QAbstractButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize TextLink::sizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine, text()).grownBy(ringMargins);
}

void TextLink::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QFont face = font();
    face.setUnderline(underMouse());
    painter.setFont(face);
    painter.setPen(Theme::accent(palette()));
    painter.drawText(rect().marginsRemoved(ringMargins), int(Qt::AlignLeft) | Qt::AlignVCenter,
                     text());
    if (!hasFocus())
        return;
    QStyleOption ring;
    ring.initFrom(this);
    StyleDrawing::focusRing(&painter, ring, Theme::controlRadius);
}

} // namespace varnel
