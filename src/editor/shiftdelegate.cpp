#include "shiftdelegate.h"

#include "scheduleutil.h"

#include <QComboBox>
#include <QSignalBlocker>

namespace {

/// Set while the operator has not chosen an item.
constexpr char UntouchedProperty[] = "untouched";

bool isPosition(const QVariant &value)
{
    return value.userType() == QMetaType::Int;
}

} // namespace

ShiftDelegate::ShiftDelegate(orvex::SCHEDULE_DATA *schedule, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_schedule(schedule)
{
}

QString ShiftDelegate::shiftText(int position, qint32 start, qint32 finish)
{
    const auto timeText = [](qint32 seconds) {
        return ScheduleUtil::timeOf(seconds).toString(QStringLiteral("hh:mm"));
    };
    return tr("Смена")
        + QStringLiteral(" %1 %2 - %3").arg(QString::number(position + 1), timeText(start), timeText(finish));
}

QString ShiftDelegate::shiftDescription(int position) const
{
    if (!m_schedule || position < 0 || position >= m_schedule->shifts.size())
        return {};
    const auto &shift = m_schedule->shifts.at(position);
    return shiftText(position, shift.start(), shift.finish());
}

QWidget *ShiftDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    auto *box = new QComboBox(parent);
    box->setAccessibleName(tr("Смена"));
    box->addItem(tr("Нет значения"));
    const int count = m_schedule ? m_schedule->shifts.size() : 0;
    for (int i = 0; i < count; ++i)
        box->addItem(shiftDescription(i), i);
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ShiftDelegate::slotCurrentIndexChanged);
    // Choosing the current item is a choice, too.
    connect(box, QOverload<int>::of(&QComboBox::activated), this, &ShiftDelegate::slotCurrentIndexChanged);
    return box;
}

void ShiftDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *box = qobject_cast<QComboBox *>(editor);
    if (!box)
        return;
    const QVariant position = index.data(Qt::DisplayRole);
    const QSignalBlocker blocker(box);
    box->setCurrentIndex(isPosition(position) ? qMax(0, box->findData(position)) : 0);
    box->setProperty(UntouchedProperty, true);
}

void ShiftDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *box = qobject_cast<QComboBox *>(editor);
    if (!box || box->property(UntouchedProperty).toBool())
        return;
    model->setData(index, box->currentIndex() > 0 ? box->currentData().toInt() : -1, Qt::EditRole);
}

void ShiftDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option, const QModelIndex &) const
{
    editor->setGeometry(option.rect);
}

QSize ShiftDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {};
}

void ShiftDelegate::slotCurrentIndexChanged(int)
{
    auto *editor = qobject_cast<QWidget *>(sender());
    if (!editor)
        return;
    editor->setProperty(UntouchedProperty, false);
    emit commitData(editor);
}

void ShiftDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const QVariant position = index.data(Qt::DisplayRole);
    option->text = isPosition(position) ? shiftDescription(position.toInt()) : QString();
    option->features |= QStyleOptionViewItem::HasDisplay;
}
