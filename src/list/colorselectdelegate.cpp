#include "colorselectdelegate.h"

#include <QLinearGradient>
#include <QPainter>

namespace {

constexpr int Side = 16;
constexpr int LighterPercent = 150;
constexpr qreal CornerRadius = 3;

} // namespace

ColorSelectDelegate::ColorSelectDelegate(QObject *parent)
    : QItemDelegate(parent)
{
}

QWidget *ColorSelectDelegate::createEditor(QWidget *, const QStyleOptionViewItem &, const QModelIndex &) const
{
    return nullptr;
}

void ColorSelectDelegate::setEditorData(QWidget *, const QModelIndex &) const { }

void ColorSelectDelegate::setModelData(QWidget *, QAbstractItemModel *, const QModelIndex &) const { }

QSize ColorSelectDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {Side, Side};
}

void ColorSelectDelegate::drawDisplay(QPainter *painter, const QStyleOptionViewItem &option, const QRect &,
                                      const QString &text) const
{
    const QColor color(text);
    if (!color.isValid())
        return;
    // The swatch is centred in the cell; the rectangle that the base passes is that of the text.
    QRectF swatch(0, 0, qMin(Side, option.rect.width()) - 3, qMin(Side, option.rect.height()) - 3);
    swatch.moveCenter(QRectF(option.rect).center());
    QLinearGradient gradient(swatch.topLeft(), swatch.bottomLeft());
    gradient.setColorAt(0, color.lighter(LighterPercent));
    gradient.setColorAt(1, color);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(option.palette.color(QPalette::Mid), 1));
    painter->setBrush(gradient);
    painter->drawRoundedRect(swatch, CornerRadius, CornerRadius);
    painter->restore();
}
