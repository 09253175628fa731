#include "loginitems/views/LoginItemsView.h"

#include "backup/KeptRun.h"
#include "home/Workspace.h"
#include "loginitems/LoginItemsChoice.h"
#include "loginitems/views/LoginItemChangesInfoWindow.h"
#include "loginitems/views/LoginItemsModel.h"
#include "platform/FileStore.h"
#include "platform/SessionLoginItems.h"
#include "settings/PreferenceFiles.h"
#include "shell/SharedObject.h"
#include "sysinfo/SystemRows.h"
#include "ui/CaptionRow.h"
#include "ui/ChangeCount.h"
#include "ui/CheckBoxCell.h"
#include "ui/Dialogs.h"
#include "ui/Icons.h"
#include "ui/ImageAndTextCell.h"
#include "ui/MessageLine.h"
#include "ui/Theme.h"

#include <QHeaderView>
#include <QPointer>
#include <QShortcut>

#include <algorithm>

#include "ui_LoginItemsView.h"

namespace varnel {

LoginItemsView::LoginItemsView(const PageContext &context)
    : context(context), ui(std::make_unique<Ui::LoginItemsView>()),
      preferences(context.workspace.home().preferencesDirectory()),
      store(context.workspace.tools().pathForSupportFolder(), context.files.fileStore()),
      accountItems(context.workspace.home(), context.files.fileStore(), context.workspace.folders(),
                   {context.host->systemDisk, context.host->systemRoot}),
      accountStore(Tools::supportFolderOf(context.workspace.home()), context.files.fileStore(),
                   DisabledItemsStore::Manner::Work, LoginItemsList::Account),
      access(context.host->loginItems, store, context.backup, context.host->files),
      pending(context.shared.loginItemCommands(), access), rows(new LoginItemsModel(this))
{
    // A restore may have to play into the other one.
    access.addAccount(accountItems, accountStore);
    (void)access.use(usualList(context.workspace.home(), context.files.fileStore()));
    ui->setupUi(this);
    message = new MessageLine(ui->footer);
    setUpTable();
    dressControls();
    offerLists();
    connectControls();
    setSaveButtonsEnabled(false);
    readData();
    tableViewSelected();
}

LoginItemsView::~LoginItemsView() = default;

void LoginItemsView::setUpTable()
{
    QTableView *table = ui->tableView;
    table->setModel(rows);
    rows->setNotes([this](const QString &path) { return pendingNote(path); });
    Theme::makeList(table);
    auto *nameCell = new ImageAndTextCell(table);
    // The names of rows without an icon stand in line with the others.
    QPixmap nothing(Theme::listIconSize, Theme::listIconSize);
    nothing.fill(Qt::transparent);
    nameCell->setImage(std::make_shared<CellImage>(CellImage {QIcon(nothing), {}}));
    auto *pathCell = new ImageAndTextCell(table);
    pathCell->setElideMode(Qt::ElideMiddle);
    table->setItemDelegateForColumn(LoginItemsModel::Enabled, new CheckBoxCell(table));
    table->setItemDelegateForColumn(LoginItemsModel::Name, nameCell);
    table->setItemDelegateForColumn(LoginItemsModel::Path, pathCell);
    table->setColumnWidth(LoginItemsModel::Enabled, 40);
    table->setColumnWidth(LoginItemsModel::Name, 240);
    table->horizontalHeader()->setStretchLastSection(true);
}

void LoginItemsView::dressControls()
{
    ui->shadow->setShadowColor(QColor::fromRgbF(0.66F, 0.66F, 0.66F));
    ui->shadow->setBlurRadius(3.0);
    Theme::makeAccentButton(ui->saveButton);
    ui->saveButton->setIcon(Icons::onAccent(Icons::icon(QStringLiteral("Save"))));
    ui->cancelButton->setIcon(Icons::icon(QStringLiteral("Cancel")));
    ui->viewButton->setIcon(Icons::icon(QStringLiteral("View")));
    ui->addButton->setIcon(Icons::icon(QStringLiteral("Add")));
    ui->removeButton->setIcon(Icons::icon(QStringLiteral("Remove")));
    makeFooterButton(ui->saveButton, {ui->saveLabel});
    makeFooterButton(ui->cancelButton, {ui->cancelLabel});
    makeFooterButton(ui->viewButton, {ui->viewLabel});
    makeFooterButton(ui->addButton, {ui->addLabel});
    makeFooterButton(ui->removeButton, {ui->removeLabel});
    for (QLabel *caption : {ui->saveLabel, ui->cancelLabel, ui->viewLabel, ui->addLabel,
                            ui->removeLabel, ui->emptyLabel, ui->listLabel, ui->noticeLabel})
        Theme::setTextRole(caption, Theme::TextRole::Help);
}

/// One's own home has the session's alone, unless a Mac has left its list there.
void LoginItemsView::offerLists()
{
    const HomeFolder &home = context.workspace.home();
    const FileReader &homeFiles = context.files.fileStore();
    ui->listChoice->addItem(QStringLiteral("a Linux session"), int(LoginItemsList::Session));
    ui->listChoice->addItem(QStringLiteral("the Mac account"), int(LoginItemsList::Account));
    ui->listChoice->setCurrentIndex(ui->listChoice->findData(int(access.listInUse())));
    ui->choice->setVisible(!home.own || homeFiles.exists(accountItems.wholeFile()));
    const SystemVersion system =
        readSystemVersion(context.host->systemDisk, context.host->systemRoot);
    const QString notice = newerListSentence(home, homeFiles, system.productVersion);
    ui->noticeLabel->setText(notice);
    ui->noticeLabel->setVisible(!notice.isNull());
    ui->lists->setVisible(!ui->choice->isHidden() || !notice.isNull());
}

void LoginItemsView::choose(LoginItemsList list)
{
    if (list == access.listInUse() || !access.use(list))
        return;
    readData();
}

/// The pending changes are of one list, and so is all that the backup file of a run tells.
void LoginItemsView::lockChoice()
{
    const bool isPending = !context.shared.loginItemCommands().isEmpty();
    const bool isSaved = context.backup.tellsOfLoginItems();
    ui->listChoice->setEnabled(!isPending && !isSaved);
    QString tip = QStringLiteral("Whose login items are shown and changed");
    if (isSaved)
        tip =
            QStringLiteral("Login items of this list are in the backup file of this run. The next "
                           "start of Varnel can choose again");
    if (isPending)
        tip = QStringLiteral("Changes of this list are pending. Save or cancel them first");
    ui->listChoice->setToolTip(tip);
}

void LoginItemsView::connectControls()
{
    connect(ui->listChoice, &QComboBox::activated, this,
            [this](int index) { choose(LoginItemsList(ui->listChoice->itemData(index).toInt())); });
    connect(rows, &LoginItemsModel::enabledChanged, this, &LoginItemsView::enabledDidChange);
    connect(ui->tableView->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        tableViewSelectionDidChange();
        tableViewSelected();
    });
    connect(ui->addButton, &QPushButton::clicked, this, &LoginItemsView::addAppAsLoginItem);
    connect(ui->removeButton, &QPushButton::clicked, this, &LoginItemsView::deleteAppFromLoginItem);
    connect(ui->saveButton, &QPushButton::clicked, this, &LoginItemsView::saveChanges);
    connect(ui->cancelButton, &QPushButton::clicked, this, &LoginItemsView::cancelChanges);
    connect(ui->viewButton, &QPushButton::clicked, this, &LoginItemsView::viewChanges);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, ui->saveButton,
            &QAbstractButton::click);
    const auto onKey = [this](const QKeySequence &key, void (LoginItemsView::*slot)()) {
        auto *shortcut = new QShortcut(key, ui->tableView);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, slot);
    };
    onKey(QKeySequence::Delete, &LoginItemsView::deleteAppFromLoginItem);
    onKey(Qt::Key_Space, &LoginItemsView::toggleCurrentRow);
}

void LoginItemsView::placeFooter()
{
    layout()->activate();
    const QRect list = ui->shadow->contentsRect().translated(ui->shadow->pos() - ui->footer->pos());
    const int height = layOutCaptionRow({{ui->saveButton, ui->saveLabel},
                                         {ui->cancelButton, ui->cancelLabel},
                                         {ui->viewButton, ui->viewLabel}},
                                        list.left());
    // The second group keeps the same rule, and ends where the list ends.
    const QList<CaptionedButton> second {{ui->removeButton, ui->removeLabel},
                                         {ui->addButton, ui->addLabel}};
    layOutCaptionRow(second, 0);
    const int end = std::max(ui->addLabel->geometry().right(), ui->addButton->geometry().right());
    layOutCaptionRow(second, list.right() - end);
    ui->footer->setFixedHeight(height);
    const QRect last = ui->viewButton->geometry().united(ui->viewLabel->geometry());
    const QRect next = ui->removeButton->geometry().united(ui->removeLabel->geometry());
    message->place(last.right() + 1 + Theme::gapLarge, next.left() - Theme::gapLarge,
                   ui->saveButton->height());
}

void LoginItemsView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeFooter();
}

void LoginItemsView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        placeFooter();
}

void LoginItemsView::showEvent(QShowEvent *event)
{
    // The restore page may have played back, or deleted, what the choice was locked for.
    lockChoice();
    QWidget::showEvent(event);
}

void LoginItemsView::readData()
{
    access.selectedBackupFileName = context.shared.selectedBackupFileName();
    notSaved.clear(); // the rows show what is there
    message->dropEvent();
    showItems(access.readData());
}

void LoginItemsView::showAgain()
{
    showItems(access.readData(LoginItemsAccess::Reading::Silent));
}

void LoginItemsView::showItems(const QList<LoginItemRow> &items)
{
    onDisk.clear();
    for (const LoginItemRow &item : items)
        onDisk.insert(item.path, item.enabled);
    rows->setRows(items);
    showEmptyText();
    lockChoice();
    tableViewSelectionDidChange();
    tableViewSelected();
}

LoginItemsAccess &LoginItemsView::playback()
{
    access.selectedBackupFileName = context.shared.selectedBackupFileName();
    return access;
}

void LoginItemsView::showEmptyText()
{
    const bool isAccounts = access.listInUse() == LoginItemsList::Account;
    ui->emptyLabel->setText(
        isAccounts ? QStringLiteral("This account opens nothing at login.\n"
                                    "Only the Mac itself puts what is new into its list.")
                   : QStringLiteral("Nothing opens at login yet.\n"
                                    "Add chooses an application, a tick turns it on."));
    ui->emptyLabel->setVisible(rows->rowCount() == 0);
}

void LoginItemsView::addAppAsLoginItem()
{
    const SessionLoginItems &items = access.readableList();
    const std::optional<QString> chosen =
        context.dialogs.chooseApplication(this, items.applicationsFolder());
    if (!chosen)
        return;
    const QString path = items.pathInList(*chosen);
    rows->appendRow(access.newRow(path));
    showEmptyText();
    // Not enabled, although its row is ticked: saving puts it into the store, and the user ticks
    // it there to make it a login item.
    addDataToChangeDataList(LoginItemChange::Add, path, false);
    enableSaveButton();
}

void LoginItemsView::deleteAppFromLoginItem()
{
    const int row = selectedRowIndex;
    if (row < 0 || row >= rows->rowCount())
        return;
    const LoginItemRow item = rows->rows()[row];
    rows->removeRowAt(row);
    // The selection moved on while the removed row was still counted.
    tableViewSelectionDidChange();
    tableViewSelected();
    showEmptyText();
    addDataToChangeDataList(LoginItemChange::Remove, item.path, item.enabled);
    enableSaveButton();
}

void LoginItemsView::toggleCurrentRow()
{
    const int row = ui->tableView->currentIndex().row();
    if (row < 0)
        return;
    // Of a single row no arrow key makes a selected one, and without it there is no Remove.
    ui->tableView->selectRow(row);
    const QModelIndex box = rows->index(row, LoginItemsModel::Enabled);
    rows->setData(box, rows->rows()[row].enabled ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void LoginItemsView::enabledDidChange(int row, bool enabled)
{
    addDataToChangeDataList(enabled ? LoginItemChange::Enable : LoginItemChange::Disable,
                            rows->rows()[row].path, false);
    enableSaveButton();
}

void LoginItemsView::addDataToChangeDataList(int actionId, const QString &path, bool enabled)
{
    pending.addDataToChangeDataList(actionId, path, enabled);
    message->dropEvent();
}

Result<void> LoginItemsView::writeData(int actionId, const QString &path, bool enabled,
                                       bool backupFirst)
{
    access.selectedBackupFileName = context.shared.selectedBackupFileName();
    const LoginItemsAccess::Together together(access);
    return access.writeData(actionId, path, enabled, backupFirst);
}

void LoginItemsView::cancelChanges()
{
    context.dialogs.showAlert(
        this,
        {QStringLiteral("Cancel All Latest Changes"),
         QStringLiteral("Are you sure you want to cancel all latest changes you've made with this "
                        "program"),
         {QStringLiteral("Cancel Changes"), QStringLiteral("Continue")}},
        [self = QPointer<LoginItemsView>(this)](int code) {
            if (self)
                self->cancelAlertDidEnd(code);
        });
}

void LoginItemsView::cancelAlertDidEnd(int returnCode)
{
    if (returnCode != FirstButton)
        return;
    readData();
    pending.dropChanges();
    disableSaveButton();
}

void LoginItemsView::viewChanges()
{
    if (loginItemChangesInfoWindow == nullptr)
        loginItemChangesInfoWindow = new LoginItemChangesInfoWindow(context.shared, window());
    context.dialogs.showSheet(loginItemChangesInfoWindow);
    loginItemChangesInfoWindow->readChangesData();
}

void LoginItemsView::enableSaveButton()
{
    setSaveButtonsEnabled(true);
}

void LoginItemsView::disableSaveButton()
{
    setSaveButtonsEnabled(false);
}

void LoginItemsView::setSaveButtonsEnabled(bool enabled)
{
    ui->saveButton->setEnabled(enabled);
    ui->cancelButton->setEnabled(enabled);
    ui->viewButton->setEnabled(enabled);
    countChanges(*ui->saveButton, context.shared.loginItemCommands().size(),
                 QStringLiteral("the way back goes into the backup file first"));
    lockChoice();
    message->setIdleText(waitingText(context.shared.loginItemCommands().size()));
    rows->updateNotes();
    if (context.pendingChanged)
        context.pendingChanged();
}

int LoginItemsView::selectedRow() const
{
    const QModelIndexList selected = ui->tableView->selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void LoginItemsView::tableViewSelected()
{
    ui->removeButton->setEnabled(selectedRow() >= 0);
}

void LoginItemsView::tableViewSelectionDidChange()
{
    selectedRowIndex = selectedRow();
}

} // namespace varnel
