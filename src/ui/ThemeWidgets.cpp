#include "ui/Theme.h"

#include "ui/VarnelStyle.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QLinearGradient>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>

namespace varnel::Theme {

void makeSourceList(QAbstractItemView *view)
{
    VarnelStyle::setPart(view, VarnelStyle::Part::SourceList);
    view->setIconSize({listIconSize, listIconSize});
    view->setFrameShape(QFrame::NoFrame);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void makeList(QAbstractItemView *view)
{
    VarnelStyle::setPart(view, VarnelStyle::Part::List);
    view->setIconSize({listIconSize, listIconSize});
    view->setAlternatingRowColors(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
}

void makeAccentButton(QPushButton *button)
{
    VarnelStyle::setPart(button, VarnelStyle::Part::AccentButton);
}

void makeDangerButton(QPushButton *button)
{
    VarnelStyle::setPart(button, VarnelStyle::Part::DangerButton);
}

void makeSearchField(QLineEdit *field)
{
    VarnelStyle::setPart(field, VarnelStyle::Part::SearchField);
    field->setClearButtonEnabled(true);
}

void drawShadedRow(QPainter *painter, const QRect &bounds, const QPalette &palette)
{
    painter->save();
    painter->fillRect(bounds, rowShading(palette));
    painter->setPen(QPen(rowStroke(palette), 0)); // one device pixel at any scale
    const QRectF edge = QRectF(bounds).adjusted(-1, 0, 0, 0);
    const qreal device = 1 / painter->device()->devicePixelRatioF();
    painter->drawRect(edge.adjusted(0, 0, -device, -device));
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
    application.setStyle(new VarnelStyle); // the application owns it
}

} // namespace varnel::Theme
