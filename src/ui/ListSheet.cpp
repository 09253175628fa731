#include "ui/ListSheet.h"

#include "base/Logging.h"
#include "ui/ElidedLabel.h"
#include "ui/ImageAndTextCell.h"
#include "ui/Theme.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

namespace varnel {

namespace {

constexpr QSize firstSize(640, 360);

QTableView *makeTable(TextTableModel *model, QWidget *parent)
{
    auto *table = new QTableView(parent);
    table->setModel(model);
    table->setItemDelegate(new ImageAndTextCell(table));
    Theme::makeList(table);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView *header = table->horizontalHeader();
    header->setSectionsClickable(true);
    header->setStretchLastSection(true);
    return table;
}

} // namespace

ListSheet::ListSheet(const QString &title, QList<TextTableModel::Column> columns,
                     const QLoggingCategory &(*category)(), QWidget *parent)
    : QDialog(parent), model(new TextTableModel(std::move(columns), this)),
      tableView(makeTable(model, this)), caption(new ElidedLabel(this)), note(new QLabel(this)),
      emptyLabel(new QLabel(tableView->viewport())), category(category)
{
    setWindowTitle(title);
    setModal(true);
    resize(firstSize);
    tableView->setAccessibleName(title);
    tableView->setColumnWidth(0, model->columnCount() > 1 ? firstSize.width() / 4 : 0);
    caption->setTextInteractionFlags(Qt::TextSelectableByMouse);
    caption->setTextFormat(Qt::PlainText);
    // A long path must not make the sheet wider than its list.
    caption->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    Theme::setTextRole(caption, Theme::TextRole::Help);
    caption->hide();
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    note->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Theme::setTextRole(note, Theme::TextRole::Help);
    note->hide();

    emptyLabel->setAlignment(Qt::AlignCenter);
    emptyLabel->setWordWrap(true);
    Theme::setTextRole(emptyLabel, Theme::TextRole::Help);
    auto *overlay = new QVBoxLayout(tableView->viewport());
    overlay->addWidget(emptyLabel);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Theme::pageMargin, Theme::pageMargin, Theme::pageMargin, Theme::gap);
    layout->setSpacing(Theme::gapSmall);
    layout->addWidget(caption);
    layout->addWidget(tableView);
    layout->addWidget(note);
    layout->addSpacing(Theme::gapSmall);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::rejected, this, &ListSheet::closeWindow);
    connect(tableView->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &ListSheet::didClickTableColumn);
}

void ListSheet::setRows(QList<QStringList> rows)
{
    model->setRows(std::move(rows));
    showEmptyText();
}

const QList<QStringList> &ListSheet::rows() const
{
    return model->rows();
}

void ListSheet::setCaption(const QString &text)
{
    caption->showText(text);
    caption->show();
}

QString ListSheet::captionText() const
{
    return caption->text();
}

void ListSheet::setNote(const QString &text)
{
    note->setText(text);
    note->setVisible(!text.isNull());
}

QString ListSheet::noteText() const
{
    return note->text();
}

void ListSheet::setEmptyText(const QString &text)
{
    emptyLabel->setText(text);
    showEmptyText();
}

void ListSheet::fitRows()
{
    const QHeaderView *rowHeader = tableView->verticalHeader();
    const int frame = 2 * tableView->frameWidth();
    const int rows = rowHeader->count() * rowHeader->defaultSectionSize();
    tableView->setMinimumHeight(tableView->horizontalHeader()->sizeHint().height() + rows + frame);
    tableView->resizeColumnToContents(0);
    const int last = tableView->columnWidth(0)
        + static_cast<QAbstractItemView *>(tableView)->sizeHintForColumn(model->columnCount() - 1);
    tableView->setMinimumWidth(std::max(tableView->minimumWidth(), last + frame));
    adjustSize();
}

void ListSheet::didClickTableColumn(int column)
{
    varnelLog(category, QStringLiteral("didClickTableColumn"));
    sortFlag.click(column);
    model->sortRows(column, sortFlag.sortDescending);
    QHeaderView *header = tableView->horizontalHeader();
    header->setSortIndicatorShown(true);
    header->setSortIndicator(column,
                             sortFlag.sortDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

const SortFlag &ListSheet::sorting() const
{
    return sortFlag;
}

void ListSheet::closeWindow()
{
    setRows({});
    done(QDialog::Accepted);
}

void ListSheet::reject()
{
    closeWindow();
}

void ListSheet::showEmptyText()
{
    emptyLabel->setVisible(model->rows().isEmpty());
}

} // namespace varnel
