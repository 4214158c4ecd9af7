#include "clientstyle.h"

#include "tqstyles.h"

#include <QApplication>
#include <QStyleOption>
#include <QWidget>

namespace {

int lineHeight(const QStyleOption *option, const QWidget *widget)
{
    if (widget)
        return widget->fontMetrics().height();
    return option ? option->fontMetrics.height() : QApplication::fontMetrics().height();
}

} // namespace

ClientStyle::ClientStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

QPixmap ClientStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap, const QStyleOption *option) const
{
    return mode == QIcon::Selected ? pixmap : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

QIcon ClientStyle::standardIcon(StandardPixmap which, const QStyleOption *option, const QWidget *widget) const
{
    if (which == SP_ToolBarHorizontalExtensionButton)
        return QIcon::fromTheme(QStringLiteral("arrow-right"));
    if (which == SP_ToolBarVerticalExtensionButton)
        return QIcon::fromTheme(QStringLiteral("arrow-down"));
    return QProxyStyle::standardIcon(which, option, widget);
}

int ClientStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return qMax(usual, lineHeight(option, widget) * 7 / 10);
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
        return qMax(usual, lineHeight(option, widget) * 17 / 20);
    default:
        return usual;
    }
}

QRect ClientStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl subControl,
                                  const QWidget *widget) const
{
    QRect rect = QProxyStyle::subControlRect(control, option, subControl, widget);
    const auto *group = qstyleoption_cast<const QStyleOptionGroupBox *>(option);
    if (control == CC_GroupBox && subControl == SC_GroupBoxLabel && group && option->direction == Qt::LeftToRight)
        rect.setWidth(qMax(rect.width(), option->fontMetrics.size(Qt::TextShowMnemonic, group->text).width() + 2));
    return rect;
}

int ClientStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                           QStyleHintReturn *returned) const
{
    if (hint == SH_Table_GridLineColor && option && tqstyles::isDark(option->palette))
        return int(option->palette.color(QPalette::Mid).rgb());
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

void ClientStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                const QWidget *widget) const
{
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    const bool indicator = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    if (!indicator || !button || !tqstyles::isDark(option->palette)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    // Fusion derives the outline from the window colour and makes it much darker.
    QStyleOptionButton outlined(*button);
    outlined.palette.setColor(QPalette::Window, option->palette.color(QPalette::PlaceholderText).lighter(125));
    QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
}
