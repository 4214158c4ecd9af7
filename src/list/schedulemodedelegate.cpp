#include "schedulemodedelegate.h"

#include "schedules.h"
#include "scheduletypes.h"

#include <QApplication>
#include <QComboBox>

using scheduleview::scheduleTypeName;

namespace {

QStyle *styleOf(const QStyleOptionViewItem &option)
{
    return option.widget ? option.widget->style() : QApplication::style();
}

} // namespace

ScheduleModeDelegate::ScheduleModeDelegate(QObject *parent)
    : QAbstractItemDelegate(parent)
{
}

void ScheduleModeDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const auto item = itemOption(option, index);
    styleOf(item)->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
}

QSize ScheduleModeDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const auto item = itemOption(option, index);
    return styleOf(item)->sizeFromContents(QStyle::CT_ItemViewItem, &item, {}, item.widget);
}

QWidget *ScheduleModeDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    auto *editor = new QComboBox(parent);
    for (const int mode : {orvex::ScheduleFixed, orvex::ScheduleShift, orvex::ScheduleCalendar, orvex::ScheduleFree,
                           orvex::SchedulePersonal})
        editor->addItem(scheduleTypeName(mode), mode);
    return editor;
}

void ScheduleModeDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    const auto modes = qobject_cast<QComboBox *>(editor);
    if (modes)
        modes->setCurrentIndex(modes->findData(index.data(Qt::DisplayRole).toInt()));
}

void ScheduleModeDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto modes = qobject_cast<QComboBox *>(editor);
    if (modes && modes->currentIndex() >= 0)
        model->setData(index, modes->currentData().toInt(), Qt::EditRole);
}

QStyleOptionViewItem ScheduleModeDelegate::itemOption(const QStyleOptionViewItem &option, const QModelIndex &index)
{
    QStyleOptionViewItem item = option;
    const QVariant decoration = index.data(Qt::DecorationRole);
    const QIcon icon = decoration.canConvert<QIcon>() ? decoration.value<QIcon>() : QIcon();
    if (!icon.isNull()) {
        item.features |= QStyleOptionViewItem::HasDecoration;
        item.icon = icon;
    }
    item.features |= QStyleOptionViewItem::HasDisplay;
    item.text = scheduleTypeName(index.data(Qt::DisplayRole).toInt());
    item.index = index;
    return item;
}
