#include "shell/views/TabView.h"

#include "shell/views/PageTabBar.h"
#include "ui/Theme.h"

#include <QEvent>
#include <QPainter>
#include <QStackedWidget>

namespace varnel {

TabView::TabView(QWidget *parent) : QTabWidget(parent)
{
    setTabBar(new PageTabBar(this));
    setDocumentMode(true);
    findChild<QStackedWidget *>()->installEventFilter(this);
}

void TabView::setPending(int index, bool pending)
{
    tabBar()->setTabData(index, pending);
    setTabToolTip(index, pending ? tr("Has changes that are not saved") : QString());
    tabBar()->update();
}

void TabView::tabInserted(int index)
{
    QTabWidget::tabInserted(index);
    alignPages();
}

bool TabView::eventFilter(QObject *watched, QEvent *event)
{
    const bool handled = QTabWidget::eventFilter(watched, event);
    if (event->type() == QEvent::Resize)
        alignPages();
    return handled;
}

void TabView::alignPages()
{
    // The toolkit would lay a hidden page out when it is first shown.
    const QRect place = findChild<QStackedWidget *>()->contentsRect();
    for (int i = 0; i < count(); ++i)
        widget(i)->setGeometry(place);
}

bool TabView::event(QEvent *event)
{
    const bool handled = QTabWidget::event(event);
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::LayoutRequest:
        centreTabBar(); // the base has just placed it by the desktop's habit
        break;
    default:
        break;
    }
    return handled;
}

void TabView::centreTabBar()
{
    static_cast<PageTabBar *>(tabBar())->fitInto(width());
    const QSize size = tabBar()->sizeHint().boundedTo({width(), height()});
    const QRect place(QPoint((width() - size.width()) / 2, 0), size);
    if (tabBar()->geometry() != place)
        tabBar()->setGeometry(place);
}

void TabView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(QPen(Theme::hairline(palette()), 0));
    const qreal below = tabBar()->geometry().bottom() + 0.5;
    painter.drawLine(QPointF(0, below), QPointF(width(), below));
}

} // namespace varnel
