#include "settings/views/QuilletView.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "settings/Catalogue.h"
#include "settings/views/GenericView.h"
#include "settings/views/Quillet.h"
#include "settings/views/SettingsColumn.h"
#include "settings/views/SettingsFooter.h"
#include "ui/Icons.h"
#include "ui/ImageAndTextCell.h"
#include "ui/MessageLine.h"
#include "ui/NodeModel.h"
#include "ui/TextLink.h"
#include "ui/Theme.h"
#include "ui_QuilletView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace varnel {

namespace {

/// Titles are told apart without regard to case.
const ModuleRow *moduleTitled(const QString &title)
{
    const QList<ModuleRow> &all = modules();
    const auto hit = std::find_if(all.begin(), all.end(), [&title](const ModuleRow &row) {
        return row.outlineTitle.compare(title, Qt::CaseInsensitive) == 0;
    });
    return hit == all.end() ? nullptr : &*hit;
}

QIcon iconOfModule(const QString &title)
{
    const ModuleRow *row = moduleTitled(title);
    return row ? Icons::icon(row->icon) : QIcon();
}

constexpr int mostCalled = 5;

std::shared_ptr<Node> makeMenu()
{
    auto root = std::make_shared<Node>();
    for (const ModuleRow &row : modules()) {
        auto child = std::make_shared<Node>();
        child->setName(row.outlineTitle);
        root->children().append(child);
    }
    return root;
}

} // namespace

QuilletView::QuilletView() : ui(std::make_unique<Ui::QuilletView>()), rootNode(makeMenu())
{
    ui->setupUi(this);
    awakeFromNib();
}

QuilletView::~QuilletView()
{
    // Taking a window down moves the focus, and by then this is a plain widget already.
    disconnect(qApp, nullptr, this, nullptr);
}

void QuilletView::awakeFromNib()
{
    menu = new NodeModel(rootNode, iconOfModule, ui->menuOutlineVew->accessibleName(), this);
    ui->menuOutlineVew->setModel(menu);
    ui->menuOutlineVew->setItemDelegate(new ImageAndTextCell(ui->menuOutlineVew));
    ui->menuOutlineVew->expandAll();
    selectMenuRow(0);
    dressControls();
    connectControls();
    connectSearch();
}

void QuilletView::dressControls()
{
    // The field's own button is a second way to leave the search.
    Theme::makeSearchField(ui->searchField, [this] { endSearch(); });
    ui->mainScrollView->viewport()->setBackgroundRole(QPalette::Base);
}

void QuilletView::connectControls()
{
    connect(ui->menuOutlineVew->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &QuilletView::outlineViewSelectionDidChange);
    connect(ui->menuOutlineVew, &SourceList::chosenAgain, this,
            &QuilletView::outlineViewSelectionDidChange);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *focused) { rememberFocus(focused); });
    connect(ui->footer, &SettingsFooter::saveClicked, this, [this] { parentView->saveChanges(); });
    connect(ui->footer, &SettingsFooter::cancelClicked, this,
            [this] { parentView->cancelChanges(); });
    connect(ui->footer, &SettingsFooter::viewClicked, this, [this] { parentView->viewChanges(); });
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated,
            ui->footer->buttons().front(), &QAbstractButton::click);
}

void QuilletView::connectSearch()
{
    emptyLabel = new QLabel(ui->mainScrollView->viewport());
    emptyLabel->setObjectName(QStringLiteral("emptyLabel"));
    emptyLabel->setAlignment(Qt::AlignCenter);
    emptyLabel->setWordWrap(true);
    emptyLabel->setTextFormat(Qt::PlainText);
    emptyLabel->hide();
    Theme::setTextRole(emptyLabel, Theme::TextRole::Help);
    calledLabel = new QLabel(tr("On its page it is called:"), ui->mainScrollView->viewport());
    calledLabel->setObjectName(QStringLiteral("calledLabel"));
    calledLabel->setAlignment(Qt::AlignCenter);
    calledLabel->hide();
    Theme::setTextRole(calledLabel, Theme::TextRole::Help);
    auto *overlay = new QVBoxLayout(ui->mainScrollView->viewport());
    overlay->setSpacing(Theme::gapSmall);
    overlay->addStretch();
    overlay->addWidget(emptyLabel);
    overlay->addWidget(calledLabel);
    for (int place = 0; place < mostCalled; ++place) {
        auto *link = new TextLink(ui->mainScrollView->viewport());
        link->setObjectName(QStringLiteral("calledLink%1").arg(place + 1));
        link->hide();
        overlay->addWidget(link, 0, Qt::AlignHCenter);
        calledLinks.append(link);
    }
    overlay->addStretch();

    connect(ui->searchField, &QLineEdit::textChanged, this, [this] {
        if (!parentView || leavingSearch)
            return;
        ui->menuOutlineVew->clearSelection(); // what is shown belongs to no one group
        parentView->doSearch();
    });
    ui->searchField->installEventFilter(this);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this,
            &QuilletView::startSearch);
}

void QuilletView::startSearch()
{
    ui->searchField->setFocus(Qt::ShortcutFocusReason);
    ui->searchField->selectAll();
}

bool QuilletView::eventFilter(QObject *watched, QEvent *event)
{
    const bool escape = event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape;
    if (watched != ui->searchField || !escape || !parentView)
        return QWidget::eventFilter(watched, event);
    endSearch();
    return true;
}

void QuilletView::endSearch()
{
    selectMenuRow(selectedMenuRow());
}

void QuilletView::clearSearchText()
{
    // The field's own button listens to the same signal, so it can't just be blocked.
    const QScopedValueRollback leaving(leavingSearch, true);
    ui->searchField->clear();
    showSearchOutcome(false, {});
}

QString QuilletView::searchText() const
{
    return ui->searchField->text();
}

void QuilletView::showSearchOutcome(bool nothingFound, const QList<const SettingRow *> &called)
{
    emptyLabel->setText(searchText().isEmpty()
                            ? QStringLiteral("Type a word to find settings, or press Escape to go "
                                             "back to the group")
                            : QStringLiteral("No setting is found by “%1”").arg(searchText()));
    emptyLabel->setVisible(nothingFound);
    calledLabel->setVisible(!called.isEmpty());
    for (qsizetype place = 0; place < mostCalled; ++place) {
        TextLink *link = calledLinks[place];
        const SettingRow *row = called.value(place);
        link->setVisible(row != nullptr);
        link->disconnect(this);
        if (row == nullptr)
            continue;
        link->setText(row->label + u" · " + shortLocationString(*row));
        link->updateGeometry();
        connect(link, &TextLink::clicked, this, [this, row] { goToSetting(*row); });
    }
}

void QuilletView::goToSetting(const SettingRow &row)
{
    const QList<ModuleRow> &all = modules();
    const auto module = std::find_if(
        all.begin(), all.end(), [&row](const ModuleRow &each) { return each.id == row.module; });
    selectMenuRow(int(module - all.begin()));
    for (QWidget *each : ui->mainView->rows()) {
        auto *view = qobject_cast<GenericView *>(each);
        if (view == nullptr || !view->carries(row.id))
            continue;
        layout()->activate();
        view->focusControl(row.id);
        ui->mainScrollView->ensureWidgetVisible(view, 0, 0);
    }
}

void QuilletView::setParentView(Quillet *controller)
{
    parentView = controller;
}

void QuilletView::setGlobalBackupFileName(const QString &name)
{
    backupFileName = name;
    varnelLog(lcSettings, fillIn(u"setGlobalBackupFileName (LoginItemsView): %@", {name}));
}

void QuilletView::outlineViewSelectionDidChange()
{
    const QModelIndexList selected = ui->menuOutlineVew->selectionModel()->selectedIndexes();
    if (!parentView || selected.isEmpty())
        return;
    clearSearchText();
    if (const ModuleRow *row = moduleTitled(menu->nodeAt(selected.front())->name()))
        parentView->showModules(row->id);
}

void QuilletView::selectMenuRow(int row)
{
    const QModelIndex index = menu->index(row, 0, {});
    if (ui->menuOutlineVew->selectionModel()->isSelected(index))
        outlineViewSelectionDidChange();
    else
        ui->menuOutlineVew->setCurrentIndex(index);
}

int QuilletView::selectedMenuRow() const
{
    return ui->menuOutlineVew->currentIndex().row();
}

SettingsColumn *QuilletView::mainView() const
{
    return ui->mainView;
}

void QuilletView::scrollToTop()
{
    ui->mainScrollView->verticalScrollBar()->setValue(0);
    ui->mainScrollView->horizontalScrollBar()->setValue(0);
}

void QuilletView::orderFocus()
{
    // Rows come last into the window's order, each with its controls in the order of their making.
    QWidget *last = ui->menuOutlineVew;
    for (QWidget *control : ui->mainView->findChildren<QWidget *>()) {
        const bool stops = (control->focusPolicy() & Qt::TabFocus) != 0 && !control->focusProxy();
        if (stops && control->window() == window())
            last = control;
    }
    for (QWidget *button : ui->footer->buttons()) {
        setTabOrder(last, button);
        last = button;
    }
    for (QWidget *link : messageLine().allLinks()) {
        setTabOrder(last, link);
        last = link;
    }
}

void QuilletView::rememberFocus(QWidget *focused)
{
    if (focused && ui->mainView->isAncestorOf(focused))
        lastControl = focused;
}

void QuilletView::setButtonsEnabled(bool enabled)
{
    // A button that is disabled under the keyboard would send the focus anywhere.
    const bool leaving = !enabled && focusWidget() && ui->footer->isAncestorOf(focusWidget());
    if (leaving) {
        const bool there = lastControl && ui->mainView->isAncestorOf(lastControl);
        (there ? lastControl.data() : ui->menuOutlineVew)->setFocus();
    }
    ui->footer->setButtonsEnabled(enabled);
}

void QuilletView::showChangeCount(qsizetype count)
{
    ui->footer->showChangeCount(count);
}

void QuilletView::showPendingGroups(const QSet<ModuleId> &groups)
{
    QSet<QString> titles;
    for (const ModuleId group : groups)
        titles.insert(moduleRow(group).outlineTitle);
    menu->setPending(titles);
}

MessageLine &QuilletView::messageLine() const
{
    return ui->footer->messageLine();
}

void QuilletView::placeFooter()
{
    layout()->activate();
    ui->footer->place(ui->mainScrollView->x() - ui->footer->x());
}

void QuilletView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeFooter();
}

void QuilletView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        placeFooter();
}

} // namespace varnel
