#include "ui/Theme.h"

#include "ui/Icons.h"
#include "ui/StyleDrawing.h"
#include "ui/VarnelStyle.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLinearGradient>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTableView>
#include <QTreeView>

namespace varnel::Theme {

void makeSourceList(QAbstractItemView *view)
{
    VarnelStyle::setPart(view, VarnelStyle::Part::SourceList);
    view->setIconSize({listIconSize, listIconSize});
    view->setFrameShape(QFrame::NoFrame);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    if (auto *tree = qobject_cast<QTreeView *>(view)) {
        tree->setHeaderHidden(true);
        tree->setIndentation(gap); // what the bar's rounded end needs beside the icon
        tree->setUniformRowHeights(true);
    }
}

void makeList(QAbstractItemView *view)
{
    VarnelStyle::setPart(view, VarnelStyle::Part::List);
    view->setIconSize({listIconSize, listIconSize});
    view->setAlternatingRowColors(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setTextElideMode(Qt::ElideMiddle); // of a path, both ends matter
    // The ring stands round the whole row; the toolkit draws only the cell anew that was left.
    QObject::connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged,
                     view->viewport(), qOverload<>(&QWidget::update));
    if (auto *table = qobject_cast<QTableView *>(view)) {
        table->setShowGrid(false);
        table->setWordWrap(false);
        table->verticalHeader()->hide();
        // Else the margin of the words in a header, which are not there, makes each row higher.
        table->verticalHeader()->setMinimumSectionSize(0);
        table->verticalHeader()->setDefaultSectionSize(
            std::max<int>(listRowHeight, table->fontMetrics().height() + gapSmall));
        table->horizontalHeader()->setHighlightSections(false);
        table->horizontalHeader()->setFont(font(TextRole::Help, QApplication::font()));
        table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
}

void makeAccentButton(QPushButton *button)
{
    VarnelStyle::setPart(button, VarnelStyle::Part::AccentButton);
}

void makeDangerButton(QPushButton *button)
{
    VarnelStyle::setPart(button, VarnelStyle::Part::DangerButton);
}

void makeSearchField(QLineEdit *field, const std::function<void()> &cleared)
{
    VarnelStyle::setPart(field, VarnelStyle::Part::SearchField);
    QAction *glass =
        field->addAction(Icons::icon(QStringLiteral("search")), QLineEdit::LeadingPosition);
    glass->setText(QStringLiteral("Search")); // what a screen reader says
    // The button comes with the first text that could be cleared: for its picture the toolkit loads
    // the reader of every image format there is.
    QObject::connect(
        field, &QLineEdit::textChanged, field,
        [field, cleared] {
            field->setClearButtonEnabled(true);
            auto *button = field->findChild<QAction *>(QStringLiteral("_q_qlineeditclearaction"));
            if (button == nullptr)
                return;
            button->setText(QStringLiteral("Leave the search")); // what a screen reader says
            button->setIcon(Icons::icon(QStringLiteral("clear"))); // sharp at every scale
            QObject::connect(button, &QAction::triggered, field, cleared);
        },
        Qt::SingleShotConnection);
}

void drawShadedRow(QPainter *painter, const QRect &bounds, const QPalette &palette)
{
    // The left edge lies outside, so that rows of one page look like one sheet.
    const QRectF whole = QRectF(bounds).adjusted(-1, 0, 0, 0);
    StyleDrawing::box(painter, whole, 0, rowShading(palette), rowStroke(palette));
}

void drawPendingDot(QPainter *painter, const QPointF &centre, const QPalette &palette,
                    bool selected)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(selected ? accentText() : accent(palette));
    painter->drawEllipse(centre, pendingDotSize / 2.0, pendingDotSize / 2.0);
    painter->restore();
}

void drawBand(QPainter *painter, const QRect &band, const QPalette &palette)
{
    QLinearGradient blue(0, band.top() + band.height(), 0, band.top());
    blue.setColorAt(0, bandStart(palette));
    blue.setColorAt(1, bandEnd(palette));
    painter->fillRect(band, bandGround(palette));
    painter->fillRect(band, blue);
}

void apply(QApplication &application)
{
    application.setStyle(new VarnelStyle);
} // The application owns it. NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)

} // namespace varnel::Theme
