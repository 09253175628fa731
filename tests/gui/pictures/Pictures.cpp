#include "support/gui/Pictures.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <cstdlib>

#include <gtest/gtest.h>

namespace varnel::test {

namespace {

/// By how much a channel of one pixel may differ: the smoothing of an edge that lies a fraction of
/// a pixel elsewhere.
constexpr int channelTolerance = 40;
/// A channel is kept as a multiple of this; all of it would make the files three times as large.
constexpr int channelStep = 8;
/// A tile holds some letters of a line.
constexpr int tileSide = 16;

/// Where the program was started; a test may go elsewhere.
const QString startFolder = QDir::currentPath();

int toStep(int value)
{
    return qRound(double(value) / channelStep) * channelStep;
}

/// Red and blue by their distance from green: rounded each on its own, a grey would take on a hue.
QRgb kept(QRgb seen)
{
    const int green = toStep(qGreen(seen));
    const auto beside = [&](int channel) {
        return std::clamp(green + toStep(channel - qGreen(seen)), 0, 255);
    };
    return qRgb(beside(qRed(seen)), std::min(green, 255), beside(qBlue(seen)));
}

/// Of the channel that differs most.
int distance(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

/// The mean of a tile of both pictures, which letters that lie a little elsewhere leave alone.
int tileDistance(const QImage &one, const QImage &other, const QRect &tile)
{
    std::array<int, 3> sums {};
    for (int y = tile.top(); y <= tile.bottom(); ++y) {
        for (int x = tile.left(); x <= tile.right(); ++x) {
            sums[0] += qRed(one.pixel(x, y)) - qRed(other.pixel(x, y));
            sums[1] += qGreen(one.pixel(x, y)) - qGreen(other.pixel(x, y));
            sums[2] += qBlue(one.pixel(x, y)) - qBlue(other.pixel(x, y));
        }
    }
    const auto [least, most] = std::minmax_element(sums.begin(), sums.end());
    return std::max(-*least, *most);
}

double driftBetween(const QImage &one, const QImage &other)
{
    qint64 sum = 0;
    for (int y = 0; y < one.height(); y += tileSide) {
        for (int x = 0; x < one.width(); x += tileSide) {
            const QRect tile(x, y, tileSide, tileSide);
            sum += tileDistance(one, other, tile.intersected(one.rect()));
        }
    }
    return double(sum) / (double(one.width()) * one.height());
}

/// White where nothing differs, grey where it may, red where it may not.
QRgb mark(int most)
{
    if (most > channelTolerance)
        return qRgb(192, 0, 0);
    return most > 0 ? qRgb(160, 160, 160) : qRgb(255, 255, 255);
}

} // namespace

QImage reduced(const QImage &picture)
{
    QImage small =
        picture.scaled(picture.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x)
            small.setPixel(x, y, kept(small.pixel(x, y)));
    }
    return small;
}

Difference difference(const QImage &seen, const QImage &expected)
{
    if (seen.size() != expected.size())
        return {seen, 1, 255};
    Difference result {QImage(seen.size(), QImage::Format_RGB32), 0, driftBetween(seen, expected)};
    qsizetype differing = 0;
    for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x) {
            const int most = distance(seen.pixel(x, y), expected.pixel(x, y));
            result.picture.setPixel(x, y, mark(most));
            differing += most > channelTolerance ? 1 : 0;
        }
    }
    result.share = double(differing) / double(seen.width() * seen.height());
    return result;
}

void expectPicture(QWidget &widget, const QString &name)
{
    const QImage whole = widget.grab().toImage();
    const QString folder = qEnvironmentVariable("VARNEL_PICTURES_TO");
    if (!folder.isEmpty()) {
        EXPECT_TRUE(whole.save(QDir(folder).filePath(name + u".png")));
        return;
    }
    const QImage seen = reduced(whole);
    const QString file = QStringLiteral(STORED_PICTURES "/") + name + u".png";
    if (qEnvironmentVariableIsSet("VARNEL_UPDATE_PICTURES")) {
        EXPECT_TRUE(seen.save(file, "PNG", 0));
        return;
    }
    const QImage expected(file);
    ASSERT_FALSE(expected.isNull()) << file.toStdString();
    const Difference found = difference(seen, expected);
    if (found.share <= allowedShare && found.drift <= allowedDrift)
        return;
    const QDir here(startFolder);
    seen.save(here.filePath(name + u".seen.png"));
    found.picture.save(here.filePath(name + u".difference.png"));
    ADD_FAILURE() << name.toStdString() << ": " << found.share * 100
                  << " % of the pixels differ, tiles by " << found.drift << " of 255 on average, "
                  << seen.width() << "x" << seen.height() << " for " << expected.width() << "x"
                  << expected.height() << "; see "
                  << here.absoluteFilePath(name + u".difference.png").toStdString();
}

} // namespace varnel::test
