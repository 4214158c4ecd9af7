#include "tqguiglobals.h"

#include <QGuiApplication>
#include <QPalette>

namespace {

QColor mixed(const QColor &a, const QColor &b, qreal shareOfA)
{
    const auto channel = [shareOfA](qreal x, qreal y) { return shareOfA * x + (1 - shareOfA) * y; };
    return QColor::fromRgbF(channel(a.redF(), b.redF()), channel(a.greenF(), b.greenF()),
                            channel(a.blueF(), b.blueF()));
}

} // namespace

QColor TQGuiGlobals::titleColor()
{
    const QPalette palette = QGuiApplication::palette();
    return mixed(palette.color(QPalette::Active, QPalette::Text), palette.color(QPalette::Active, QPalette::Base), 0.7);
}

QColor TQGuiGlobals::lineColor()
{
    const QPalette palette = QGuiApplication::palette();
    return mixed(palette.color(QPalette::Active, QPalette::Text), palette.color(QPalette::Active, QPalette::Base), 0.2);
}
