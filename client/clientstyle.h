#pragma once

#include <QProxyStyle>

/// Fusion with corrections for large fonts and for the dark theme.
class ClientStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    ClientStyle();

    /// Icons on selected rows keep their colours: the selection is pale, and a tint would make them hard to see.
    [[nodiscard]] QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                              const QStyleOption *option) const override;
    /// The arrow of a tool bar that is too narrow is taken from our theme: Fusion's own is black on dark as well.
    [[nodiscard]] QIcon standardIcon(StandardPixmap which, const QStyleOption *option,
                                     const QWidget *widget) const override;
    /// Check boxes, radio buttons and small icons grow with the font.
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    /// Makes the title of a group wide enough: Fusion measures the ink, which is narrower than the drawn text.
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl subControl,
                                       const QWidget *widget) const override;
    /// On dark, the lines of tables are lighter than the background; Fusion makes them darker.
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *returned) const override;
    /// On dark, empty check boxes and radio buttons get a visible outline; Fusion draws it darker than the background.
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
};
