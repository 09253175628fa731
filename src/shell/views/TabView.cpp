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

void TabView::resizeEvent(QResizeEvent *event)
{
    QTabWidget::resizeEvent(event);
    placeTabBar();
}

void TabView::placeTabBar()
{
    // In the middle, whatever the desktop's habit.
    const int room = width() - tabBar()->sizeHint().width();
    tabBar()->setGeometry(qMax(0, room / 2), 0, tabBar()->sizeHint().width(),
                          tabBar()->sizeHint().height());
}

void TabView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(QPen(Theme::hairline(palette()), 0));
    const qreal below = tabBar()->geometry().bottom() + 0.5;
    painter.drawLine(QPointF(0, below), QPointF(width(), below));
}

} // namespace varnel
