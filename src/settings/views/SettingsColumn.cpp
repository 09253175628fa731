#include "settings/views/SettingsColumn.h"

#include "settings/views/GenericView.h"
#include "ui/Theme.h"

#include <QChildEvent>
#include <QPainter>

#include <algorithm>

namespace varnel {

namespace {

/// A hairline between any two rows that do not part by themselves: a shaded one has an edge.
class RowLines : public QWidget {
public:
    explicit RowLines(SettingsColumn *column) : QWidget(column), column(*column)
    {
        setObjectName(QStringLiteral("rowLines"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const double pixel = 1 / devicePixelRatioF();
        const QList<QWidget *> rows = column.rows();
        for (qsizetype place = 1; place < rows.size(); ++place)
            if (!isShaded(rows[place - 1]) && !isShaded(rows[place]))
                painter.fillRect(QRectF(0, rows[place]->y() - pixel, width(), pixel),
                                 Theme::hairline(palette()));
    }

private:
    static bool isShaded(const QWidget *row)
    {
        const auto *view = qobject_cast<const GenericView *>(row);
        return view != nullptr && view->needToDrawBackground();
    }

    SettingsColumn &column;
};

} // namespace

SettingsColumn::SettingsColumn(QWidget *parent) : QWidget(parent), lines(new RowLines(this))
{
    setBackgroundRole(QPalette::Base);
    setFixedHeight(0);
}

int SettingsColumn::append(QWidget *row)
{
    row->setParent(this);
    stack.removeOne(row);
    stack.append(row);
    row->show();
    layOutRows();
    return row->height();
}

void SettingsColumn::removeSubview()
{
    while (!stack.isEmpty()) {
        QWidget *last = stack.takeLast();
        last->hide();
        last->setParent(nullptr);
    }
    layOutRows();
}

QList<QWidget *> SettingsColumn::rows() const
{
    return stack;
}

int SettingsColumn::heightOf(const QWidget &row) const
{
    return row.hasHeightForWidth() ? row.heightForWidth(width()) : row.sizeHint().height();
}

void SettingsColumn::layOutRows()
{
    // With a font so large that a row no longer fits, the page is scrolled sideways: nothing is cut
    // off.
    int widest = 0;
    for (const QWidget *row : std::as_const(stack))
        widest = std::max(widest, row->minimumSizeHint().width());
    setMinimumWidth(widest);
    int bottom = 0;
    for (QWidget *row : std::as_const(stack)) {
        const int height = heightOf(*row);
        row->setGeometry(0, bottom, width(), height);
        bottom += height;
    }
    setFixedHeight(bottom);
    lines->setGeometry(0, 0, width(), bottom);
    lines->raise();
}

bool SettingsColumn::event(QEvent *event)
{
    // A row wants another height: its font or its text has changed.
    if (event->type() == QEvent::LayoutRequest)
        layOutRows();
    return QWidget::event(event);
}

void SettingsColumn::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layOutRows();
}

void SettingsColumn::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    // Rows belong to their modules, which may take them away at any time.
    if (event->removed())
        stack.removeAll(event->child());
}

} // namespace varnel
