#include "sysinfo/views/SysInfoView.h"

#include "base/Logging.h"
#include "home/Workspace.h"
#include "shell/Node.h"
#include "sysinfo/SystemRows.h"
#include "sysinfo/views/BSDProcessesModule.h"
#include "sysinfo/views/BSDProcessesView.h"
#include "ui/Icons.h"
#include "ui/ImageAndTextCell.h"
#include "ui/NodeModel.h"
#include "ui/TextTableModel.h"
#include "ui/Theme.h"

#include <QHeaderView>

#include <array>
#include <utility>

#include "ui_SysInfoView.h"

namespace varnel {

namespace {

struct Category {
    const char16_t *name = nullptr;
    const char16_t *icon = nullptr;
    Qt::Alignment valueAlignment;
    void (SysInfoView::*fill)() = nullptr; ///< null: the process list
};

const std::array<Category, 4> categories {{
    {u"Mac OS X", u"MacOSX", Qt::AlignLeft, &SysInfoView::getMacOSXInfo},
    {u"Memory", u"HardwareMemoryCard", Qt::AlignRight, &SysInfoView::getMemoryInfo},
    {u"Network", u"Connected", Qt::AlignRight, &SysInfoView::getNetworkInfo},
    {u"Process", u"New", Qt::AlignLeft, nullptr},
}};

const Category *findCategory(const QString &name)
{
    for (const Category &category : categories) {
        if (name.compare(QStringView(category.name), Qt::CaseInsensitive) == 0)
            return &category;
    }
    return nullptr;
}

QIcon categoryIcon(const QString &name)
{
    const Category *category = findCategory(name);
    return category == nullptr ? QIcon() : Icons::icon(QString::fromUtf16(category->icon));
}

std::shared_ptr<Node> categoryNodes()
{
    auto root = std::make_shared<Node>();
    for (const Category &category : categories) {
        auto node = std::make_shared<Node>();
        node->setName(QString::fromUtf16(category.name));
        root->children().append(node);
    }
    return root;
}

constexpr int valueColumn = 1;
constexpr int nameColumnWidth = 280;

} // namespace

SysInfoView::SysInfoView(const PageContext &context, QWidget *parent)
    : QWidget(parent), context(context), ui(std::make_unique<Ui::SysInfoView>()),
      root(categoryNodes()), memoryRows(new TextTableModel({{tr("Name")}, {tr("Value")}}, this))
{
    ui->setupUi(this);
    setUpOutline();
    setUpTable();
    loadProcessPage();
    showTable(Qt::AlignLeft);
    getMacOSXInfo();
}

SysInfoView::~SysInfoView() = default;

void SysInfoView::loadProcessPage()
{
    processes = std::make_unique<BSDProcessesModule>(context);
    if (!context.interfaceLoads(QStringLiteral("BSDProcessesView"))) {
        varnelLog(lcSysInfo, QStringLiteral("Error loading Nib for BSDProcessesView!"));
        return;
    }
    processesAwaited = true;
}

void SysInfoView::showEvent(QShowEvent *event)
{
    // The list is long to read and out of sight while another page of the window is chosen.
    if (std::exchange(processesAwaited, false))
        ui->customView->layout()->addWidget(processes->getBSDProcessesView());
    QWidget::showEvent(event);
}

void SysInfoView::setUpOutline()
{
    QTreeView *outline = ui->menuOutlineVew;
    outline->setModel(new NodeModel(root, categoryIcon, outline->accessibleName(), outline));
    outline->setItemDelegate(new ImageAndTextCell(outline));
    Theme::makeSourceList(outline);
    outline->expandAll();
    outline->setCurrentIndex(outline->model()->index(0, 0));
    connect(outline->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &SysInfoView::outlineViewSelectionDidChange);
}

void SysInfoView::setUpTable()
{
    QTableView *table = ui->memoryTable;
    table->setModel(memoryRows);
    table->setItemDelegate(new ImageAndTextCell(table));
    Theme::makeList(table);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setColumnWidth(0, nameColumnWidth);
    Theme::setTextRole(ui->memoryNote, Theme::TextRole::Help);
}

void SysInfoView::outlineViewSelectionDidChange(const QModelIndex &selected)
{
    const Category *category = findCategory(selected.data().toString());
    if (category == nullptr)
        return;
    if (category->fill == nullptr) {
        ui->pages->setCurrentWidget(ui->customView);
        return;
    }
    showTable(category->valueAlignment);
    (this->*category->fill)();
}

void SysInfoView::showTable(Qt::Alignment valueAlignment)
{
    memoryRows->setAlignment(valueColumn, valueAlignment);
    ui->pages->setCurrentWidget(ui->memoryScrollView);
}

void SysInfoView::setRows(const InfoRows &rows, const QString &note)
{
    QList<QStringList> texts;
    for (const InfoRow &row : rows)
        texts.append({row.name, row.value});
    memoryRows->setRows(std::move(texts));
    ui->memoryNote->setText(note);
    ui->memoryNote->setVisible(!note.isNull());
    ui->memoryTable->clearSelection();
}

void SysInfoView::getMacOSXInfo()
{
    const SystemVersion version =
        readSystemVersion(context.host->systemDisk, context.host->systemRoot);
    setRows(macOSXRows(version, context.host->facts, context.workspace.home()), version.whyNone);
}

void SysInfoView::getMemoryInfo()
{
    if (const std::optional<MemoryFacts> facts = context.host->facts.memory())
        setRows(varnel::memoryRows(*facts));
}

void SysInfoView::getNetworkInfo()
{
    setRows(networkRows(context.host->facts));
}

} // namespace varnel
