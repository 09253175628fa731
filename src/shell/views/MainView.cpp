#include "shell/views/MainView.h"

#include "base/Logging.h"

#include <QMouseEvent>

namespace varnel {

void MainView::mousePressEvent(QMouseEvent *event)
{
    event->accept(); // the drag that may follow is then this view's
}

void MainView::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        mouseDragged(event->position());
}

void MainView::mouseDragged(const QPointF &place)
{
    // The C locale's form, whatever the user's.
    varnelLog(lcShell, QString::asprintf("mouseDragged: (%f, %f)", place.x(), place.y()));
}

} // namespace varnel
