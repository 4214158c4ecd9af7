#include "schedulemodedelegate.h"

#include "schedules.h"

#include <QApplication>
#include <QComboBox>

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

QWidget *ScheduleModeDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem & /*option*/,
                                            const QModelIndex & /*index*/) const
{
    auto *editor = new QComboBox(parent);
    for (const int mode : {orvex::ScheduleFixed, orvex::ScheduleShift, orvex::ScheduleCalendar, orvex::ScheduleFree,
                           orvex::SchedulePersonal})
        editor->addItem(modeText(mode), mode);
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

QString ScheduleModeDelegate::modeText(int mode)
{
    switch (mode) {
    case orvex::ScheduleFixed:
        return tr("Фиксированный");
    case orvex::ScheduleShift:
        return tr("Сменный");
    case orvex::ScheduleFree:
        return tr("Ненормированный");
    case orvex::ScheduleCalendar:
        return tr("Календарный");
    case orvex::SchedulePersonal:
        return tr("Индивидуальный");
    default:
        return tr("Не указан");
    }
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
    item.text = modeText(index.data(Qt::DisplayRole).toInt());
    item.index = index;
    return item;
}
