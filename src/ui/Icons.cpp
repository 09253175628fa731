#include "ui/Icons.h"

#include "ui/Theme.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QResource>

#include <array>
#include <cmath>

// The resources lie in a static library, from which a linker takes only what is asked for by name.
static void loadIconResources()
{
    Q_INIT_RESOURCE(icons);
}

namespace varnel::Icons {

namespace {

/// Edge lengths in device pixels, smallest first; the build that renders them says which.
constexpr std::array storedSizes {VARNEL_ICON_SIZES};

int storedSizeFor(int pixels)
{
    for (const int size : storedSizes) {
        if (size >= pixels)
            return size;
    }
    return storedSizes.back();
}

QString fileName(const QString &name, const QString &rendering, int size)
{
    return u":/icons/" + rendering + u'/' + QString::number(size) + u'/' + name + u".argb";
}

/// A picture as the build rendered it: bare pixels, premultiplied.
QPixmap stored(const QString &file, int edge)
{
    QPixmap known;
    if (QPixmapCache::find(file, &known))
        return known;
    const QByteArray pixels = QResource(file).uncompressedData();
    constexpr int bytesPerPixel = 4;
    if (pixels.size() != qsizetype(edge) * edge * bytesPerPixel)
        return {};
    const QImage image(reinterpret_cast<const uchar *>(pixels.constData()), edge, edge,
                       QImage::Format_ARGB32_Premultiplied);
    known = QPixmap::fromImage(image.copy());
    QPixmapCache::insert(file, known);
    return known;
}

/// Chooses the rendering when it paints, because the palette may change while the icon lives.
class PaletteIconEngine : public QIconEngine {
public:
    explicit PaletteIconEngine(QString name) : name(std::move(name)) { }

    QIconEngine *clone() const override { return new PaletteIconEngine(name); }
    QString key() const override { return QStringLiteral("varnel"); }
    bool isNull() override { return false; }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        QList<QSize> sizes;
        for (const int size : storedSizes)
            sizes.append({size, size});
        return sizes;
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal scale = painter->device()->devicePixelRatioF();
        const QPixmap image = drawing((QSizeF(rect.size()) * scale).toSize(), mode);
        QRectF place({}, QSizeF(image.size()) / scale);
        place.moveCenter(QRectF(rect).center());
        // Whole device pixels, or the lines of a centred icon blur.
        place.moveTo(std::floor(place.x() * scale) / scale, std::floor(place.y() * scale) / scale);
        painter->drawPixmap(place, image, QRectF(image.rect()));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        return drawing(size, mode);
    }

private:
    /// A square pixmap that fits into `size` device pixels.
    QPixmap drawing(const QSize &size, QIcon::Mode mode) const
    {
        const int pixels = std::min(size.width(), size.height());
        const int edge = storedSizeFor(pixels);
        QPixmap image = stored(fileName(name, rendering(mode), edge), edge);
        if (image.width() != pixels)
            image = image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        return mode == QIcon::Disabled ? quiet(image) : image;
    }

    static QString rendering(QIcon::Mode mode)
    {
        if (mode == QIcon::Selected)
            return QStringLiteral("selected");
        return Theme::isDark(QGuiApplication::palette()) ? QStringLiteral("dark")
                                                         : QStringLiteral("light");
    }

    static QPixmap quiet(const QPixmap &image)
    {
        QPixmap faint(image.size());
        faint.fill(Qt::transparent);
        QPainter painter(&faint);
        painter.setOpacity(0.35);
        painter.drawPixmap(0, 0, image);
        return faint;
    }

    QString name;
};

} // namespace

QIcon icon(const QString &resourceName)
{
    loadIconResources();
    const QString smallest = fileName(resourceName, QStringLiteral("light"), storedSizes.front());
    if (!QFile::exists(smallest))
        return {};
    return QIcon(new PaletteIconEngine(resourceName)); // the icon owns it
}

QIcon onAccent(const QIcon &icon)
{
    QIcon result;
    for (const int scale : {1, 2, 3}) {
        const QSize size(Theme::listIconSize, Theme::listIconSize);
        for (const QIcon::Mode mode : {QIcon::Selected, QIcon::Disabled})
            result.addPixmap(icon.pixmap(size, scale, mode),
                             mode == QIcon::Disabled ? mode : QIcon::Normal);
    }
    return result;
}

} // namespace varnel::Icons
