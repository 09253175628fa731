#include "settings/views/RowMenu.h"

#include "settings/ValueText.h"
#include "settings/views/GenericView.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>

namespace varnel {

namespace {

bool isMenuKey(const QKeyEvent &press)
{
    return press.key() == Qt::Key_F10 && press.modifiers() == Qt::ShiftModifier;
}

} // namespace

RowMenu::RowMenu(GenericView &row) : QObject(&row), row(row)
{
    row.installEventFilter(this);
    // Some parts would show a menu of their own, or keep the question to themselves.
    for (QWidget *part : row.findChildren<QWidget *>())
        part->installEventFilter(this);
}

bool RowMenu::eventFilter(QObject *watched, QEvent *event)
{
    auto *part = qobject_cast<QWidget *>(watched);
    if (event->type() == QEvent::ContextMenu) {
        show(part, static_cast<QContextMenuEvent *>(event)->globalPos());
        return true;
    }
    // The menu key is the toolkit's business; of its stand-in not every platform knows.
    if (event->type() == QEvent::KeyPress && isMenuKey(*static_cast<QKeyEvent *>(event))) {
        show(part, part->mapToGlobal(part->rect().center()));
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void RowMenu::show(QWidget *part, const QPoint &where)
{
    auto *field = qobject_cast<QLineEdit *>(part);
    if (auto *stepper = qobject_cast<QAbstractSpinBox *>(part))
        field = stepper->findChild<QLineEdit *>();
    QMenu *menu = field ? field->createStandardContextMenu() : new QMenu(&row);
    if (field)
        menu->addSeparator();
    addActions(*menu, placeAt(row.mapFromGlobal(where)));
    menu->setObjectName(QStringLiteral("rowMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(where);
}

int RowMenu::placeAt(const QPoint &point) const
{
    const int count = int(row.settings().size());
    for (int place = 0; place < count; ++place) {
        if (count == 1 || row.controlPlace(place).contains(point))
            return place;
    }
    return -1;
}

bool RowMenu::showsDefault(int place) const
{
    for (int each = 0; each < row.settings().size(); ++each) {
        if ((place < 0 || each == place)
            && row.shownValue(each) != defaultValue(*row.settings()[each]))
            return false;
    }
    return true;
}

void RowMenu::useDefaultValue(int place)
{
    for (int each = 0; each < row.settings().size(); ++each) {
        if (place < 0 || each == place)
            row.useDefaultValue(each);
    }
}

void RowMenu::addActions(QMenu &menu, int place)
{
    QAction *toDefault = menu.addAction(tr("Use Default Value"));
    toDefault->setEnabled(!showsDefault(place));
    connect(toDefault, &QAction::triggered, this, [this, place] { useDefaultValue(place); });

    const QString keys = row.keys(place);
    QAction *copy = menu.addAction(keys.contains(u'\n') ? tr("Copy Keys") : tr("Copy Key"));
    copy->setEnabled(!keys.isEmpty());
    connect(copy, &QAction::triggered, this, [keys] { QApplication::clipboard()->setText(keys); });

    QAction *show = menu.addAction(row.copiesPath() ? tr("Copy Path of File")
                                                    : tr("Show File in File Manager"));
    show->setEnabled(row.canShowFile());
    connect(show, &QAction::triggered, &row, &GenericView::showFile);
}

} // namespace varnel
