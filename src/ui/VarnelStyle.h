#pragma once

#include <QProxyStyle>

class QStyleOptionComboBox;

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

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override;
    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption *option,
                                       const QWidget *widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                       SubControl part, const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option,
                                         const QSize &size, const QWidget *widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *answer) const override;

private:
    void drawChoiceList(const QStyleOptionComboBox &list, QPainter *painter,
                        const QWidget *widget) const;
    bool drawListPart(PrimitiveElement element, const QStyleOption &option, QPainter *painter,
                      const QWidget *widget) const;
    bool drawItemPart(PrimitiveElement element, const QStyleOption &option, QPainter *painter,
                      const QWidget *widget) const;
    bool drawSourceListPart(PrimitiveElement element, const QStyleOption &option, QPainter *painter,
                            const QWidget *widget) const;
};

} // namespace varnel
