#include "sysinfo/views/BSDProcessesView.h"

#include "home/Workspace.h"
#include "platform/Desktop.h"
#include "sysinfo/ProcessActions.h"
#include "sysinfo/views/ProcessCell.h"
#include "sysinfo/views/ProcessModel.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QShortcut>

#include <algorithm>

#include "ui_BSDProcessesView.h"

namespace varnel {

BSDProcessesView::BSDProcessesView(const PageContext &context, QWidget *parent)
    : QWidget(parent), context(context), ui(std::make_unique<Ui::BSDProcessesView>()),
      processes(new ProcessModel(this))
{
    ui->setupUi(this);
    setUpTable();
    connect(ui->refreshButton, &QPushButton::clicked, this, &BSDProcessesView::refreshData);
    connect(ui->showInFinderButton, &QPushButton::clicked, this, &BSDProcessesView::showInFinder);
    connect(ui->killProcessButton, &QPushButton::clicked, this, &BSDProcessesView::killProcess);
    auto *refresh = new QShortcut(QKeySequence::Refresh, this);
    connect(refresh, &QShortcut::activated, this, &BSDProcessesView::refreshData);
    if (context.host && !context.host->desktop.isReachable())
        offerWhatIsLeft();
    tableViewSelected();
}

/// The window works as the home's owner: it sees that person's processes, and no desktop.
void BSDProcessesView::offerWhatIsLeft()
{
    ui->showInFinderButton->setText(tr("Copy Path"));
    ui->emptyLabel->setText(tr("No applications of %1 with a window are running.\n"
                               "This window works as %1 and sees nobody else's.")
                                .arg(context.workspace.home().workedAs));
    ui->tableView->setToolTip(tr("This window works as %1 and shows the applications of %1 only.")
                                  .arg(context.workspace.home().workedAs));
}

BSDProcessesView::~BSDProcessesView() = default;

void BSDProcessesView::setUpTable()
{
    QTableView *table = ui->tableView;
    table->setModel(processes);
    Theme::makeList(table);
    auto *processCell = new ProcessCell(table);
    auto *plainCell = new ImageAndTextCell(table);
    auto *pathCell = new ImageAndTextCell(table);
    pathCell->setElideMode(Qt::ElideMiddle);
    table->setItemDelegateForColumn(ProcessModel::Process, processCell);
    table->setItemDelegateForColumn(ProcessModel::Priority, plainCell);
    table->setItemDelegateForColumn(ProcessModel::ProcessId, plainCell);
    table->setItemDelegateForColumn(ProcessModel::Location, pathCell);
    table->setColumnWidth(ProcessModel::Process, 200);
    Theme::setTextRole(ui->emptyLabel, Theme::TextRole::Help);
    for (const auto &[column, width] :
         {std::pair(ProcessModel::Priority, 80), {ProcessModel::ProcessId, 96}})
        table->setColumnWidth(column,
                              std::max(width, table->horizontalHeader()->sectionSizeHint(column)));
    table->horizontalHeader()->setStretchLastSection(true);
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &BSDProcessesView::tableViewSelected);
}

int BSDProcessesView::selectedRow() const
{
    const QModelIndexList rows = ui->tableView->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void BSDProcessesView::select(const QString &bundleLocation)
{
    const QList<ProcessRow> &rows = processes->rows();
    for (int row = 0; row < rows.size(); ++row) {
        if (rows[row].bundleLocation == bundleLocation)
            return ui->tableView->selectRow(row);
    }
}

void BSDProcessesView::getBSDProcesses()
{
    processes->setRows(varnel::getBSDProcesses(context.host->processTable,
                                               context.host->processManager, context.host->files));
}

void BSDProcessesView::reloadTable()
{
    ui->tableView->clearSelection();
    ui->emptyLabel->setVisible(processes->rowCount() == 0);
    tableViewSelected();
}

void BSDProcessesView::refreshData()
{
    const int row = selectedRow();
    const QString selected = row < 0 ? QString() : processes->rows()[row].bundleLocation;
    getBSDProcesses();
    reloadTable();
    // The same application, wherever it stands now.
    select(selected);
}

void BSDProcessesView::showInFinder()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    if (context.host->desktop.isReachable())
        varnel::showInFinder(processes->rows()[row], context.host->desktop);
    else
        QApplication::clipboard()->setText(processes->rows()[row].bundleLocation);
}

void BSDProcessesView::killProcess()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    // A process that could not be sent the signal leaves the list as silently as any other.
    static_cast<void>(varnel::killProcess(processes->rows()[row], context.host->processManager));
    processes->removeRowAt(row);
    // Nothing is selected then: a second press must not end the next application.
    reloadTable();
    // The button, which can do nothing more, would give the focus to its neighbour.
    ui->tableView->setFocus();
}

void BSDProcessesView::tableViewSelected()
{
    const bool selected = selectedRow() >= 0;
    ui->killProcessButton->setEnabled(selected);
    ui->showInFinderButton->setEnabled(selected);
}

} // namespace varnel
