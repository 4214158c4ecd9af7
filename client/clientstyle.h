#pragma once

#include <QProxyStyle>

/// Fusion, made to keep its promises at any font and on dark.
class ClientStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    ClientStyle();

    /// Icons on selected rows are drawn as they are: our selection is pale enough, a tint would wash them out.
    [[nodiscard]] QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                              const QStyleOption *option) const override;
    /// The arrow of a tool bar that is too narrow comes from our theme: Fusion's own is black on dark, too.
    [[nodiscard]] QIcon standardIcon(StandardPixmap which, const QStyleOption *option,
                                     const QWidget *widget) const override;
    /// Check boxes, radio buttons and small icons grow with the font beside them.
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    /// Room for the whole title of a group: Fusion measures its ink, which is narrower than what it draws.
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl subControl,
                                       const QWidget *widget) const override;
    /// The lines of tables are lighter than a dark ground, where Fusion makes them darker still.
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *returned) const override;
    /// Empty check boxes and radio buttons have an outline on dark, too, where Fusion draws it darker than its ground.
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
};
