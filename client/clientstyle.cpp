#include "clientstyle.h"

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
