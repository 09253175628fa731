#include "ui/Theme.h"

#include <QApplication>
#include <QPalette>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace varnel::Theme {

namespace {

/// `share` of the way from `from` to `to`.
QColor mix(const QColor &from, const QColor &to, double share)
{
    const auto part = [share](float start, float end) {
        return static_cast<float>(start + (end - start) * share);
    };
    return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                            part(from.blueF(), to.blueF()));
}

QColor faded(QColor colour, float alpha)
{
    colour.setAlphaF(alpha);
    return colour;
}

double luminance(const QColor &colour)
{
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

double leastContrast(const QColor &ink, const QPalette &palette)
{
    return std::min({contrast(ink, palette.color(QPalette::Base)),
                     contrast(ink, palette.color(QPalette::Window)),
                     contrast(ink, rowShading(palette))});
}

struct Ground {
    QRgb window, base, text, button, tip;
};

QPalette paletteOf(const Ground &ground)
{
    const QColor text(ground.text);
    QPalette palette(QColor(ground.button), QColor(ground.window)); // with edges to match
    palette.setColor(QPalette::Base, QColor(ground.base));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    palette.setColor(QPalette::ToolTipBase, QColor(ground.tip));
    palette.setColor(QPalette::ToolTipText, text);
    tunePalette(palette);
    return palette;
}

} // namespace

bool isDark(const QPalette &palette)
{
    return luminance(palette.color(QPalette::Base)) < luminance(palette.color(QPalette::Text));
}

QColor rowShading(const QPalette &palette)
{
    if (isDark(palette))
        return mix(palette.color(QPalette::Base), Qt::white, 0.06);
    return QColor::fromRgbF(0.96F, 0.961F, 0.96F);
}

QColor rowStroke(const QPalette &palette)
{
    if (isDark(palette))
        return faded(Qt::white, 0.12F);
    return QColor::fromRgbF(0.692F, 0.693F, 0.692F);
}

QColor hairline(const QPalette &palette)
{
    return isDark(palette) ? faded(Qt::white, 0.12F) : faded(Qt::black, 0.14F);
}

QColor controlEdge(const QPalette &palette)
{
    return isDark(palette) ? faded(Qt::white, 0.40F) : faded(Qt::black, 0.42F);
}

QColor bandGround(const QPalette &palette)
{
    return isDark(palette) ? palette.color(QPalette::Base) : QColor(Qt::white);
}

QColor bandStart(const QPalette &palette)
{
    const QColor light = QColor::fromRgbF(0.25F, 0.45F, 0.7F, 0.9F);
    return isDark(palette) ? faded(over(light, Qt::white), 0.85F) : light;
}

QColor bandEnd(const QPalette &palette)
{
    const QColor light = QColor::fromRgbF(0.45F, 0.65F, 0.9F, 0.9F);
    return isDark(palette) ? faded(over(light, Qt::white), 0.85F) : light;
}

QColor bandInk(const QPalette &palette)
{
    // The dimmed band is too dark for the ordinary ink and too light for white.
    return isDark(palette) ? QColor(0x03, 0x08, 0x10) : QColor(0x10, 0x24, 0x3C);
}

QColor mutedText(const QPalette &palette)
{
    const QColor text = palette.color(QPalette::Text);
    const QColor base = palette.color(QPalette::Base);
    constexpr int mostMuted = 38; // percent
    constexpr int step = 2;
    for (int share = mostMuted; share > 0; share -= step) {
        const QColor muted = mix(text, base, share / 100.0);
        if (leastContrast(muted, palette) >= 4.5)
            return muted;
    }
    return text;
}

QColor accent(const QPalette &palette)
{
    return isDark(palette) ? QColor(0x73, 0xA6, 0xE6) : QColor(0x40, 0x73, 0xB3);
}

QColor accentFill()
{
    return QColor(0x40, 0x73, 0xB3);
}

QColor accentText()
{
    return Qt::white;
}

QColor selectionFill(bool viewHasFocus)
{
    return viewHasFocus ? accentFill() : QColor(0x5F, 0x70, 0x88);
}

QColor danger(const QPalette &palette)
{
    return isDark(palette) ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB3, 0x26, 0x1E);
}

QColor caution(const QPalette &palette)
{
    return isDark(palette) ? QColor(0xF0, 0xB4, 0x4C) : QColor(0x8A, 0x55, 0x00);
}

QColor over(const QColor &upper, const QColor &ground)
{
    return mix(ground, upper, upper.alphaF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [less, more] = std::minmax({luminance(one), luminance(other)});
    return (more + 0.05) / (less + 0.05);
}

QFont font(TextRole role, const QFont &desktop)
{
    struct Step {
        double size;
        QFont::Weight weight;
    };
    const Step step = [role]() -> Step {
        switch (role) {
        case TextRole::Body:
            break;
        case TextRole::RowTitle:
            return {1.0, QFont::Medium};
        case TextRole::Help:
            return {0.87, QFont::Normal};
        case TextRole::PageTitle:
            return {1.5, QFont::Medium};
        case TextRole::BandName:
            return {1.7, QFont::Light};
        }
        return {1.0, QFont::Normal};
    }();
    QFont scaled = desktop;
    // A desktop names its font's size in points or in pixels, never in both.
    if (desktop.pointSizeF() > 0)
        scaled.setPointSizeF(desktop.pointSizeF() * step.size);
    else
        scaled.setPixelSize(qRound(desktop.pixelSize() * step.size));
    scaled.setWeight(step.weight);
    return scaled;
}

void setTextRole(QWidget *widget, TextRole role)
{
    widget->setFont(font(role, QApplication::font()));
    // By role and not by colour, so that the ink follows a change of palette.
    widget->setForegroundRole(role == TextRole::Help ? QPalette::PlaceholderText
                                                     : QPalette::WindowText);
}

void tunePalette(QPalette &palette)
{
    palette.setColor(QPalette::Highlight, accentFill());
    palette.setColor(QPalette::HighlightedText, accentText());
    palette.setColor(QPalette::Link, accent(palette));
    palette.setColor(QPalette::LinkVisited, accent(palette));
    palette.setColor(QPalette::AlternateBase, rowShading(palette));
    palette.setColor(QPalette::PlaceholderText, mutedText(palette));
    const QColor quiet = mix(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.6);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, quiet);
    palette.setColor(QPalette::Disabled, QPalette::PlaceholderText, quiet);
}

QPalette lightPalette()
{
    return paletteOf({.window = 0xFFF3F4F5,
                      .base = 0xFFFFFFFF,
                      .text = 0xFF1D2329,
                      .button = 0xFFFFFFFF,
                      .tip = 0xFFFFFFFF});
}

QPalette darkPalette()
{
    return paletteOf({.window = 0xFF282A2F,
                      .base = 0xFF1C1E21,
                      .text = 0xFFE6E9ED,
                      .button = 0xFF30343A,
                      .tip = 0xFF30343A});
}

} // namespace varnel::Theme
