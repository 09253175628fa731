#include "ui/WheelGuard.h"

#include <QEvent>
#include <QWidget>

namespace varnel {

void WheelGuard::protect(QWidget *control)
{
    // Nor must the wheel give the control the focus.
    control->setFocusPolicy(Qt::StrongFocus);
    control->installEventFilter(new WheelGuard(control));
}

bool WheelGuard::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return false;
    // Handled here, but not accepted: so it goes on to the parent.
    event->ignore();
    return true;
}

} // namespace varnel
