#include "ui/ImageAndTextCell.h"

#include "ui/Hyperlink.h"
#include "ui/SmallFont.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPixmap>
#include <QStandardItemModel>
#include <QTreeView>

#include <gtest/gtest.h>

using namespace varnel;

namespace {

QIcon redSquare()
{
    QPixmap pixmap(64, 64);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

std::shared_ptr<CellImage> image(qreal edge)
{
    return std::make_shared<CellImage>(CellImage {redSquare(), {edge, edge}});
}

/// The pixels of one kind that a cell draws for a row, in a frame of that size.
QRect redArea(const QImage &picture)
{
    QRect area;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == QColor(Qt::red))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

struct ImageAndTextCellTest : testing::Test {
    ImageAndTextCell cell;
    QStandardItemModel model;

    QImage drawn(const QSize &size)
    {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        QStyleOptionViewItem option;
        option.rect = QRect({}, size);
        option.state = QStyle::State_Enabled;
        option.palette.setColor(QPalette::Text, Qt::black);
        option.palette.setColor(QPalette::Base, Qt::white);
        cell.paint(&painter, option, model.index(0, 0));
        return picture;
    }
};

} // namespace

TEST(CellGeometry, TheTitleStandsRightOfTheIconAndItsGap)
{
    EXPECT_EQ(cell::titleRectForBounds({10, 20, 100, 30}, QSizeF(16, 16)), QRectF(31, 22, 81, 26));
}

TEST(CellGeometry, WithoutAnIconNothingIsCutOffForOne)
{
    EXPECT_EQ(cell::titleRectForBounds({10, 20, 100, 30}, std::nullopt), QRectF(12, 22, 100, 26));
}

TEST(CellGeometry, ACellTooNarrowForTheIconLeavesNoTitle)
{
    EXPECT_EQ(cell::titleRectForBounds({0, 0, 10, 30}, QSizeF(16, 16)).width(), 0);
}

TEST(CellGeometry, TheIconIsCentredUprightWhicheverWayTheViewCounts)
{
    EXPECT_EQ(cell::iconPoint({10, 20, 100, 29}, {16, 16}, true), QPointF(13, 20 - 1 + 23));
    EXPECT_EQ(cell::iconPoint({10, 20, 100, 29}, {16, 16}, false), QPointF(13, 20 - 1 + 7));
    EXPECT_EQ(cell::iconRect({10, 20, 100, 29}, {16, 16}), QRectF(13, 26, 16, 16));
}

TEST(CellGeometry, AGroupTitleIsCentredUpright)
{
    EXPECT_EQ(cell::groupTitleRect({0, 10, 100, 32}, 15), QRectF(0, 18, 100, 16));
}

TEST(CellGeometry, ACellIsWiderByTheGapAndTheIcon)
{
    EXPECT_EQ(cell::cellSize({50, 20}, std::nullopt), QSizeF(53, 20));
    EXPECT_EQ(cell::cellSize({50, 20}, cell::iconSize), QSizeF(69, 20));
}

TEST_F(ImageAndTextCellTest, TheFontIsTheSystemsSmallOne)
{
    EXPECT_EQ(cell.font(), smallSystemFont());
    EXPECT_LT(QFontInfo(cell.font()).pixelSize(), QFontInfo(QApplication::font()).pixelSize());
}

TEST_F(ImageAndTextCellTest, AnImageIsForcedTo16SoThatItsOtherUsersSeeItSo)
{
    const auto shared = image(64);
    ImageAndTextCell other;
    other.setImage(shared);
    shared->size = {64, 64};
    cell.setImage(shared);
    EXPECT_EQ(other.image()->size, QSizeF(16, 16));
}

TEST_F(ImageAndTextCellTest, TheImageThatIsThereAlreadyIsLeftAsItIs)
{
    const auto shared = image(64);
    cell.setImage(shared);
    shared->size = {32, 32};
    cell.setImage(shared);
    EXPECT_EQ(shared->size, QSizeF(32, 32));
}

TEST_F(ImageAndTextCellTest, OnlyATitleWithoutAnImageMakesAGroupCell)
{
    EXPECT_FALSE(cell.isGroupCell());
    cell.setTitle(QStringLiteral("SYSTEM"));
    EXPECT_TRUE(cell.isGroupCell());
    cell.setImage(image(16));
    EXPECT_FALSE(cell.isGroupCell());
}

TEST_F(ImageAndTextCellTest, ItsSizeIs3WiderThanItsTextAnd19WithAnImage)
{
    cell.setTitle(QStringLiteral("Dock"));
    const QSizeF base = QFontMetricsF(cell.font()).size(Qt::TextSingleLine, cell.title());
    EXPECT_EQ(cell.cellSize(), base + QSizeF(3, 0));
    cell.setImage(image(64));
    EXPECT_EQ(cell.cellSize(), base + QSizeF(19, 0));
}

TEST_F(ImageAndTextCellTest, ACopyHoldsTheSameImage)
{
    cell.setImage(image(16));
    cell.setTitle(QStringLiteral("Dock"));
    const std::unique_ptr<ImageAndTextCell> copy(cell.copyWithZone(nullptr));
    EXPECT_EQ(copy->image(), cell.image());
    EXPECT_EQ(copy->title(), cell.title());
    EXPECT_EQ(copy->font(), cell.font());
}

TEST_F(ImageAndTextCellTest, AnIconOfAnySizeIsDrawn16By16InItsPlace)
{
    auto *item = new QStandardItem(redSquare(), QString());
    model.appendRow(item);
    EXPECT_EQ(redArea(drawn({120, 28})), QRect(3, 5, 16, 16));
}

TEST_F(ImageAndTextCellTest, TheCellsOwnImageStandsInForARowWithoutOne)
{
    model.appendRow(new QStandardItem(QString()));
    EXPECT_TRUE(redArea(drawn({120, 28})).isNull());
    cell.setImage(image(64));
    EXPECT_EQ(redArea(drawn({120, 28})), QRect(3, 5, 16, 16));
}

TEST_F(ImageAndTextCellTest, APressHitsContentWithoutAView)
{
    EXPECT_EQ(ImageAndTextCell::hitTest(nullptr), cell::Hit::ContentArea);
}

TEST_F(ImageAndTextCellTest, APressGoesByWhetherTheSelectedRowCanBeDragged)
{
    auto *draggable = new QStandardItem(QStringLiteral("draggable"));
    auto *fixed = new QStandardItem(QStringLiteral("fixed"));
    fixed->setDragEnabled(false);
    model.appendRow(draggable);
    model.appendRow(fixed);
    QListView view;
    view.setModel(&model);
    EXPECT_EQ(ImageAndTextCell::hitTest(&view), cell::Hit::TrackableArea);
    view.setCurrentIndex(draggable->index());
    EXPECT_EQ(ImageAndTextCell::hitTest(&view), cell::Hit::ContentArea);
    view.setCurrentIndex(fixed->index());
    EXPECT_EQ(ImageAndTextCell::hitTest(&view), cell::Hit::TrackableArea);
}

TEST_F(ImageAndTextCellTest, AnEditorStandsWhereTheTitleStood)
{
    model.appendRow(new QStandardItem(redSquare(), QStringLiteral("Dock")));
    QLineEdit editor;
    QStyleOptionViewItem option;
    option.rect = QRect(10, 20, 100, 30);
    cell.updateEditorGeometry(&editor, option, model.index(0, 0));
    EXPECT_EQ(editor.geometry(), QRect(31, 22, 81, 26));
}

TEST(Hyperlink, ATextLooksLikeALinkButLeadsNowhere)
{
    const StyledText text = Hyperlink::hyperlinkFromString(
        QStringLiteral("Show all"), QStringLiteral("https://example.invalid/"));
    EXPECT_EQ(text.text, QStringLiteral("Show all"));
    EXPECT_EQ(text.foreground, QColor(Qt::blue));
    EXPECT_EQ(text.cursor, Qt::PointingHandCursor);
    EXPECT_EQ(text.elide, Qt::ElideRight);
    EXPECT_TRUE(text.link.isNull());
}
