#include "ui/Icons.h"

#include "ui/Theme.h"

#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;

namespace {

const QStringList allNames {
    u"General"_s,       u"Dock"_s,
    u"Finder"_s,        u"iTunes"_s,
    u"mail"_s,          u"QuickTimePlayerX"_s,
    u"compass"_s,       u"ScreenCapture"_s,
    u"backup"_s,        u"MacOSX"_s,
    u"Connected"_s,     u"HardwareMemoryCard"_s,
    u"New"_s,           u"Welcome"_s,
    u"varnel"_s,        u"SystemInformation"_s,
    u"LoginItems"_s,    u"HiddenSettings"_s,
    u"RestoreBackup"_s,
};

QImage pictureOf(const QString &name, int pixels, QIcon::Mode mode = QIcon::Normal)
{
    return Icons::icon(name)
        .pixmap(QSize(pixels, pixels), 1.0, mode)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

QByteArray bytesOf(const QImage &image)
{
    return {reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes()};
}

/// How much of the square is covered, 0 to 1.
double coverage(const QImage &image)
{
    double covered = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            covered += qAlpha(image.pixel(x, y)) / 255.0;
    }
    return covered / (image.width() * image.height());
}

/// The contrast of the least visible of the colours that are fully painted.
double leastContrast(const QImage &image, const QColor &ground)
{
    double least = 21;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) == 255)
                least = std::min(least, Theme::contrast(QColor(pixel), ground));
        }
    }
    return least;
}

class IconsTest : public testing::Test {
protected:
    void TearDown() override { QGuiApplication::setPalette(before); }

    const QPalette before = QGuiApplication::palette();
};

} // namespace

TEST_F(IconsTest, everyNameHasAPictureThatIsNeitherEmptyNorASlab)
{
    for (const QString &name : allNames) {
        ASSERT_FALSE(Icons::icon(name).isNull()) << qPrintable(name);
        for (const int size : {16, 20, 32, 64}) {
            const QImage picture = pictureOf(name, size);
            EXPECT_EQ(picture.size(), QSize(size, size)) << qPrintable(name);
            EXPECT_GT(coverage(picture), 0.08) << qPrintable(name) << size;
            EXPECT_LT(coverage(picture), name == u"varnel" ? 0.95 : 0.6)
                << qPrintable(name) << size;
        }
    }
}

TEST_F(IconsTest, noTwoNamesShareAPicture)
{
    for (const int size : {16, 32}) {
        QSet<QByteArray> seen;
        for (const QString &name : allNames) {
            const QByteArray bytes = bytesOf(pictureOf(name, size));
            EXPECT_FALSE(seen.contains(bytes)) << qPrintable(name) << size;
            seen.insert(bytes);
        }
    }
}

TEST_F(IconsTest, anUnknownNameGivesANullIcon)
{
    EXPECT_TRUE(Icons::icon(u"dock"_s).isNull());
    EXPECT_TRUE(Icons::icon(u"NoSuchDrawing"_s).isNull());
    EXPECT_TRUE(Icons::icon({}).isNull());
}

TEST_F(IconsTest, aScaledScreenGetsAsManyPixelsAsItShows)
{
    for (const double scale : {1.0, 1.5, 2.0}) {
        const QPixmap picture = Icons::icon(u"Dock"_s).pixmap(QSize(16, 16), scale);
        EXPECT_EQ(picture.width(), qRound(16 * scale));
        EXPECT_DOUBLE_EQ(picture.devicePixelRatio(), scale);
    }
}

TEST_F(IconsTest, anIconThatIsAlreadyInUseFollowsThePalette)
{
    QGuiApplication::setPalette(Theme::lightPalette());
    const QIcon icon = Icons::icon(u"mail"_s);
    const QImage light = icon.pixmap(QSize(32, 32), 1.0).toImage();
    QGuiApplication::setPalette(Theme::darkPalette());
    EXPECT_NE(icon.pixmap(QSize(32, 32), 1.0).toImage(), light);
}

TEST_F(IconsTest, everyLineStandsOutFromItsGround)
{
    for (const QPalette &palette : {Theme::lightPalette(), Theme::darkPalette()}) {
        QGuiApplication::setPalette(palette);
        for (const QString &name : allNames) {
            if (name == u"varnel") // stands on a tile of its own
                continue;
            const QImage picture = pictureOf(name, 64);
            EXPECT_GE(leastContrast(picture, palette.color(QPalette::Base)), 3) << qPrintable(name);
            EXPECT_GE(leastContrast(picture, Theme::rowShading(palette)), 3) << qPrintable(name);
            EXPECT_GE(leastContrast(pictureOf(name, 64, QIcon::Selected), Theme::accentFill()), 3)
                << qPrintable(name);
        }
    }
}

TEST_F(IconsTest, aDisabledIconIsFainter)
{
    EXPECT_LT(coverage(pictureOf(u"General"_s, 32, QIcon::Disabled)),
              coverage(pictureOf(u"General"_s, 32)) / 2);
}
