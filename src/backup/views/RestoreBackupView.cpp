#include "backup/views/RestoreBackupView.h"

#include "backup/BackupFolder.h"
#include "backup/KeptBackup.h"
#include "backup/views/BackupModel.h"
#include "backup/views/RestoreBackup.h"
#include "backup/views/RestoreBackupInfoWindow.h"
#include "backup/views/SharedPlayback.h"
#include "base/Logging.h"
#include "base/Text.h"
#include "shell/SharedObject.h"
#include "ui/CaptionRow.h"
#include "ui/Dialogs.h"
#include "ui/Icons.h"
#include "ui/ImageAndTextCell.h"
#include "ui/MessageLine.h"
#include "ui/Theme.h"

#include <QHeaderView>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>

#include <algorithm>

#include "ui_RestoreBackupView.h"

namespace varnel {

RestoreBackupView::RestoreBackupView(const PageContext &context)
    : context(context), ui(std::make_unique<Ui::RestoreBackupView>()),
      theFileNames(new BackupModel(this))
{
    ui->setupUi(this);
    message = new MessageLine(ui->footer);
    setUpTable();
    connectControls();
    reloadData();
}

RestoreBackupView::~RestoreBackupView() = default;

void RestoreBackupView::setUpTable()
{
    QTableView *table = ui->tableView;
    table->setModel(theFileNames);
    table->setItemDelegate(new ImageAndTextCell(table));
    Theme::makeList(table);
    table->setColumnWidth(BackupModel::Name, 400);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setSectionsClickable(true);
    Theme::setTextRole(ui->emptyLabel, Theme::TextRole::Help);
}

void RestoreBackupView::connectControls()
{
    connect(ui->tableView->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &RestoreBackupView::didClickTableColumn);
    connect(ui->tableView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &RestoreBackupView::tableViewSelected);
    connect(ui->restoreButton, &QPushButton::clicked, this, &RestoreBackupView::restoreBackupFiles);
    connect(ui->deleteButton, &QPushButton::clicked, this,
            &RestoreBackupView::deleteSelectedFilesAfterAsking);
    connect(ui->infoButton, &QPushButton::clicked, this, &RestoreBackupView::showRestoreInfoWindow);
    ui->restoreButton->setIcon(Icons::icon(QStringLiteral("Restore")));
    ui->deleteButton->setIcon(Icons::icon(QStringLiteral("Delete")));
    ui->infoButton->setIcon(Icons::icon(QStringLiteral("Info")));
    makeFooterButton(ui->restoreButton, {ui->restoreLabel});
    makeFooterButton(ui->deleteButton, {ui->deleteLabel});
    makeFooterButton(ui->infoButton, {ui->infoLabel});
    for (QLabel *caption : {ui->restoreLabel, ui->deleteLabel, ui->infoLabel, ui->hintLabel})
        Theme::setTextRole(caption, Theme::TextRole::Help);
    connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this,
            &RestoreBackupView::reloadData);
    auto *remove = new QShortcut(QKeySequence::Delete, ui->tableView);
    remove->setContext(Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this,
            &RestoreBackupView::deleteSelectedFilesAfterAsking);
}

void RestoreBackupView::placeFooter()
{
    layout()->activate();
    const int height = layOutCaptionRow({{ui->restoreButton, ui->restoreLabel},
                                         {ui->deleteButton, ui->deleteLabel},
                                         {ui->infoButton, ui->infoLabel}},
                                        ui->tableView->x() - ui->footer->x());
    ui->footer->setFixedHeight(height);
    const QRect last = ui->infoButton->geometry().united(ui->infoLabel->geometry());
    message->place(last.right() + 1 + Theme::gapLarge, ui->footer->width(),
                   ui->infoButton->height());
}

void RestoreBackupView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeFooter();
}

void RestoreBackupView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        placeFooter();
}

void RestoreBackupView::reloadData()
{
    QSet<QString> selected;
    for (const int row : selectedRows())
        selected.insert(nameAt(row));
    const int currentRow = ui->tableView->currentIndex().row();
    const QString current = currentRow < 0 ? QString() : nameAt(currentRow);
    getBackupFiles();
    select(selected, current);
    showEmptyText();
    tableViewSelected();
}

void RestoreBackupView::selectFile(const QString &name)
{
    ui->tableView->clearSelection();
    select({name}, name);
    ui->tableView->scrollTo(ui->tableView->currentIndex());
    ui->tableView->setFocus();
}

/// As one selection of few ranges: thousands of files selected one by one would be slow.
void RestoreBackupView::select(const QSet<QString> &names, const QString &current)
{
    QItemSelectionModel *selection = ui->tableView->selectionModel();
    const auto at = [this](int row) { return theFileNames->index(row, 0); };
    const int count = theFileNames->rowCount();
    QItemSelection ranges;
    int first = -1;
    for (int row = 0; row <= count; ++row) {
        const bool selected = row < count && names.contains(nameAt(row));
        if (selected && first < 0)
            first = row;
        if (!selected && first >= 0)
            ranges.select(at(first), at(row - 1));
        if (!selected)
            first = -1;
        if (row < count && nameAt(row) == current)
            selection->setCurrentIndex(at(row), QItemSelectionModel::NoUpdate);
    }
    selection->select(ranges, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

const QString &RestoreBackupView::nameAt(int row) const
{
    return theFileNames->entries()[row].name;
}

void RestoreBackupView::getBackupFiles()
{
    const BackupFolder folder = backupFolderOf(context);
    varnelLog(lcBackup, fillIn(u"Path = %@", {folder.path()}));
    // Why there is nothing to list has been logged.
    Result<QList<BackupEntry>> listed = folder.list();
    QList<BackupEntry> entries = listed ? std::move(listed).value() : QList<BackupEntry>();
    descriptions.clear();
    sorting.sortDescending = true;
    sortByName(entries, sorting.sortDescending);
    theFileNames->setEntries(std::move(entries));
    showSortIndicator(BackupModel::Name);
}

/// The ordinary image stands for a flag that is down, the reverse one for a flag that is up.
void RestoreBackupView::showSortIndicator(int column)
{
    QHeaderView *header = ui->tableView->horizontalHeader();
    header->setSortIndicatorShown(true);
    header->setSortIndicator(column,
                             sorting.sortDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void RestoreBackupView::didClickTableColumn(int column)
{
    varnelLog(lcBackup, QStringLiteral("didClickTableColumn"));
    sorting.click(column);
    theFileNames->sortEntries(column, sorting.sortDescending);
    showSortIndicator(column);
}

void RestoreBackupView::showEmptyText()
{
    ui->emptyLabel->setVisible(theFileNames->rowCount() == 0);
}

QList<int> RestoreBackupView::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : ui->tableView->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

int RestoreBackupView::selectedRow() const
{
    const QList<int> rows = selectedRows();
    const int current = ui->tableView->currentIndex().row();
    if (rows.contains(current))
        return current;
    return rows.isEmpty() ? -1 : rows.first();
}

void RestoreBackupView::setButtonsStatus()
{
    const bool selected = ui->tableView->selectionModel()->hasSelection();
    // A button that is disabled under the keyboard would send the focus anywhere.
    if (!selected && qobject_cast<QPushButton *>(focusWidget()) != nullptr)
        ui->tableView->setFocus();
    ui->restoreButton->setEnabled(selected);
    ui->deleteButton->setEnabled(selected);
    ui->infoButton->setEnabled(selected);
}

void RestoreBackupView::tableViewSelected()
{
    setButtonsStatus();
    tellOfSelection();
}

void RestoreBackupView::tellOfSelection()
{
    if (deleting)
        return;
    message->dropEvent();
    const QList<int> rows = selectedRows();
    message->setLasting(rows.size() > 1
                            ? std::optional(noticeOfSelection(nameAt(selectedRow()), rows.size()))
                            : std::nullopt);
    message->setIdleText(rows.size() == 1 ? describe(nameAt(rows.first())) : QString());
}

QString RestoreBackupView::describe(const QString &name)
{
    const auto known = descriptions.constFind(name);
    if (known != descriptions.constEnd())
        return *known;
    const BackupFolder folder(context.workspace);
    const QString path = folder.pathOf(name);
    const Result<QList<BackupRow>> rows = folder.glanceAt(path);
    QStringList parts;
    const QList<BackupEntry> &entries = theFileNames->entries();
    const auto newest = std::max_element(
        entries.begin(), entries.end(),
        [](const BackupEntry &a, const BackupEntry &b) { return a.createdDate < b.createdDate; });
    if (newest != entries.end() && newest->name == name && entries.size() > 1)
        parts.append(tr("newest"));
    if (rows) {
        const KeptBackup kept(context.workspace, path, rows.value());
        parts.append(contentsInWords(rows.value()));
        if (const QString words = exactnessInWords(kept, rows.value()); !words.isNull())
            parts.append(words);
    } else {
        parts.append(unreadableInWords(name, rows.error()));
    }
    return *descriptions.insert(name, parts.join(u"; "));
}

void RestoreBackupView::restoreBackupFiles()
{
    const int row = selectedRow();
    if (row < 0 || row >= theFileNames->rowCount())
        return;
    // Taken down first: what happens while the file is played must not change what is deleted.
    const QList<int> rows = selectedRows();
    const QString name = nameAt(row);
    std::optional<PageRestore> restore = play(name);
    if (restore && restore->report.complete())
        restore->notDeleted = deleteRows(rows);
    descriptions.clear(); // another file may come back in another way now
    tellOfSelection();
    message->tell(restore ? noticeOf(*restore) : noticeOfUnreadable(name));
}

std::optional<PageRestore> RestoreBackupView::play(const QString &name)
{
    const BackupFolder folder = backupFolderOf(context);
    const QString path = folder.pathOf(name);
    varnelLog(lcBackup, fillIn(u"filePath: %@", {path}));
    const Result<QList<BackupRow>> rows = folder.read(path);
    if (!rows)
        return std::nullopt;
    const KeptBackup kept(context.workspace, path, rows.value());
    SharedPlayback target(context.shared, kept);
    // The report has the failure that ends it.
    static_cast<void>(playBack(rows.value(), target));
    return PageRestore {name, rows.value(), target.report(), {}};
}

void RestoreBackupView::deleteSelectedFilesAfterAsking()
{
    const int row = selectedRow();
    if (row < 0 || row >= theFileNames->rowCount())
        return;
    const QString question = selectedRows().size() == 1
        ? fillIn(u"Are you sure you want to delete %@?", {nameAt(row)})
        : QStringLiteral("Are you sure you want to delete selected backup files");
    context.dialogs.showAlert(this,
                              {QStringLiteral("Delete Backup File"),
                               question,
                               {QStringLiteral("Delete"), QStringLiteral("Cancel")},
                               true},
                              [self = QPointer<RestoreBackupView>(this)](int code) {
                                  if (self)
                                      self->deleteAlertDidEnd(code);
                              });
}

void RestoreBackupView::deleteAlertDidEnd(int returnCode)
{
    if (returnCode == FirstButton)
        deleteSelectedFiles();
}

void RestoreBackupView::deleteSelectedFiles()
{
    const QList<int> rows = selectedRows();
    QStringList names;
    for (const int row : rows)
        names.append(nameAt(row));
    const std::optional<Error> failure = deleteRows(rows);
    tableViewSelected();
    if (!names.isEmpty())
        message->tell(noticeOfDeletion(names, failure));
}

std::optional<Error> RestoreBackupView::deleteRows(const QList<int> &rows)
{
    const QScopedValueRollback within(deleting, true); // each row that goes changes the selection
    BackupFolder folder = backupFolderOf(context);
    bool deleted = false;
    std::optional<Error> failure;
    for (auto row = rows.crbegin(); row != rows.crend(); ++row) {
        const QString path = folder.pathOf(nameAt(*row));
        varnelLog(lcBackup, fillIn(u"%lu", {QString::number(*row)}));
        // A file that can't be deleted has been logged, and leaves the list until it is read again.
        const Result<void> removed = folder.remove(path);
        deleted = deleted || removed.ok();
        if (!removed && !failure)
            failure = removed.error();
        varnelLog(lcBackup, fillIn(u"%@", {path}));
        theFileNames->removeEntryAt(*row);
        setButtonsStatus();
    }
    if (deleted)
        (void)folder.flush(); // what fails has been logged
    showEmptyText();
    return failure;
}

void RestoreBackupView::showRestoreInfoWindow()
{
    const int row = selectedRow();
    if (row < 0 || row >= theFileNames->rowCount())
        return;
    context.shared.setSelectedBackupFileName(nameAt(row));
    varnelLog(lcBackup, fillIn(u"%@", {context.shared.selectedBackupFileName()}));
    if (restoreBackupInfoWindow == nullptr)
        restoreBackupInfoWindow = new RestoreBackupInfoWindow(context, window());
    context.dialogs.showSheet(restoreBackupInfoWindow);
    restoreBackupInfoWindow->updateLabel();
}

} // namespace varnel
