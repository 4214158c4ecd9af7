#include "styleditemdelegate.h"

#include "objecttreemodel.h"

StyledItemDelegate::StyledItemDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

void StyledItemDelegate::setMargins(int left, int top, int right, int bottom)
{
    m_margins = {left, top, right, bottom};
}

void StyledItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem inner = option;
    inner.rect = option.rect.marginsRemoved(m_margins);
    QStyledItemDelegate::paint(painter, inner, index);
}

QSize StyledItemDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return size.grownBy(m_margins);
}

void StyledItemDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.column() != orvex::ObjectTreeModel::IdColumn)
        return;
    // The icon grows with the font.
    const int side = qMax(option->decorationSize.height(), option->fontMetrics.height() * 4 / 5);
    option->decorationSize = {side, side};
    // A line break in a name must not make a second line.
    option->text = index.data(orvex::ObjectTreeModel::NameRole).toString().simplified();
    option->displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
}
