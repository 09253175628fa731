#include "ui/DetailsSheet.h"

#include "ui/Dialogs.h"

#include <QTableView>

namespace varnel {

namespace {

constexpr QSize firstSize(760, 320);

} // namespace

DetailsSheet::DetailsSheet(const QList<QStringList> &failures,
                           const QLoggingCategory &(*category)(), QWidget *parent)
    : ListSheet(tr("What Went Wrong"),
                {{tr("Setting"), Qt::CaseInsensitive},
                 {tr("Step"), Qt::CaseInsensitive},
                 {tr("Reason"), Qt::CaseInsensitive}},
                category, parent)
{
    setObjectName(QStringLiteral("detailsSheet"));
    setRows(failures);
    resize(firstSize);
    // The reason is the longest, and has the rest.
    auto *table = findChild<QTableView *>();
    table->resizeColumnToContents(0);
    table->resizeColumnToContents(1);
}

void DetailsSheet::show(Dialogs &dialogs, const QList<QStringList> &failures,
                        const QLoggingCategory &(*category)(), const QWidget &page)
{
    auto *sheet = new DetailsSheet(failures, category, page.window());
    QObject::connect(sheet, &QDialog::finished, sheet, &QObject::deleteLater);
    dialogs.showSheet(sheet);
}

} // namespace varnel
