#include "calendarcelldelegate.h"

#include "calendardaysmodel.h"
#include "cellcolors.h"

#include <QFontMetrics>
#include <QHash>
#include <QPainter>
#include <QPixmap>

#include <cmath>

namespace {

constexpr int CornerPointSize = 6;
constexpr int SelectedFrameAlpha = 70;
constexpr int MaxPixmaps = 500;

QPalette::ColorGroup colorGroup(const QStyleOptionViewItem &option)
{
    if (!(option.state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return option.state & QStyle::State_Active ? QPalette::Normal : QPalette::Inactive;
}

/// The model's colour; invalid for an empty brush, whose own colour is black.
QColor tint(const QModelIndex &index)
{
    const auto brush = index.data(Qt::BackgroundRole).value<QBrush>();
    return brush.style() == Qt::NoBrush ? QColor() : brush.color();
}

QRgb withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color.rgba();
}

QFont cornerFont(QFont font)
{
    font.setPointSize(CornerPointSize);
    return font;
}

/// Everything that a cell's pixmap depends on, besides the fonts.
struct CellLook
{
    QString hours;
    QString corner;
    QSize size;
    QRgb fill = 0; ///< fully transparent: the view's own background
    QRgb text = 0;
    QRgb frame = 0; ///< fully transparent: none

    [[nodiscard]] bool isEmpty() const
    {
        return qAlpha(fill) == 0 && qAlpha(frame) == 0 && hours.isEmpty() && corner.isEmpty();
    }
    bool operator==(const CellLook &other) const
    {
        return fill == other.fill && text == other.text && frame == other.frame && size == other.size
            && hours == other.hours && corner == other.corner;
    }
};

uint qHash(const CellLook &look, uint seed = 0)
{
    return qHash(look.hours, seed) ^ qHash(look.corner, seed ^ look.fill) ^ look.text ^ uint(look.size.width());
}

CellLook lookOf(const QStyleOptionViewItem &option, const QModelIndex &index, const QDate &date)
{
    const auto group = colorGroup(option);
    const QColor base = option.palette.color(group, QPalette::Base);
    const QColor tinted = date.isValid() ? tint(index) : cellcolors::undated(tint(index), base);
    QColor text = option.palette.color(group, QPalette::Text);
    CellLook look;
    look.size = option.rect.size();
    look.hours = index.data(Qt::DisplayRole).toString();
    if (tinted.isValid()) {
        look.fill = tinted.rgba();
        text = cellcolors::readableOn(tinted, base);
    }
    if (option.showDecorationSelected && (option.state & QStyle::State_Selected)) {
        look.fill = option.palette.color(group, QPalette::Highlight).rgba();
        text = option.palette.color(group, QPalette::HighlightedText);
        // The frame shows the selection even if the schedule has the highlight's colour.
        look.frame = withAlpha(text, SelectedFrameAlpha);
    }
    if (option.state & QStyle::State_HasFocus)
        look.frame = text.rgba();
    look.text = text.rgba();
    return look;
}

} // namespace

/// Draws cells and caches their pixmaps: a grid repeats a few distinct cells many times.
class CalendarCellCache
{
public:
    void setFonts(const QFont &hours, const QFont &cell);
    void draw(QPainter *painter, const QPoint &topLeft, const CellLook &look) const;
    [[nodiscard]] QPixmap pixmap(const CellLook &look, qreal pixelRatio);

private:
    QHash<CellLook, QPixmap> m_pixmaps;
    qreal m_pixelRatio = 1;
    QFont m_hoursFont;
    QFont m_cellFont;
    QFont m_cornerFont = cornerFont(m_cellFont);
};

void CalendarCellCache::setFonts(const QFont &hours, const QFont &cell)
{
    if (hours == m_hoursFont && cell == m_cellFont)
        return;
    m_pixmaps.clear();
    m_hoursFont = hours;
    m_cellFont = cell;
    m_cornerFont = cornerFont(cell);
}

void CalendarCellCache::draw(QPainter *painter, const QPoint &topLeft, const CellLook &look) const
{
    const QRect cell(topLeft, look.size);
    painter->save();
    if (qAlpha(look.fill) != 0)
        painter->fillRect(cell, QColor::fromRgba(look.fill));
    painter->setPen(QColor::fromRgba(look.frame));
    if (qAlpha(look.frame) != 0)
        painter->drawRect(cell.adjusted(0, 0, -1, -1));
    painter->setPen(QColor::fromRgba(look.text));
    if (!look.corner.isEmpty()) {
        painter->setFont(m_cornerFont);
        const QRect place(topLeft + QPoint(1, 1), QFontMetrics(m_cornerFont).size(0, look.corner));
        painter->drawText(place, Qt::AlignCenter, look.corner);
    }
    painter->setFont(m_hoursFont);
    painter->drawText(cell.adjusted(1, 1, -1, -1), Qt::AlignCenter, look.hours);
    painter->restore();
}

QPixmap CalendarCellCache::pixmap(const CellLook &look, qreal pixelRatio)
{
    if (pixelRatio != m_pixelRatio || m_pixmaps.size() > MaxPixmaps)
        m_pixmaps.clear();
    m_pixelRatio = pixelRatio;
    const auto found = m_pixmaps.constFind(look);
    if (found != m_pixmaps.constEnd())
        return *found;
    QPixmap pixmap(look.size * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    // A translucent fill is blended by draw() and must not be blended twice.
    pixmap.fill(qAlpha(look.fill) == 255 ? QColor::fromRgba(look.fill) : QColor(Qt::transparent));
    QPainter painter(&pixmap);
    draw(&painter, {}, look);
    painter.end();
    m_pixmaps.insert(look, pixmap);
    return pixmap;
}

CalendarCellDelegate::CalendarCellDelegate(int scale, QObject *parent)
    : QItemDelegate(parent)
    , m_scale(scale)
    , m_cells(std::make_unique<CalendarCellCache>())
{
}

CalendarCellDelegate::~CalendarCellDelegate() = default;

void CalendarCellDelegate::setScale(int scale)
{
    m_scale = scale;
}

QWidget *CalendarCellDelegate::createEditor(QWidget *, const QStyleOptionViewItem &, const QModelIndex &) const
{
    return nullptr;
}

QSize CalendarCellDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    const int height = QFontMetrics(option.font).height();
    const int side = int(0.25F * float(height * m_scale) + float(height));
    return {side, side};
}

void CalendarCellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QDate date = index.data(CalendarDaysModel::DateRole).toDate();
    CellLook look = lookOf(option, index, date);
    if (date.isValid())
        look.corner = cornerText(date);
    if (look.isEmpty())
        return;
    m_cells->setFonts(painter->font(), option.font);
    const qreal pixelRatio = painter->device()->devicePixelRatioF();
    // A cached pixmap is exact only if its pixels are those of the device.
    if (painter->worldTransform().type() > QTransform::TxTranslate || pixelRatio != std::floor(pixelRatio))
        m_cells->draw(painter, option.rect.topLeft(), look);
    else
        painter->drawPixmap(option.rect.topLeft(), m_cells->pixmap(look, pixelRatio));
}
