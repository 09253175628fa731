#include "ui/SmallFont.h"

#include <QApplication>

namespace varnel {

QFont smallSystemFont()
{
    return scaledFont(QApplication::font(), 0.87);
}

QFont scaledFont(const QFont &font, qreal factor)
{
    QFont scaled = font;
    if (font.pixelSize() > 0)
        scaled.setPixelSize(qRound(font.pixelSize() * factor));
    else
        scaled.setPointSizeF(font.pointSizeF() * factor);
    return scaled;
}

} // namespace varnel
