#include "ui/FileIcon.h"

#include "ui/CellGeometry.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPixmap>

namespace varnel {

namespace {

constexpr qint64 mostPixels = 4'000'000;
/// Megabytes that such a picture takes with 16 bits for each colour, rounded up: for files that
/// don't tell their picture's size before it is decoded.
constexpr int largestPicture = 32;
/// Pixels for one of a row's icon, each way: as many as the densest screens show, and enough to
/// keep edges clean on others (some formats are made smaller with the colour of what is
/// transparent).
constexpr int density = 4;

/// While one lives, no picture is decoded that takes more memory. The toolkit has one limit for the
/// process.
class PictureLimit {
public:
    PictureLimit() : before(QImageReader::allocationLimit())
    {
        QImageReader::setAllocationLimit(largestPicture);
    }
    PictureLimit(const PictureLimit &) = delete;
    PictureLimit &operator=(const PictureLimit &) = delete;
    ~PictureLimit() { QImageReader::setAllocationLimit(before); }

private:
    int before;
};

bool isTooLarge(const QSize &size)
{
    return qint64(size.width()) * size.height() > mostPixels;
}

/// Made smaller to what a row can show, never larger.
QSize shownSize(const QSize &size)
{
    const QSize most = (cell::iconSize * density).toSize();
    if (size.width() <= most.width() && size.height() <= most.height())
        return size;
    return size.scaled(most, Qt::KeepAspectRatio).expandedTo({1, 1});
}

/// Where the decoder can do it, a picture never stands in the memory as large as it is.
bool isScaledByDecoder(const QImageReader &reader)
{
    const QImage::Format format = reader.imageFormat();
    // These come out in other colours.
    const bool bilevel = format == QImage::Format_Mono || format == QImage::Format_MonoLSB;
    return reader.supportsOption(QImageIOHandler::ScaledSize) && !bilevel;
}

QImage scaled(const QImage &image, const QSize &size)
{
    return size == image.size()
        ? image
        : image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
              .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage pictureOf(const QString &path)
{
    const PictureLimit limit;
    QImageReader reader(path);
    const QSize told = reader.size();
    if (isTooLarge(told))
        return {};
    if (told.isValid() && isScaledByDecoder(reader))
        reader.setScaledSize(shownSize(told));
    const QImage image = reader.read();
    if (image.isNull() || isTooLarge(image.size()))
        return {};
    return scaled(image, shownSize(image.size()));
}

} // namespace

QIcon fileIcon(const QString &pathOrName)
{
    if (!pathOrName.contains(u'/'))
        return QIcon::fromTheme(pathOrName);
    // Opening a FIFO would wait for somebody to write to it.
    if (!QFileInfo(pathOrName).isFile())
        return {};
    const QImage image = pictureOf(pathOrName);
    return image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image));
}

} // namespace varnel
