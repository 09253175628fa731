#include "ui/Theme.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// Compared pictures are always of one scale, font and size.
bool onlyToLookAt()
{
    return !qEnvironmentVariableIsEmpty("VARNEL_PICTURES_TO");
}

/// The same letters on every machine: one font that is always there, of one size in pixels, drawn
/// without the machine's habits.
QFont fixedFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    const int pixels = onlyToLookAt() ? qEnvironmentVariableIntValue("VARNEL_PICTURES_FONT") : 0;
    font.setPixelSize(pixels > 0 ? pixels : 13);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96");
    qputenv("TZ", "UTC");
    if (!onlyToLookAt()) {
        qputenv("QT_SCALE_FACTOR", "1");
        qunsetenv("VARNEL_PICTURES_SIZE");
    }
    const QTemporaryDir configuration;
    qputenv("XDG_CONFIG_HOME", configuration.path().toLocal8Bit());
    QApplication application(argc, argv);
    varnel::Theme::apply(application);
    QApplication::setFont(fixedFont());
    QApplication::setCursorFlashTime(0); // no caret that is there or not
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
