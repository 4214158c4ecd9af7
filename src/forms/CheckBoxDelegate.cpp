#include "CheckBoxDelegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace {

QRect checkRect(const QStyleOptionViewItem &option)
{
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    const QSize size = style->subElementRect(QStyle::SE_CheckBoxIndicator, &option, option.widget).size();
    return QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
}

bool isToggleKey(const QEvent *event)
{
    const int key = static_cast<const QKeyEvent *>(event)->key();
    return key == Qt::Key_Space || key == Qt::Key_Select;
}

bool isClickInside(const QEvent *event, const QStyleOptionViewItem &option)
{
    const auto *mouse = static_cast<const QMouseEvent *>(event);
    return mouse->button() == Qt::LeftButton && checkRect(option).contains(mouse->pos());
}

bool toggle(QAbstractItemModel *model, const QModelIndex &index)
{
    const QVariant value = index.data(Qt::DisplayRole);
    if (value.userType() == QMetaType::Bool)
        return model->setData(index, !value.toBool(), Qt::EditRole);
    return model->setData(index, int(!value.toInt()), Qt::EditRole);
}

} // namespace

CheckBoxDelegate::CheckBoxDelegate(QObject *parent)
    : QItemDelegate(parent)
{
}

QWidget *CheckBoxDelegate::createEditor(QWidget *, const QStyleOptionViewItem &, const QModelIndex &) const
{
    return nullptr;
}

void CheckBoxDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const bool checked = index.data(Qt::DisplayRole).toInt() > 0;
    painter->save();
    drawBackground(painter, option, index);
    drawFocus(painter, option, option.rect);
    drawCheck(painter, option, checkRect(option), checked ? Qt::Checked : Qt::Unchecked);
    painter->restore();
}

bool CheckBoxDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                                   const QModelIndex &index)
{
    if (!index.flags().testFlag(Qt::ItemIsEnabled) || !option.state.testFlag(QStyle::State_Enabled))
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonRelease:
        return isClickInside(event, option) && toggle(model, index);
    case QEvent::MouseButtonDblClick:
        return isClickInside(event, option);
    case QEvent::KeyPress:
        return isToggleKey(event) && toggle(model, index);
    default:
        return false;
    }
}
