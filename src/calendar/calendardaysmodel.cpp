#include "calendardaysmodel.h"

#include "localstorage.h"
#include "scheduleutil.h"
#include "shiftguide.h"
#include "tqglobals.h"

#include <QLocale>

namespace {

QBrush brushOf(const QString &color)
{
    return QColor::isValidColor(color) ? QColor(color) : QColor();
}

QString timeOfDay(qint32 seconds)
{
    return QLocale().toString(ScheduleUtil::timeOf(seconds), QLocale::ShortFormat);
}

bool isWorked(const orvex::SCHEDULE_CALENDAR_DAY *day)
{
    return day && !ScheduleUtil::isHoliday(*day);
}

} // namespace

CalendarDaysModel::CalendarDaysModel(int firstDayColumn, const QString &color, QObject *parent)
    : QAbstractItemModel(parent)
    , m_firstDayColumn(firstDayColumn)
    , m_dayBrush(brushOf(color))
{
}

QList<orvex::SCHEDULE_CALENDAR_DAY> CalendarDaysModel::calendarDays() const
{
    return m_days.days();
}

void CalendarDaysModel::setCalendarDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    beginResetModel();
    replaceDays(days);
    endResetModel();
}

void CalendarDaysModel::replaceDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    m_days.setDays(days);
}

orvex::SCHEDULE_CALENDAR_DAY CalendarDaysModel::calendarDay(const QDate &date) const
{
    const auto day = m_days.find(date);
    return day ? *day : orvex::SCHEDULE_CALENDAR_DAY();
}

int CalendarDaysModel::calendarDayPos(const QDate &date) const
{
    return m_days.position(date);
}

void CalendarDaysModel::setColor(const QString &color)
{
    m_dayBrush = brushOf(color);
}

void CalendarDaysModel::updateTotal()
{
    emitColumnsChanged(m_firstDayColumn - 1, m_firstDayColumn - 1);
}

void CalendarDaysModel::updateDays()
{
    emitColumnsChanged(m_firstDayColumn, columnCount() - 1);
}

void CalendarDaysModel::emitColumnsChanged(int first, int last)
{
    const int lastRow = rowCount() - 1;
    if (lastRow < 0)
        return;
    emit dataChanged(index(0, first), index(lastRow, last));
}

QString CalendarDaysModel::dayShiftName(const orvex::SCHEDULE_CALENDAR_DAY &day)
{
    if (day.shiftId == 0)
        return {};
    return TQGlobals::objectName(
        orvex::LocalStorage::instance()->constObject(day.shiftId, orvex::SCHEDULE_SHIFT_DATANAME));
}

qint32 CalendarDaysModel::dayStartTime(const orvex::SCHEDULE_CALENDAR_DAY &day)
{
    return ScheduleUtil::dayStartTime(day, shiftguide::shifts(), shiftguide::intervals());
}

qint32 CalendarDaysModel::dayFinishTime(const orvex::SCHEDULE_CALENDAR_DAY &day)
{
    return ScheduleUtil::dayFinishTime(day, shiftguide::shifts(), shiftguide::intervals());
}

qint32 CalendarDaysModel::dayNormTime(const orvex::SCHEDULE_CALENDAR_DAY &day)
{
    return ScheduleUtil::dayNormTime(day, shiftguide::shifts(), shiftguide::intervals());
}

qint32 CalendarDaysModel::dayNightTime(const orvex::SCHEDULE_CALENDAR_DAY &day)
{
    return ScheduleUtil::dayNightTime(day, shiftguide::shifts(), shiftguide::intervals());
}

qint32 CalendarDaysModel::dayBreakTime(const orvex::SCHEDULE_CALENDAR_DAY &day)
{
    return ScheduleUtil::dayBreakTime(day, shiftguide::shifts(), shiftguide::intervals());
}

QModelIndex CalendarDaysModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex CalendarDaysModel::parent(const QModelIndex &) const
{
    return {};
}

QVariant CalendarDaysModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount())
        return {};
    if (role == DateRole)
        return dateFromIndex(index);
    if (index.column() < m_firstDayColumn)
        return role == Qt::DisplayRole ? rowText(index.row(), index.column()) : QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return displayText(dateFromIndex(index));
    case ShiftIdRole:
        return shiftId(dateFromIndex(index));
    case Qt::ToolTipRole:
        return toolTip(dateFromIndex(index));
    case Qt::BackgroundRole:
        return background(dateFromIndex(index));
    default:
        return {};
    }
}

bool CalendarDaysModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const QDate date = dateFromIndex(index);
    if (role != ShiftIdRole || !date.isValid())
        return false;
    m_days.putShift(date, quint32(value.toLongLong()));
    emit dataChanged(index, index);
    return true;
}

Qt::ItemFlags CalendarDaysModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    if (index.column() < m_firstDayColumn || index.column() >= columnCount())
        return Qt::ItemIsEnabled;
    return dateFromIndex(index).isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

QString CalendarDaysModel::totalText(quint32 seconds) const
{
    return tr("%1ч.").arg(seconds / ScheduleUtil::SecondsPerHour);
}

QVariant CalendarDaysModel::displayText(const QDate &date) const
{
    const auto day = m_days.find(date);
    return isWorked(day) ? dayNormTime(*day) / ScheduleUtil::SecondsPerHour : QVariant();
}

QVariant CalendarDaysModel::shiftId(const QDate &date) const
{
    const auto day = m_days.find(date);
    return day ? day->shiftId : QVariant();
}

QVariant CalendarDaysModel::toolTip(const QDate &date) const
{
    if (!date.isValid())
        return {};
    const QString dateText = QLocale().toString(date, QLocale::ShortFormat);
    const auto day = m_days.find(date);
    if (!isWorked(day))
        return tr("%1 - Выходной").arg(dateText);
    QString heading = dateText;
    if (qint32(day->shiftId) != -1)
        heading += QStringLiteral(" - %1").arg(dayShiftName(*day).toHtmlEscaped());
    const QStringList lines{heading, tr("%1 - %2").arg(timeOfDay(dayStartTime(*day)), timeOfDay(dayFinishTime(*day))),
                            tr("Перерыв: %1ч").arg(dayBreakTime(*day) / ScheduleUtil::SecondsPerHour),
                            tr("Часы: %1ч").arg(dayNormTime(*day) / ScheduleUtil::SecondsPerHour),
                            tr("Ночные: %1ч").arg(dayNightTime(*day) / ScheduleUtil::SecondsPerHour)};
    return lines.join(QLatin1String("<br/>"));
}

QVariant CalendarDaysModel::background(const QDate &date) const
{
    static const QBrush noDate(QColor(QStringLiteral("#E5E5E5")));
    if (!date.isValid())
        return noDate;
    return isWorked(m_days.find(date)) ? m_dayBrush : QVariant();
}
