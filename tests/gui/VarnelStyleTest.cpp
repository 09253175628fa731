#include "ui/VarnelStyle.h"

#include "ui/StyleDrawing.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;

namespace {

class VarnelStyleTest : public testing::Test {
protected:
    void SetUp() override
    {
        Theme::apply(*qApp);
        QApplication::setPalette(Theme::lightPalette());
    }
};

QColor colourAt(QWidget &widget, const QPoint &point)
{
    return widget.grab().toImage().pixelColor(point);
}

/// Beside the label, where the button's own ground is.
QColor groundOf(QPushButton &button)
{
    button.resize(120, 32);
    return colourAt(button, {12, 16});
}

/// Of two fields, the accent is the edge of the one with the focus only.
template <typename Field> void expectFocusOnTheEdge()
{
    QWidget window;
    QVBoxLayout layout(&window);
    Field first;
    Field second;
    layout.addWidget(&first);
    layout.addWidget(&second);
    window.show();
    window.activateWindow();
    first.setFocus();
    QCoreApplication::processEvents();
    ASSERT_TRUE(first.hasFocus());
    const QPoint edge(first.width() / 2, 0);
    EXPECT_EQ(colourAt(first, edge), Theme::accent(first.palette()));
    EXPECT_NE(colourAt(second, edge), Theme::accent(second.palette()));
}

} // namespace

TEST_F(VarnelStyleTest, anAccentButtonIsFilledOnlyWhileItIsEnabled)
{
    QPushButton save(u"Save"_s);
    const QColor plain = groundOf(save);
    EXPECT_NE(plain, Theme::accentFill());
    Theme::makeAccentButton(&save);
    EXPECT_EQ(groundOf(save), Theme::accentFill());
    save.setEnabled(false);
    EXPECT_NE(groundOf(save), Theme::accentFill());
}

TEST_F(VarnelStyleTest, aDialogsDefaultButtonIsFilledWithTheAccent)
{
    QDialog dialog;
    auto *button = new QPushButton(u"Save"_s, &dialog);
    button->setDefault(true);
    EXPECT_EQ(groundOf(*button), Theme::accentFill());
}

TEST_F(VarnelStyleTest, aDisabledButtonIsMoreThanHalfwayToItsGround)
{
    QPushButton button(u"Save"_s);
    const QPalette palette = button.palette();
    const QColor ground = palette.color(QPalette::Base);
    const QColor quiet = palette.color(QPalette::Disabled, QPalette::ButtonText);
    EXPECT_LT(Theme::contrast(quiet, ground),
              Theme::contrast(palette.color(QPalette::Active, QPalette::ButtonText), ground) / 4);
}

TEST_F(VarnelStyleTest, aSourceListsSelectionIsARoundedBarClearOfBothEdges)
{
    QTreeWidget list;
    Theme::makeSourceList(&list);
    list.resize(200, 200);
    auto *item = new QTreeWidgetItem(&list, {u"Dock"_s});
    list.setCurrentItem(item);
    const QRect row(0, list.visualItemRect(item).top(), 200, list.visualItemRect(item).height());
    EXPECT_EQ(row.height(), Theme::sourceListRowHeight);
    const QColor bar = Theme::selectionFill(false);
    const QColor base = list.palette().color(QPalette::Base);
    const int middle = row.center().y();
    EXPECT_EQ(colourAt(list, {4, middle}), base);
    EXPECT_EQ(colourAt(list, {Theme::gapSmall + 1, middle}), bar);
    EXPECT_EQ(colourAt(list, {199 - Theme::gapSmall - 1, middle}), bar);
    EXPECT_EQ(colourAt(list, {196, middle}), base);
    EXPECT_EQ(colourAt(list, {Theme::gapSmall, row.top() + 1}), base) << "the corner is round";
}

TEST_F(VarnelStyleTest, aListsRowsAreHighEnoughToHit)
{
    QListWidget list;
    Theme::makeList(&list);
    list.addItem(u"Some.app"_s);
    EXPECT_GE(list.sizeHintForRow(0), Theme::listRowHeight);
}

TEST_F(VarnelStyleTest, aTablesRowsAreAsHighAsAListsAndGrowWithTheFont)
{
    QStandardItemModel model(2, 1);
    QTableView table;
    table.setModel(&model);
    Theme::makeList(&table);
    EXPECT_EQ(table.rowHeight(0), Theme::listRowHeight);
    QTableView large;
    large.setModel(&model);
    large.setFont(QFont(large.font().family(), 40));
    Theme::makeList(&large);
    EXPECT_EQ(large.rowHeight(0), large.fontMetrics().height() + Theme::gapSmall);
}

TEST_F(VarnelStyleTest, theFieldWithTheFocusLooksDifferent)
{
    expectFocusOnTheEdge<QLineEdit>();
    expectFocusOnTheEdge<QComboBox>();
}

TEST_F(VarnelStyleTest, anEdgeIsOneWholeDevicePixelAtEveryScale)
{
    for (const double scale : {1.0, 1.5, 2.0}) {
        QImage paper(QSize(60, 60), QImage::Format_ARGB32_Premultiplied);
        paper.setDevicePixelRatio(scale);
        paper.fill(Qt::white);
        QPainter painter(&paper);
        StyleDrawing::box(&painter, QRectF(3, 3, 20, 20), 0, Qt::white, Qt::black);
        painter.end();
        int dark = 0;
        for (int x = 0; x < 20; ++x) { // across the left edge only
            const QColor colour = paper.pixelColor(x, 20);
            EXPECT_TRUE(colour == Qt::white || colour == Qt::black) << scale << " blurs at " << x;
            dark += colour == Qt::black ? 1 : 0;
        }
        EXPECT_EQ(dark, 1) << scale;
    }
}

TEST_F(VarnelStyleTest, aChoiceListHasAllFourEdgesWhereverItBegins)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        for (const QPoint begin : {QPoint(4, 4), QPoint(5, 5)}) {
            QStyleOptionComboBox list;
            list.state = QStyle::State_Enabled;
            list.palette = QApplication::palette();
            list.rect = QRect(0, 0, 51, 29);
            QImage paper(QSize(160, 100), QImage::Format_ARGB32_Premultiplied);
            paper.setDevicePixelRatio(scale);
            paper.fill(Qt::white);
            QPainter painter(&paper);
            painter.translate(begin);
            qApp->style()->drawComplexControl(QStyle::CC_ComboBox, &list, &painter);
            const QRectF whole = StyleDrawing::onDevicePixels(painter, list.rect);
            const QRect there = painter.deviceTransform().mapRect(whole).toRect();
            painter.end();
            const QColor edge =
                Theme::over(Theme::controlEdge(list.palette), list.palette.color(QPalette::Button));
            for (const QPoint place : {QPoint(there.center().x(), there.top()),
                                       QPoint(there.center().x(), there.bottom()),
                                       QPoint(there.left(), there.center().y()),
                                       QPoint(there.right(), there.center().y())}) {
                EXPECT_NEAR(qRed(paper.pixel(place)), edge.red(), 2)
                    << scale << " from " << begin.x() << ": " << place.x() << ", " << place.y();
            }
        }
    }
}

TEST_F(VarnelStyleTest, theDesktopsOwnPaletteGetsTheProgramsAccent)
{
    QPalette palette(Qt::darkGray);
    qApp->style()->polish(palette);
    EXPECT_EQ(palette.color(QPalette::Highlight), Theme::accentFill());
    EXPECT_EQ(palette.color(QPalette::AlternateBase), Theme::rowShading(palette));
}
