#pragma once

#include <QProxyStyle>

namespace varnel {

/// Fusion, made quieter: flat grounds, lines of one device pixel, one accent. Whatever is not
/// drawn here is Fusion's.
class VarnelStyle : public QProxyStyle {
public:
    /// What a widget is to the style, beyond its class.
    enum class Part { None, SourceList, List, AccentButton, DangerButton, SearchField };

    VarnelStyle();

    static void setPart(QWidget *widget, Part part);
    [[nodiscard]] static Part part(const QWidget *widget);

    using QProxyStyle::polish;
    void polish(QPalette &palette) override;
    [[nodiscard]] QPalette standardPalette() const override;
};

} // namespace varnel
