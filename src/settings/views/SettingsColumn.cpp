#include "settings/views/SettingsColumn.h"

#include <QVBoxLayout>

namespace varnel {

SettingsColumn::SettingsColumn(QWidget *parent) : QWidget(parent), stack(new QVBoxLayout(this))
{
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(0);
    // No higher than its rows: what a short page leaves free is not the column's.
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

int SettingsColumn::append(QWidget *row)
{
    stack->addWidget(row);
    row->show();
    return row->hasHeightForWidth() ? row->heightForWidth(width()) : row->sizeHint().height();
}

void SettingsColumn::removeSubview()
{
    while (stack->count() > 0) {
        const std::unique_ptr<QLayoutItem> last(stack->takeAt(stack->count() - 1));
        last->widget()->hide();
        last->widget()->setParent(nullptr);
    }
    update();
}

QList<QWidget *> SettingsColumn::rows() const
{
    QList<QWidget *> list;
    for (int place = 0; place < stack->count(); ++place)
        list += stack->itemAt(place)->widget();
    return list;
}

} // namespace varnel
