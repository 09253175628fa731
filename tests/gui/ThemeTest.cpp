#include "ui/Theme.h"

#include <QApplication>
#include <QLabel>
#include <QPalette>

#include <gtest/gtest.h>

#include <array>

using namespace varnel;

namespace {

/// The band's colour at `share` of the way up from its lower edge.
QColor bandAt(double share, const QPalette &palette)
{
    const QColor ground = Theme::bandGround(palette);
    const QColor lower = Theme::over(Theme::bandStart(palette), ground);
    QColor upper = Theme::over(Theme::bandEnd(palette), ground);
    upper.setAlphaF(static_cast<float>(share));
    return Theme::over(upper, lower);
}

std::array<QPalette, 2> bothPalettes()
{
    return {Theme::lightPalette(), Theme::darkPalette()};
}

} // namespace

TEST(ThemeTest, tellsADarkPaletteFromALightOne)
{
    EXPECT_FALSE(Theme::isDark(Theme::lightPalette()));
    EXPECT_TRUE(Theme::isDark(Theme::darkPalette()));
}

TEST(ThemeTest, aLightPaletteHasTheProgramsColours)
{
    const QPalette light = Theme::lightPalette();
    EXPECT_EQ(Theme::rowShading(light), QColor::fromRgbF(0.96F, 0.961F, 0.96F));
    EXPECT_EQ(Theme::rowStroke(light), QColor::fromRgbF(0.692F, 0.693F, 0.692F));
    EXPECT_EQ(Theme::bandGround(light), QColor(Qt::white));
    EXPECT_EQ(Theme::bandStart(light), QColor::fromRgbF(0.25F, 0.45F, 0.7F, 0.9F));
    EXPECT_EQ(Theme::bandEnd(light), QColor::fromRgbF(0.45F, 0.65F, 0.9F, 0.9F));
    EXPECT_EQ(Theme::bandInk(light), QColor(0x10, 0x24, 0x3C));
    EXPECT_EQ(Theme::accent(light), QColor(0x40, 0x73, 0xB3));
}

TEST(ThemeTest, aDarkPaletteShadesLighterThanItsBaseAndDimsTheBand)
{
    const QPalette dark = Theme::darkPalette();
    EXPECT_GT(Theme::rowShading(dark).lightness(), dark.color(QPalette::Base).lightness());
    EXPECT_NEAR(Theme::hairline(dark).alphaF(), 0.12, 0.001);
    EXPECT_NEAR(Theme::rowStroke(dark).alphaF(), 0.12, 0.001);
    EXPECT_NEAR(Theme::bandEnd(dark).alphaF(), 0.85, 0.001);
    EXPECT_LT(bandAt(1, dark).lightness(), bandAt(1, Theme::lightPalette()).lightness());
}

TEST(ThemeTest, mutedTextIsReadableWhereverItStands)
{
    for (const QPalette &palette : bothPalettes()) {
        const QColor muted = Theme::mutedText(palette);
        for (const QColor &ground : {palette.color(QPalette::Base), palette.color(QPalette::Window),
                                     Theme::rowShading(palette)})
            EXPECT_GE(Theme::contrast(muted, ground), 4.5) << qPrintable(ground.name());
        EXPECT_NE(muted, palette.color(QPalette::Text)) << "it is not muted";
    }
}

TEST(ThemeTest, mutedTextStaysReadableInAPaletteOfLowContrast)
{
    QPalette palette = Theme::lightPalette();
    palette.setColor(QPalette::Text, QColor(0x66, 0x66, 0x66));
    EXPECT_GE(Theme::contrast(Theme::mutedText(palette), Theme::rowShading(palette)), 4.5);
}

TEST(ThemeTest, theBandsInkIsReadableWhereTextMayStand)
{
    constexpr double floor = double(Theme::bandTextFloor) / Theme::bandHeight;
    for (const QPalette &palette : bothPalettes()) {
        const QColor ink = Theme::bandInk(palette);
        EXPECT_GE(Theme::contrast(ink, bandAt(1, palette)), 4.5);
        EXPECT_GE(Theme::contrast(ink, bandAt(floor, palette)), 4.5);
        EXPECT_GE(Theme::contrast(ink, bandAt(0, palette)), 3);
    }
}

TEST(ThemeTest, whatIsDrawnInTheAccentIsReadable)
{
    EXPECT_GE(Theme::contrast(Theme::accentText(), Theme::accentFill()), 4.5);
    EXPECT_GE(Theme::contrast(Theme::accentText(), Theme::selectionFill(false)), 4.5);
    for (const QPalette &palette : bothPalettes()) {
        EXPECT_GE(Theme::contrast(Theme::accent(palette), palette.color(QPalette::Base)), 4.5);
        EXPECT_GE(Theme::contrast(Theme::danger(palette), palette.color(QPalette::Base)), 4.5);
        EXPECT_GE(Theme::contrast(Theme::danger(palette), palette.color(QPalette::Button)), 4.5);
    }
}

TEST(ThemeTest, contrastIsThatOfTheAccessibilityGuidelines)
{
    EXPECT_NEAR(Theme::contrast(Qt::white, Qt::black), 21, 0.001);
    EXPECT_NEAR(Theme::contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(ThemeTest, theTypeScaleKeepsItsStepsWhateverUnitTheDesktopUses)
{
    QFont points;
    points.setPointSizeF(10);
    EXPECT_DOUBLE_EQ(Theme::font(Theme::TextRole::PageTitle, points).pointSizeF(), 15);
    EXPECT_DOUBLE_EQ(Theme::font(Theme::TextRole::Help, points).pointSizeF(), 8.7);
    EXPECT_EQ(Theme::font(Theme::TextRole::BandName, points).weight(), QFont::Light);
    QFont pixels;
    pixels.setPixelSize(20);
    EXPECT_EQ(Theme::font(Theme::TextRole::BandName, pixels).pixelSize(), 34);
    EXPECT_EQ(Theme::font(Theme::TextRole::Body, pixels), pixels);
}

TEST(ThemeTest, helpIsMutedAndFollowsThePalette)
{
    QLabel help;
    Theme::setTextRole(&help, Theme::TextRole::Help);
    QPalette palette = Theme::darkPalette();
    help.setPalette(palette);
    EXPECT_EQ(help.palette().color(help.foregroundRole()), Theme::mutedText(palette));
}
