#include "clientstyle.h"

ClientStyle::ClientStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

QPixmap ClientStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap, const QStyleOption *option) const
{
    return mode == QIcon::Selected ? pixmap : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}
