#include "shell/views/CloseApplicationsSheet.h"

#include "shell/views/CloseRowsModel.h"
#include "ui/ImageAndTextCell.h"
#include "ui/Theme.h"

#include <QHeaderView>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>

#include "ui_CloseApplicationsSheet.h"

namespace varnel {

CloseApplicationsSheet::CloseApplicationsSheet(QWidget *parent)
    : QDialog(parent), ui(std::make_unique<Ui::CloseApplicationsSheet>()),
      model(new CloseRowsModel(this))
{
    ui->setupUi(this);
    Theme::setTextRole(ui->explanation, Theme::TextRole::Help);
    Theme::setTextRole(ui->title, Theme::TextRole::RowTitle);
    QTableView *table = ui->tableView;
    table->setModel(model);
    Theme::makeList(table);
    table->setItemDelegateForColumn(CloseRowsModel::Name, new ImageAndTextCell(table));
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setMinimumSectionSize(Theme::gapHuge);
    table->setColumnWidth(CloseRowsModel::Close, Theme::gapHuge);
    auto *toggle = new QShortcut(Qt::Key_Space, table);
    toggle->setContext(Qt::WidgetShortcut);
    connect(toggle, &QShortcut::activated, this, &CloseApplicationsSheet::toggleCurrentRow);
    connect(ui->appCloseNowButton, &QPushButton::clicked, this, &CloseApplicationsSheet::confirmed);
    connect(ui->skipButton, &QPushButton::clicked, this, &CloseApplicationsSheet::skipped);
}

CloseApplicationsSheet::~CloseApplicationsSheet() = default;

void CloseApplicationsSheet::fitRows()
{
    constexpr int mostRows = 8;
    const int shown = std::clamp(model->rowCount(), 2, mostRows);
    ui->tableView->setFixedHeight(shown * ui->tableView->verticalHeader()->defaultSectionSize()
                                  + 2 * ui->tableView->frameWidth());
    ui->tableView->setCurrentIndex(model->index(0, CloseRowsModel::Name));
    adjustSize();
}

void CloseApplicationsSheet::toggleCurrentRow()
{
    const int row = ui->tableView->currentIndex().row();
    if (row < 0)
        return;
    model->setData(model->index(row, CloseRowsModel::Close),
                   model->rows()[row].close ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void CloseApplicationsSheet::reject()
{
    emit skipped();
}

} // namespace varnel
