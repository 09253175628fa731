#include "ui/VarnelStyle.h"

#include "ui/Theme.h"

#include <QVariant>
#include <QWidget>

namespace varnel {

namespace {
constexpr auto partProperty = "varnelPart";
}

VarnelStyle::VarnelStyle() : QProxyStyle(QStringLiteral("Fusion")) { }

void VarnelStyle::setPart(QWidget *widget, Part part)
{
    widget->setProperty(partProperty, static_cast<int>(part));
}

VarnelStyle::Part VarnelStyle::part(const QWidget *widget)
{
    return widget ? static_cast<Part>(widget->property(partProperty).toInt()) : Part::None;
}

void VarnelStyle::polish(QPalette &palette)
{
    QProxyStyle::polish(palette);
    Theme::tunePalette(palette);
}

QPalette VarnelStyle::standardPalette() const
{
    return Theme::lightPalette();
}

} // namespace varnel
