#include "calendarcelldelegate.h"

#include "calendardaysmodel.h"

#include <QFontMetrics>
#include <QPainter>

#include <cmath>

namespace {

constexpr int CornerPointSize = 6;

/// Relative luminance (WCAG 2.1): 0 black to 1 white.
double luminance(const QColor &color)
{
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// Black or white, whichever has the higher contrast to \a background laid over \a base.
QColor readableOn(const QColor &background, const QColor &base)
{
    constexpr double EqualContrast = 0.179;
    const double alpha = background.alphaF();
    const double seen = alpha * luminance(background) + (1 - alpha) * luminance(base);
    return seen > EqualContrast ? Qt::black : Qt::white;
}

QPalette::ColorGroup colorGroup(const QStyleOptionViewItem &option)
{
    if (!(option.state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return option.state & QStyle::State_Active ? QPalette::Normal : QPalette::Inactive;
}

bool isSelected(const QStyleOptionViewItem &option)
{
    return option.showDecorationSelected && (option.state & QStyle::State_Selected);
}

/// The selection, or the model's brush. A brush without a valid colour would paint black: it tints nothing.
QBrush cellFill(const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (isSelected(option))
        return option.palette.brush(colorGroup(option), QPalette::Highlight);
    const auto brush = index.data(Qt::BackgroundRole).value<QBrush>();
    return brush.color().isValid() ? brush : QBrush(Qt::NoBrush);
}

QColor textColor(const QStyleOptionViewItem &option, const QBrush &fill)
{
    const auto group = colorGroup(option);
    if (isSelected(option))
        return option.palette.color(group, QPalette::HighlightedText);
    if (fill.style() == Qt::NoBrush)
        return option.palette.color(group, QPalette::Text);
    return readableOn(fill.color(), option.palette.color(group, QPalette::Base));
}

} // namespace

CalendarCellDelegate::CalendarCellDelegate(int scale, QObject *parent)
    : QItemDelegate(parent)
    , m_scale(scale)
{
}

void CalendarCellDelegate::setScale(int scale)
{
    m_scale = scale;
}

QWidget *CalendarCellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                            const QModelIndex &index) const
{
    Q_UNUSED(parent)
    Q_UNUSED(option)
    Q_UNUSED(index)
    return nullptr;
}

QSize CalendarCellDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    Q_UNUSED(index)
    const int height = QFontMetrics(option.font).height();
    const int side = int(0.25F * float(height * m_scale) + float(height));
    return {side, side};
}

void CalendarCellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QBrush fill = cellFill(option, index);
    if (fill.style() != Qt::NoBrush)
        painter->fillRect(option.rect, fill);
    const QPen oldPen = painter->pen();
    painter->setPen(textColor(option, fill));
    const QDate date = index.data(CalendarDaysModel::DateRole).toDate();
    if (date.isValid())
        drawCorner(painter, option, cornerText(date));
    const QString hours = index.data(Qt::DisplayRole).toString();
    if (!hours.isEmpty())
        painter->drawText(option.rect.adjusted(1, 1, -1, -1), Qt::AlignCenter, hours);
    painter->setPen(oldPen);
    drawFocus(painter, option, option.rect);
}

void CalendarCellDelegate::drawCorner(QPainter *painter, const QStyleOptionViewItem &option, const QString &text) const
{
    if (text.isEmpty())
        return;
    painter->save();
    QFont font = option.font;
    font.setPointSize(CornerPointSize);
    painter->setFont(font);
    const QRect place(option.rect.topLeft() + QPoint(1, 1), QFontMetrics(font).size(0, text));
    painter->drawText(place, Qt::AlignCenter, text);
    painter->restore();
}
