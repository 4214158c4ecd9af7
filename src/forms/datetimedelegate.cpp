#include "datetimedelegate.h"

#include "scheduleutil.h"
#include "svc.h"
#include "tqdatetimeedit.h"

#include <QDateTime>
#include <QLoggingCategory>
#include <QSignalBlocker>

namespace {

QDateTime moment(const QVariant &epochSeconds)
{
    return QDateTime::fromSecsSinceEpoch(epochSeconds.toLongLong(), Qt::UTC);
}

} // namespace

DateTimeDelegate::DateTimeDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
    , m_displayFormat(QStringLiteral("hh:mm:ss"))
{
}

DateTimeDelegate::DateTimeDelegate(Format format, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_format(format)
{
}

void DateTimeDelegate::setTimeSpec(const QString &displayFormat)
{
    m_displayFormat = displayFormat;
}

QString DateTimeDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    if (m_format == DateTimeFormat)
        return locale.toString(moment(value), QLocale::ShortFormat);
    const QTime time = ScheduleUtil::timeOf(value.toInt());
    return m_displayFormat.isEmpty() ? locale.toString(time, QLocale::ShortFormat) : time.toString(m_displayFormat);
}

QWidget *DateTimeDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const
{
    auto *edit = new TQDateTimeEdit(parent);
    edit->setFrame(false);
    edit->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal).toString());
    if (m_format == DateTimeFormat) {
        edit->setTimeSpec(Qt::UTC);
        edit->setDisplayFormat(QStringLiteral("dd.MM.yyyy"));
        edit->setCalendarPopup(true);
    } else if (m_format == TimeFormat) {
        edit->setDisplayFormat(m_displayFormat.isEmpty() ? option.locale.timeFormat(QLocale::ShortFormat)
                                                         : m_displayFormat);
    }
    connect(edit, &QDateTimeEdit::dateTimeChanged, this, &DateTimeDelegate::slotDateTimeChanged);
    return edit;
}

void DateTimeDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *edit = qobject_cast<QDateTimeEdit *>(editor);
    if (!edit)
        return;
    const QSignalBlocker blocker(edit);
    const QVariant value = index.data(Qt::DisplayRole);
    // Setting an equal value again would move the cursor while the operator types.
    if (m_format == TimeFormat) {
        if (edit->time() != ScheduleUtil::timeOf(value.toInt()))
            edit->setTime(ScheduleUtil::timeOf(value.toInt()));
        return;
    }
    qCDebug(svc()) << "setEditorData";
    if (edit->dateTime() != moment(value))
        edit->setDateTime(moment(value));
}

void DateTimeDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    auto *edit = qobject_cast<QDateTimeEdit *>(editor);
    if (!edit)
        return;
    // When a cell editor loses the focus, this is called before the field reads its unfinished text.
    const QSignalBlocker blocker(edit);
    edit->interpretText();
    if (m_format == TimeFormat) {
        const QTime time = edit->time();
        // 24:00 is displayed as 00:00 and must not be replaced by it.
        if (time == ScheduleUtil::timeOf(index.data(Qt::DisplayRole).toInt()))
            return;
        model->setData(index, ScheduleUtil::secondsOf(time), Qt::EditRole);
        return;
    }
    const qint64 seconds = QDateTime(edit->date(), QTime(0, 0), Qt::UTC).toSecsSinceEpoch();
    qCDebug(svc()) << seconds;
    model->setData(index, seconds, Qt::EditRole);
}

void DateTimeDelegate::slotDateTimeChanged(const QDateTime &)
{
    if (auto *editor = qobject_cast<QWidget *>(sender()))
        emit commitData(editor);
}
