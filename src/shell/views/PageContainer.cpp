#include "shell/views/PageContainer.h"

namespace varnel {

QList<QWidget *> PageContainer::subviews() const
{
    return findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
}

void PageContainer::addSubview(QWidget *view, const QSize &size)
{
    surplus = size - this->size();
    view->setParent(this);
    view->setGeometry(QRect(QPoint(0, 0), size));
    view->show();
}

void PageContainer::resizeEvent(QResizeEvent *)
{
    for (QWidget *view : subviews())
        view->resize(size() + surplus);
}

} // namespace varnel
