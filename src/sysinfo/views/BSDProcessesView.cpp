#include "sysinfo/views/BSDProcessesView.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "platform/Desktop.h"
#include "platform/ProcessTable.h"
#include "sysinfo/views/ProcessCell.h"
#include "sysinfo/views/ProcessModel.h"
#include "ui/Theme.h"

#include <QHeaderView>
#include <QShortcut>

#include "ui_BSDProcessesView.h"

namespace varnel {

namespace {

constexpr int terminateSignal = 15;

} // namespace

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
    tableViewSelected();
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
    table->setColumnWidth(ProcessModel::Priority, 80);
    table->setColumnWidth(ProcessModel::ProcessId, 96);
    table->horizontalHeader()->setStretchLastSection(true);
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &BSDProcessesView::tableViewSelected);
}

int BSDProcessesView::selectedRow() const
{
    const QModelIndexList rows = ui->tableView->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void BSDProcessesView::refreshData()
{
    processes->setRows(getBSDProcesses(context.host->processTable, context.host->processManager,
                                       context.host->files));
    ui->emptyLabel->setVisible(processes->rowCount() == 0);
    tableViewSelected();
}

void BSDProcessesView::showInFinder()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    const QString location = processes->rows()[row].bundleLocation;
    context.host->desktop.launch(QStringLiteral("/usr/bin/open"), location,
                                 {QStringLiteral("-R"), location});
}

void BSDProcessesView::killProcess()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    const int outcome =
        context.host->processManager.kill(processes->rows()[row].processId, terminateSignal);
    if (outcome == 0)
        varnelLog(lcSysInfo, fillIn(u"%d", {QString::number(outcome)}));
    processes->removeRowAt(row);
    tableViewSelected();
}

void BSDProcessesView::tableViewSelected()
{
    const bool selected = selectedRow() >= 0;
    ui->killProcessButton->setEnabled(selected);
    ui->showInFinderButton->setEnabled(selected);
}

} // namespace varnel
