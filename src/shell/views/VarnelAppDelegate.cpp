#include "shell/views/VarnelAppDelegate.h"

#include <QApplication>
#include <QEvent>

namespace varnel {

VarnelAppDelegate::VarnelAppDelegate()
{
    qApp->setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
    qApp->installEventFilter(this);
}

void VarnelAppDelegate::terminate()
{
    // Not quit(), which would close the windows first and let them refuse.
    QCoreApplication::exit(0);
}

bool VarnelAppDelegate::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == qApp && event->type() == QEvent::Quit) {
        terminate();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace varnel
