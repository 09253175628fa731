#include "ui/SheetShade.h"

#include "ui/Theme.h"

#include <QEvent>
#include <QPainter>

namespace varnel {

SheetShade::SheetShade(QWidget *window, QWidget *above) : QWidget(window), sheet(above)
{
    setObjectName(QStringLiteral("sheetShade"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(window->rect());
    window->installEventFilter(this);
    sheet->installEventFilter(this);
    connect(sheet, &QObject::destroyed, this, &QObject::deleteLater);
    raise();
    show();
}

bool SheetShade::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    // A spontaneous hide is the desktop's (another workspace): the sheet is still up.
    if (watched == sheet && event->type() == QEvent::Hide && !event->spontaneous()) {
        hide();
        deleteLater();
    }
    return QWidget::eventFilter(watched, event);
}

void SheetShade::paintEvent(QPaintEvent *)
{
    // Over a dark page blue would lighten it, and make the sheet's grey look green.
    const bool dark = Theme::isDark(palette());
    QPainter(this).fillRect(rect(), dark ? QColor(0, 0, 0, 96) : QColor(16, 36, 60, 64));
}

} // namespace varnel
